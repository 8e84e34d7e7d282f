#include <vector>

#include <gtest/gtest.h>
#include <math.h>  // sincosf is not in <cmath>

#include "osd/OSDRound.h"
#include "support/StubGL.h"

namespace kivgles {
namespace {

std::vector<GLfloat> drawn;

// A product that a compiler cannot fuse with a sum.
float Product(float a, float b) {
    const volatile float product = a * b;
    return product;
}

// So that a picture has the same edges on processors that multiply and add in one step.
TEST(Rounds, HaveRimPointsOfRoundedProducts) {
    stubgl::Reset(2048, UINT_MAX, [](const GLfloat* vertices, std::size_t count, const GLfloat*) {
        drawn.assign(vertices, vertices + 4 * count);
    });
    stubgl::MakeCurrent();
    OSDRound osdRound;
    ASSERT_EQ(osdRound.Init(), 0);
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
