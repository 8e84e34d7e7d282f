#include "support/Surface.h"

namespace kivgles {
namespace {

constexpr Pixel BLACK{0, 0, 0, 255};
constexpr Pixel RED{255, 0, 0, 255};
constexpr Pixel GREEN{0, 255, 0, 255};
constexpr Pixel BLUE{0, 0, 255, 255};

TEST_F(SurfaceTest, LayersShowTheirShapesAndBlitsOnTheWindow) {
    const unsigned int layer = MakeLayer(32, 16, {0, 0, 255, 255});
    EXPECT_EQ(surface.KivDrawRect(layer, {4, 2, 8, 4}, {255, 0, 0, 255}), 0);
    EXPECT_EQ(surface.KivDrawRound(layer, {24, 8, 8, 4}, {0, 255, 0, 255}), 0);
    Show(layer, 32, 16);
    for (const auto& [x, y, expected] : {std::tuple(4, 2, RED),
                                         {11, 5, RED},
                                         {12, 5, BLUE},
                                         {11, 6, BLUE},
                                         {17, 8, GREEN},
                                         {24, 11, GREEN},
                                         {17, 5, BLUE},
                                         {24, 13, BLUE},
                                         {32, 8, BLACK}}) {
        ExpectShown(window, x, y, expected);
    }
    // The rectangle alone, twice its size, into the lower right of a layer of another size; then a part of
    // that.
    const unsigned int copy = MakeLayer(20, 30);
    EXPECT_EQ(surface.KivBlit({layer, copy, {4, 2, 8, 4}, {4, 22, 16, 8}}), 0);
    EXPECT_EQ(surface.KivDisplayFBO(copy, {0, 15, 20, 15}, {40, 0, 20, 15}), 0);
    Refresh();
    for (const auto& [x, y, expected] :
         {std::tuple(45, 8, RED), {58, 13, RED}, {43, 8, BLACK}, {45, 6, BLACK}, {4, 2, BLACK}}) {
        ExpectShown(window, x, y, expected);
    }
}

TEST_F(SurfaceTest, BitmapsIntoALayerAreScaledAsIfItHadTheWindowsSize) {
    const unsigned int layer = MakeLayer(32, 16, {0, 0, 255, 255});
    const std::uint8_t red[] = {255, 0, 0, 255};
    const std::uint8_t half[] = {0, 255, 0, 128};
    EXPECT_EQ(surface.KivDrawBitmap(layer, {red, 9, 0, 0, 1, 1, {0, 0, 32, 16}}),
              0);  // a quarter of the window
    EXPECT_EQ(surface.KivDrawBitmapByBlend(layer, {half, 9, 0, 0, 1, 1, {32, 0, 32, 16}}), 0);
    EXPECT_EQ(surface.KivDrawBitmap(layer, {half, 9, 0, 0, 1, 1, {32, 16, 32, 16}}), 0);
    Show(layer, 32, 16);
    ExpectShown(window, 15, 7, RED);
    ExpectShown(window, 16, 7, {0, 97, 96, 255});  // blended to alpha 191, and multiplied by it
    ExpectShown(window, 16, 8, {0, 128, 0, 255});  // replaced, and multiplied by its alpha
    ExpectShown(window, 15, 8, BLUE);
    EXPECT_EQ(surface.KivDisplayBitmap({half, 0, 0, 0, 1, 1, {8, 8, 8, 8}}), 0);
    Refresh();
    ExpectShown(window, 15, 15, {0, 128, 0, 255});
    ExpectShown(window, 16, 7, BLACK);
}

TEST_F(SurfaceTest, WindowHandleIsATargetAndAClearMakesTransparentBlack) {
    const unsigned int layer = MakeLayer(4, 4, {0, 255, 0, 255});
    EXPECT_EQ(surface.KivClearGLFBO(FBO_HANDLE_BASE), 0);
    EXPECT_EQ(surface.KivDrawRect(FBO_HANDLE_BASE, {32, 16, 32, 16}, {255, 0, 0, 255}), 0);
    EXPECT_EQ(surface.KivBlit({layer, FBO_HANDLE_BASE, {0, 0, 4, 4}, {0, 0, 8, 8}}), 0);
    Refresh();
    ExpectShown(window, 63, 31, RED);
    ExpectShown(window, 31, 31, BLACK);
    ExpectShown(window, 7, 7, GREEN);
    EXPECT_EQ(surface.KivClearGLFBO(layer), 0);
    EXPECT_EQ(surface.KivDrawRect(layer, RECT, {255, 0, 0, 255}), 0);
    Show(layer, 4, 4);
    ExpectShown(window, 0, 0, RED);
    ExpectShown(window, 2, 2, BLACK);
}

TEST_F(SurfaceTest, TextsBackgroundGlyphsAndUnderlineHaveTheirExactRectangles) {
    const auto expect = [&](const Pixel& color, const std::vector<std::pair<int, int>>& places) {
        for (const auto& [x, y] : places) {
            ExpectShown(window, x, y, color);
        }
    };
    ASSERT_EQ(surface.KivLoadFont(KIVGLES_TEST_FONTS "/bearings.ttf", 40), 0);
    std::u16string text = u"R";
    ASSERT_EQ(surface.KivClearGLFBO(FBO_HANDLE_BASE), 0);
    const TagKivTextInfo info{text.data(), 1, {200, 40, 0, 255}, {0, 80, 120, 255}, 0, 40, 0, 1, 0};
    ASSERT_EQ(surface.KivDrawText(FBO_HANDLE_BASE, info, {4, 2, 50, 26}), 0);
    text[0] = u' ';  // copied before
    Refresh();
    // Background (4, 2, 50, 26); glyph (10, 8, 10, 10) on a baseline 10 above the bottom edge; underline
    // (4, 20, 50, 2), from 2 below the baseline.
    expect(BLACK, {{3, 2}, {4, 1}, {54, 27}, {53, 28}, {3, 20}, {54, 21}});
    expect({0, 80, 120, 255}, {{4, 2}, {53, 27}, {9, 8}, {10, 7}, {20, 17}, {19, 18}, {4, 19}, {53, 22}});
    expect({200, 40, 0, 255}, {{10, 8}, {19, 17}, {4, 20}, {53, 21}});
}

TEST_F(SurfaceTest, ImpossibleBitmapsAreOnlyLoggedAndReadNothing) {
    const unsigned int layer = MakeLayer(8, 8, {0, 255, 0, 255});
    for (const auto& [width, height] : {std::pair(0U, 0U), {0U, 5U}, {100000U, 100000U}, {0xFFFFFFFFU, 1U}}) {
        const TagKivBitmapInfo bitmap{PIXEL_DATA, 9, 0, 0, width, height, {0, 0, 0xFFFFFFFF, 1}};
        EXPECT_EQ(surface.KivDrawBitmap(layer, bitmap), 0);
        EXPECT_EQ(surface.KivDisplayBitmap(bitmap), 0);
    }
    EXPECT_EQ(surface.KivDisplayBitmap({nullptr, 9, 0, 0, 4, 4, {0, 0, 8, 8}}), 0);
    Show(layer, 8, 8);
    ExpectShown(window, 7, 7, GREEN);
}

}  // namespace
}  // namespace kivgles
