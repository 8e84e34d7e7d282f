#include <array>
#include <tuple>

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

using Coordinates = std::array<float, 4>;
constexpr Coordinates UNTOUCHED{12345, 12345, 12345, 12345};

// x, y, width and height in NDC, of a rectangle and of a round, and in texture coordinates.
std::array<Coordinates, 3> Converted(const TagKivRectInfo& rect, unsigned int width, unsigned int height) {
    const KivGLDrawSurface surface;
    TagGLRectInfo ndc{12345, 12345, 12345, 12345};
    TagGLRectInfo source = ndc;
    TagGLRoundInfo round{12345, 12345, 12345, 12345};
    surface.ScreenCoordToVCoord(rect, ndc, width, height);
    surface.ScreenCoordToVCoord(TagKivRoundInfo{rect.x, rect.y, rect.width, rect.height}, round, width,
                                height);
    surface.ScreenCoordToFboCoord(rect, source, width, height);
    return {{{ndc.x, ndc.y, ndc.width, ndc.height},
             {round.centerX, round.centerY, round.radiusX, round.radiusY},
             {source.x, source.y, source.width, source.height}}};
}

TEST(Conversions, OfCoordinatesHoldForEveryNumberOfPixels) {
    constexpr std::uint32_t NUMBERS[] = {0, 1, 3, 64, 1919, 0x1000001, 0x80000000, 0xFFFFFFFF};
    for (std::size_t i = 0; i < 56; ++i) {
        const auto number = [&](std::size_t step) { return NUMBERS[(i / 7 + step) % 8]; };
        const TagKivRectInfo rect{number(0), number(3), number(5), number(6)};
        const unsigned int width = NUMBERS[1 + i % 7];
        const unsigned int height = NUMBERS[7 - i % 7];
        const double ratios[] = {1. * rect.x / width, 1. * rect.y / height, 1. * rect.width / width,
                                 1. * rect.height / height};
        const auto converted = Converted(rect, width, height);
        for (std::size_t space = 0; space < 3; ++space) {
            const double extent = space < 2 ? 2 : 1;  // of the target, from -1 or from 0
            const double origins[] = {1 - extent, 1, 0, 0};
            for (std::size_t j = 0; j < 4; ++j) {
                const double span = extent * ratios[j];
                // In float two conversions, a division, and a sum with the origin.
                EXPECT_NEAR(converted[space][j], origins[j] + (j == 1 ? -span : span),
                            0x1p-24 * (4 * span + 2));
            }
        }
    }
}

TEST(Conversions, ForATargetWithoutSizeAreRefusedAndTouchNothing) {
    recorder::Reset();
    const std::array untouched{UNTOUCHED, UNTOUCHED, UNTOUCHED};
    EXPECT_EQ(Converted({1, 2, 3, 4}, 0, 8), untouched);
    EXPECT_EQ(Converted({1, 2, 3, 4}, 8, 0), untouched);
    EXPECT_EQ(recorder::Log("E KivGLDrawSurface: param is invalid\n").size(), 6U);
}

TEST(Conversions, OfTextsCarryEveryFieldAlong) {
    TagGLTextInfo text{};
    KivGLDrawSurface().SetTextInfo({u"A", 1, {0, 1, 2, 255}, {255, 2, 1, 0}, 3, 4, 5, 6, 7}, text);
    const auto& [units, length, fg, bg, reserved, fontSize, bold, underline, italic] = text;
    EXPECT_EQ(std::tie(units[0], length, reserved, fontSize, bold, underline, italic),
              std::make_tuple(u'A', 1U, 3, 4U, 5, 6, 7));
    EXPECT_EQ(std::tie(fg.r, fg.g, fg.b, fg.a), std::make_tuple(0.0F, 1.0F, 2 / 255.0F, 1.0F));
    EXPECT_EQ(std::tie(bg.r, bg.g, bg.b, bg.a), std::make_tuple(1.0F, 2 / 255.0F, 1.0F, 0.0F));
}

}  // namespace
}  // namespace kivgles
