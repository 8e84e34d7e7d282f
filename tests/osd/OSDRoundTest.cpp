#include <vector>

#include <GLES2/gl2.h>
#include <gtest/gtest.h>
#include <math.h>  // sincosf is not in <cmath>

#include "osd/OSDRound.h"

static std::vector<GLfloat> drawn;

// In place of GL's, which does nothing without a context, as the other calls do here.
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    const auto* const first = static_cast<const GLfloat*>(data);
    drawn.assign(first, first + static_cast<std::size_t>(size) / sizeof(GLfloat));
}

namespace kivgles {
namespace {

// A product that a compiler cannot fuse with a sum.
float Product(float a, float b) {
    const volatile float product = a * b;
    return product;
}

// So that a picture has the same edges on processors that multiply and add in one step.
TEST(Rounds, HaveRimPointsOfRoundedProducts) {
    const OSDRound osdRound;
    for (float center = -1; center < 1; center += 0.03F) {
        const TagGLRoundInfo round{center, -center / 3, 0.7F - center / 9, 0.1F + center / 11};
        osdRound.DrawRound({}, round, {});
        ASSERT_EQ(drawn.size(), 4U * 38);
        EXPECT_EQ(drawn[0], round.centerX);
        EXPECT_EQ(drawn[1], round.centerY);
        for (std::size_t i = 0; i <= 36; ++i) {
            float sine = 0;
            float cosine = 0;
            sincosf(static_cast<float>(static_cast<double>(2 * i) * 3.141592653589793 / 36), &sine, &cosine);
            EXPECT_EQ(drawn[4 + 4 * i], round.centerX + Product(cosine, round.radiusX));
            EXPECT_EQ(drawn[5 + 4 * i], round.centerY + Product(sine, round.radiusY));
            EXPECT_EQ(drawn[6 + 4 * i], 0);
            EXPECT_EQ(drawn[7 + 4 * i], 1);
        }
    }
}

}  // namespace
}  // namespace kivgles
