// Text: background, glyphs and underline of a line, and its measuring.

#include <android/log.h>

#include "ClearedRecord.h"
#include "MutexLock.h"
#include "StatusCode.h"
#include "kivgles/KivGLDrawSurface.h"
#include "surface/ResultCode.h"
#include "surface/SurfaceCommands.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "KivGLDrawSurface";

// In pixels of the layer.
constexpr std::uint32_t BASELINE_ABOVE_BOTTOM = 10;
constexpr std::uint32_t UNDERLINE_BELOW_BASELINE = 2;
constexpr std::uint32_t UNDERLINE_HEIGHT = 2;

bool SameColor(const TagKivColorRGBA& a, const TagKivColorRGBA& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

}  // namespace

int KivGLDrawSurface::KivDrawText(unsigned int handle, const TagKivTextInfo& text,
                                  const TagKivRectInfo& rect) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    TagFrameBuffObject fbo;
    if (FindFBO(*drawThread, handle, fbo) != STATUS_OK) {
        return RESULT_NO_FBO;
    }

    DrawBackground(fbo, rect, text.bgColor);
    TagKivTextInfo drawnText = text;
    TagKivRectInfo drawnRect = rect;
    DrawText(fbo, drawnText, drawnRect);
    DrawTextUnderline(fbo, drawnText, drawnRect);
    return RESULT_OK;
}

// Leaves the baseline in rect.y, and in text.fgColor the colour that the underline has too.
void KivGLDrawSurface::DrawText(const TagFrameBuffObject& fbo, TagKivTextInfo& text, TagKivRectInfo& rect) {
    rect.y = rect.y + rect.height - BASELINE_ABOVE_BOTTOM;
    if (SameColor(text.bgColor, text.fgColor)) {
        text.fgColor.a = 0;
    }

    auto glText = ClearedRecord<TagGLTextInfo>();
    SetTextInfo(text, glText);
    auto glRect = ClearedRecord<TagGLRectInfo>();
    ScreenCoordToVCoord(rect, glRect, PixelWidth(fbo), PixelHeight(fbo));

    auto info = std::make_unique<TextInfo>();
    info->SetDstFbo(fbo);
    info->SetDstRect(glRect);
    (void)info->SetTextInfo(glText);  // without a text it draws nothing, and has logged why
    auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_TEXT);
    cmd->SetTextInfo(info);
    SendToQueue(*drawThread, cmd);
}

void KivGLDrawSurface::DrawTextUnderline(const TagFrameBuffObject& fbo, const TagKivTextInfo& text,
                                         TagKivRectInfo& rect) {
    if (text.underline != 0) {
        rect.y += UNDERLINE_BELOW_BASELINE;
        rect.height = UNDERLINE_HEIGHT;
        DrawRect(fbo, rect, text.fgColor);
    }
}

int KivGLDrawSurface::KivGetTextSize(const TagKivTextInfo& text, unsigned int& width,
                                     unsigned int& height) noexcept {
    const MutexLock lock(apiMutex);
    if (!HasContext(drawThread)) {
        return RESULT_NO_CONTEXT;
    }
    auto glText = ClearedRecord<TagGLTextInfo>();
    SetTextInfo(text, glText);
    const int status = drawThread->GetTextSize(glText, width, height);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "get text size fail err %d\n", status);
        return TranslateResult(status);
    }
    return RESULT_OK;
}

}  // namespace kivgles
