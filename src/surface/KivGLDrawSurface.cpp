// Lifecycle: context, window, components, font, refresh.

#include "kivgles/KivGLDrawSurface.h"

#include <cerrno>
#include <new>
#include <system_error>
#include <thread>

#include <android/log.h>

#include "MutexLock.h"
#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"
#include "surface/ResultCode.h"
#include "surface/SignalBlock.h"
#include "surface/SurfaceCommands.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "KivGLDrawSurface";

#ifdef __ANDROID__
constexpr bool HAS_CLIENTS_DISPLAYS = false;
#else
constexpr bool HAS_CLIENTS_DISPLAYS = true;
#endif

// The thread keeps its object alive until its loop has ended.
void StartDrawThread(const std::shared_ptr<GLDrawThread>& drawThread) {
    const SignalBlock signalBlock;
    std::thread(&GLDrawThread::DrawThread, drawThread).detach();
}

int RefuseDrawThread(int error) {
    __android_log_print(ANDROID_LOG_ERROR, TAG, "start draw thread fail %d\n", error);
    return RESULT_FAILED;
}

// Whether there is a display to try; logged if not.
int CheckDisplay(const TagKivDisplayInfo& display) {
    if (display.platform == KIV_PLATFORM_DEFAULT) {
        return RESULT_OK;
    }
    if (!HAS_CLIENTS_DISPLAYS ||
        (display.platform != KIV_PLATFORM_X11 && display.platform != KIV_PLATFORM_WAYLAND)) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "platform is invalid %d\n", display.platform);
        return RESULT_FAILED;
    }
    if (display.nativeDisplay == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "native display is NULL\n");
        return RESULT_NOT_FOUND;
    }
    return RESULT_OK;
}

}  // namespace

KivGLDrawSurface::KivGLDrawSurface() noexcept
    : windowWidth(UNCONNECTED_WINDOW_WIDTH), windowHeight(UNCONNECTED_WINDOW_HEIGHT) {}

KivGLDrawSurface::~KivGLDrawSurface() {
    (void)KivDestoryGLContext();  // nobody is left to be told
}

int KivGLDrawSurface::KivCreateGLContext() noexcept { return KivCreateGLContextOn({}); }

// Without the lock: the client sees to it that no other operation runs.
KIVGLES_UNCHECKED int KivGLDrawSurface::KivCreateGLContextOn(const TagKivDisplayInfo& display) noexcept {
    const int refusal = CheckDisplay(display);
    if (refusal != RESULT_OK) {
        return refusal;
    }
    drawThread.reset();
    try {
        const auto startedThread = std::make_shared<GLDrawThread>();
        startedThread->SetDisplay(display);
        const int status = startedThread->Init();
        if (status != STATUS_OK) {
            return TranslateResult(status);
        }
        // Made while there is no thread yet that would have to end.
        auto cmd = std::make_shared<DrawCmd>(CMD_CREATE_GL_CONTEXT);
        StartDrawThread(startedThread);
        // Not the surface's before it has its thread: nobody else would answer a command.
        drawThread = startedThread;
        return SendAndWait(*drawThread, cmd);
    } catch (const std::bad_alloc&) {
        return RefuseDrawThread(ENOMEM);
    } catch (const std::system_error& error) {
        return RefuseDrawThread(error.code().value());
    }
}

// Without the lock, as above.
KIVGLES_UNCHECKED int KivGLDrawSurface::KivDestoryGLContext() noexcept {
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    const int result = SendAndWait(*drawThread, CMD_DESTROY_GL_CONTEXT);
    if (result != RESULT_OK) {
        return result;
    }
    const auto ended = drawThread->Ended();
    const int status = drawThread->DeInit();
    if (status != STATUS_OK) {
        return TranslateResult(status);
    }
    drawThread.reset();
    ended->Wait();
    return RESULT_OK;
}

int KivGLDrawSurface::KivConnectWindowSurface(ANativeWindow* window) noexcept {
    const MutexLock lock(apiMutex);
    if (window == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "native window is NULL\n");
        return RESULT_NOT_FOUND;
    }
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    if (window == nativeWindow) {
        __android_log_print(ANDROID_LOG_WARN, TAG, "NativeWindow has been connected\n");
        return RESULT_OK;
    }

    drawThread->SetNativeWindow(window);
    const int result = SendAndWait(*drawThread, CMD_CONNECT_WINDOW_SURFACE);
    if (result != RESULT_OK) {
        return result;
    }
    windowWidth = static_cast<std::uint32_t>(drawThread->GetWindowWidth());
    windowHeight = static_cast<std::uint32_t>(drawThread->GetWindowHeight());
    nativeWindow = window;
    return RESULT_OK;
}

int KivGLDrawSurface::Init(unsigned int mask) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    drawThread->SetEnable(mask);
    return SendAndWait(*drawThread, CMD_INIT);
}

int KivGLDrawSurface::KivLoadFont(const std::string& path, unsigned int size) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    drawThread->SetFontLibInfo(path, size);
    return SendAndWait(*drawThread, CMD_LOAD_FONT);
}

std::uint32_t KivGLDrawSurface::KivGetWindowWidth() const noexcept { return windowWidth; }

std::uint32_t KivGLDrawSurface::KivGetWindowHeight() const noexcept { return windowHeight; }

int KivGLDrawSurface::KivRefreshOnSrceen() noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    auto cmd = std::make_shared<DrawCmd>(CMD_REFRESH_ON_SCREEN);
    SendToQueue(*drawThread, cmd);
    return RESULT_OK;
}

}  // namespace kivgles
