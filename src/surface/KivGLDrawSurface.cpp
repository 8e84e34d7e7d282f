// Lifecycle: context, window, components, font, refresh.

#include "kivgles/KivGLDrawSurface.h"

#include <system_error>
#include <thread>

#include <android/log.h>

#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"
#include "surface/ResultCode.h"
#include "surface/SignalBlock.h"
#include "surface/SurfaceCommands.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "KivGLDrawSurface";

// The thread keeps its object alive until its loop has ended. False (logged) when there is no thread to be
// had.
bool StartDrawThread(const std::shared_ptr<GLDrawThread>& drawThread) {
    const SignalBlock signalBlock;
    try {
        std::thread(&GLDrawThread::DrawThread, drawThread).detach();
        return true;
    } catch (const std::system_error& error) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "start draw thread fail %d\n", error.code().value());
        return false;
    }
}

}  // namespace

KivGLDrawSurface::KivGLDrawSurface() = default;

KivGLDrawSurface::~KivGLDrawSurface() {
    (void)KivDestoryGLContext();  // nobody is left to be told
}

int KivGLDrawSurface::KivCreateGLContext() {
    // Not the surface's before it has its thread: nobody else would answer a command.
    drawThread.reset();
    const auto startedThread = std::make_shared<GLDrawThread>();
    const int status = startedThread->Init();
    if (status != STATUS_OK) {
        return TranslateResult(status);
    }
    if (!StartDrawThread(startedThread)) {
        return RESULT_DRAW_THREAD_FAILED;
    }
    drawThread = startedThread;
    return SendAndWait(*drawThread, CMD_CREATE_GL_CONTEXT);
}

int KivGLDrawSurface::KivDestoryGLContext() {
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    const int result = SendAndWait(*drawThread, CMD_DESTROY_GL_CONTEXT);
    if (result != RESULT_OK) {
        return result;
    }
    const int status = drawThread->DeInit();
    if (status != STATUS_OK) {
        return TranslateResult(status);
    }
    drawThread.reset();
    return RESULT_OK;
}

int KivGLDrawSurface::KivConnectWindowSurface(ANativeWindow* window) {
    const std::lock_guard<std::mutex> lock(apiMutex);
    if (window == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "native window is NULL\n");
        return RESULT_NO_WINDOW;
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

int KivGLDrawSurface::Init(unsigned int mask) {
    const std::lock_guard<std::mutex> lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    drawThread->SetEnable(mask);
    return SendAndWait(*drawThread, CMD_INIT);
}

int KivGLDrawSurface::KivLoadFont(const std::string& path, unsigned int size) {
    const std::lock_guard<std::mutex> lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    drawThread->SetFontLibInfo(path, size);
    return SendAndWait(*drawThread, CMD_LOAD_FONT);
}

std::uint32_t KivGLDrawSurface::KivGetWindowWidth() const { return windowWidth; }

std::uint32_t KivGLDrawSurface::KivGetWindowHeight() const { return windowHeight; }

int KivGLDrawSurface::KivRefreshOnSrceen() {
    const std::lock_guard<std::mutex> lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    auto cmd = std::make_shared<DrawCmd>(CMD_REFRESH_ON_SCREEN);
    drawThread->SendCmdToQueue(cmd);
    return RESULT_OK;
}

}  // namespace kivgles
