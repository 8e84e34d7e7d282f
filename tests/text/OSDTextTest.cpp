#include <algorithm>
#include <array>

#include <GLES2/gl2.h>

#include "gl/FBOManager.h"
#include "support/Recorder.h"
#include "text/OSDText.h"
#include "text/TextTest.h"

namespace kivgles {
namespace {

constexpr int WIDTH = 256;
constexpr int HEIGHT = 64;
constexpr int PEN = 50;
constexpr int BASELINE = 40;

using Box = std::array<int, 4>;  // first and last column, first and last row
constexpr Box NOTHING{WIDTH, -1, HEIGHT, -1};

// Of the pixels of the layer that are full.
Box DrawnBox(const TagFrameBuffObject& layer) {
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

struct Placement {
    std::u16string text;
    unsigned int measured;
    Box box;
};
const Placement PLACEMENTS[] = {{u"A", 14, {52, 61, 20, 39}},  // plain
                                {u"J", 12, {50, 61, 26, 45}},  // hangs over: stays at the pen, counts in full
                                {u"K", 20, {47, 54, 30, 39}},  // reaches left of the pen
                                {u"L", 0, {46, 51, 16, 19}},   // has no advance
                                {u"M", 10, {48, 57, 30, 39}},  // is as wide as its advance
                                {u"Q", 9, {50, 59, 30, 39}},   // hangs over to the right, from the pen on
                                {u"R", 9, {56, 65, 30, 39}},   // hangs over to the right
                                {u"AJ", 26, {52, 75, 20, 45}},   // the pen moves by A's advance
                                {u"JA", 26, {50, 70, 20, 45}},   // and by J's, which is less than it counts
                                {u"A A", 58, {52, 75, 20, 39}},  // no ink: 30 pixels, the pen stays
                                {u"A?A", 58, {52, 75, 20, 39}},  // missing
                                {u"\xD83D\xDE00", 60, NOTHING},  // a surrogate pair: two missing characters
                                {u"  ", 60, NOTHING},            // spaces only
                                {std::u16string(u"A\0A", 3), 14, {52, 61, 20, 39}},  // ends at its 0
                                {u"", 0, NOTHING}};

using OSDTextTest = GLTest;

TEST_F(OSDTextTest, PlacesAndMeasuresGlyphsByTheirBearingsAndAdvances) {
    OSDText text;
    ASSERT_EQ(text.Init(), 0);
    ASSERT_EQ(text.LoadFont(TestFont("bearings.ttf"), 40), 0);
    FBOManager layers(64, 32);
    std::uint32_t handle = 0;
    TagFrameBuffObject layer{};
    ASSERT_EQ(layers.GLCreateFBO(handle, WIDTH, HEIGHT, GL_RGBA, false), 0);
    ASSERT_TRUE(layers.GetFBOInst(handle, layer));
    for (const TextStyle& style : {STANDARD, STYLED}) {
        for (const Placement& row : PLACEMENTS) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            const TagGLTextInfo request = Request(row.text, style);
            const bool fails = style.size == 0 && row.box == NOTHING;  // its texture would be empty
            layers.ClearFBOTex(layer, {0, 0, 0, 0});
            EXPECT_EQ(text.DrawText(layer, request, PEN * 2.0F / WIDTH - 1, 1 - BASELINE * 2.0F / HEIGHT),
                      fails ? 32 : 0);
            EXPECT_EQ(DrawnBox(layer), row.box);
            unsigned int width = 7;
            unsigned int height = 7;
            EXPECT_EQ(text.GetTextSize(request, width, height), 0);
            EXPECT_EQ(width, row.measured);
            EXPECT_EQ(height, 50U);
        }
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(OSDTextTest, WithoutItsProgramThereIsNoFontAndNoCharacter) {
    OSDText text;
    recorder::Fail("glCreateProgram");
    EXPECT_EQ(text.Init(), 20);
    EXPECT_EQ(text.LoadFont(TestFont("bearings.ttf"), 40), 101);
    const TagGLTextInfo request = Request(u"AA", STYLED);
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(text.GetTextSize(request, width, height), 0);
    EXPECT_EQ(width, 60U);
    EXPECT_EQ(text.DrawText(windowTarget, request, 0, 0), 101);
    GlyphMap glyphs;
    FontStyleAtlas atlas;
    atlas.GetFontGlyphs(request, glyphs);
    atlas.SetFontStyleAtlas(request, nullptr);
    EXPECT_EQ(recorder::Log("E OSDText: OSDText is not inited\n").size(), 2U);
    EXPECT_EQ(recorder::Log("E FontStyleAtlas: font face is null pointer").size(), 2U);
}

}  // namespace
}  // namespace kivgles
