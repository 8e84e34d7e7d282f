#include <cstdint>
#include <iterator>
#include <utility>

#include <gmock/gmock.h>

#include "gl/TextureSide.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

TEST(TextureSides, AreHandedToGLAsFarAsSomeGLMayHaveThem) {
    EXPECT_EQ(TextureSide(0x20000), 0x20000);
    EXPECT_EQ(TextureSide(0x20001), -1);
}

TEST(TextureSides, BeyondEveryGLAreRefusedByGLAsOthersBeyondItsLimitAre) {
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    unsigned int target = 0;
    ASSERT_EQ(surface.KivCreateGLFBO(target, 8, 8, KIV_COLOR_FORMAT_RGBA8888), 0);
    constexpr std::uint32_t SIDES[] = {0x10000, 0x10001, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const std::uint8_t pixel[] = {0, 255, 0, 255};  // a bitmap that is refused is not read
    recorder::Reset();
    for (const std::uint32_t side : SIDES) {
        for (const auto& [width, height] :
             {std::pair(side, 1U), std::pair(1U, side), std::pair(side, side)}) {
            unsigned int layer = 0;
            EXPECT_EQ(surface.KivCreateGLFBO(layer, width, height, KIV_COLOR_FORMAT_RGBA8888), 0);
            EXPECT_EQ(surface.KivDestoryGLFBO(layer), 0);
            const TagKivBitmapInfo bitmap{pixel,       KIV_COLOR_FORMAT_RGBA8888, 0, 0, width, height,
                                          {0, 0, 8, 8}};
            EXPECT_EQ(surface.KivDrawBitmap(target, bitmap), 0);
        }
    }
    EXPECT_THAT(recorder::Log("E FBOManager: Unable to set up render Target: "),
                testing::SizeIs(3 * std::size(SIDES)));
    EXPECT_THAT(
        recorder::Log("W GLDrawThread: Create fbo fboHandleIndex 0x10002, width 2147483647, height 1\n"),
        testing::SizeIs(1));
}

}  // namespace
}  // namespace kivgles
