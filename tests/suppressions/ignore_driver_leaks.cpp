// A library that comes before EGL in every test program of a sanitized build.
//
// Mesa asks the X server for the size of what it draws on, and does not free the answer that a pbuffer has
// none (36 bytes). It is libxcb, without frame pointers, that allocates them: no driver is on the stack that
// a suppression goes by. So what is allocated on the thread of such a call, while it lasts, is no leak.

#include <EGL/egl.h>
#include <dlfcn.h>

extern "C" {

// The leak sanitizer's, where there is one.
[[gnu::weak]] void __lsan_disable();
[[gnu::weak]] void __lsan_enable();

}  // extern "C"

namespace {

struct LeaksIgnored {
    LeaksIgnored() { __lsan_disable != nullptr ? __lsan_disable() : void(); }
    ~LeaksIgnored() { __lsan_enable != nullptr ? __lsan_enable() : void(); }
};

template <typename... Arguments>
EGLBoolean Forward(const char* name, Arguments... arguments) {
    const auto next = reinterpret_cast<EGLBoolean (*)(Arguments...)>(dlsym(RTLD_NEXT, name));
    const LeaksIgnored ignored;
    return next(arguments...);
}

}  // namespace

EGLBoolean eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context) {
    return Forward("eglMakeCurrent", display, draw, read, context);
}
EGLBoolean eglQuerySurface(EGLDisplay display, EGLSurface surface, EGLint what, EGLint* value) {
    return Forward("eglQuerySurface", display, surface, what, value);
}
