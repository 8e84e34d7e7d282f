#ifndef KIVGLES_BENCH_BAREFONT_H
#define KIVGLES_BENCH_BAREFONT_H

#include <array>
#include <memory>
#include <string>

#include <GLES2/gl2.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include "Scene.h"

namespace bench {

// In pixels; s and t are the place in the atlas as parts of its size.
struct Glyph {
    float advance, width, rows, left, top, s, t;
};

// Glyphs by text unit: a look-up is two array accesses and never allocates.
class GlyphTable {
 public:
    // Null for a character without ink or unknown.
    const Glyph* Find(char16_t unit) const {
        const Page* const page = pages[unit >> 8].get();
        const Glyph* const glyph = page == nullptr ? nullptr : &(*page)[unit & 0xFF];
        return glyph == nullptr || glyph->width == 0.0F || glyph->rows == 0.0F ? nullptr : glyph;
    }
    void Set(char16_t unit, const Glyph& glyph);

 private:
    using Page = std::array<Glyph, 256>;
    std::array<std::unique_ptr<Page>, 256> pages;
};

// An alpha texture with glyphs in it.
struct Atlas {
    GLuint texture = 0;
    int width = 0;
    int height = 0;
    GlyphTable glyphs;
};

// The glyphs of one font, by the GL and FreeType calls that the library makes for them.
class BareFont {
 public:
    // All characters at STANDARD_SIZE go into the standard atlas, as far as there is room in a texture.
    void Load(const std::string& path);
    const Atlas& Standard() const { return standard; }

    // The characters of one line in its style, until the next line.
    const Atlas& BuildStyled(const Line& line);

 private:
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_Face sizeFace = nullptr;  // only there: the library measures on a face of its own
    Atlas standard;
    Atlas styled;
};

}  // namespace bench

#endif  // KIVGLES_BENCH_BAREFONT_H
