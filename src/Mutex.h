#ifndef KIVGLES_MUTEX_H
#define KIVGLES_MUTEX_H

#include <mutex>

// A mutex and its guard with which clang checks, at compile time, that what a mutex guards is used under it
// (-Wthread-safety); other compilers see nothing of it. The surface's apiMutex is not checked: its type is a
// part of the public header, and std::mutex carries no annotations in every standard library.

#if defined(__clang__)
#define KIVGLES_THREAD_ANNOTATION(annotation) __attribute__((annotation))
#else
#define KIVGLES_THREAD_ANNOTATION(annotation)
#endif

// A field that is used under `mutex` only.
#define KIVGLES_GUARDED_BY(mutex) KIVGLES_THREAD_ANNOTATION(guarded_by(mutex))
// A function that is called under `mutex`.
#define KIVGLES_REQUIRES(mutex) KIVGLES_THREAD_ANNOTATION(requires_capability(mutex))
// A function that is right without the mutex, for a reason that stands beside it.
#define KIVGLES_UNCHECKED KIVGLES_THREAD_ANNOTATION(no_thread_safety_analysis)

namespace kivgles {

class KIVGLES_THREAD_ANNOTATION(capability("mutex")) Mutex {
 public:
    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void Lock() KIVGLES_THREAD_ANNOTATION(acquire_capability()) { mutex.lock(); }
    void Unlock() KIVGLES_THREAD_ANNOTATION(release_capability()) { mutex.unlock(); }

 private:
    std::mutex mutex;
};

// Holds a mutex for as long as it lives.
class KIVGLES_THREAD_ANNOTATION(scoped_lockable) MutexLock {
 public:
    explicit MutexLock(Mutex& lockedMutex) KIVGLES_THREAD_ANNOTATION(acquire_capability(lockedMutex))
        : mutex(lockedMutex) {
        mutex.Lock();
    }
    ~MutexLock() KIVGLES_THREAD_ANNOTATION(release_capability()) { mutex.Unlock(); }

    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;

 private:
    Mutex& mutex;
};

}  // namespace kivgles

#endif  // KIVGLES_MUTEX_H
