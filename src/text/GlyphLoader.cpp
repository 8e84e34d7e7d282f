#include "text/GlyphLoader.h"

#include FT_BITMAP_H
#include FT_OUTLINE_H

namespace kivgles {

namespace {

constexpr FT_Pos BOLD_STRENGTH = 64;  // 26.6 fixed point: one pixel
constexpr unsigned int FULL_GREY = 255;

// The pixels that an extent in 26.6 fixed point touches.
unsigned long WholePixels(FT_Pos low, FT_Pos high) {
    return static_cast<unsigned long>(((high + 63) >> 6) - (low >> 6));
}

bool IsTightGrey(const FT_Bitmap& bitmap) {
    return bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && bitmap.pitch >= 0 &&
           static_cast<unsigned int>(bitmap.pitch) == bitmap.width;
}

// Row `row` from the top; a negative pitch means that the rows are stored bottom row first.
const unsigned char* RowPixels(const FT_Bitmap& bitmap, unsigned int row) {
    const bool upwards = bitmap.pitch < 0;
    const auto pitch = static_cast<std::size_t>(upwards ? -bitmap.pitch : bitmap.pitch);
    return bitmap.buffer + pitch * (upwards ? bitmap.rows - 1 - row : row);
}

}  // namespace

GlyphLoader::GlyphLoader(FT_Face loadedFace, bool embolden, const AtlasLimits& atlasLimits)
    : face(loadedFace), slot(loadedFace->glyph), bold(embolden), limits(atlasLimits) {}

bool GlyphLoader::Load(unsigned long charCode) {
    pixels = nullptr;
    hasRoom = false;
    if (slot == nullptr || FT_Load_Char(face, charCode, FT_LOAD_DEFAULT) != 0) {
        return false;
    }
    if (bold && slot->format == FT_GLYPH_FORMAT_OUTLINE) {
        (void)FT_Outline_Embolden(&slot->outline, BOLD_STRENGTH);  // one without area stays as it is
    }
    hasRoom = FitsLimits();
    return true;
}

bool GlyphLoader::FitsLimits() const {
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE) {
        return limits.Admit(slot->bitmap.width, slot->bitmap.rows);
    }
    FT_BBox box;
    FT_Outline_Get_CBox(&slot->outline, &box);
    return limits.Admit(WholePixels(box.xMin, box.xMax), WholePixels(box.yMin, box.yMax));
}

bool GlyphLoader::Render() {
    return !hasRoom || (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) == 0 && FindPixels());
}

bool GlyphLoader::FindPixels() {
    const FT_Bitmap& bitmap = slot->bitmap;
    if (bitmap.width == 0 || bitmap.rows == 0) {
        return true;
    }
    if (bitmap.buffer == nullptr) {
        return false;
    }
    if (IsTightGrey(bitmap)) {
        pixels = bitmap.buffer;
        return true;
    }
    if (!PackGreyPixels(slot->library, bitmap, packed)) {
        return false;
    }
    pixels = packed.data();
    return true;
}

bool PackGreyPixels(FT_Library library, const FT_Bitmap& bitmap, std::vector<unsigned char>& packed) {
    FT_Bitmap grey;
    FT_Bitmap_Init(&grey);
    const bool converted = FT_Bitmap_Convert(library, &bitmap, &grey, 1) == 0;
    if (converted) {
        const unsigned int scale = FULL_GREY / (grey.num_grays - 1U);  // of 2, 4, 16 or 256 greys
        packed.clear();
        packed.reserve(static_cast<std::size_t>(grey.width) * grey.rows);
        for (unsigned int row = 0; row < grey.rows; ++row) {
            const unsigned char* const source = RowPixels(grey, row);
            for (unsigned int x = 0; x < grey.width; ++x) {
                packed.push_back(static_cast<unsigned char>(source[x] * scale));
            }
        }
    }
    FT_Bitmap_Done(library, &grey);
    return converted;
}

}  // namespace kivgles
