#include "text/FontStyleAtlas.h"

#include <algorithm>

#include <android/log.h>

#include "StatusCode.h"
#include "text/FontFile.h"
#include "text/TextUnits.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "FontStyleAtlas";

// 16.16 fixed point: x' = x + 0.2 y, which slants to the right.
constexpr FT_Matrix ITALIC_MATRIX{0x10000, 0x3333, 0, 0x10000};

}  // namespace

FontStyleAtlas::~FontStyleAtlas() {
    DiscardAtlas(atlas);
    CloseFont();
    __android_log_print(ANDROID_LOG_WARN, TAG, "~FontStyleAtlas\n");
}

int FontStyleAtlas::LoadFontByPath(const std::string& path) {
    CloseFont();
    limits = QueryAtlasLimits();
    if (FT_Init_FreeType(&library) != 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Failed to initialize freetype library");
        return STATUS_FREETYPE_INIT_FAILED;
    }
    if (!OpenFontFile(library, path, face)) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Error loading font face");
        return STATUS_FACE_NOT_OPENED;
    }
    if (!OpenFontFile(library, path, sizeFace)) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Error loading font face for text size");
        return STATUS_FACE_NOT_OPENED;
    }
    return STATUS_OK;
}

void FontStyleAtlas::CloseFont() {
    if (sizeFace == nullptr && face == nullptr && library == nullptr) {
        return;
    }
    // FreeType refuses the null handles of a load that failed half-way.
    FT_Done_Face(sizeFace);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    sizeFace = nullptr;
    face = nullptr;
    library = nullptr;
}

int FontStyleAtlas::GetFontTexture(const TagGLTextInfo& info, unsigned int& textureOut) {
    if (face == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "font face is null pointer\n");
        return STATUS_NO_TEXT;
    }
    (void)DeleteTexture();  // always 0

    SetFontStyleAtlas(info, face);
    int status = CalculateTexSize(info);
    if (status != STATUS_OK) {
        return status;
    }
    status = CreateStyleTex();
    if (status != STATUS_OK) {
        return status;
    }
    FontToTexture(info);
    textureOut = atlas.texture;
    glBindTexture(GL_TEXTURE_2D, 0);
    return STATUS_OK;
}

int FontStyleAtlas::DeleteTexture() {
    DiscardAtlas(atlas);
    return STATUS_OK;
}

void FontStyleAtlas::SetFontStyleAtlas(const TagGLTextInfo& info, FT_Face styledFace) const {
    if (styledFace == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "font face is null pointer\n");
        return;
    }
    (void)SetPixelSize(TAG, styledFace, info.fontSize);  // another size than asked for is as good as any
    FT_Matrix matrix = ITALIC_MATRIX;
    FT_Set_Transform(styledFace, info.italic != 0 ? &matrix : nullptr, nullptr);
}

int FontStyleAtlas::CalculateTexSize(const TagGLTextInfo& info) {
    RowPacker packer(limits);
    // A glyph without ink takes a column here but none in FontToTexture, so the rows there may break at other
    // glyphs; the texture holds both layouts.
    RowPacker uploads(limits);
    GlyphLoader glyph(face, info.bold != 0, limits);
    for (const char16_t unit : TextUnits(info)) {
        if (!glyph.Load(unit) || !glyph.Render()) {
            LogAbsentChar(TAG, unit);
            continue;
        }
        if (!glyph.HasRoom()) {
            continue;
        }
        AtlasPlace place;
        (void)packer.Place(glyph.Width(), glyph.Rows(), place);  // in an atlas that is full it is left out
        if (glyph.Pixels() != nullptr) {
            (void)uploads.Place(glyph.Width(), glyph.Rows(), place);
        }
    }
    return SetAtlasSize(TAG, std::max(packer.Width(), uploads.Width()),
                        std::max(packer.Height(), uploads.Height()), atlas);
}

int FontStyleAtlas::CreateStyleTex() { return CreateAlphaTexture(TAG, GL_TEXTURE2, atlas); }

void FontStyleAtlas::FontToTexture(const TagGLTextInfo& info) {
    RowPacker packer(limits);
    GlyphLoader glyph(face, info.bold != 0, limits);
    for (const char16_t unit : TextUnits(info)) {
        AtlasPlace place;
        const bool isLoaded = glyph.Load(unit) && glyph.Render();
        if (isLoaded && glyph.Pixels() != nullptr && packer.Place(glyph.Width(), glyph.Rows(), place) &&
            UploadGlyph(atlas, glyph, place)) {
            FontCharInfoToMap(glyph.Slot(), static_cast<int>(place.x), static_cast<int>(place.y), unit);
            continue;
        }
        LogAbsentChar(TAG, unit);
        if (isLoaded && glyph.HasInk()) {
            RecordAdvance(glyph.Slot(), unit, atlas);
        }
    }
}

void FontStyleAtlas::FontCharInfoToMap(FT_GlyphSlot slot, int x, int y, unsigned long charCode) {
    RecordGlyph(slot, x, y, charCode, atlas);
}

void FontStyleAtlas::GetFontGlyphs(const TagGLTextInfo& info, GlyphMap& out) const {
    if (sizeFace == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "font face is null pointer\n");
        return;
    }
    SetFontStyleAtlas(info, sizeFace);
    GlyphLoader glyph(sizeFace, info.bold != 0, limits);
    for (const char16_t unit : TextUnits(info)) {
        if (!glyph.Load(unit) || !glyph.Render()) {
            LogAbsentChar(TAG, unit);
        } else {
            out[unit] = GlyphMetrics(glyph.Slot());
        }
    }
}

}  // namespace kivgles
