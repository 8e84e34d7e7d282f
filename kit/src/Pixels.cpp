#include "Pixels.h"

#include <algorithm>
#include <cstddef>

namespace kivgles::kit {

namespace {

constexpr unsigned int FULL = 255;
constexpr std::size_t CHANNEL_NUM = 4;

// The core takes 1 for the full intensity.
std::uint8_t ForCore(unsigned int component) {
    return component == 1 ? std::uint8_t{2} : static_cast<std::uint8_t>(component);
}

std::uint8_t Multiply(unsigned int component, unsigned int alpha) {
    return static_cast<std::uint8_t>((component * alpha + FULL / 2) / FULL);
}

std::uint8_t Divide(unsigned int component, unsigned int alpha) {
    return alpha == 0 ? std::uint8_t{0}
                      : static_cast<std::uint8_t>(std::min((component * FULL + alpha / 2) / alpha, FULL));
}

template <typename Convert>
const std::uint8_t* ConvertPixels(const Image& image, std::vector<std::uint8_t>& room, Convert convert) {
    room.resize(CHANNEL_NUM * static_cast<std::size_t>(image.size.width) *
                static_cast<std::size_t>(image.size.height));
    for (std::size_t i = 0; i < room.size(); i += CHANNEL_NUM) {
        const std::uint8_t* const pixel = image.pixels + i;
        for (std::size_t channel = 0; channel < CHANNEL_NUM - 1; ++channel) {
            room[i + channel] = convert(pixel[channel], pixel[CHANNEL_NUM - 1]);
        }
        room[i + CHANNEL_NUM - 1] = pixel[CHANNEL_NUM - 1];
    }
    return room.data();
}

}  // namespace

TagKivColorRGBA Straight(const Color& color) {
    return {ForCore(color.r), ForCore(color.g), ForCore(color.b), ForCore(color.a)};
}

TagKivColorRGBA Premultiplied(const Color& color) {
    return {ForCore(Multiply(color.r, color.a)), ForCore(Multiply(color.g, color.a)),
            ForCore(Multiply(color.b, color.a)), ForCore(color.a)};
}

const std::uint8_t* PremultipliedPixels(const Image& image, std::vector<std::uint8_t>& room) {
    return image.premultiplied ? image.pixels : ConvertPixels(image, room, Multiply);
}

const std::uint8_t* StraightPixels(const Image& image, std::vector<std::uint8_t>& room) {
    return image.premultiplied ? ConvertPixels(image, room, Divide) : image.pixels;
}

}  // namespace kivgles::kit
