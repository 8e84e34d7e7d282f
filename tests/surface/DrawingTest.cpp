#include <gmock/gmock.h>

#include "support/Surface.h"

namespace kivgles {
namespace {

using testing::Contains;
using Lines = std::vector<std::string>;

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

TEST_F(SurfaceTest, HandlesThatNameNoLayerAreRefusedAndDoNoHarm) {
    const unsigned int layer = MakeLayer(8, 8, {255, 0, 0, 255});
    const unsigned int destroyed = MakeLayer(8, 8);
    EXPECT_EQ(surface.KivDestoryGLFBO(destroyed), 0);
    for (const unsigned int handle : {destroyed, 0U, 0x10010U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        for (const LayerOperation& operation : LAYER_OPERATIONS) {
            EXPECT_EQ(operation.run(surface, handle), operation.unknownHandleResult)
                << operation.name << handle;
        }
        EXPECT_EQ(surface.KivDestoryGLFBO(handle), handle == 0xFFFFFFFF ? 100 : 0);
    }
    EXPECT_EQ(surface.KivDestoryGLFBO(FBO_HANDLE_BASE), 0);
    EXPECT_THAT(recorder::Log(), Contains("E KivGLDrawSurface: There is not the fbo 0x10002\n"));
    Show(layer, 8, 8);
    ExpectShown(window, 7, 7, RED);
}

TEST_F(SurfaceTest, ImpossibleSizesAreOnlyLoggedAndReadNothing) {
    for (const auto& [width, height] : {std::pair(0U, 0U), {0U, 5U}, {100000U, 100000U}, {0xFFFFFFFFU, 1U}}) {
        SCOPED_TRACE(width);
        recorder::Reset();
        const unsigned int layer = MakeLayer(width, height);
        for (const LayerOperation& operation : LAYER_OPERATIONS) {
            EXPECT_EQ(operation.run(surface, layer), 0) << operation.name;
        }
        const TagKivBitmapInfo bitmap{PIXEL_DATA, 9, 0, 0, width, height, {0, 0, 0xFFFFFFFF, 1}};
        EXPECT_EQ(surface.KivDrawBitmap(layer, bitmap), 0);
        EXPECT_EQ(surface.KivDisplayBitmap(bitmap), 0);
        EXPECT_EQ(surface.KivDestoryGLFBO(layer), 0);
        EXPECT_EQ(recorder::Log("E FBOManager"), Lines{"E FBOManager: Unable to set up render Target: "
                                                       "RFRAMEBUFFER_INCOMPLETE_ATTACHMENT\n"});
        EXPECT_EQ(recorder::Log("E KivGLDrawSurface: param is invalid\n").empty(), width != 0);
    }
    const unsigned int layer = MakeLayer(8, 8, {0, 255, 0, 255});
    EXPECT_EQ(surface.KivDisplayBitmap({nullptr, 9, 0, 0, 4, 4, {0, 0, 8, 8}}), 0);
    Show(layer, 8, 8);
    ExpectShown(window, 7, 7, GREEN);
}

TEST_F(SurfaceTest, LayerThatCannotBeMadeLeavesTheHandleVariable) {
    unsigned int handle = 7;
    recorder::Fail("glGenTextures");
    EXPECT_EQ(surface.KivCreateGLFBO(handle, 64, 32, 0), 21);
    EXPECT_EQ(handle, 7U);
    EXPECT_EQ(surface.KivCreateGLFBO(handle, 64, 32, 9), 0);
    EXPECT_EQ(handle, 0x10001U);
    EXPECT_EQ(recorder::Log("E"),
              (Lines{"E KivGLDrawSurface: Color format is invalid 0\n", "E FBOManager: Create texture fail\n",
                     "E GLDrawThread: Create FBO fail 21\n", "E FBOManager: Framebuffer complete.\n"}));
    EXPECT_THAT(recorder::Log(),
                Contains("W GLDrawThread: Create fbo fboHandleIndex 0x10001, width 64, height 32\n"));
}

}  // namespace
}  // namespace kivgles
