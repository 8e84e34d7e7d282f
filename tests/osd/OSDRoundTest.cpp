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

// Edges are the same on processors that multiply and add in one step, or in more bits: what is volatile is
// rounded.
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
            const volatile float right = round.centerX + x;
            const volatile float down = round.centerY + y;
            EXPECT_EQ(drawn[4 + 4 * i], right);
            EXPECT_EQ(drawn[5 + 4 * i], down);
        }
    }
}

}  // namespace kivgles
