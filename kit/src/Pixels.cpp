#include "Pixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kivgles::kit {

namespace {

constexpr std::size_t BYTES = 4;  // of a pixel

// In between a pixel is a number 0xAARRGGBB; two of its channels are computed at a time, with room above
// each.
constexpr std::uint32_t TWO_CHANNELS = 0x00FF00FF;

#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
// Exchanges R and B, as bytes R, G, B, A have them the other way round.
std::uint32_t ArgbOrAbgr(std::uint32_t pixel) {
    const std::uint32_t redAndBlue = pixel & TWO_CHANNELS;
    return (pixel & ~TWO_CHANNELS) | redAndBlue >> 16 | redAndBlue << 16;
}
std::uint32_t FromRgba(std::uint32_t bytes) { return ArgbOrAbgr(bytes); }
std::uint32_t ToRgba(std::uint32_t pixel) { return ArgbOrAbgr(pixel); }
#else
std::uint32_t FromRgba(std::uint32_t bytes) { return bytes >> 8 | bytes << 24; }
std::uint32_t ToRgba(std::uint32_t pixel) { return pixel << 8 | pixel >> 24; }
#endif

// Two channels times alpha by 255, to the nearest.
std::uint32_t MultiplyTwo(std::uint32_t channels, std::uint32_t alpha) {
    const std::uint32_t product = channels * alpha + 0x00800080;
    return (product + (product >> 8 & TWO_CHANNELS)) >> 8 & TWO_CHANNELS;
}

std::uint32_t Multiply(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    const std::uint32_t green = (pixel >> 8 & 0xFF) * alpha + 0x80;
    return (pixel & 0xFF000000) | ((green + (green >> 8)) & 0xFF00) |
           MultiplyTwo(pixel & TWO_CHANNELS, alpha);
}

constexpr std::array<float, 256> MakeReciprocals() {
    std::array<float, 256> reciprocals{};
    for (int alpha = 1; alpha < 256; ++alpha) {
        reciprocals[static_cast<std::size_t>(alpha)] = 255.0003F / static_cast<float>(alpha);
    }
    return reciprocals;
}

// 255 by alpha, a little more so that halves are rounded up; 0 for 0. As floating point numbers, because
// compilers make vectors of those even where the machine is not known to multiply vectors of integers.
constexpr std::array<float, 256> RECIPROCALS = MakeReciprocals();

constexpr float HALF = 0.5F;  // rounds what is not negative, in a way that vectors can

std::uint32_t Divide(std::uint32_t pixel) {
    const int alpha = static_cast<int>(pixel >> 24);
    const float reciprocal = RECIPROCALS[pixel >> 24];
    // A channel above alpha is no colour, but must not reach into another channel.
    const auto divide = [&](unsigned int shift) {
        const int channel = std::min(static_cast<int>(pixel >> shift & 0xFF), alpha);
        return static_cast<std::uint32_t>(static_cast<int>(static_cast<float>(channel) * reciprocal + HALF))
               << shift;
    };
    return (pixel & 0xFF000000) | divide(16) | divide(8) | divide(0);
}

template <typename Function>
void Convert(const std::uint8_t* from, std::uint8_t* to, std::size_t pixelNum, Function convert) {
    for (std::size_t i = 0; i < pixelNum; ++i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, from + BYTES * i, BYTES);  // bytes need not be aligned
        pixel = convert(pixel);
        std::memcpy(to + BYTES * i, &pixel, BYTES);
    }
}

}  // namespace

void CairoFromStraight(const std::uint8_t* rgba, std::uint8_t* cairo, std::size_t pixelNum) {
    Convert(rgba, cairo, pixelNum, [](std::uint32_t pixel) { return Multiply(FromRgba(pixel)); });
}

void CairoFromPremultiplied(const std::uint8_t* rgba, std::uint8_t* cairo, std::size_t pixelNum) {
    Convert(rgba, cairo, pixelNum, [](std::uint32_t pixel) { return FromRgba(pixel); });
}

void PremultipliedFromCairo(const std::uint8_t* cairo, std::uint8_t* rgba, std::size_t pixelNum) {
    Convert(cairo, rgba, pixelNum, [](std::uint32_t pixel) { return ToRgba(pixel); });
}

void PremultipliedFromStraight(const std::uint8_t* straight, std::uint8_t* premultiplied,
                               std::size_t pixelNum) {
    Convert(straight, premultiplied, pixelNum,
            [](std::uint32_t pixel) { return ToRgba(Multiply(FromRgba(pixel))); });
}

void StraightFromPremultiplied(const std::uint8_t* premultiplied, std::uint8_t* straight,
                               std::size_t pixelNum) {
    Convert(premultiplied, straight, pixelNum,
            [](std::uint32_t pixel) { return ToRgba(Divide(FromRgba(pixel))); });
}

void StraightFromCairo(const std::uint8_t* cairo, std::uint8_t* straight, std::size_t pixelNum) {
    Convert(cairo, straight, pixelNum, [](std::uint32_t pixel) { return ToRgba(Divide(pixel)); });
}

TagKivColorRGBA Premultiplied(const Color& color) {
    const std::uint32_t pixel = Multiply(std::uint32_t{color.a} << 24 | std::uint32_t{color.r} << 16 |
                                         std::uint32_t{color.g} << 8 | color.b);
    const auto component = [pixel](unsigned int shift) {
        const auto value = static_cast<std::uint8_t>(pixel >> shift);
        return value == 1 ? std::uint8_t{2} : value;
    };
    return {component(16), component(8), component(0), component(24)};
}

}  // namespace kivgles::kit
