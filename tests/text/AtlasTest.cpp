#include <utility>

#include "text/FontAtlas.h"
#include "text/FontStyleAtlas.h"
#include "text/ReferenceAtlas.h"

namespace kivgles {
namespace {

class AtlasTest : public GLTest {
 protected:
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    template <typename Atlas>
    static void ExpectAtlas(const Atlas& atlas, GLuint texture, const ReferenceAtlas& expected) {
        EXPECT_EQ(atlas.GetFontTextureWidth(), expected.width);
        EXPECT_EQ(atlas.GetFontTextureHeight(), expected.height);
        ExpectGlyphs(atlas.GetGlyphs(), expected);
        ExpectTexels(texture, expected);
    }
};

TEST_F(AtlasTest, OfAFontHoldsEveryGlyphAsFreeTypeRendersItWhateverCameBefore) {
    FontAtlas atlas;
    for (const std::string& font :
         {std::string(KIVGLES_SANS_FONT), TestFont("bearings.ttf"), TestFont("outlines.otf"),
          TestFont("bits.bdf"), std::string(KIVGLES_BITMAP_FONT)}) {
        SCOPED_TRACE(font);
        ASSERT_EQ(atlas.LoadFontByPath(font, 0), 0);  // 40 pixels
        ExpectAtlas(atlas, atlas.GetFontTexture(), MakeReference(font, STANDARD, nullptr));
    }
}

TEST_F(AtlasTest, OfAStyleHoldsAndMeasuresTheTextWhateverCameBefore) {
    const std::u16string text = u"ABBA-Wgj\u0416\u4E00";  // repeated, and what the font lacks
    for (const auto& [font, style] : {std::pair(KIVGLES_SANS_FONT, STYLED),
                                      {KIVGLES_SANS_FONT, {16}},
                                      {KIVGLES_SANS_FONT, {40, true, false}},
                                      {KIVGLES_SANS_FONT, {40, false, true}},
                                      {KIVGLES_SANS_FONT, {90, true, true}},
                                      {KIVGLES_BITMAP_FONT, {32, false, true}}}) {
        SCOPED_TRACE(testing::PrintToString(style));
        const ReferenceAtlas expected = MakeReference(font, style, &text);
        FontStyleAtlas atlas;
        GLuint texture = 0;
        ASSERT_EQ(atlas.LoadFontByPath(font), 0);
        ASSERT_EQ(atlas.GetFontTexture(Request(text, OTHER), texture), 0);
        ASSERT_EQ(atlas.GetFontTexture(Request(text, style), texture), 0);
        ExpectAtlas(atlas, texture, expected);
        GlyphMap measured;
        atlas.GetFontGlyphs(Request(text, OTHER), measured);
        atlas.GetFontGlyphs(Request(text, style), measured);
        ExpectGlyphs(measured, expected, false);
    }
}

}  // namespace
}  // namespace kivgles
