#ifndef KIVGLES_TEXT_FONTATLAS_H
#define KIVGLES_TEXT_FONTATLAS_H

#include <climits>
#include <string>
#include <vector>

#include "text/GlyphAtlas.h"

namespace kivgles {

// Every character of a font in one texture, at one size: the standard style.
//
// Owner:  OSDText. Owns the texture; FreeType's objects live only for a load.
// Thread: draw thread, GL context current. GetGlyphs also on client threads: GLDrawThread's textMutex keeps
//         it apart from loads and the destructor.
// Units:  pixels; the map's texture coordinates are parts of the texture's size.
//
// A font with more rows than GL's largest texture has (any Chinese, Japanese or Korean one) keeps the glyphs
// that fit, in the order of their codes. The others, as far as a text can name them, are in the map with
// their metrics but without texels, and are drawn on demand, from the styled atlas. Those that have no room
// in any atlas at this size have metrics alone.
//
// Operations return 0 or a status of StatusCode.h. After a failed load the atlas has no texture and no glyph.
class FontAtlas {
 public:
    FontAtlas() = default;
    ~FontAtlas();

    FontAtlas(const FontAtlas&) = delete;
    FontAtlas& operator=(const FontAtlas&) = delete;

    // Replaces the atlas by that of a font file at `size` pixels (0 means 40).
    int LoadFontByPath(const std::string& path, unsigned int size);
    // The same for a face that is open, on an empty atlas.
    int LoadFont(FT_Face face, unsigned int size);
    // Empties the atlas. Always 0.
    int DeleteTexture();

    // The steps of LoadFont, in their order.
    int CalculateTexSize(FT_Face face);
    int CreateAtlasTex();
    void FontToTexture(FT_Face face);
    void FontCharInfoToMap(FT_GlyphSlot slot, int x, int y, unsigned long charCode);

    GLuint GetFontTexture() const { return atlas.texture; }
    std::uint32_t GetFontTextureWidth() const { return atlas.textureWidth; }
    std::uint32_t GetFontTextureHeight() const { return atlas.textureHeight; }
    const GlyphMap& GetGlyphs() const { return atlas.glyphs; }

    // Whether a character of the map is held in the texture; if not, whether it has room in the styled atlas.
    bool HasTexels(unsigned long charCode) const;
    bool IsOnDemand(unsigned long charCode) const;
    // The size that the atlas was loaded with, in pixels.
    unsigned int GetPixelSize() const { return pixelSize; }

 private:
    // Loads the characters of the face's map in ascending order, renders those with room that come before the
    // atlas is full, and hands each that loads to `visit(charCode, glyph)`.
    template <typename Visitor>
    void ForEachGlyph(FT_Face face, Visitor visit) const;
    // Whether a glyph has room in any atlas.
    bool HasRoom(unsigned long charCode) const;
    void LogSummary() const;

    GlyphAtlas atlas;
    AtlasLimits limits;                             // as of the load
    unsigned long firstCodeBehindFull = ULONG_MAX;  // from here on no glyph is held
    std::vector<unsigned long> codesWithoutRoom;    // in any atlas, in ascending order
    unsigned int pixelSize = STANDARD_FONT_SIZE;
};

}  // namespace kivgles

#endif  // KIVGLES_TEXT_FONTATLAS_H
