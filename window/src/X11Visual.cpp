#include "X11Visual.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include "gl/ConfigAttributes.h"

namespace kivgles::window {

namespace {

// 0 if EGL has none.
VisualID VisualOfEgl(Display* display) {
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
    if (eglChooseConfig(egl, CONFIG_ATTRIBUTES, &config, 1, &count) == EGL_TRUE && count == 1) {
        eglGetConfigAttrib(egl, config, EGL_NATIVE_VISUAL_ID, &visual);
    }
    eglTerminate(egl);
    return static_cast<VisualID>(visual);
}

// Its depth is 0 if the server has none of this number.
XVisualInfo Find(Display* display, VisualID number) {
    XVisualInfo visual{};
    visual.visualid = number;
    int count = 0;
    if (XVisualInfo* const found = XGetVisualInfo(display, VisualIDMask, &visual, &count); found != nullptr) {
        visual = *found;
        XFree(found);
    }
    return visual;
}

}  // namespace

XVisualInfo OpaqueVisual(Display* display) {
    const XVisualInfo visual = Find(display, VisualOfEgl(display));
    return visual.depth != 0
               ? visual
               : Find(display, XVisualIDFromVisual(DefaultVisual(display, DefaultScreen(display))));
}

XVisualInfo TransparentVisual(Display* display) {
    XVisualInfo visual{};
    (void)XMatchVisualInfo(display, DefaultScreen(display), 32, TrueColor, &visual);  // or nothing is written
    return visual;
}

}  // namespace kivgles::window
