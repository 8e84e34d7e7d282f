#ifndef KIVGLES_MUTEXLOCK_H
#define KIVGLES_MUTEXLOCK_H

#include <condition_variable>
#include <mutex>

#include "kivgles/KivMutex.h"

namespace kivgles {

// Holds a mutex for as long as it lives, as clang's check of locks sees too: it does not see the guards of
// the standard library, which carry no annotations.
class KIVGLES_THREAD_ANNOTATION(scoped_lockable) MutexLock {
 public:
    explicit MutexLock(KivMutex& mutex) KIVGLES_THREAD_ANNOTATION(acquire_capability(mutex)) : lock(mutex) {}
    ~MutexLock() KIVGLES_THREAD_ANNOTATION(release_capability()) = default;

    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

    // Lets go of the mutex until the condition is notified, or for no reason: to be called in a loop.
    void WaitFor(std::condition_variable& condition) { condition.wait(lock); }

 private:
    std::unique_lock<std::mutex> lock;
};

}  // namespace kivgles

#endif  // KIVGLES_MUTEXLOCK_H
