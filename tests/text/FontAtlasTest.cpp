#include <map>
#include <utility>

#include <gmock/gmock.h>

#include "text/FontAtlas.h"
#include "text/ReferenceAtlas.h"

namespace kivgles {
namespace {

class FontAtlasTest : public GLTest, public testing::WithParamInterface<std::string> {
 protected:
    // No upload was refused, and no FreeType object stays open.
    void TearDown() override {
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        EXPECT_TRUE(recorder::Live("face").empty() && recorder::Live("library").empty());
    }

    FontAtlas atlas;
};

TEST_P(FontAtlasTest, HoldsEveryGlyphAsFreeTypeRendersIt) {
    const ReferenceAtlas expected = MakeReference(GetParam(), STANDARD, nullptr);
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("rows.ttf"), 40), 0);  // nothing stays of a former font
    ASSERT_EQ(atlas.LoadFontByPath(GetParam(), 0), 0);             // 40 pixels
    EXPECT_EQ(atlas.GetFontTextureWidth(), expected.width);
    EXPECT_EQ(atlas.GetFontTextureHeight(), expected.height);
    ExpectGlyphs(atlas.GetGlyphs(), expected);
    ExpectTexels(atlas.GetFontTexture(), expected);
}

INSTANTIATE_TEST_SUITE_P(Fonts, FontAtlasTest,
                         testing::Values(KIVGLES_SANS_FONT, TestFont("bearings.ttf"),
                                         TestFont("outlines.otf"), TestFont("bits.bdf"),
                                         KIVGLES_BITMAP_FONT));

TEST_F(FontAtlasTest, FillsRowsToTheirLastColumnAndLeavesOutWhatHasNoRoom) {
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("rows.ttf"), 40), 0);
    EXPECT_EQ(atlas.GetFontTextureWidth(), 1024U);
    EXPECT_EQ(atlas.GetFontTextureHeight(), 66U);
    using Places = std::map<char, std::pair<long, long>>;
    Places places;
    for (const auto& [code, glyph] : atlas.GetGlyphs()) {
        places[static_cast<char>(code)] = {std::lround(glyph.texX * 1024), std::lround(glyph.texY * 66)};
    }
    EXPECT_EQ(
        places,
        (Places{
            {'A', {0, 0}}, {'B', {511, 0}}, {'C', {0, 30}}, {'D', {0, 50}}, {'E', {0, 55}}, {'G', {0, 62}}}));
}

TEST_F(FontAtlasTest, LogsASizeOrAGlyphThatTheFontRefusesAndKeepsTheRest) {
    recorder::Fail("FT_Set_Pixel_Sizes");
    recorder::Fail("FT_Load_Char", 2);  // of A and B, in the first pass: there is no room for B in the second
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("bits.bdf"), 40), 0);
    EXPECT_EQ(recorder::Log("E "),
              (Lines{"E FontAtlas: set pixel size fail", "E FontAtlas: Loading character 66 failed!\n"}));
    EXPECT_EQ(atlas.GetFontTextureWidth(), 12U);
    EXPECT_EQ(atlas.GetGlyphs().count('A'), 1U);
    EXPECT_EQ(atlas.GetGlyphs().count('B'), 0U);
}

TEST_F(FontAtlasTest, GlyphsBeyondTheLargestTextureKeepTheirMetricsWithoutTexels) {
    LimitTextureSize(79);  // one row of pixels too few for a fourth row of three glyphs
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("many.ttf"), 40), 0);
    EXPECT_EQ(atlas.GetFontTextureWidth(), 63U);
    EXPECT_EQ(atlas.GetFontTextureHeight(), 60U);
    EXPECT_EQ(recorder::Log("W ").back(),
              "W FontAtlas: 9 characters are held in the atlas, 17 are drawn on demand\n");
    EXPECT_EQ(recorder::Counts()["glTexSubImage2D"], 9);
    EXPECT_FLOAT_EQ(atlas.GetGlyphs().at('I').texX, 42.0F / 63);
    for (unsigned long code = 'A'; code <= 'Z'; ++code) {
        EXPECT_EQ(atlas.HasTexels(code), code <= 'I');
        EXPECT_EQ(atlas.GetGlyphs().at(code).advanceX, 24);
        EXPECT_TRUE(code <= 'I' || atlas.GetGlyphs().at(code).texX + atlas.GetGlyphs().at(code).texY == 0);
    }
    recorder::Reset();  // and with GL's own answer again
    ASSERT_EQ(atlas.LoadFontByPath(TestFont("many.ttf"), 40), 0);
    EXPECT_TRUE(atlas.HasTexels('Z'));
    EXPECT_EQ(recorder::Log("W "), Lines{"W FontAtlas: Generated a 546 x 20 (10 kb) texture atlas\n"});
}

TEST_F(FontAtlasTest, AFontOfTensOfThousandsOfCharactersLosesNone) {
    const std::u16string text = u"A\u4E00\u9FA5";
    const ReferenceAtlas reference = MakeReference(KIVGLES_CJK_FONT, STANDARD, &text);
    ASSERT_EQ(atlas.LoadFontByPath(KIVGLES_CJK_FONT, 40), 0);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    EXPECT_LE(atlas.GetFontTextureHeight(), static_cast<unsigned int>(largest));
    EXPECT_GT(atlas.GetGlyphs().size(), 20000U);
    EXPECT_FALSE(atlas.HasTexels(atlas.GetGlyphs().rbegin()->first));
    for (const ReferenceGlyph& glyph : reference.glyphs) {
        EXPECT_EQ(atlas.GetGlyphs().at(glyph.code).bitmapWidth, glyph.metrics.bitmapWidth);
    }
}

}  // namespace
}  // namespace kivgles
