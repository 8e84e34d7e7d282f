#ifndef KIVGLES_TESTS_SUPPORT_CONSTANTS_H
#define KIVGLES_TESTS_SUPPORT_CONSTANTS_H

// The constants of GL and EGL that the library uses, by value. Small ones, which mean different things to
// different functions, are not among them.

#include <map>

#include <EGL/egl.h>
#include <GLES2/gl2.h>

namespace recorder {

#define NAMED(constant) \
    { constant, #constant }
inline const std::map<long long, const char*> NAMES = {NAMED(GL_ALPHA),
                                                       NAMED(GL_ARRAY_BUFFER),
                                                       NAMED(GL_BLEND),
                                                       NAMED(GL_CLAMP_TO_EDGE),
                                                       NAMED(GL_COLOR_ATTACHMENT0),
                                                       NAMED(GL_COMPILE_STATUS),
                                                       NAMED(GL_DYNAMIC_DRAW),
                                                       NAMED(GL_FLOAT),
                                                       NAMED(GL_FRAGMENT_SHADER),
                                                       NAMED(GL_FRAMEBUFFER),
                                                       NAMED(GL_INFO_LOG_LENGTH),
                                                       NAMED(GL_LINEAR),
                                                       NAMED(GL_LINK_STATUS),
                                                       NAMED(GL_MAX_TEXTURE_SIZE),
                                                       NAMED(GL_NEAREST),
                                                       NAMED(GL_ONE_MINUS_SRC_ALPHA),
                                                       NAMED(GL_RENDERER),
                                                       NAMED(GL_REPEAT),
                                                       NAMED(GL_RGB),
                                                       NAMED(GL_RGBA),
                                                       NAMED(GL_SRC_ALPHA),
                                                       NAMED(GL_SRC_ALPHA_SATURATE),
                                                       NAMED(GL_STATIC_DRAW),
                                                       NAMED(GL_STREAM_DRAW),
                                                       NAMED(GL_TEXTURE0),
                                                       NAMED(GL_TEXTURE1),
                                                       NAMED(GL_TEXTURE2),
                                                       NAMED(GL_TEXTURE_2D),
                                                       NAMED(GL_TEXTURE_MAG_FILTER),
                                                       NAMED(GL_TEXTURE_MIN_FILTER),
                                                       NAMED(GL_TEXTURE_WRAP_S),
                                                       NAMED(GL_TEXTURE_WRAP_T),
                                                       NAMED(GL_UNPACK_ALIGNMENT),
                                                       NAMED(GL_UNSIGNED_BYTE),
                                                       NAMED(GL_UNSIGNED_SHORT),
                                                       NAMED(GL_VENDOR),
                                                       NAMED(GL_VERSION),
                                                       NAMED(GL_VERTEX_SHADER),
                                                       NAMED(EGL_ALPHA_SIZE),
                                                       NAMED(EGL_BLUE_SIZE),
                                                       NAMED(EGL_CONTEXT_CLIENT_VERSION),
                                                       NAMED(EGL_GREEN_SIZE),
                                                       NAMED(EGL_HEIGHT),
                                                       NAMED(EGL_RED_SIZE),
                                                       NAMED(EGL_RENDERABLE_TYPE),
                                                       NAMED(EGL_SURFACE_TYPE),
                                                       NAMED(EGL_WIDTH)};
#undef NAMED

}  // namespace recorder

#endif  // KIVGLES_TESTS_SUPPORT_CONSTANTS_H
