#include <limits>

#include <gtest/gtest.h>

#include "text/GlyphLoader.h"

namespace kivgles {

TEST(PixelBoxes, OfHostileOutlinesDoNotOverflow) {
    using Limits = std::numeric_limits<FT_Pos>;
    const PixelBox whole = TouchedPixels({Limits::min(), -1, Limits::max(), 1});
    EXPECT_EQ(whole.Width(), Limits::max() / 32 + 1);
    EXPECT_EQ(whole.Rows(), 2);
    EXPECT_FALSE(whole.IsRenderable());
    EXPECT_TRUE(TouchedPixels({0, 0, 0x7FFF * 64, 0x7FFF * 64}).IsRenderable());
    EXPECT_FALSE(TouchedPixels({0, 0, 0x7FFF * 64 + 1, 64}).IsRenderable());
    EXPECT_TRUE(TouchedPixels({-0x8000 * 64, -0x8000 * 64, -64, -64}).IsRenderable());
    EXPECT_FALSE(TouchedPixels({-0x8000 * 64 - 1, -64, -0x7FFF * 64, 0}).IsRenderable());
    EXPECT_FALSE(TouchedPixels({-64, -0x8000 * 64 - 1, 0, -0x7FFF * 64}).IsRenderable());
}

}  // namespace kivgles
