#include "drawthread/KivGLSemaphore.h"

namespace kivgles {

KivGLSemaphore::KivGLSemaphore(unsigned int initialCount) : count(initialCount) {}

void KivGLSemaphore::Signal() {
    const std::lock_guard<std::mutex> lock(mutex);
    ++count;
    condition.notify_one();  // under the lock: the waiter may destroy the semaphore as soon as it is released
}

void KivGLSemaphore::Wait() {
    std::unique_lock<std::mutex> lock(mutex);
    condition.wait(lock, [this] { return count != 0; });
    --count;
}

}  // namespace kivgles
