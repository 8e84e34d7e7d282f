#ifndef KIVGLES_TESTS_SUPPORT_STUBGL_H
#define KIVGLES_TESTS_SUPPORT_STUBGL_H

#include <climits>
#include <cstddef>

#include <GLES2/gl2.h>

// EGL and OpenGL ES without a driver, linked into a program before the real ones. A function that is not here
// is the real one, which does nothing without a display or context.
//
// Nothing is drawn. What GL would read from the caller is read in full, so that a sanitizer sees it, and what
// would read or write where it must not ends the process: an upload outside a texture, vertices behind the
// end of their buffer, an object made or deleted by a thread that never had a context.
//
// Thread: the context is current on one thread at a time, as the library sees to. There are no locks, so that
//         the thread sanitizer sees the library's own ordering only: the rest of this header is for when no
//         draw thread makes calls.
namespace stubgl {

// Forgets everything. The call after `callsBeforeFailure` more calls that can fail does so.
void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure = UINT_MAX);

// Gives this thread a context, for renderers without EGL.
void MakeCurrent();

// How many objects there are. A context takes those of GL with it when it is released.
std::size_t LiveNum();

// Ends the process as a finding, and says which, unless `holds`.
void Expect(bool holds, const char* finding);

}  // namespace stubgl

#endif  // KIVGLES_TESTS_SUPPORT_STUBGL_H
