#ifndef EXAMPLES_COMMON_LAYER_H
#define EXAMPLES_COMMON_LAYER_H

#include <cstdint>
#include <string>

#include "common/Image.h"

namespace examples {

using Surface = kivgles::KivGLDrawSurface;

// Throws std::runtime_error, with the code, unless an operation's result is 0.
void Check(int result, const std::string& operation);

// A layer of the surface, freed with this object. Any thread may draw.
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

    unsigned int Handle() const { return handle; }
    Rect Whole() const { return {0, 0, width, height}; }

    void Clear();
    void FillRect(const Rect& rect, const Color& color);
    void FillRound(std::uint32_t centerX, std::uint32_t centerY, std::uint32_t radius, const Color& color);
    void FillRoundedRect(const Rect& rect, std::uint32_t radius, const Color& color);

    // Copies a region of another layer, in that one's coordinates, alpha included.
    void Copy(const Layer& source, const Rect& from, const Rect& to);

    // Puts an image in place of the region, or blends it over what is there.
    void Draw(const Image& image, const Rect& to);
    void Blend(const Image& image, const Rect& to);

    // Shows the layer on the window, alone, scaled to fill `to` (pixels of the window).
    void Display(const Rect& to);

 private:
    Rect Scaled(const Rect& rect) const;
    kivgles::TagKivBitmapInfo Bitmap(const Image& image, const Rect& to) const;

    Surface& surface;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t scale;
    unsigned int handle = 0;
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_LAYER_H
