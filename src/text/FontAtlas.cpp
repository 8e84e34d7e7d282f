#include "text/FontAtlas.h"

#include <algorithm>
#include <memory>

#include <android/log.h>

#include "StatusCode.h"
#include "text/FontFile.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "FontAtlas";

// No font has more; a damaged map may claim any code of 32 bits.
constexpr unsigned long MAX_CODE_POINT = 0x10FFFF;
constexpr unsigned long MAX_TEXT_UNIT = 0xFFFF;

struct CloseFreeType {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};

// Calls `visit(charCode)` for the characters of the face's map in ascending order, until it returns false.
template <typename Visitor>
void ForEachChar(FT_Face face, Visitor visit) {
    FT_UInt glyphIndex = 0;
    unsigned long charCode = FT_Get_First_Char(face, &glyphIndex);
    while (glyphIndex != 0 && charCode <= MAX_CODE_POINT && visit(charCode)) {
        const unsigned long nextCode = FT_Get_Next_Char(face, charCode, &glyphIndex);
        if (nextCode <= charCode) {
            break;  // the map of a damaged font must not lead in circles
        }
        charCode = nextCode;
    }
}

}  // namespace

FontAtlas::~FontAtlas() {
    DiscardAtlas(atlas);
    __android_log_print(ANDROID_LOG_WARN, TAG, "~FontAtlas\n");
}

int FontAtlas::LoadFontByPath(const std::string& path, unsigned int size) {
    (void)DeleteTexture();  // always 0

    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Failed to initialize freetype library");
        return STATUS_FREETYPE_INIT_FAILED;
    }
    const std::unique_ptr<FT_LibraryRec_, CloseFreeType> libraryOwner(library);

    FT_Face face = nullptr;
    if (!OpenFontFile(library, path, face)) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Error loading font face");
        return STATUS_FACE_NOT_OPENED;
    }
    const std::unique_ptr<FT_FaceRec_, CloseFreeType> faceOwner(face);  // closed before the library

    return LoadFont(face, size);
}

int FontAtlas::LoadFont(FT_Face face, unsigned int size) {
    pixelSize = SetPixelSize(TAG, face, size);
    limits = QueryAtlasLimits();

    int status = CalculateTexSize(face);
    if (status != STATUS_OK) {
        return status;
    }
    status = CreateAtlasTex();
    if (status != STATUS_OK) {
        return status;
    }
    FontToTexture(face);
    glBindTexture(GL_TEXTURE_2D, 0);
    return STATUS_OK;
}

int FontAtlas::DeleteTexture() {
    DiscardAtlas(atlas);
    firstCodeBehindFull = ULONG_MAX;
    codesWithoutRoom.clear();
    return STATUS_OK;
}

bool FontAtlas::HasRoom(unsigned long charCode) const {
    return !std::binary_search(codesWithoutRoom.begin(), codesWithoutRoom.end(), charCode);
}

bool FontAtlas::HasTexels(unsigned long charCode) const {
    return charCode < firstCodeBehindFull && HasRoom(charCode);
}

bool FontAtlas::IsOnDemand(unsigned long charCode) const {
    return charCode >= firstCodeBehindFull && HasRoom(charCode);
}

template <typename Visitor>
void FontAtlas::ForEachGlyph(FT_Face face, Visitor visit) const {
    GlyphLoader glyph(face, false, limits);
    ForEachChar(face, [this, &glyph, &visit](unsigned long charCode) {
        const bool behindFull = charCode >= firstCodeBehindFull;
        if (behindFull && charCode > MAX_TEXT_UNIT) {
            return false;  // neither held nor ever asked for
        }
        // A glyph behind the full atlas is not rendered: what a font asks for stays within the texture's
        // area.
        if (!glyph.Load(charCode) || (!behindFull && !glyph.Render())) {
            __android_log_print(ANDROID_LOG_ERROR, TAG, "Loading character %lu failed!\n", charCode);
        } else {
            visit(charCode, glyph);
        }
        return true;
    });
}

int FontAtlas::CalculateTexSize(FT_Face face) {
    RowPacker packer(limits);
    ForEachGlyph(face, [this, &packer](unsigned long charCode, const GlyphLoader& glyph) {
        AtlasPlace place;
        if (!glyph.HasRoom()) {
            codesWithoutRoom.push_back(charCode);
        } else if (charCode < firstCodeBehindFull && !packer.Place(glyph.Width(), glyph.Rows(), place)) {
            firstCodeBehindFull = charCode;
        }
    });
    return SetAtlasSize(TAG, packer.Width(), packer.Height(), atlas);
}

int FontAtlas::CreateAtlasTex() { return CreateAlphaTexture(TAG, GL_TEXTURE1, atlas); }

void FontAtlas::FontToTexture(FT_Face face) {
    RowPacker packer(limits);
    ForEachGlyph(face, [this, &packer](unsigned long charCode, const GlyphLoader& glyph) {
        AtlasPlace place;
        if (!HasTexels(charCode)) {
            FontCharInfoToMap(glyph.Slot(), 0, 0, charCode);
        } else if (glyph.HasRoom() && packer.Place(glyph.Width(), glyph.Rows(), place) &&
                   UploadGlyph(atlas, glyph, place)) {
            FontCharInfoToMap(glyph.Slot(), static_cast<int>(place.x), static_cast<int>(place.y), charCode);
        }
    });
    LogSummary();
}

void FontAtlas::FontCharInfoToMap(FT_GlyphSlot slot, int x, int y, unsigned long charCode) {
    RecordGlyph(slot, x, y, charCode, atlas);
}

void FontAtlas::LogSummary() const {
    __android_log_print(ANDROID_LOG_WARN, TAG, "Generated a %d x %d (%d kb) texture atlas\n",
                        static_cast<int>(atlas.textureWidth), static_cast<int>(atlas.textureHeight),
                        static_cast<int>((atlas.textureWidth * atlas.textureHeight) >> 10));
    long held = 0;
    long onDemand = 0;
    for (const auto& entry : atlas.glyphs) {
        held += HasTexels(entry.first) ? 1 : 0;
        onDemand += IsOnDemand(entry.first) ? 1 : 0;
    }
    if (onDemand > 0) {
        __android_log_print(ANDROID_LOG_WARN, TAG,
                            "%ld characters are held in the atlas, %ld are drawn on demand\n", held,
                            onDemand);
    }
}

}  // namespace kivgles
