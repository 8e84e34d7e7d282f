#ifndef KIVGLES_GL_CONFIGATTRIBUTES_H
#define KIVGLES_GL_CONFIGATTRIBUTES_H

#include <EGL/egl.h>

namespace kivgles {

// What the configuration of contexts and surfaces is: the first that EGL has for these. Window surfaces with
// 8 bits a channel; no depth, stencil or samples. Whoever makes windows for it asks for the same.
// clang-format off
constexpr EGLint CONFIG_ATTRIBUTES[] = {
    EGL_SURFACE_TYPE, EGL_WINDOW_BIT,
    EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT,
    EGL_RED_SIZE, 8,
    EGL_GREEN_SIZE, 8,
    EGL_BLUE_SIZE, 8,
    EGL_ALPHA_SIZE, 8,
    EGL_NONE,
};
// clang-format on

}  // namespace kivgles

#endif  // KIVGLES_GL_CONFIGATTRIBUTES_H
