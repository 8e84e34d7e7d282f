#include "Artwork.h"

#include <algorithm>
#include <cmath>

namespace examples::osd_demo {

namespace {

constexpr std::uint8_t OPAQUE = 255;

struct FloatColor {
    float r, g, b;
};

// `share` 0 is `a`, 1 is `b`.
FloatColor Mix(const FloatColor& a, const FloatColor& b, float share) {
    const float t = std::clamp(share, 0.0F, 1.0F);
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

std::uint8_t ToByte(float value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 255.0F)));
}

Color ToColor(const FloatColor& color, std::uint8_t alpha) {
    return {ToByte(color.r), ToByte(color.g), ToByte(color.b), alpha};
}

// How much of a pixel lies inside an edge that is `distance` pixels away, positive inside.
float Coverage(float distance) { return std::clamp(distance + 0.5F, 0.0F, 1.0F); }

// The logo's picture without its round edge. Coordinates run from -1 to 1, y downwards; `pixels` is half the
// logo's side.
FloatColor LogoColor(float x, float y, float pixels) {
    constexpr FloatColor SKY_TOP{255, 196, 92};
    constexpr FloatColor SKY_BOTTOM{240, 98, 82};
    constexpr FloatColor SUN{255, 244, 214};
    constexpr FloatColor SEA[] = {{38, 166, 174}, {24, 118, 146}, {16, 78, 112}};

    FloatColor color = Mix(SKY_TOP, SKY_BOTTOM, (y + 0.9F) / 1.1F);
    color = Mix(color, SUN, Coverage((0.36F - std::hypot(x, y + 0.12F)) * pixels));
    float level = 0.08F;
    float shift = 0.0F;
    for (const FloatColor& water : SEA) {
        const float crest = level + 0.07F * std::sin(5.5F * x + shift);
        color = Mix(color, water, Coverage((y - crest) * pixels));
        level += 0.28F;
        shift += 2.1F;
    }
    return color;
}

}  // namespace

Image MakeBackdrop() {
    constexpr FloatColor TOP{12, 20, 36};
    constexpr FloatColor BOTTOM{22, 40, 64};
    constexpr FloatColor GLOW{44, 86, 118};

    Image image(320, 180);
    for (std::uint32_t y = 0; y < image.height; ++y) {
        for (std::uint32_t x = 0; x < image.width; ++x) {
            const float across = static_cast<float>(x) / static_cast<float>(image.width);
            const float down = static_cast<float>(y) / static_cast<float>(image.height);
            const float distance = std::hypot(across - 0.85F, (down + 0.05F) * 0.7F);
            image.Set(x, y, ToColor(Mix(Mix(TOP, BOTTOM, down), GLOW, std::exp(-4 * distance)), OPAQUE));
        }
    }
    return image;
}

Image MakeLogo(std::uint32_t side) {
    const float radius = static_cast<float>(side) / 2.0F;
    Image image(side, side);
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column < side; ++column) {
            const float x = (static_cast<float>(column) + 0.5F) / radius - 1.0F;
            const float y = (static_cast<float>(row) + 0.5F) / radius - 1.0F;
            const float coverage = Coverage((1.0F - std::hypot(x, y)) * radius - 1.0F);
            image.Set(column, row, ToColor(LogoColor(x, y, radius), ToByte(255.0F * coverage)));
        }
    }
    return image;
}

}  // namespace examples::osd_demo
