// Glyphs that are larger than an atlas, or than anything: make_fonts.py has their sizes, at 40 pixels.

#include <climits>
#include <cstdlib>
#include <limits>
#include <string>

#include <ft2build.h>
#include <gmock/gmock.h>
#include FT_MODULE_H

#include "gl/EGLManager.h"
#include "support/Recorder.h"
#include "text/OSDText.h"

namespace kivgles {
namespace {

using testing::Contains, testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::Not,
    testing::SizeIs;

constexpr char ROWS[] = KIVGLES_TEST_FONTS "/rows.ttf";

// Has a context, so that atlases can be made.
class GlyphSizes : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(egl.EGLSetupContext(), 0);
        ASSERT_EQ(egl.CreatePBufferSurface(), 0);
        ASSERT_EQ(egl.MakeCurrent(), 0);
        recorder::Reset();
    }

    static TagGLTextInfo Request(const std::u16string& text, unsigned int size) {
        TagGLTextInfo request{};
        request.text = text.c_str();
        request.textLength = static_cast<std::uint32_t>(text.size());
        request.fontSize = size;
        return request;
    }
    void Load(const std::string& font, unsigned int size) {
        ASSERT_EQ(text.Init(), 0);
        ASSERT_EQ(text.LoadFont(std::string(KIVGLES_TEST_FONTS) + font, size), 0);
    }
    unsigned int Width(const TagGLTextInfo& request) const {
        unsigned int width = 0;
        unsigned int height = 0;
        EXPECT_EQ(text.GetTextSize(request, width, height), 0);
        return width;
    }
    // What is called to draw the text in the upper left corner of a target of 2,000 by 100 pixels.
    std::vector<std::string> CallsToDraw(const TagGLTextInfo& request) {
        recorder::Record(false);
        EXPECT_EQ(text.DrawText({FBO_HANDLE_BASE, 0, 0, 2000, 100}, request, -1, 0), 0);
        return recorder::Calls();
    }

    EGLManager egl;
    OSDText text;  // without an atlas yet, and gone before the context
};

TEST_F(GlyphSizes, AreMeasuredWithoutRoomAsWith) {
    FontStyleAtlas atlas;
    ASSERT_EQ(atlas.LoadFontByPath(ROWS), 0);
    const std::u16string units = u"C";  // 600 by 20
    for (const bool bold : {false, true}) {
        for (const bool italic : {false, true}) {
            TagGlyphInfo glyphs[2];
            for (const unsigned int scale : {1U, 2U}) {
                TagGLTextInfo request = Request(units, 40 * scale);
                request.bold = bold ? 1 : 0;
                request.italic = italic ? 1 : 0;
                GlyphMap map;
                atlas.GetFontGlyphs(request, map);
                glyphs[scale - 1] = map[u'C'];
            }
            const float slant = italic ? 4 : 0;  // a fifth of the height
            EXPECT_EQ(glyphs[1].advanceX, 1200);
            EXPECT_EQ(glyphs[1].bitmapWidth, glyphs[0].bitmapWidth + 600 + slant);
            EXPECT_EQ(glyphs[1].bitmapRows, glyphs[0].bitmapRows + 20);
            EXPECT_EQ(glyphs[1].bitmapLeft, glyphs[0].bitmapLeft);
            EXPECT_EQ(glyphs[1].bitmapTop, glyphs[0].bitmapTop + 20);
        }
    }
}

// M is as wide as its advance upright, and two pixels wider slanted.
TEST_F(GlyphSizes, AreMeasuredUprightByWhatThePenMovesAndSlantedByMore) {
    Load("/bearings.ttf", 40);
    const std::u16string units = u"MMMMMMMMMM";
    TagGLTextInfo slanted = Request(units, 40);
    slanted.italic = 1;
    EXPECT_EQ(Width(Request(units, 40)), 100U);
    EXPECT_EQ(Width(slanted), 120U);

    const std::u16string behind = units + u"A";  // which begins two pixels right of the pen
    slanted.text = behind.c_str();
    slanted.textLength = 11;
    EXPECT_THAT(CallsToDraw(slanted), Contains(HasSubstr("at 102 30 116 50 ")));
}

TEST_F(GlyphSizes, AddUpToTheLargestNumberAndNoFurther) {
    Load("/advance.ttf", 40);
    const std::u16string units = std::u16string(132, u'A') + u"??";
    EXPECT_EQ(Width(Request(units, 40000)), UINT_MAX);
}

TEST_F(GlyphSizes, WithoutRoomInTheStandardStyleLeaveTheOtherStyles) {
    Load("/rows.ttf", 80);
    const std::u16string units = u"C";
    EXPECT_EQ(Width(Request(units, 40)), 1200U);  // the standard style, loaded at 80 pixels
    EXPECT_EQ(Width(Request(units, 20)), 300U);
    EXPECT_THAT(recorder::Log("W FontAtlas"), SizeIs(1)) << "no demand for them can be met";

    EXPECT_THAT(CallsToDraw(Request(units, 20)), Contains("glDrawArrays(GL_TRIANGLES, 0, 6)"));
    EXPECT_THAT(recorder::Log("E OSDText"), IsEmpty());
}

// G, two by eight pixels, stands where the pen is. C is 1,200 wide.
TEST_F(GlyphSizes, WithoutRoomMoveThePenAsTheyAreMeasured) {
    Load("/rows.ttf", 80);
    const std::u16string units = u"CG";
    for (const unsigned int size : {40U, 80U}) {  // the standard style, which has 80 pixels here, and another
        EXPECT_EQ(Width(Request(u"C", size)), 1200U);
        EXPECT_THAT(CallsToDraw(Request(units, size)),
                    Contains(HasSubstr("at 1200 42 1202 50 from 0 0 2 8")));
    }
}

// In a texture of 54 pixels there is room for six of these, in rows of two.
TEST_F(GlyphSizes, OfATextThatFillsItsAtlasLeaveGapsBehind) {
    recorder::Fail("glGetIntegerv", 1, true, 54);
    Load("/many.ttf", 36);
    EXPECT_THAT(CallsToDraw(Request(u"ABCDEFGA", 36)),
                Contains(HasSubstr("at 155 32 174 50 from 0 0 19 18")));
    EXPECT_THAT(recorder::Log("E FontStyleAtlas"), ElementsAre("E FontStyleAtlas: Char 71 is not exit\n",
                                                               "E FontStyleAtlas: Char 65 is not exit\n"));
}

TEST_F(GlyphSizes, ThatFreeTypeRefusesCountAsNotLoaded) {
    Load("/rows.ttf", 1400);  // F is 35,840 pixels wide, B 17,885
    const std::vector<std::string> load = recorder::Log("E FontAtlas");
    EXPECT_THAT(load, Contains("E FontAtlas: Loading character 70 failed!\n").Times(2));
    EXPECT_THAT(load, Not(Contains("E FontAtlas: Loading character 66 failed!\n")));

    FontStyleAtlas styled;
    ASSERT_EQ(styled.LoadFontByPath(ROWS), 0);
    const std::u16string units = u"FBG";
    GlyphMap measured;
    styled.GetFontGlyphs(Request(units, 1400), measured);
    EXPECT_EQ(measured.count(u'F'), 0U);
    EXPECT_EQ(measured[u'B'].bitmapWidth, 17885);
    unsigned int texture = 0;
    EXPECT_EQ(styled.GetFontTexture(Request(units, 1400), texture), 0);
    EXPECT_THAT(recorder::Log("E FontStyleAtlas"),
                Contains("E FontStyleAtlas: Char 70 is not exit\n").Times(3));
}

TEST_F(GlyphSizes, WithoutRoomAreNeitherHeldNorDrawnOnDemand) {
    recorder::Fail("glGetIntegerv", 1, true, 64);
    FontAtlas atlas;
    EXPECT_EQ(atlas.LoadFontByPath(KIVGLES_TEST_FONTS "/full.ttf", 40), 0);
    EXPECT_THAT(recorder::Log("W FontAtlas"),
                Contains("W FontAtlas: 1 characters are held in the atlas, 2 are drawn on demand\n"));
}

TEST_F(GlyphSizes, OfCharactersThatNoTextNamesAreNotSaidToBeDrawnOnDemand) {
    recorder::Fail("glGetIntegerv", 1, true, 64);
    FontAtlas atlas;
    EXPECT_EQ(atlas.LoadFontByPath(KIVGLES_TEST_FONTS "/beyond_units.ttf", 40), 0);
    EXPECT_EQ(atlas.GetGlyphs().size(), 1U);
    EXPECT_THAT(recorder::Log("W FontAtlas"), SizeIs(1));
}

// The picture of B has 10,000 by 10,000 pixels, that of D is damaged.
TEST(Pictures, AreDecodedOnlyWhereTheyHaveRoom) {
    FT_MemoryRec_ smallPieces{nullptr,
                              [](FT_Memory, long size) -> void* {
                                  return size < 1000000 ? std::malloc(static_cast<std::size_t>(size))
                                                        : nullptr;
                              },
                              [](FT_Memory, void* piece) { std::free(piece); },
                              [](FT_Memory, long, long size, void* piece) -> void* {
                                  return std::realloc(piece, static_cast<std::size_t>(size));
                              }};
    FT_Library library = nullptr;
    ASSERT_EQ(FT_New_Library(&smallPieces, &library), 0);
    FT_Add_Default_Modules(library);
    FT_Face face = nullptr;
    ASSERT_EQ(FT_New_Face(library, KIVGLES_TEST_FONTS "/pictures.ttf", 0, &face), 0);
    ASSERT_EQ(FT_Set_Pixel_Sizes(face, 0, 40), 0);

    GlyphLoader glyph(face, false, AtlasLimits());
    EXPECT_TRUE(glyph.Load('B') && glyph.Render());
    EXPECT_EQ(GlyphMetrics(glyph.Slot()).bitmapWidth, 10000);
    EXPECT_EQ(glyph.Pixels(), nullptr);
    ASSERT_TRUE(glyph.Load('A') && glyph.Render());
    EXPECT_EQ(glyph.Width(), 20U);
    EXPECT_EQ(glyph.Rows(), 10U);
    EXPECT_EQ(std::vector<unsigned char>(glyph.Pixels(), glyph.Pixels() + 200),
              std::vector<unsigned char>(200, 255));
    EXPECT_TRUE(glyph.Load('D'));
    EXPECT_FALSE(glyph.Render());
    FT_Done_Face(face);
    FT_Done_Library(library);
}

TEST(PixelBoxes, OfHostileOutlinesDoNotOverflow) {
    using Limits = std::numeric_limits<FT_Pos>;
    const PixelBox whole = TouchedPixels({Limits::min(), -1, Limits::max(), 1});
    EXPECT_EQ(whole.Width(), Limits::max() / 32 + 1);
    EXPECT_EQ(whole.Rows(), 2);
    EXPECT_FALSE(whole.IsRenderable());
    EXPECT_TRUE(TouchedPixels({0, 0, 0x7FFF * 64, 64}).IsRenderable());
    EXPECT_FALSE(TouchedPixels({0, 0, 0x7FFF * 64 + 1, 64}).IsRenderable());
}

}  // namespace
}  // namespace kivgles
