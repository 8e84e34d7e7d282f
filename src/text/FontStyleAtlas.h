#ifndef KIVGLES_TEXT_FONTSTYLEATLAS_H
#define KIVGLES_TEXT_FONTSTYLEATLAS_H

#include <string>

#include "kivgles/KivGLRecords.h"
#include "text/GlyphAtlas.h"

namespace kivgles {

// The glyphs of one text in one texture, rebuilt for every request in another size, bold or italic; and the
// measuring of such texts, without GL.
//
// Owner:  OSDText. Owns the FreeType library, both faces (of one file) and the texture.
// Thread: draw thread, GL context current. GetFontGlyphs on client threads: it uses a face of its own, so it
//         may overlap drawing; GLDrawThread's textMutex keeps it apart from loads and the destructor.
// Units:  pixels; the map's texture coordinates are parts of the texture's size.
//
// Operations return 0 or a status of StatusCode.h.
class FontStyleAtlas {
 public:
    FontStyleAtlas() = default;
    ~FontStyleAtlas();

    FontStyleAtlas(const FontStyleAtlas&) = delete;
    FontStyleAtlas& operator=(const FontStyleAtlas&) = delete;

    // Closes the font held before and opens another. The last texture stays until the next request.
    int LoadFontByPath(const std::string& path);

    // Builds the texture of a request's text. After a failure there is none, and `textureOut` is as it was.
    int GetFontTexture(const TagGLTextInfo& info, unsigned int& textureOut);
    // Drops the texture; the font stays open. Always 0.
    int DeleteTexture();

    // The steps of GetFontTexture, in their order.
    void SetFontStyleAtlas(const TagGLTextInfo& info, FT_Face styledFace) const;
    int CalculateTexSize(const TagGLTextInfo& info);
    int CreateStyleTex();
    void FontToTexture(const TagGLTextInfo& info);
    void FontCharInfoToMap(FT_GlyphSlot slot, int x, int y, unsigned long charCode);

    // Client thread: enters the metrics of a text's characters into `out`, however large they are. Without a
    // font `out` stays as it was.
    void GetFontGlyphs(const TagGLTextInfo& info, GlyphMap& out) const;

    const GlyphMap& GetGlyphs() const { return atlas.glyphs; }
    std::uint32_t GetFontTextureWidth() const { return atlas.textureWidth; }
    std::uint32_t GetFontTextureHeight() const { return atlas.textureHeight; }

 private:
    void CloseFont();

    FT_Face sizeFace = nullptr;  // client threads, for measuring
    FT_Face face = nullptr;      // draw thread, for the texture
    FT_Library library = nullptr;
    GlyphAtlas atlas;
    AtlasLimits limits;  // as of the load
};

}  // namespace kivgles

#endif  // KIVGLES_TEXT_FONTSTYLEATLAS_H
