#ifndef KIVGLES_TESTS_FUZZ_STUBGL_H
#define KIVGLES_TESTS_FUZZ_STUBGL_H

#include <cstddef>
#include <vector>

#include <GLES2/gl2.h>

// EGL and OpenGL ES without a driver, linked into the fuzz targets in the place of the real ones.
//
// Nothing is drawn. What GL would read from the caller is read in full, so that the address sanitizer sees
// it, and what would read or write where it must not ends the process: an upload outside its texture or over
// another one, vertices behind the end of their buffer. Calls without a current context do nothing.
//
// Thread: the context is current on one thread at a time, as the library sees to; the rest of this header is
//         for the target, while no draw thread runs.
namespace stubgl {

// Forgets everything. The call after `callsBeforeFailure` more calls that can fail does so.
void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure);

// For targets that use the renderers without EGL.
void MakeCurrent();

// GL names and EGL objects in existence.
struct LiveObjects {
    std::size_t textures, framebuffers, buffers, programs, shaders, eglObjects;
};
LiveObjects CountLiveObjects();

// The floats of the vertices last drawn by glDrawArrays, four a vertex.
const std::vector<GLfloat>& LastVertices();

// Says why, and ends the process as a finding.
[[noreturn]] void Report(const char* finding);

}  // namespace stubgl

#endif  // KIVGLES_TESTS_FUZZ_STUBGL_H
