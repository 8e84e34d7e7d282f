#ifndef KIVGLES_TEXT_ROWPACKER_H
#define KIVGLES_TEXT_ROWPACKER_H

#include <algorithm>
#include <climits>

namespace kivgles {

constexpr unsigned int ATLAS_ROW_LIMIT = 1024;  // columns that no row of an atlas reaches

// How large an atlas may become, in pixels.
struct AtlasLimits {
    unsigned int rowWidth = ATLAS_ROW_LIMIT;
    unsigned int height = INT_MAX;

    // Whether a glyph has room in an atlas at all, if only in one of its own.
    bool Admit(unsigned long width, unsigned long rows) const { return width < rowWidth && rows <= height; }
};

// A glyph's top-left corner in an atlas, in pixels.
struct AtlasPlace {
    unsigned int x = 0;
    unsigned int y = 0;
};

// Lays glyphs out left to right in rows, in the order in which they come. A glyph takes one column more than
// its width; a row is as tall as its tallest glyph. The same glyphs get the same places in every pass.
class RowPacker {
 public:
    explicit RowPacker(const AtlasLimits& atlasLimits) : limits(atlasLimits) {}

    // For a glyph that the limits admit. False, and nothing changed, when the atlas has no room left.
    bool Place(unsigned int width, unsigned int rows, AtlasPlace& place) {
        const bool opensRow = pen.x + width + 1 >= limits.rowWidth;
        const AtlasPlace next = opensRow ? AtlasPlace{0, pen.y + rowHeight} : pen;
        const unsigned int nextRowHeight = opensRow ? rows : std::max(rowHeight, rows);
        if (next.y + nextRowHeight > limits.height) {
            return false;
        }
        place = next;
        pen = {next.x + width + 1, next.y};
        rowHeight = nextRowHeight;
        usedWidth = std::max(usedWidth, pen.x);
        return true;
    }

    // The extent of all rows so far.
    unsigned int Width() const { return usedWidth; }
    unsigned int Height() const { return pen.y + rowHeight; }

 private:
    AtlasLimits limits;
    AtlasPlace pen;
    unsigned int rowHeight = 0;
    unsigned int usedWidth = 0;
};

}  // namespace kivgles

#endif  // KIVGLES_TEXT_ROWPACKER_H
