#ifndef EXAMPLES_OSD_DEMO_LAYER_H
#define EXAMPLES_OSD_DEMO_LAYER_H

#include <cstdint>
#include <string>

#include "Image.h"

namespace examples::osd_demo {

using Surface = kivgles::KivGLDrawSurface;

// Throws std::runtime_error, with the code, unless an operation's result is 0.
void Check(int result, const std::string& operation);

// A layer of the surface, destroyed with this object. Any thread may draw. Operations throw
// std::runtime_error.
//
// Coordinates are in pixels of what is shown; a layer of scale 2 has two pixels for each of them, each way.
// Copied into a layer of scale 1 it is averaged on the way, which smooths the edges of rounds.
class Layer {
 public:
    Layer(Surface& layerSurface, std::uint32_t layerWidth, std::uint32_t layerHeight,
          std::uint32_t layerScale);
    ~Layer();

    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    Rect Whole() const { return {0, 0, width, height}; }

    void FillRect(const Rect& rect, const Color& color);
    void FillRound(std::uint32_t centerX, std::uint32_t centerY, std::uint32_t radius, const Color& color);
    void FillRoundedRect(const Rect& rect, std::uint32_t radius, const Color& color);

    // Puts an image in place of the region, or blends it over what is there.
    void Draw(const Image& image, const Rect& to);
    void Blend(const Image& image, const Rect& to);

    // In the font that the surface has loaded. Sizes are pixels of the layer itself: for scale 1.
    std::uint32_t Measure(const kivgles::TagKivTextInfo& text) const;
    void Write(const kivgles::TagKivTextInfo& text, const Rect& box);

    // Copies a region of another layer, in that one's coordinates, alpha included.
    void Copy(const Layer& source, const Rect& from, const Rect& to);

    // Copies the layer to the window, scaled to fill `to` (pixels of the window).
    void CopyToWindow(const Rect& to) const;

 private:
    Rect Scaled(const Rect& rect) const;
    kivgles::TagKivBitmapInfo Bitmap(const Image& image, const Rect& to) const;

    Surface& surface;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t scale;
    unsigned int handle = 0;
};

// The record of an image that goes to `to`.
kivgles::TagKivBitmapInfo BitmapOf(const Image& image, const Rect& to);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_LAYER_H
