#include "gl/EGLManager.h"

#include <string_view>

#include <EGL/eglext.h>
#include <GLES2/gl2.h>
#include <android/log.h>

#include "StatusCode.h"
#include "gl/ConfigAttributes.h"
#include "gl/DisplayTurn.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "EGLManager";

// On a connection of the client's the server answers a pixmap of 0 by 0 with an error, at which Xlib ends the
// process. On EGL's own nobody hears of it.
constexpr EGLint CLIENTS_PBUFFER_ATTRIBUTES[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};

constexpr EGLint CONTEXT_ATTRIBUTES[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};

unsigned int LastError() { return static_cast<unsigned int>(eglGetError()); }

std::string_view LogGLString(const char* name, GLenum what) {
    const GLubyte* const words = glGetString(what);
    const char* const text = words == nullptr ? "(null)" : reinterpret_cast<const char*>(words);
    __android_log_print(ANDROID_LOG_ERROR, TAG, "GL %s = %s\n", name, text);
    return text;
}

// Android's EGL counts a display's users itself, and the windows that the system draws are among them.
#ifdef __ANDROID__
constexpr bool EGL_COUNTS_USERS = true;
#else
constexpr bool EGL_COUNTS_USERS = false;
#endif

// The display of a connection of the client's. By an extension: the function of EGL 1.5 came to Android late.
EGLDisplay OpenClientsDisplay(const TagKivDisplayInfo& info) {
    const auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay == nullptr) {
        return EGL_NO_DISPLAY;
    }
    const EGLenum platform =
        info.platform == KIV_PLATFORM_X11 ? EGL_PLATFORM_X11_EXT : EGL_PLATFORM_WAYLAND_EXT;
    return getPlatformDisplay(platform, info.nativeDisplay, nullptr);
}

}  // namespace

EGLManager::~EGLManager() { EGLRelease(); }

int EGLManager::EGLSetupContext() {
    const EGLDisplay formerDisplay = display;
    display = OpenDisplay();
    if (display == EGL_NO_DISPLAY) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglGetDisplay failed: %#x", LastError());
        return STATUS_NO_DISPLAY;
    }

    if (InitializeDisplay(display != formerDisplay) != EGL_TRUE) {
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

EGLDisplay EGLManager::OpenDisplay() const {
    return IsOn(KIV_PLATFORM_DEFAULT) ? eglGetDisplay(EGL_DEFAULT_DISPLAY) : OpenClientsDisplay(displayInfo);
}

// A user also if it fails: the display is terminated all the same, when nobody else uses it.
EGLBoolean EGLManager::InitializeDisplay(bool isNewUser) const {
    const DisplayTurn turn(display);
    if (isNewUser) {
        turn.AddUser();
    }
    EGLint major = 0;
    EGLint minor = 0;
    return eglInitialize(display, &major, &minor);
}

bool EGLManager::CanBeWithoutSurface() const {
    const char* const extensions = eglQueryString(display, EGL_EXTENSIONS);
    return extensions != nullptr &&
           std::string_view(extensions).find("EGL_KHR_surfaceless_context") != std::string_view::npos;
}

int EGLManager::CreatePBufferSurface() {
    DestroySurface();
    if (IsOn(KIV_PLATFORM_WAYLAND)) {
        if (CanBeWithoutSurface()) {
            return STATUS_OK;
        }
        __android_log_print(ANDROID_LOG_ERROR, TAG, "EGL_KHR_surfaceless_context is missing\n");
        return STATUS_CREATE_SURFACE_FAILED;
    }
    surface = eglCreatePbufferSurface(display, config,
                                      IsOn(KIV_PLATFORM_DEFAULT) ? nullptr : CLIENTS_PBUFFER_ATTRIBUTES);
    if (surface == EGL_NO_SURFACE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglCreatePbufferSurface error: %#x", LastError());
        return STATUS_CREATE_SURFACE_FAILED;
    }
    return STATUS_OK;
}

int EGLManager::CreateWindowSurface(ANativeWindow* window) {
    DestroySurface();
    // A pointer on Android and Wayland, an X11 window id: the cast takes the pointer's value for either.
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
    if (surface != EGL_NO_SURFACE) {
        eglQuerySurface(display, surface, EGL_WIDTH, &windowWidth);
        eglQuerySurface(display, surface, EGL_HEIGHT, &windowHeight);
        NeverWaitForCompositor();
    }

    LogGLString("Version", GL_VERSION);
    LogGLString("Vendor", GL_VENDOR);
    drawsInTurn = LogGLString("Renderer", GL_RENDERER).substr(0, 8) == "llvmpipe";
    return STATUS_OK;
}

void EGLManager::NeverWaitForCompositor() const {
    if (IsOn(KIV_PLATFORM_WAYLAND) && eglSwapInterval(display, 0) == EGL_FALSE) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglSwapInterval error: %#x", LastError());
    }
}

EGLBoolean EGLManager::SwapBuffers() const { return eglSwapBuffers(display, surface); }

void EGLManager::EGLRelease() {
    if (display == EGL_NO_DISPLAY) {
        __android_log_print(ANDROID_LOG_WARN, TAG, "EGL Context has been released\n");
        return;
    }

    const DisplayTurn turn(display);

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
    if (turn.RemoveUser() || EGL_COUNTS_USERS) {
        eglTerminate(display);
    }
    eglReleaseThread();
    config = nullptr;
    display = EGL_NO_DISPLAY;
    drawsInTurn = false;
}

}  // namespace kivgles
