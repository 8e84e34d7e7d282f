#include "X11Visual.h"

#include <memory>

#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace kivgles::window {

namespace {

struct Freer {
    void operator()(XVisualInfo* info) const { XFree(info); }
};

// 0 if EGL has none.
VisualID VisualOfEgl(Display* display) {
    constexpr EGLint ATTRIBUTES[] = {EGL_SURFACE_TYPE,
                                     EGL_WINDOW_BIT,
                                     EGL_RENDERABLE_TYPE,
                                     EGL_OPENGL_ES2_BIT,
                                     EGL_RED_SIZE,
                                     8,
                                     EGL_GREEN_SIZE,
                                     8,
                                     EGL_BLUE_SIZE,
                                     8,
                                     EGL_ALPHA_SIZE,
                                     8,
                                     EGL_NONE};
    const auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    const EGLDisplay egl = getPlatformDisplay == nullptr
                               ? EGL_NO_DISPLAY
                               : getPlatformDisplay(EGL_PLATFORM_X11_KHR, display, nullptr);
    if (egl == EGL_NO_DISPLAY || eglInitialize(egl, nullptr, nullptr) == EGL_FALSE) {
        return 0;
    }
    EGLConfig config = nullptr;
    EGLint count = 0;
    EGLint visual = 0;
    if (eglChooseConfig(egl, ATTRIBUTES, &config, 1, &count) == EGL_TRUE && count == 1) {
        eglGetConfigAttrib(egl, config, EGL_NATIVE_VISUAL_ID, &visual);
    }
    eglTerminate(egl);
    return static_cast<VisualID>(visual);
}

}  // namespace

XVisualInfo OpaqueVisual(Display* display) {
    XVisualInfo wanted{};
    int count = 0;
    wanted.visualid = VisualOfEgl(display);
    std::unique_ptr<XVisualInfo, Freer> found(XGetVisualInfo(display, VisualIDMask, &wanted, &count));
    if (found == nullptr) {
        wanted.visualid = XVisualIDFromVisual(DefaultVisual(display, DefaultScreen(display)));
        found.reset(XGetVisualInfo(display, VisualIDMask, &wanted, &count));
    }
    return found == nullptr ? XVisualInfo{} : *found;
}

XVisualInfo TransparentVisual(Display* display) {
    XVisualInfo found{};
    if (XMatchVisualInfo(display, DefaultScreen(display), 32, TrueColor, &found) == 0) {
        found.depth = 0;
    }
    return found;
}

}  // namespace kivgles::window
