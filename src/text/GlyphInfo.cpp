#include "text/GlyphInfo.h"

#include <cstdint>

namespace kivgles {

namespace {

// From 26.6 fixed point, read as an unsigned number.
float WholePixels(FT_Pos position) { return static_cast<float>(static_cast<std::uint32_t>(position) >> 6); }

}  // namespace

TagGlyphInfo GlyphMetrics(FT_GlyphSlot slot) {
    TagGlyphInfo glyph{};
    glyph.advanceX = WholePixels(slot->advance.x);
    glyph.advanceY = WholePixels(slot->advance.y);
    glyph.bitmapWidth = static_cast<float>(slot->bitmap.width);
    glyph.bitmapRows = static_cast<float>(slot->bitmap.rows);
    glyph.bitmapLeft = static_cast<float>(slot->bitmap_left);
    glyph.bitmapTop = static_cast<float>(slot->bitmap_top);
    return glyph;
}

}  // namespace kivgles
