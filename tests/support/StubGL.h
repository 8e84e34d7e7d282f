#ifndef KIVGLES_TESTS_SUPPORT_STUBGL_H
#define KIVGLES_TESTS_SUPPORT_STUBGL_H

// The recorder without a driver, by the names that tests without one have for it.

#include <cstddef>

#include <EGL/egl.h>
#include <GLES2/gl2.h>

#include "support/Recorder.h"

namespace stubgl {

using recorder::Expect;

inline void Reset(GLint maxTextureSize) {
    recorder::Reset();
    recorder::StandAlone(maxTextureSize);
}

// Gives this thread a context, for renderers without EGL.
inline void MakeCurrent() { eglMakeCurrent(nullptr, nullptr, nullptr, nullptr); }

// How many objects there are.
inline std::size_t LiveNum() {
    std::size_t live = 0;
    for (const auto& [kind, number] : recorder::Live()) {
        live += number;
    }
    return live;
}

}  // namespace stubgl

#endif  // KIVGLES_TESTS_SUPPORT_STUBGL_H
