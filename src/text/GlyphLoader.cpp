#include "text/GlyphLoader.h"

#include FT_BITMAP_H
#include FT_OUTLINE_H

namespace kivgles {

namespace {

constexpr FT_Pos BOLD_STRENGTH = 64;  // 26.6 fixed point: one pixel
constexpr unsigned int FULL_GREY = 255;

// FreeType's versions refuse a bitmap by its sides or by its edges.
constexpr FT_Pos MAX_SIDE = 0x7FFF;
constexpr FT_Pos MIN_EDGE = -0x8000;
constexpr FT_Pos MAX_EDGE = 0x7FFF;

// 26.6 fixed point to whole pixels, upwards. Nothing is added before the shift, where it could overflow.
FT_Pos CeilPixels(FT_Pos position) { return (position >> 6) + ((position & 63) != 0 ? 1 : 0); }

// By how much FreeType enlarges an outline to render it: more where its contours may overlap.
FT_Pos RenderedScale([[maybe_unused]] const FT_Outline& outline) {
#ifdef FT_OUTLINE_OVERLAP  // since FreeType 2.10.3
    if ((outline.flags & FT_OUTLINE_OVERLAP) != 0) {
        return 4;
    }
#endif
    return 1;
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
    code = charCode;
    return LoadWith(FT_LOAD_BITMAP_METRICS_ONLY);  // the flag means nothing to outlines
}

bool GlyphLoader::LoadWith(FT_Int32 flags) {
    pixels = nullptr;
    hasRoom = false;
    if (slot == nullptr || FT_Load_Char(face, code, flags) != 0) {
        return false;
    }
    if (slot->format == FT_GLYPH_FORMAT_OUTLINE && !MeasureOutline()) {
        return false;
    }
    hasRoom = limits.Admit(slot->bitmap.width, slot->bitmap.rows);
    return true;
}

// FreeType says what an outline's bitmap will be, if at all, before the outline is emboldened.
bool GlyphLoader::MeasureOutline() {
    if (bold) {
        (void)FT_Outline_Embolden(&slot->outline, BOLD_STRENGTH);  // one without area stays as it is
    }
    FT_BBox box;
    FT_Outline_Get_CBox(&slot->outline, &box);
    const PixelBox pixelBox = TouchedPixels(box);
    if (!pixelBox.IsRenderable() || pixelBox.Width() * RenderedScale(slot->outline) > MAX_SIDE) {
        return false;
    }
    slot->bitmap.width = static_cast<unsigned int>(pixelBox.Width());
    slot->bitmap.rows = static_cast<unsigned int>(pixelBox.Rows());
    slot->bitmap_left = static_cast<FT_Int>(pixelBox.left);
    slot->bitmap_top = static_cast<FT_Int>(pixelBox.top);
    return true;
}

bool GlyphLoader::Render() {
    // In place of a damaged picture there may then be an outline, with or without room.
    const bool isPicture = hasRoom && slot->format == FT_GLYPH_FORMAT_BITMAP;
    if (isPicture && !LoadWith(FT_LOAD_DEFAULT)) {
        return false;
    }
    return !hasRoom || (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) == 0 && FindPixels());
}

bool GlyphLoader::FindPixels() {
    const FT_Bitmap& bitmap = slot->bitmap;
    if (!HasInk()) {
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

bool PixelBox::IsRenderable() const {
    return left >= MIN_EDGE && bottom >= MIN_EDGE && right <= MAX_EDGE && top <= MAX_EDGE &&
           Width() <= MAX_SIDE && Rows() <= MAX_SIDE;
}

PixelBox TouchedPixels(const FT_BBox& box) {
    return {box.xMin >> 6, box.yMin >> 6, CeilPixels(box.xMax), CeilPixels(box.yMax)};
}

}  // namespace kivgles
