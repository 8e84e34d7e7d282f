#include "drawthread/KivGLSemaphore.h"

#include "MutexLock.h"

namespace kivgles {

KivGLSemaphore::KivGLSemaphore(unsigned int initialCount) : count(initialCount) {}

void KivGLSemaphore::Signal() {
    const MutexLock lock(mutex);
    ++count;
    condition.notify_one();  // under the lock: the waiter may destroy the semaphore as soon as it is released
}

void KivGLSemaphore::Wait() {
    MutexLock lock(mutex);
    while (count == 0) {
        lock.WaitFor(condition);
    }
    --count;
}

}  // namespace kivgles
