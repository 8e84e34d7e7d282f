#ifndef KIVGLES_TESTS_TEXT_OSDTEXTTEST_H
#define KIVGLES_TESTS_TEXT_OSDTEXTTEST_H

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <GLES2/gl2.h>

#include "gl/FBOManager.h"
#include "text/OSDText.h"
#include "text/TextTest.h"

namespace kivgles {

constexpr int WIDTH = 256;
constexpr int HEIGHT = 64;
constexpr int PEN = 50;
constexpr int BASELINE = 40;

using Box = std::array<int, 4>;  // first and last column, first and last row
constexpr Box NOTHING{WIDTH, -1, HEIGHT, -1};

// A text renderer without a font, and a layer to draw on.
class OSDTextTest : public GLTest {
 protected:
    void SetUp() override {
        GLTest::SetUp();
        ASSERT_EQ(text.Init(), 0);
        std::uint32_t handle = 0;
        ASSERT_EQ(layers.GLCreateFBO(handle, WIDTH, HEIGHT, GL_RGBA, false), 0);
        ASSERT_TRUE(layers.GetFBOInst(handle, layer));
        recorder::Reset();
    }

    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    void Load(const std::string& font, unsigned int size = 40) {
        ASSERT_EQ(text.LoadFont(TestFont(font), size), 0);
    }

    // On the cleared layer.
    int Draw(const TagGLTextInfo& info) {
        layers.ClearFBOTex(layer, {0, 0, 0, 0});
        return text.DrawText(layer, info, PEN * 2.0F / WIDTH - 1, 1 - BASELINE * 2.0F / HEIGHT);
    }

    // Of the pixels that are full.
    Box DrawnBox() const {
        std::vector<std::uint8_t> pixels(std::size_t{4} * WIDTH * HEIGHT);
        glBindFramebuffer(GL_FRAMEBUFFER, layer.fboId);
        glReadPixels(0, 0, WIDTH, HEIGHT, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        Box box = NOTHING;
        for (int i = 0; i < WIDTH * HEIGHT; ++i) {
            if (pixels[static_cast<std::size_t>(4 * i)] == 255) {
                const int x = i % WIDTH;
                const int y = HEIGHT - 1 - i / WIDTH;
                box = {std::min(box[0], x), std::max(box[1], x), std::min(box[2], y), std::max(box[3], y)};
            }
        }
        return box;
    }

    unsigned int MeasuredWidth(const TagGLTextInfo& info) const {
        unsigned int width = 7;
        unsigned int height = 7;
        EXPECT_EQ(text.GetTextSize(info, width, height), 0);
        EXPECT_EQ(height, 50U);
        return width;
    }

    FBOManager layers{64, 32};
    TagFrameBuffObject layer{};
    OSDText text;
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_TEXT_OSDTEXTTEST_H
