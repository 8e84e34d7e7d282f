#include "gl/EGLManager.h"

#include <GLES2/gl2.h>
#include <android/log.h>

#include "StatusCode.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "EGLManager";

// Window surfaces with 8 bits a channel; no depth, stencil or samples.
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

constexpr EGLint CONTEXT_ATTRIBUTES[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};

unsigned int LastError() { return static_cast<unsigned int>(eglGetError()); }

void LogGLString(const char* name, GLenum what) {
    const GLubyte* const text = glGetString(what);
    __android_log_print(ANDROID_LOG_ERROR, TAG, "GL %s = %s\n", name,
                        text == nullptr ? "(null)" : reinterpret_cast<const char*>(text));
}

}  // namespace

EGLManager::~EGLManager() { EGLRelease(); }

int EGLManager::EGLSetupContext() {
    display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    if (display == EGL_NO_DISPLAY) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglGetDisplay failed: %#x", LastError());
        return STATUS_NO_DISPLAY;
    }

    EGLint major = 0;
    EGLint minor = 0;
    if (eglInitialize(display, &major, &minor) != EGL_TRUE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglInitialize failed: %#x", LastError());
        return STATUS_EGL_INIT_FAILED;
    }

    EGLint configCount = 0;  // no match leaves config null, which the context or its first surface refuses
    if (eglChooseConfig(display, CONFIG_ATTRIBUTES, &config, 1, &configCount) != EGL_TRUE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglChooseConfig error: %#x", LastError());
        return STATUS_NO_CONFIG;
    }

    context = eglCreateContext(display, config, EGL_NO_CONTEXT, CONTEXT_ATTRIBUTES);
    if (context == EGL_NO_CONTEXT) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglCreateContext error: %#x", LastError());
        return STATUS_CREATE_CONTEXT_FAILED;
    }
    return STATUS_OK;
}

int EGLManager::CreatePBufferSurface() {
    DestroySurface();
    surface = eglCreatePbufferSurface(display, config, nullptr);
    if (surface == EGL_NO_SURFACE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglCreatePbufferSurface error: %#x", LastError());
        return STATUS_CREATE_SURFACE_FAILED;
    }
    return STATUS_OK;
}

int EGLManager::CreateWindowSurface(ANativeWindow* window) {
    DestroySurface();
    // A pointer on Android, an X11 window id on a desktop: the cast takes the pointer's value for either.
    surface = eglCreateWindowSurface(display, config, reinterpret_cast<EGLNativeWindowType>(window), nullptr);
    if (surface == EGL_NO_SURFACE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglCreateWindowSurface error: %#x", LastError());
        return STATUS_CREATE_SURFACE_FAILED;
    }
    return STATUS_OK;
}

void EGLManager::DestroySurface() {
    if (surface != EGL_NO_SURFACE) {
        // An EGL without surfaceless contexts refuses this; the surface then goes when it is replaced.
        (void)eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context);
        eglDestroySurface(display, surface);
        surface = EGL_NO_SURFACE;
    }
}

int EGLManager::MakeCurrent() {
    if (eglMakeCurrent(display, surface, surface, context) == EGL_FALSE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "egl make current failed: %#x", LastError());
        return STATUS_INVALID;
    }
    eglQuerySurface(display, surface, EGL_WIDTH, &windowWidth);
    eglQuerySurface(display, surface, EGL_HEIGHT, &windowHeight);

    LogGLString("Version", GL_VERSION);
    LogGLString("Vendor", GL_VENDOR);
    LogGLString("Renderer", GL_RENDERER);
    return STATUS_OK;
}

EGLBoolean EGLManager::SwapBuffers() const { return eglSwapBuffers(display, surface); }

void EGLManager::EGLRelease() {
    if (display == EGL_NO_DISPLAY) {
        __android_log_print(ANDROID_LOG_WARN, TAG, "EGL Context has been released\n");
        return;
    }

    // Context and surface are still current; EGL frees them when they are unbound.
    if (context != EGL_NO_CONTEXT) {
        eglDestroyContext(display, context);
        context = EGL_NO_CONTEXT;
    }
    if (surface != EGL_NO_SURFACE) {
        eglDestroySurface(display, surface);
        surface = EGL_NO_SURFACE;
    }
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglTerminate(display);
    eglReleaseThread();
    config = nullptr;
    display = EGL_NO_DISPLAY;
}

}  // namespace kivgles
