#include "BareFont.h"

#include <algorithm>

#include FT_OUTLINE_H

#include "Contestant.h"
#include "GlWindow.h"

namespace bench {

namespace {

constexpr int ROW_LIMIT = 1024;
constexpr FT_Pos BOLD_STRENGTH = 64;

// Lays glyphs out in rows.
struct Packer {
    int maxHeight;
    int x = 0, y = 0, rowHeight = 0, width = 0;

    // Sets x and y to the place of the glyph; false when there is none left.
    bool Place(int glyphWidth, int glyphRows) {
        if (x + glyphWidth + 1 >= ROW_LIMIT) {
            x = 0;
            y += rowHeight;
            rowHeight = 0;
        }
        rowHeight = std::max(rowHeight, glyphRows);
        return y + rowHeight <= maxHeight;
    }
    void Advance(int glyphWidth) {
        x += glyphWidth + 1;
        width = std::max(width, x);
    }
};

int MaxTextureSize() {
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return size;
}

FT_Face OpenFace(FT_Library library, const std::string& path) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        Fail("the font does not open");
    }
    return face;
}

bool Render(FT_Face face, unsigned long code, bool bold) {
    if (FT_Load_Char(face, code, FT_LOAD_DEFAULT) != 0) {
        return false;
    }
    if (bold) {
        FT_Outline_Embolden(&face->glyph->outline, BOLD_STRENGTH);
    }
    return FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL) == 0;
}

// Call `visit(charCode)` for every character that renders, of the font or of a line.
template <typename Visitor>
void ForEachCharacter(FT_Face face, Visitor visit) {
    FT_UInt index = 0;
    for (unsigned long code = FT_Get_First_Char(face, &index); index != 0;
         code = FT_Get_Next_Char(face, code, &index)) {
        if (Render(face, code, false)) {
            visit(code);
        }
    }
}

template <typename Visitor>
void ForEachCharacter(FT_Face face, const Line& line, Visitor visit) {
    for (const char16_t unit : line.text) {
        if (Render(face, unit, line.bold)) {
            visit(unit);
        }
    }
}

void Discard(Atlas& atlas) {
    if (atlas.texture != 0) {
        glDeleteTextures(1, &atlas.texture);
    }
}

void MakeTexture(GLenum unit, Atlas& atlas) {
    glActiveTexture(unit);
    glGenTextures(1, &atlas.texture);
    glBindTexture(GL_TEXTURE_2D, atlas.texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, atlas.width, atlas.height, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 nullptr);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    SetTextureParameters();
}

void UploadGlyph(Atlas& atlas, FT_GlyphSlot slot, unsigned long code, int x, int y) {
    const FT_Bitmap& bitmap = slot->bitmap;
    if (bitmap.rows != 0 && (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY ||
                             static_cast<unsigned int>(bitmap.pitch) != bitmap.width)) {
        Fail("the font has glyphs that GL cannot take as they are");
    }
    glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, static_cast<GLsizei>(bitmap.width),
                    static_cast<GLsizei>(bitmap.rows), GL_ALPHA, GL_UNSIGNED_BYTE, bitmap.buffer);
    if (code <= 0xFFFF) {  // what a text unit can name
        atlas.glyphs.Set(
            static_cast<char16_t>(code),
            {static_cast<float>(slot->advance.x >> 6), static_cast<float>(bitmap.width),
             static_cast<float>(bitmap.rows), static_cast<float>(slot->bitmap_left),
             static_cast<float>(slot->bitmap_top), static_cast<float>(x) / static_cast<float>(atlas.width),
             static_cast<float>(y) / static_cast<float>(atlas.height)});
    }
}

// Fills an atlas with the characters that `walk` visits: once for its size, once for its texels.
template <typename Walk>
void FillAtlas(FT_Face face, GLenum unit, int maxHeight, Atlas& atlas, Walk walk) {
    const FT_GlyphSlot slot = face->glyph;
    Packer size{maxHeight};
    int characters = 0;
    bool room = true;
    walk([&](unsigned long) {
        const int width = static_cast<int>(slot->bitmap.width);
        room = room && size.Place(width, static_cast<int>(slot->bitmap.rows));
        if (room) {
            size.Advance(width);
            ++characters;
            atlas.height = size.y + size.rowHeight;
        }
    });
    atlas.width = size.width;
    MakeTexture(unit, atlas);

    Packer place{maxHeight};
    walk([&](unsigned long code) {
        if (characters-- > 0) {
            place.Place(static_cast<int>(slot->bitmap.width), static_cast<int>(slot->bitmap.rows));
            UploadGlyph(atlas, slot, code, place.x, place.y);
            place.Advance(static_cast<int>(slot->bitmap.width));
        }
    });
    glBindTexture(GL_TEXTURE_2D, 0);
}

}  // namespace

void GlyphTable::Set(char16_t unit, const Glyph& glyph) {
    std::unique_ptr<Page>& page = pages[unit >> 8];
    if (page == nullptr) {
        page = std::make_unique<Page>();
    }
    (*page)[unit & 0xFF] = glyph;
}

void BareFont::Load(const std::string& path) {
    Discard(standard);
    standard = {};
    FT_Library loadLibrary = nullptr;
    FT_Init_FreeType(&loadLibrary);
    const FT_Face loadFace = OpenFace(loadLibrary, path);
    FT_Set_Pixel_Sizes(loadFace, 0, STANDARD_SIZE);
    FillAtlas(loadFace, GL_TEXTURE1, MaxTextureSize(), standard,
              [loadFace](auto visit) { ForEachCharacter(loadFace, visit); });
    FT_Done_Face(loadFace);
    FT_Done_FreeType(loadLibrary);

    FT_Done_Face(sizeFace);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    (void)MaxTextureSize();  // asked for each atlas
    FT_Init_FreeType(&library);
    face = OpenFace(library, path);
    sizeFace = OpenFace(library, path);
}

const Atlas& BareFont::BuildStyled(const Line& line) {
    Discard(styled);
    FT_Set_Pixel_Sizes(face, 0, line.size);
    FT_Set_Transform(face, nullptr, nullptr);
    FillAtlas(face, GL_TEXTURE2, ROW_LIMIT, styled,
              [this, &line](auto visit) { ForEachCharacter(face, line, visit); });
    return styled;
}

}  // namespace bench
