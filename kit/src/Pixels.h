#ifndef KIVGLES_KIT_PIXELS_H
#define KIVGLES_KIT_PIXELS_H

#include <cstdint>
#include <vector>

#include "kivgles/KivRecords.h"
#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Image.h"

// Colours and pixels between a client, who does not premultiply, and layers, which are premultiplied.

namespace kivgles::kit {

// As text and blended images take a colour: the core blends by its opacity.
TagKivColorRGBA Straight(const Color& color);

// As a layer holds it.
TagKivColorRGBA Premultiplied(const Color& color);

// Pixels of a layer; converted into `room` if they are not as they are needed.
const std::uint8_t* PremultipliedPixels(const Image& image, std::vector<std::uint8_t>& room);
const std::uint8_t* StraightPixels(const Image& image, std::vector<std::uint8_t>& room);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_PIXELS_H
