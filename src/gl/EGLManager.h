#ifndef KIVGLES_GL_EGLMANAGER_H
#define KIVGLES_GL_EGLMANAGER_H

#include <EGL/egl.h>

#include "kivgles/KivDisplay.h"

struct ANativeWindow;

namespace kivgles {

// The EGL state of a draw thread: a display, one configuration, one OpenGL ES 2.0 context and at most one
// surface (first a pbuffer, so that GL objects can be made before there is a window).
//
// Owner:  GLDrawThread. The native display is the client's.
// Thread: draw thread, release and destruction included: a context is current on one thread only.
// Units:  window sizes in pixels.
//
// Operations return 0 or a status of StatusCode.h; a failure is logged with EGL's error code.
class EGLManager {
 public:
    // On EGL's default display, or on one of the client's.
    EGLManager() = default;
    explicit EGLManager(const TagKivDisplayInfo& info) : displayInfo(info) {}
    // Releases what is still held, and warns if nothing is.
    ~EGLManager();

    EGLManager(const EGLManager&) = delete;
    EGLManager& operator=(const EGLManager&) = delete;

    // Opens the display, chooses the configuration, makes the context. What a failure leaves half made goes
    // with EGLRelease.
    int EGLSetupContext();

    // Replace the surface; not yet current. After a failure there is none, the former being gone already.
    // In place of a pbuffer Wayland, which has none, has a context that is current without a surface.
    int CreatePBufferSurface();
    int CreateWindowSurface(ANativeWindow* window);

    // Makes context and surface current on this thread, reads the surface's size and logs who GL is.
    int MakeCurrent();

    // The surface's size as of the last successful MakeCurrent; 0 before, and for the default pbuffer.
    int GetWindowWidth() const { return windowWidth; }
    int GetWindowHeight() const { return windowHeight; }

    // Whether those who draw on this display must do it in turn (DisplayTurn): Mesa's llvmpipe looks into the
    // frames of all contexts of a display, whichever threads build them at that moment, and crashes.
    bool DrawsInTurn() const { return drawsInTurn; }
    EGLDisplay Display() const { return display; }

    // EGL_FALSE on failure, which is not logged.
    EGLBoolean SwapBuffers() const;

    // Both bring everything back to the state of construction, but for the window's size. The last user of
    // the display in the process terminates it.
    void EGLRelease();
    void Release() { EGLRelease(); }

 private:
    bool IsOn(int platform) const { return displayInfo.platform == platform; }
    EGLDisplay OpenDisplay() const;
    EGLBoolean InitializeDisplay(bool isNewUser) const;
    void DestroySurface();
    bool CanBeWithoutSurface() const;
    // Wayland: a frame would be waited for until its window is seen, and with it every waiting call.
    void NeverWaitForCompositor() const;

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLConfig config = nullptr;  // of the context and of every surface
    EGLint windowWidth = 0;
    EGLint windowHeight = 0;
    TagKivDisplayInfo displayInfo;
    bool drawsInTurn = false;
};

}  // namespace kivgles

#endif  // KIVGLES_GL_EGLMANAGER_H
