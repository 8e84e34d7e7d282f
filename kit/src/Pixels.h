#ifndef KIVGLES_KIT_PIXELS_H
#define KIVGLES_KIT_PIXELS_H

#include <cstddef>
#include <cstdint>

#include "kivgles/KivRecords.h"
#include "kivgles/kit/Geometry.h"

// Pixels between clients and the core, which have bytes R, G, B, A, and Cairo, which has numbers 0xAARRGGBB
// in the machine's order of bytes and premultiplied. The two may be the same memory, but must not overlap
// otherwise.

namespace kivgles::kit {

// Cairo's pixels from bytes that are not premultiplied.
void CairoFromStraight(const std::uint8_t* rgba, std::uint8_t* cairo, std::size_t pixelNum);
// Cairo's pixels from premultiplied bytes.
void CairoFromPremultiplied(const std::uint8_t* rgba, std::uint8_t* cairo, std::size_t pixelNum);
// Premultiplied bytes from Cairo's pixels.
void PremultipliedFromCairo(const std::uint8_t* cairo, std::uint8_t* rgba, std::size_t pixelNum);
// Premultiplied bytes from bytes that are not.
void PremultipliedFromStraight(const std::uint8_t* straight, std::uint8_t* premultiplied,
                               std::size_t pixelNum);
// Bytes that are not premultiplied from premultiplied ones, and from Cairo's pixels.
void StraightFromPremultiplied(const std::uint8_t* premultiplied, std::uint8_t* straight,
                               std::size_t pixelNum);
void StraightFromCairo(const std::uint8_t* cairo, std::uint8_t* straight, std::size_t pixelNum);

// A colour as a layer holds it, in the core's terms: to those a component of 1 is the full intensity, so it
// gets 2.
TagKivColorRGBA Premultiplied(const Color& color);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_PIXELS_H
