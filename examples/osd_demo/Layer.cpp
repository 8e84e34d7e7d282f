#include "Layer.h"

#include <stdexcept>

namespace examples::osd_demo {

void Check(int result, const std::string& operation) {
    if (result != 0) {
        throw std::runtime_error(operation + " failed with result code " + std::to_string(result));
    }
}

Layer::Layer(Surface& layerSurface, std::uint32_t layerWidth, std::uint32_t layerHeight,
             std::uint32_t layerScale)
    : surface(layerSurface), width(layerWidth), height(layerHeight), scale(layerScale) {
    Check(surface.KivCreateGLFBO(handle, width * scale, height * scale, kivgles::KIV_COLOR_FORMAT_RGBA8888),
          "creating a layer");
}

Layer::~Layer() {
    (void)surface.KivDestoryGLFBO(handle);  // nobody is left to be told
}

void Layer::FillRect(const Rect& rect, const Color& color) {
    Check(surface.KivDrawRect(handle, Scaled(rect), color), "drawing a rectangle");
}

void Layer::FillRound(std::uint32_t centerX, std::uint32_t centerY, std::uint32_t radius,
                      const Color& color) {
    Check(surface.KivDrawRound(handle, {centerX * scale, centerY * scale, radius * scale, radius * scale},
                               color),
          "drawing a round");
}

void Layer::FillRoundedRect(const Rect& rect, std::uint32_t radius, const Color& color) {
    const std::uint32_t right = rect.x + rect.width;
    const std::uint32_t bottom = rect.y + rect.height;
    FillRect({rect.x + radius, rect.y, rect.width - 2 * radius, rect.height}, color);
    FillRect({rect.x, rect.y + radius, rect.width, rect.height - 2 * radius}, color);
    for (const std::uint32_t x : {rect.x + radius, right - radius}) {
        for (const std::uint32_t y : {rect.y + radius, bottom - radius}) {
            FillRound(x, y, radius, color);
        }
    }
}

void Layer::Draw(const Image& image, const Rect& to) {
    Check(surface.KivDrawBitmap(handle, Bitmap(image, to)), "drawing a bitmap");
}

void Layer::Blend(const Image& image, const Rect& to) {
    Check(surface.KivDrawBitmapByBlend(handle, Bitmap(image, to)), "blending a bitmap");
}

// Upright and regular, whatever the style: so a text is measured nearest to how far it moves the pen.
std::uint32_t Layer::Measure(const kivgles::TagKivTextInfo& text) const {
    kivgles::TagKivTextInfo upright = text;
    upright.bold = 0;
    upright.italic = 0;
    unsigned int textWidth = 0;
    unsigned int textHeight = 0;
    Check(surface.KivGetTextSize(upright, textWidth, textHeight), "measuring a text");
    return textWidth;
}

void Layer::Write(const kivgles::TagKivTextInfo& text, const Rect& box) {
    Check(surface.KivDrawText(handle, text, box), "drawing a text");
}

void Layer::Copy(const Layer& source, const Rect& from, const Rect& to) {
    Check(surface.KivBlit({source.handle, handle, source.Scaled(from), Scaled(to)}), "copying a layer");
}

void Layer::CopyToWindow(const Rect& to) const {
    Check(surface.KivBlit({handle, kivgles::FBO_HANDLE_BASE, Scaled(Whole()), to}),
          "copying a layer to the window");
}

Rect Layer::Scaled(const Rect& rect) const {
    return {rect.x * scale, rect.y * scale, rect.width * scale, rect.height * scale};
}

// A bitmap's destination is given as if the layer had the window's size.
kivgles::TagKivBitmapInfo Layer::Bitmap(const Image& image, const Rect& to) const {
    const std::uint32_t windowWidth = surface.KivGetWindowWidth();
    const std::uint32_t windowHeight = surface.KivGetWindowHeight();
    return BitmapOf(image, {to.x * windowWidth / width, to.y * windowHeight / height,
                            to.width * windowWidth / width, to.height * windowHeight / height});
}

kivgles::TagKivBitmapInfo BitmapOf(const Image& image, const Rect& to) {
    kivgles::TagKivBitmapInfo bitmap{};
    bitmap.data = image.rgba.data();
    bitmap.format = kivgles::KIV_COLOR_FORMAT_RGBA8888;
    bitmap.width = image.width;
    bitmap.height = image.height;
    bitmap.dstRect = to;
    return bitmap;
}

}  // namespace examples::osd_demo
