#include <array>
#include <map>
#include <tuple>

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "surface/ResultCode.h"

namespace kivgles {
namespace {

constexpr std::uint32_t NUMBERS[] = {0, 1, 3, 64, 1919, 0x1000001, 0x80000000, 0xFFFFFFFF};
constexpr float UNTOUCHED = 12345.0F;

// x, y, width and height in NDC, of a rectangle and of a round, and in texture coordinates.
std::array<std::array<float, 4>, 3> Converted(const TagKivRectInfo& rect, unsigned int width,
                                              unsigned int height) {
    const KivGLDrawSurface surface;
    TagGLRectInfo ndc{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    TagGLRectInfo source = ndc;
    TagGLRoundInfo round{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED};
    surface.ScreenCoordToVCoord(rect, ndc, width, height);
    surface.ScreenCoordToVCoord(TagKivRoundInfo{rect.x, rect.y, rect.width, rect.height}, round, width,
                                height);
    surface.ScreenCoordToFboCoord(rect, source, width, height);
    return {{{ndc.x, ndc.y, ndc.width, ndc.height},
             {round.centerX, round.centerY, round.radiusX, round.radiusY},
             {source.x, source.y, source.width, source.height}}};
}

TEST(Conversions, OfCoordinatesHoldForEveryNumberOfPixels) {
    for (std::size_t i = 0; i < 56; ++i) {
        const auto number = [i](std::size_t step) { return NUMBERS[(i / 7 + step) % 8]; };
        const TagKivRectInfo rect{number(0), number(3), number(5), number(6)};
        const double width = NUMBERS[1 + i % 7];
        const double height = NUMBERS[7 - i % 7];
        const auto converted = Converted(rect, NUMBERS[1 + i % 7], NUMBERS[7 - i % 7]);
        for (std::size_t space = 0; space < 3; ++space) {
            const double extent = space < 2 ? 2 : 1;  // of the target, from -1 or from 0
            const double ratios[] = {rect.x / width, rect.y / height, rect.width / width,
                                     rect.height / height};
            const double origins[] = {1 - extent, 1, 0, 0};
            for (std::size_t j = 0; j < 4; ++j) {
                const double span = extent * ratios[j];
                // In float two conversions, a division, and a sum with the origin.
                EXPECT_NEAR(converted[space][j], origins[j] + (j == 1 ? -span : span),
                            0x1p-24 * (4 * span + 2 * origins[1]));
            }
        }
    }
}

TEST(Conversions, ForATargetWithoutSizeAreRefusedAndTouchNothing) {
    for (const auto& [width, height] : {std::pair(0U, 8U), std::pair(8U, 0U)}) {
        recorder::Reset();
        for (const auto& coordinates : Converted({1, 2, 3, 4}, width, height)) {
            EXPECT_EQ(coordinates, (std::array{UNTOUCHED, UNTOUCHED, UNTOUCHED, UNTOUCHED}));
        }
        EXPECT_EQ(recorder::Log("E KivGLDrawSurface: param is invalid\n").size(), 3U);
    }
}

TEST(Conversions, OfRequestsCarryEveryFieldAlong) {
    const KivGLDrawSurface surface;
    TagGLTextInfo text{};
    surface.SetTextInfo({u"A", 1, {0, 1, 2, 255}, {255, 2, 1, 0}, 3, 4, 5, 6, 7}, text);
    const auto& [units, length, fg, bg, reserved, fontSize, bold, underline, italic] = text;
    EXPECT_EQ(std::tie(units[0], length, reserved, fontSize, bold, underline, italic),
              std::make_tuple(u'A', 1U, 3, 4U, 5, 6, 7));
    EXPECT_EQ(std::tie(fg.r, fg.g, fg.b, fg.a), std::make_tuple(0.0F, 1.0F, 2 / 255.0F, 1.0F));
    EXPECT_EQ(std::tie(bg.r, bg.g, bg.b, bg.a), std::make_tuple(1.0F, 2 / 255.0F, 1.0F, 0.0F));

    const std::uint8_t pixels[4] = {};
    TagGLBitmapInfo bitmap{nullptr, {}, 0, 0, 0, 9};
    surface.SetBitmapInfo(bitmap, {pixels, KIV_COLOR_FORMAT_RGBA8888, 1, 2, 3, 4, {}}, 8, 8);
    EXPECT_EQ(std::make_tuple(bitmap.data, bitmap.width, bitmap.height, bitmap.glFormat, bitmap.blend),
              std::make_tuple(pixels, 3U, 4U, 0x1908U /* GL_RGBA */, 9));  // whether to blend is the caller's
}

TEST(Conversions, OfStatusesGiveEachItsResultCode) {
    std::map<int, int> codes{{12, 11}, {40, 50}, {101, 103}, {102, 101}};
    for (const int same : {0, 1, 2, 3, 4, 5, 6, 10, 13, 14, 15, 20, 21, 30, 31, 32, 100}) {
        codes[same] = same;
    }
    for (int status = -1; status < 200; ++status) {
        EXPECT_EQ(TranslateResult(status), codes.count(status) != 0 ? codes[status] : 100) << status;
    }
}

}  // namespace
}  // namespace kivgles
