#include "PictureCheck.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace examples::osd_demo {

namespace {

constexpr int COLOR_TOLERANCE = 3;     // rounding of blending and scaling
constexpr int LETTER_CONTRAST = 60;    // at least, somewhere in a letter
constexpr std::uint32_t MIN_SIDE = 3;  // pixels of the window; what is smaller mixes with what is around it

int Difference(const Color& a, const Color& b) {
    return std::max({std::abs(a.r - b.r), std::abs(a.g - b.g), std::abs(a.b - b.b)});
}

std::string Name(const Color& color) {
    return "(" + std::to_string(color.r) + ", " + std::to_string(color.g) + ", " + std::to_string(color.b) +
           ")";
}

int GreatestDifference(const Image& picture, const Rect& rect, const Color& color) {
    int greatest = 0;
    for (std::uint32_t y = rect.y; y < rect.y + rect.height; ++y) {
        for (std::uint32_t x = rect.x; x < rect.x + rect.width; ++x) {
            greatest = std::max(greatest, Difference(picture.Get(x, y), color));
        }
    }
    return greatest;
}

std::optional<std::string> FindDifference(const Image& picture, const KnownArea& area, const Rect& rect) {
    if (rect.x + rect.width > picture.width || rect.y + rect.height > picture.height) {
        return "the window has become smaller than the panel";
    }
    if (area.letters) {
        if (GreatestDifference(picture, rect, area.color) < LETTER_CONTRAST) {
            return std::string("the window shows no letters as the ") + area.name +
                   ": does the font have them?";
        }
        return std::nullopt;
    }
    const Color middle = picture.Get(rect.x + rect.width / 2, rect.y + rect.height / 2);
    if (Difference(middle, area.color) > COLOR_TOLERANCE) {
        return "the window shows the colour " + Name(middle) + " as the " + area.name + " instead of " +
               Name(area.color);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> FindDifference(const Image& picture, const Rect& panel, std::uint32_t panelWidth,
                                          const std::vector<KnownArea>& areas) {
    const double scale = static_cast<double>(panel.width) / panelWidth;
    const auto scaled = [scale](std::uint32_t pixels) { return static_cast<std::uint32_t>(pixels * scale); };
    for (const KnownArea& area : areas) {
        const Rect rect = {panel.x + scaled(area.rect.x), panel.y + scaled(area.rect.y),
                           scaled(area.rect.width), scaled(area.rect.height)};
        if (rect.width < MIN_SIDE || rect.height < MIN_SIDE) {
            continue;
        }
        if (auto difference = FindDifference(picture, area, rect)) {
            return difference;
        }
    }
    return std::nullopt;
}

}  // namespace examples::osd_demo
