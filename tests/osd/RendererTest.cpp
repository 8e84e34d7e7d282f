#include <cmath>

#include <GLES2/gl2.h>

#include "gl/FBOManager.h"
#include "osd/OSDBitmap.h"
#include "osd/OSDBlit.h"
#include "osd/OSDFrame.h"
#include "osd/OSDRect.h"
#include "osd/OSDRound.h"
#include "support/Target.h"

namespace kivgles {
namespace {

constexpr TagGLRectInfo WHOLE{-1, 1, 2, 2};
constexpr TagGLRectInfo WHOLE_SOURCE{0, 1, 1, 1};

class Renderers : public GLTest {
 protected:
    TagFrameBuffObject MakeLayer(int width, int height, const TagColorRGBA& content = {0, 0, 0, 0}) {
        unsigned int handle = 0;
        TagFrameBuffObject fbo = UNSET_FBO;
        EXPECT_EQ(table.GLCreateFBO(handle, width, height, GL_RGBA, false), 0);
        EXPECT_TRUE(table.GetFBOInst(handle, fbo));
        table.ClearFBOTex(fbo, content);
        return fbo;
    }

    FBOManager table{64, 32};
};

TEST_F(Renderers, AlphaIsReplacedBlendedOrMultipliedIntoTheWindow) {
    const auto fbo = MakeLayer(8, 8, {1, 1, 1, 1});
    const std::uint8_t green[] = {0, 255, 0, 128};
    OSDRect rect;
    OSDBitmap bitmap;
    OSDBlit blit;
    OSDFrame frame;
    ASSERT_EQ(rect.Init() + bitmap.Init() + blit.Init() + frame.Init(), 0);
    rect.DrawRect(fbo, {-1, 1, 1, 1}, {1, 0, 0, 0.5F});
    bitmap.DrawBitmap(fbo, {green, {0, 1, 1, 1}, 1, 1, GL_RGBA, 0});
    bitmap.DrawBitmap(fbo, {green, {-1, 0, 1, 1}, 1, 1, GL_RGBA, 1});
    const auto copy = MakeLayer(8, 8, {0, 0, 1, 1});
    blit.Blit({fbo, copy, WHOLE_SOURCE, WHOLE});
    for (const auto& target : {fbo, copy}) {
        ExpectPixel(target, 1, 1, {255, 0, 0, 128});
        ExpectPixel(target, 6, 1, {0, 255, 0, 128});
        ExpectPixel(target, 1, 6, {127, 255, 127, 191});
        ExpectPixel(target, 6, 6, {255, 255, 255, 255});
    }
    rect.DrawRect(windowTarget, WHOLE, {1, 1, 1, 1});
    frame.DisplayFBO(fbo.textureId, WHOLE_SOURCE, {-1, 1, 1, 1}, 64, 32);
    ExpectPixel(windowTarget, 1, 1, {128, 0, 0, 128});
    ExpectPixel(windowTarget, 63, 31, {0, 0, 0, 0});
    bitmap.DisplayBitmap({green, {0, 1, 1, 1}, 1, 1, GL_RGBA, 1}, 64, 32);
    ExpectPixel(windowTarget, 63, 1, {0, 128, 0, 128});
    ExpectPixel(windowTarget, 1, 1, {0, 0, 0, 0});
}

TEST_F(Renderers, RoundIsAnEllipseOf36EdgesWithACornerAtItsRight) {
    const auto fbo = MakeLayer(1200, 2200);
    OSDRound round;
    ASSERT_EQ(round.Init(), 0);
    round.DrawRound(fbo, {0, 0, 1000 / 1200.0F, 2000 / 2200.0F}, {1, 1, 1, 1});
    const auto expectAt = [&](double degrees, double distance, int expected) {
        const double angle = degrees * 3.141592653589793 / 180;
        ExpectPixel(fbo, static_cast<int>(600 + 500 * distance * std::cos(angle)),
                    static_cast<int>(1100 - 1000 * distance * std::sin(angle)),
                    {expected, expected, expected, expected});
    };
    for (int degrees = 0; degrees < 360; degrees += 10) {
        expectAt(degrees, 0.997, 255);
        expectAt(degrees, 1.003, 0);
        expectAt(degrees + 5, 0.9935, 255);
        expectAt(degrees + 5, 0.9995, 0);  // between the straight edge and the true ellipse
    }
}

}  // namespace
}  // namespace kivgles
