#include <array>

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace kivgles {

using Numbers = std::array<float, 12>;

// x, y, width and height in NDC, of a rectangle and of a round, and in texture coordinates.
static Numbers Converted(const TagKivRectInfo& rect, unsigned int width, unsigned int height) {
    const KivGLDrawSurface surface;
    TagGLRectInfo ndc{7, 7, 7, 7}, source{7, 7, 7, 7};
    TagGLRoundInfo round{7, 7, 7, 7};
    surface.ScreenCoordToVCoord(rect, ndc, width, height);
    surface.ScreenCoordToVCoord(TagKivRoundInfo{rect.x, rect.y, rect.width, rect.height}, round, width,
                                height);
    surface.ScreenCoordToFboCoord(rect, source, width, height);
    return {ndc.x,         ndc.y,         ndc.width, ndc.height, round.centerX, round.centerY,
            round.radiusX, round.radiusY, source.x,  source.y,   source.width,  source.height};
}

TEST(Conversions, TakeNoNumberForANegativeOneAndTouchNothingWhereTheTargetHasNoSize) {
    EXPECT_EQ(Converted({0xFFFFFFFF, 0x80000000, 0x80000000, 0xFFFFFFFF}, 0x80000000, 0x40000000),
              (Numbers{3, -3, 2, 8, 3, -3, 2, 8, 2, -1, 1, 4}));
    recorder::Reset();
    const Numbers untouched{7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
    EXPECT_EQ(Converted({1, 2, 3, 4}, 0, 8), untouched);
    EXPECT_EQ(Converted({1, 2, 3, 4}, 8, 0), untouched);
    EXPECT_EQ(recorder::Log("E KivGLDrawSurface: param is invalid\n").size(), 6U);
    TagGLTextInfo text{};
    KivGLDrawSurface().SetTextInfo({nullptr, 0, {}, {0, 2, 0, 0}, 3, 0, 0, 4, 0}, text);
    EXPECT_EQ(text.bgColor.g, 2 / 255.0F);  // of which nothing that is drawn tells
    EXPECT_EQ(text.reserved, 3);
    EXPECT_EQ(text.underline, 4);
}

}  // namespace kivgles
