// Rectangles, rounds and bitmaps.

#include "ClearedRecord.h"
#include "MutexLock.h"
#include "StatusCode.h"
#include "kivgles/KivGLDrawSurface.h"
#include "surface/ResultCode.h"
#include "surface/SurfaceCommands.h"

namespace kivgles {

namespace {

constexpr std::uint8_t REPLACE = 0;
constexpr std::uint8_t BLEND = 1;

}  // namespace

int KivGLDrawSurface::KivDrawRect(unsigned int handle, const TagKivRectInfo& rect,
                                  const TagKivColorRGBA& color) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    TagFrameBuffObject fbo;
    if (FindFBO(*drawThread, handle, fbo) != STATUS_OK) {
        return RESULT_NO_FBO;
    }
    DrawRect(fbo, rect, color);
    return RESULT_OK;
}

void KivGLDrawSurface::DrawRect(const TagFrameBuffObject& fbo, const TagKivRectInfo& rect,
                                const TagKivColorRGBA& color) {
    auto glRect = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToVCoord(rect, glRect, PixelWidth(fbo), PixelHeight(fbo));
    auto glColor = ClearedRecord<TagColorRGBA>();
    ConvertGLColor(color, glColor);

    auto info = std::make_unique<RectInfo>();
    info->SetDstFbo(fbo);
    info->SetDstRect(glRect);
    info->SetRectColor(glColor);
    auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_RECT);
    cmd->SetRectInfo(info);
    SendToQueue(*drawThread, cmd);
}

void KivGLDrawSurface::DrawBackground(const TagFrameBuffObject& fbo, const TagKivRectInfo& rect,
                                      const TagKivColorRGBA& color) {
    if (color.a != 0) {
        DrawRect(fbo, rect, color);
    }
}

int KivGLDrawSurface::KivDrawRound(unsigned int handle, const TagKivRoundInfo& round,
                                   const TagKivColorRGBA& color) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    TagFrameBuffObject fbo;
    if (FindFBO(*drawThread, handle, fbo) != STATUS_OK) {
        return RESULT_NO_FBO;
    }

    auto glRound = ClearedRecord<TagGLRoundInfo>();
    ScreenCoordToVCoord(round, glRound, PixelWidth(fbo), PixelHeight(fbo));
    auto glColor = ClearedRecord<TagColorRGBA>();
    ConvertGLColor(color, glColor);

    auto info = std::make_unique<RoundInfo>();
    info->SetDstFbo(fbo);
    info->SetDstRound(glRound);
    info->SetRoundColor(glColor);
    auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_ROUND);
    cmd->SetRoundInfo(info);
    SendToQueue(*drawThread, cmd);
    return RESULT_OK;
}

int KivGLDrawSurface::KivDisplayBitmap(const TagKivBitmapInfo& bitmap) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    HandOverBitmap(bitmap, REPLACE);  // display does not look at it
    return SendAndWait(*drawThread, CMD_DISPLAY_BITMAP);
}

int KivGLDrawSurface::KivDrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept {
    return DrawBitmap(handle, bitmap, REPLACE);
}

int KivGLDrawSurface::KivDrawBitmapByBlend(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept {
    return DrawBitmap(handle, bitmap, BLEND);
}

int KivGLDrawSurface::DrawBitmap(unsigned int handle, const TagKivBitmapInfo& bitmap, std::uint8_t blend) {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    HandOverBitmap(bitmap, blend);
    auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_BITMAP);
    cmd->SetFboHandleIndex(handle);
    return SendAndWait(*drawThread, cmd);
}

void KivGLDrawSurface::HandOverBitmap(const TagKivBitmapInfo& bitmap, std::uint8_t blend) {
    auto glBitmap = ClearedRecord<TagGLBitmapInfo>();
    SetBitmapInfo(glBitmap, bitmap, windowWidth, windowHeight);
    glBitmap.blend = blend;
    drawThread->SetBitmapInfo(glBitmap);
}

}  // namespace kivgles
