#ifndef EXAMPLES_COMMON_IMAGE_H
#define EXAMPLES_COMMON_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Image.h"

namespace examples {

// Pixels of the client's own: R, G, B, A, top row first, no padding, not premultiplied.
struct Image {
    kivgles::kit::Size size;
    std::vector<std::uint8_t> rgba;

    Image(int width, int height)
        : size{width, height},
          rgba(std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    // As the kit takes it; valid as long as this.
    kivgles::kit::Image View() const { return {rgba.data(), size}; }

    kivgles::kit::Color Get(int x, int y) const {
        const std::uint8_t* const pixel = &rgba[Offset(x, y)];
        return {pixel[0], pixel[1], pixel[2], pixel[3]};
    }

    void Set(int x, int y, const kivgles::kit::Color& color) {
        std::uint8_t* const pixel = &rgba[Offset(x, y)];
        pixel[0] = color.r;
        pixel[1] = color.g;
        pixel[2] = color.b;
        pixel[3] = color.a;
    }

 private:
    std::size_t Offset(int x, int y) const {
        return std::size_t{4} * (static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                                 static_cast<std::size_t>(x));
    }
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_IMAGE_H
