// From pixel space and bytes to GL's coordinates and floats. All arithmetic is in single precision.

#include <GLES2/gl2.h>
#include <android/log.h>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "KivGLDrawSurface";

bool IsUsableTarget(unsigned int width, unsigned int height) {
    if (width == 0 || height == 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "param is invalid\n");
        return false;
    }
    return true;
}

// A distance in pixels as part of NDC's extent of 2.
float SpanToNDC(unsigned int pixels, unsigned int targetPixels) {
    const auto span = static_cast<float>(pixels);
    return (span + span) / static_cast<float>(targetPixels);
}

float Ratio(unsigned int pixels, unsigned int targetPixels) {
    return static_cast<float>(pixels) / static_cast<float>(targetPixels);
}

// 1 is full intensity, as 255 is.
float ComponentToFloat(std::uint8_t component) {
    const auto value = static_cast<float>(component);
    return component > 1 ? value / 255.0F : value;
}

}  // namespace

std::uint32_t KivGLDrawSurface::ConvertFormatToGLES(int format) const noexcept {
    if (format != KIV_COLOR_FORMAT_RGBA8888) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Color format is invalid %d\n", format);
    }
    return GL_RGBA;
}

void KivGLDrawSurface::ScreenCoordToVCoord(const TagKivRectInfo& rect, TagGLRectInfo& glRect,
                                           unsigned int width, unsigned int height) const noexcept {
    if (!IsUsableTarget(width, height)) {
        return;
    }
    glRect.x = SpanToNDC(rect.x, width) + -1.0F;
    glRect.y = 1.0F - SpanToNDC(rect.y, height);
    glRect.width = SpanToNDC(rect.width, width);
    glRect.height = SpanToNDC(rect.height, height);
}

void KivGLDrawSurface::ScreenCoordToVCoord(const TagKivRoundInfo& round, TagGLRoundInfo& glRound,
                                           unsigned int width, unsigned int height) const noexcept {
    if (!IsUsableTarget(width, height)) {
        return;
    }
    glRound.centerX = SpanToNDC(round.centerX, width) + -1.0F;
    glRound.centerY = 1.0F - SpanToNDC(round.centerY, height);
    glRound.radiusX = SpanToNDC(round.radiusX, width);
    glRound.radiusY = SpanToNDC(round.radiusY, height);
}

void KivGLDrawSurface::ScreenCoordToFboCoord(const TagKivRectInfo& rect, TagGLRectInfo& glRect,
                                             unsigned int width, unsigned int height) const noexcept {
    if (!IsUsableTarget(width, height)) {
        return;
    }
    glRect.x = Ratio(rect.x, width);
    glRect.y = 1.0F - Ratio(rect.y, height);
    glRect.width = Ratio(rect.width, width);
    glRect.height = Ratio(rect.height, height);
}

void KivGLDrawSurface::ConvertGLColor(const TagKivColorRGBA& color, TagColorRGBA& glColor) const noexcept {
    glColor.r = ComponentToFloat(color.r);
    glColor.g = ComponentToFloat(color.g);
    glColor.b = ComponentToFloat(color.b);
    glColor.a = ComponentToFloat(color.a);
}

void KivGLDrawSurface::SetTextInfo(const TagKivTextInfo& text, TagGLTextInfo& glText) const noexcept {
    glText.text = text.text;
    glText.textLength = text.textLength;
    ConvertGLColor(text.fgColor, glText.fgColor);
    ConvertGLColor(text.bgColor, glText.bgColor);
    glText.reserved = text.reserved;
    glText.fontSize = text.fontSize;
    glText.bold = text.bold;
    glText.underline = text.underline;
    glText.italic = text.italic;
}

void KivGLDrawSurface::SetBitmapInfo(TagGLBitmapInfo& glBitmap, const TagKivBitmapInfo& bitmap,
                                     unsigned int width, unsigned int height) const noexcept {
    glBitmap.data = bitmap.data;
    glBitmap.width = bitmap.width;
    glBitmap.height = bitmap.height;
    glBitmap.glFormat = ConvertFormatToGLES(bitmap.format);
    ScreenCoordToVCoord(bitmap.dstRect, glBitmap.dstRect, width, height);
}

}  // namespace kivgles
