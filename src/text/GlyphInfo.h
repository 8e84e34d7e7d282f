#ifndef KIVGLES_TEXT_GLYPHINFO_H
#define KIVGLES_TEXT_GLYPHINFO_H

#include <map>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace kivgles {

// One glyph's metrics in pixels and its place in an atlas. All zero: an absent glyph.
struct TagGlyphInfo {
    float advanceX;  // pen advance, whole pixels
    float advanceY;  // 0 for horizontal text
    float bitmapWidth;
    float bitmapRows;
    float bitmapLeft;  // from the pen to the bitmap's left edge, signed
    float bitmapTop;   // from the baseline up to the bitmap's top row, signed
    float texX;        // left edge, as part of the atlas's width
    float texY;        // top row, as part of the atlas's height
};

// Glyphs by character code, which is a UTF-16 unit, or for characters beyond those the code in the font's
// map.
using GlyphMap = std::map<unsigned long, TagGlyphInfo>;

// The metrics of the glyph in `slot`, without a place in an atlas.
TagGlyphInfo GlyphMetrics(FT_GlyphSlot slot);

}  // namespace kivgles

#endif  // KIVGLES_TEXT_GLYPHINFO_H
