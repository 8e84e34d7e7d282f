#ifndef EXAMPLES_OSD_DEMO_IMAGE_H
#define EXAMPLES_OSD_DEMO_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kivgles/KivGLDrawSurface.h"

namespace examples::osd_demo {

using Color = kivgles::TagKivColorRGBA;
using Rect = kivgles::TagKivRectInfo;

// Pixels as the library takes them: R, G, B, A, top row first, no padding, not premultiplied.
struct Image {
    std::uint32_t width;
    std::uint32_t height;
    std::vector<std::uint8_t> rgba;

    Image(std::uint32_t imageWidth, std::uint32_t imageHeight)
        : width(imageWidth), height(imageHeight), rgba(std::size_t{4} * imageWidth * imageHeight) {}

    Color Get(std::uint32_t x, std::uint32_t y) const {
        const std::uint8_t* const pixel = &rgba[Offset(x, y)];
        return {pixel[0], pixel[1], pixel[2], pixel[3]};
    }

    void Set(std::uint32_t x, std::uint32_t y, const Color& color) {
        std::uint8_t* const pixel = &rgba[Offset(x, y)];
        pixel[0] = color.r;
        pixel[1] = color.g;
        pixel[2] = color.b;
        pixel[3] = color.a;
    }

 private:
    std::size_t Offset(std::uint32_t x, std::uint32_t y) const {
        return std::size_t{4} * (std::size_t{y} * width + x);
    }
};

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_IMAGE_H
