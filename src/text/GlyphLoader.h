#ifndef KIVGLES_TEXT_GLYPHLOADER_H
#define KIVGLES_TEXT_GLYPHLOADER_H

#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H

#include "text/RowPacker.h"

namespace kivgles {

// Loads the glyphs of a face, one at a time, and renders them into bitmaps as GL uploads them: one byte of
// coverage a pixel, top row first, no padding. A face may hold pictures of its glyphs: those are decoded when
// they are rendered, not when they are loaded.
//
// Owner:  whoever walks a text or a character map, for the walk. The face stays the caller's.
// Thread: the one that uses the face.
class GlyphLoader {
 public:
    GlyphLoader(FT_Face loadedFace, bool embolden, const AtlasLimits& atlasLimits);

    // Loads a glyph in the face's current size and style. The slot then has its metrics, those of the bitmap
    // being what rendering makes of it. False when the face cannot, or FreeType would not render it.
    bool Load(unsigned long charCode);

    // Whether the glyph last loaded has room in an atlas. One that has none is never rendered: a font, or a
    // size, may ask for gigabytes.
    bool HasRoom() const { return hasRoom; }

    // Renders the glyph last loaded, if it has room. False when FreeType cannot.
    bool Render();

    FT_GlyphSlot Slot() const { return slot; }

    // These are of the glyph last rendered. Pixels is null for one without ink or room, and valid until the
    // next Load.
    unsigned int Width() const { return slot->bitmap.width; }
    unsigned int Rows() const { return slot->bitmap.rows; }
    bool HasInk() const { return Width() > 0 && Rows() > 0; }
    const unsigned char* Pixels() const { return pixels; }

 private:
    bool LoadWith(FT_Int32 flags);
    bool MeasureOutline();
    bool FindPixels();

    FT_Face face;
    FT_GlyphSlot slot;
    bool bold;
    AtlasLimits limits;
    unsigned long code = 0;  // of the glyph last loaded
    bool hasRoom = false;
    const unsigned char* pixels = nullptr;  // in FreeType's bitmap, or in packed
    std::vector<unsigned char> packed;
};

// The pixels that an outline touches: from left and bottom up to right and top, which are not among them.
struct PixelBox {
    FT_Pos left, bottom, right, top;

    FT_Pos Width() const { return right - left; }
    FT_Pos Rows() const { return top - bottom; }
    // Whether FreeType makes the bitmap.
    bool IsRenderable() const;
};
PixelBox TouchedPixels(const FT_BBox& box);  // in 26.6 fixed point, of any values

// Converts a bitmap of any kind to `width` * `rows` bytes of full-range grey, top row first. False when
// FreeType cannot.
bool PackGreyPixels(FT_Library library, const FT_Bitmap& bitmap, std::vector<unsigned char>& packed);

}  // namespace kivgles

#endif  // KIVGLES_TEXT_GLYPHLOADER_H
