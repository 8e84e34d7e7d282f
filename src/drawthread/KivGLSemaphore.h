#ifndef KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H
#define KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H

#include <condition_variable>

#include "kivgles/KivMutex.h"

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
    KivMutex mutex;
    std::condition_variable condition;
    unsigned int count KIVGLES_GUARDED_BY(mutex);  // signals not yet consumed
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_KIVGLSEMAPHORE_H
