// Layers: making, destroying, clearing, showing and copying them.

#include <GLES2/gl2.h>
#include <android/log.h>

#include "ClearedRecord.h"
#include "MutexLock.h"
#include "StatusCode.h"
#include "kivgles/KivGLDrawSurface.h"
#include "surface/ResultCode.h"
#include "surface/SurfaceCommands.h"

namespace kivgles {

int KivGLDrawSurface::KivCreateGLFBO(unsigned int& handle, unsigned int width, unsigned int height,
                                     int format) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    const std::uint32_t glFormat = ConvertFormatToGLES(format);
    drawThread->SetFboInfo(static_cast<int>(width), static_cast<int>(height), static_cast<int>(glFormat));
    auto cmd = std::make_shared<DrawCmd>(CMD_CREATE_FBO);
    const int result = SendAndWait(*drawThread, cmd);
    if (result == RESULT_OK) {
        handle = cmd->GetFboHandleIndex();
    }
    return result;
}

int KivGLDrawSurface::KivDestoryGLFBO(unsigned int handle) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    auto cmd = std::make_shared<DrawCmd>(CMD_DESTROY_FBO);
    cmd->SetFboHandleIndex(handle);
    return SendAndWait(*drawThread, cmd);
}

int KivGLDrawSurface::KivClearGLFBO(unsigned int handle) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    auto cmd = std::make_shared<DrawCmd>(CMD_CLEAR_FBO);
    cmd->SetFboHandleIndex(handle);
    SendToQueue(*drawThread, cmd);
    return RESULT_OK;
}

int KivGLDrawSurface::KivDisplayFBO(unsigned int handle, const TagKivRectInfo& srcRect,
                                    const TagKivRectInfo& dstRect) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    TagFrameBuffObject fbo;
    const int status = FindFBO(*drawThread, handle, fbo);
    if (status != STATUS_OK) {
        return TranslateResult(status);
    }

    auto source = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToFboCoord(srcRect, source, PixelWidth(fbo), PixelHeight(fbo));
    auto destination = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToVCoord(dstRect, destination, windowWidth, windowHeight);

    auto info = std::make_unique<BlitInfo>();  // its destination stays unset: the window
    info->SetSrcFbo(fbo);
    info->SetSrcRect(source);
    info->SetDstRect(destination);
    auto cmd = std::make_shared<DrawCmd>(CMD_DISPLAY_FBO);
    cmd->SetBlitInfo(info);
    SendToQueue(*drawThread, cmd);
    return RESULT_OK;
}

int KivGLDrawSurface::KivBlit(const TagKivBlitInfo& blit) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    TagFrameBuffObject srcFbo;
    if (FindFBO(*drawThread, blit.srcFboHandle, srcFbo) != STATUS_OK) {
        return RESULT_NO_FBO;
    }
    TagFrameBuffObject dstFbo;
    if (FindFBO(*drawThread, blit.dstFboHandle, dstFbo) != STATUS_OK) {
        return RESULT_NO_FBO;
    }

    auto source = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToFboCoord(blit.srcRect, source, PixelWidth(srcFbo), PixelHeight(srcFbo));
    auto destination = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToVCoord(blit.dstRect, destination, PixelWidth(dstFbo), PixelHeight(dstFbo));

    auto info = std::make_unique<BlitInfo>();
    info->SetSrcFbo(srcFbo);
    info->SetDstFbo(dstFbo);
    info->SetSrcRect(source);
    info->SetDstRect(destination);
    auto cmd = std::make_shared<DrawCmd>(CMD_BLIT);
    cmd->SetBlitInfo(info);
    SendToQueue(*drawThread, cmd);
    return RESULT_OK;
}

}  // namespace kivgles
