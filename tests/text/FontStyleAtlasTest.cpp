#include <utility>

#include "text/FontStyleAtlas.h"
#include "text/ReferenceAtlas.h"

namespace kivgles {
namespace {

class FontStyleAtlasTest : public GLTest,
                           public testing::WithParamInterface<std::pair<const char*, TextStyle>> {
 protected:
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    FontStyleAtlas atlas;
    GLuint texture = 0;
};

TEST_P(FontStyleAtlasTest, BuildsAndMeasuresWhatFreeTypeRendersWhateverCameBefore) {
    const auto& [font, style] = GetParam();
    const std::u16string text = u"ABBA-Wgj\u0416\u4E00";  // repeated, and what the font lacks
    const ReferenceAtlas expected = MakeReference(font, style, &text);

    ASSERT_EQ(atlas.LoadFontByPath(font), 0);
    ASSERT_EQ(atlas.GetFontTexture(Request(text, OTHER), texture), 0);
    ASSERT_EQ(atlas.GetFontTexture(Request(text, style), texture), 0);
    EXPECT_EQ(atlas.GetFontTextureWidth(), expected.width);
    EXPECT_EQ(atlas.GetFontTextureHeight(), expected.height);
    ExpectGlyphs(atlas.GetGlyphs(), expected);
    ExpectTexels(texture, expected);

    recorder::Record();
    GlyphMap measured;
    atlas.GetFontGlyphs(Request(text, OTHER), measured);
    atlas.GetFontGlyphs(Request(text, style), measured);
    ExpectGlyphs(measured, expected, false);
    for (const std::string& call : recorder::Calls()) {
        EXPECT_NE(call.compare(0, 2, "gl"), 0) << call;
    }
}

INSTANTIATE_TEST_SUITE_P(Styles, FontStyleAtlasTest,
                         testing::Values(std::pair{KIVGLES_SANS_FONT, STYLED},
                                         std::pair{KIVGLES_SANS_FONT, TextStyle{16}},
                                         std::pair{KIVGLES_SANS_FONT, TextStyle{40, true, false}},
                                         std::pair{KIVGLES_SANS_FONT, TextStyle{40, false, true}},
                                         std::pair{KIVGLES_SANS_FONT, TextStyle{90, true, true}},
                                         std::pair{KIVGLES_BITMAP_FONT, TextStyle{32, false, true}}));

TEST_F(FontStyleAtlasTest, ASpaceTakesAColumnOfTheSizeButIsNotInTheMap) {
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("space_breaks_row.ttf")), 0);
    ASSERT_EQ(atlas.GetFontTexture(Request(u"A B", STYLED), texture), 0);
    // With the space's column B starts a row, without it B ends the first: there is room for both.
    EXPECT_EQ(atlas.GetFontTextureWidth(), 1023U);
    EXPECT_EQ(atlas.GetFontTextureHeight(), 20U);
    EXPECT_EQ(atlas.GetGlyphs().size(), 2U);
    EXPECT_FLOAT_EQ(atlas.GetGlyphs().at('B').texX, 502.0F / 1023.0F);
    EXPECT_EQ(recorder::Log("E "), Lines{"E FontStyleAtlas: Char 32 is not exit\n"});

    GlyphMap measured;
    atlas.GetFontGlyphs(Request(u"A B", STYLED), measured);
    EXPECT_EQ(measured.at(' ').bitmapWidth, 0);
    EXPECT_EQ(measured.at(' ').advanceX, 10);
}

TEST_F(FontStyleAtlasTest, LogsASizeOrAGlyphThatTheFontRefusesAndKeepsTheRest) {
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("bits.bdf")), 0);
    recorder::Fail("FT_Set_Pixel_Sizes");
    recorder::Fail("FT_Load_Char");
    GlyphMap measured;
    atlas.GetFontGlyphs(Request(u"BA", {40, true}), measured);  // a bitmap cannot be emboldened
    EXPECT_EQ(measured.size(), 1U);
    EXPECT_EQ(measured['A'].bitmapWidth, 11);
    EXPECT_EQ(recorder::Log("E "),
              (Lines{"E FontStyleAtlas: set pixel size fail", "E FontStyleAtlas: Char 66 is not exit\n"}));
}

TEST_F(FontStyleAtlasTest, LeavesOutWhatDoesNotRenderInEitherPassOrWhenMeasured) {
    const TagGLTextInfo request = Request(u"AB", STYLED);
    ASSERT_EQ(atlas.LoadFontByPath(KIVGLES_SANS_FONT), 0);
    recorder::Fail("FT_Render_Glyph", 1);  // the size has no room for A: neither it nor B is put outside
    EXPECT_EQ(atlas.GetFontTexture(request, texture), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    recorder::Fail("FT_Render_Glyph", 3);  // the upload of A
    EXPECT_EQ(atlas.GetFontTexture(request, texture), 0);
    EXPECT_EQ(atlas.GetGlyphs().count('A'), 0U);
    EXPECT_EQ(atlas.GetGlyphs().count('B'), 1U);
    recorder::Fail("FT_Render_Glyph");
    GlyphMap measured;
    atlas.GetFontGlyphs(request, measured);
    EXPECT_EQ(measured.size(), 1U);
    atlas.SetFontStyleAtlas(request, nullptr);
    EXPECT_EQ(recorder::Log("E FontStyleAtlas: font face is null pointer").size(), 1U);
}

TEST_F(FontStyleAtlasTest, AGlyphWithoutRoomIsAbsent) {
    for (const unsigned int largest : {0U, 32U}) {
        SCOPED_TRACE(largest);
        LimitTextureSize(largest);
        ASSERT_EQ(atlas.LoadFontByPath(TestFont("rows.ttf")), 0);
        ASSERT_EQ(atlas.GetFontTexture(Request(u"FGG", STYLED), texture), 0);
        GlyphMap measured;
        atlas.GetFontGlyphs(Request(u"FGG", STYLED), measured);
        EXPECT_EQ(measured.size(), 1U);
        EXPECT_EQ(atlas.GetGlyphs().size(), 1U);
        EXPECT_EQ(atlas.GetFontTextureWidth(), 4U);
    }
}

}  // namespace
}  // namespace kivgles
