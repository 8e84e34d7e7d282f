#ifndef KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H
#define KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H

#include <condition_variable>
#include <mutex>

namespace kivgles {

// A counting semaphore. Each Signal releases one Wait, whichever comes first.
//
// Owner:  GLDrawThread (one that counts queued commands), every DrawCmd (one for its waiting sender).
// Thread: any number on either side. Its mutex is a leaf: nothing else is locked under it.
class KivGLSemaphore {
 public:
    explicit KivGLSemaphore(unsigned int initialCount);

    KivGLSemaphore(const KivGLSemaphore&) = delete;
    KivGLSemaphore& operator=(const KivGLSemaphore&) = delete;

    void Signal();

    // Blocks, without a time limit, until there is a signal to consume.
    void Wait();

 private:
    std::mutex mutex;
    std::condition_variable condition;
    unsigned int count;  // signals not yet consumed; guarded by mutex
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H
