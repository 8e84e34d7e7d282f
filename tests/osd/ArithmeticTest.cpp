// Sums that no picture of one machine and no font of the tests shows.

#include <limits>
#include <vector>

#include <GLES2/gl2.h>
#include <gtest/gtest.h>
#include <math.h>  // sincosf is not in <cmath>

#include "osd/OSDRound.h"
#include "text/GlyphLoader.h"

static std::vector<GLfloat> drawn;

// In place of GL's, which does nothing without a context, as the other calls do here.
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    const auto* const first = static_cast<const GLfloat*>(data);
    drawn.assign(first, first + static_cast<std::size_t>(size) / sizeof(GLfloat));
}

namespace kivgles {
namespace {

// Edges are the same on processors that multiply and add in one step: volatile, a product is rounded.
TEST(Rounds, HaveRimPointsOfRoundedProducts) {
    for (float center = -1; center < 1; center += 0.03F) {
        const TagGLRoundInfo round{center, -center / 3, 0.7F - center / 9, 0.1F + center / 11};
        OSDRound().DrawRound({}, round, {});
        ASSERT_EQ(drawn.size(), 4U * 38);
        for (std::size_t i = 0; i <= 36; ++i) {
            float sine = 0;
            float cosine = 0;
            sincosf(static_cast<float>(static_cast<double>(2 * i) * 3.141592653589793 / 36), &sine, &cosine);
            const volatile float x = cosine * round.radiusX;
            const volatile float y = sine * round.radiusY;
            EXPECT_EQ(drawn[4 + 4 * i], round.centerX + x);
            EXPECT_EQ(drawn[5 + 4 * i], round.centerY + y);
        }
    }
}

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

}  // namespace
}  // namespace kivgles
