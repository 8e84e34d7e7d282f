#ifndef KIVGLES_KIVMUTEX_H
#define KIVGLES_KIVMUTEX_H

// Not for clients. What lets clang check, while the library is compiled, that a field is used under the mutex
// that guards it (-Wthread-safety); for other compilers it is nothing.

#include <mutex>

/// @cond

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

// The standard mutex, by a name that clang knows to be a mutex's in every standard library.
using KivMutex KIVGLES_THREAD_ANNOTATION(capability("mutex")) = std::mutex;

}  // namespace kivgles

/// @endcond

#endif  // KIVGLES_KIVMUTEX_H
