// The dispatch of commands, and the handlers that set up, use and tear down the GL context.

#include <android/log.h>

#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "GLDrawThread";

}  // namespace

int GLDrawThread::DrawCmdProc(std::shared_ptr<DrawCmd>& cmd) {
    switch (cmd->GetCmd()) {
        case CMD_CREATE_GL_CONTEXT:
            return SetupGLESConext();
        case CMD_DESTROY_GL_CONTEXT:
            return ResetGLESConext();
        case CMD_INIT:
            return GLInit(enableMask);
        case CMD_CONNECT_WINDOW_SURFACE:
            return ConnectWindowSurface();
        case CMD_CREATE_FBO:
            return CreateGLFBO(cmd);
        case CMD_DESTROY_FBO:
            return DestoryGLFBO(cmd->GetFboHandleIndex());
        case CMD_CLEAR_FBO:
            return ClearGLFBO(cmd->GetFboHandleIndex());
        case CMD_DISPLAY_FBO:
            return DrawFBO(cmd->GetBlitInfo());
        case CMD_BLIT:
            return Blit(cmd->GetBlitInfo());
        case CMD_DRAW_TEXT:
            return DrawText(cmd->GetTextInfo());
        case CMD_DISPLAY_BITMAP:
            return DisplayBitmap();
        case CMD_DRAW_BITMAP:
            return DrawBitmap(cmd->GetFboHandleIndex());
        case CMD_DRAW_RECT:
            return DrawRect(cmd->GetRectInfo());
        case CMD_DRAW_ROUND:
            return DrawRound(cmd->GetRoundInfo());
        case CMD_LOAD_FONT:
            return LoadFont();
        case CMD_REFRESH_ON_SCREEN:
            return RefreshOnSrceen();
    }
    __android_log_print(ANDROID_LOG_ERROR, TAG, "unknown cmd is %d\n", static_cast<int>(cmd->GetCmd()));
    return STATUS_INVALID;
}

int GLDrawThread::SetupGLESConext() {
    contextCreated = false;  // stays so on a failure, also when there was a context before
    if (eglManager == nullptr) {
        eglManager = std::make_unique<EGLManager>(displayInfo);
    }

    int status = eglManager->EGLSetupContext();
    if (status != STATUS_OK) {
        eglManager.reset();
        return status;
    }
    status = eglManager->CreatePBufferSurface();
    if (status != STATUS_OK) {
        eglManager.reset();
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Create openGLES window surface fail %d\n", status);
        return status;
    }
    status = eglManager->MakeCurrent();
    if (status != STATUS_OK) {
        eglManager.reset();
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Make current EGL context fail %d\n", status);
        return status;
    }

    contextCreated = true;
    return STATUS_OK;
}

int GLDrawThread::ResetGLESConext() {
    if (eglManager != nullptr) {
        eglManager->Release();
    }
    contextCreated = false;
    {
        const MutexLock lock(fboMutex);
        fboManager.reset();
    }
    {
        const MutexLock lock(textMutex);
        osdText.reset();
    }
    osdBlit.reset();
    osdBitmap.reset();
    osdFrame.reset();
    osdRect.reset();
    osdRound.reset();
    eglManager.reset();
    return STATUS_OK;
}

int GLDrawThread::ConnectWindowSurface() {
    if (nativeWindow == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "native window is NULL\n");
        return STATUS_NOT_FOUND;
    }
    if (eglManager == nullptr) {
        eglManager = std::make_unique<EGLManager>(displayInfo);
    }

    int status = eglManager->CreateWindowSurface(nativeWindow);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Create openGLES window surface fail %d\n", status);
        return status;
    }
    status = eglManager->MakeCurrent();
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Make current EGL context fail %d\n", status);
        return status;
    }

    const MutexLock lock(fboMutex);
    windowWidth = eglManager->GetWindowWidth();
    windowHeight = eglManager->GetWindowHeight();
    EnsureFBOManager().UpdateSurfaceWidthHeight(windowWidth, windowHeight);
    return STATUS_OK;
}

int GLDrawThread::RefreshOnSrceen() const {
    if (eglManager == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "eglManager no init\n");
        return STATUS_INVALID;
    }
    (void)eglManager->SwapBuffers();  // a lost frame is followed by the next one
    return STATUS_OK;
}

}  // namespace kivgles
