#ifndef KIVGLES_TESTS_TEXT_REFERENCEATLAS_H
#define KIVGLES_TESTS_TEXT_REFERENCEATLAS_H

// What the atlases are compared with: glyphs as FreeType alone renders them, packed anew.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include FT_OUTLINE_H

#include "gl/FBOManager.h"
#include "osd/OSDBlit.h"
#include "text/GlyphInfo.h"
#include "text/TextTest.h"

namespace kivgles {

struct ReferenceGlyph {
    unsigned long code = 0;
    TagGlyphInfo metrics{};            // without a place
    std::vector<int> coverage;         // top row first
    unsigned int width = 0, rows = 0;  // pixels
    unsigned int x = 0, y = 0;         // place in the atlas
};

struct ReferenceAtlas {
    std::vector<ReferenceGlyph> glyphs;
    unsigned int width = 0, height = 0;
};

inline ReferenceGlyph RenderReference(FT_Face face, unsigned long code, bool bold) {
    EXPECT_EQ(FT_Load_Char(face, code, FT_LOAD_DEFAULT), 0);
    const FT_GlyphSlot slot = face->glyph;
    if (bold) {
        EXPECT_EQ(FT_Outline_Embolden(&slot->outline, 64), 0);
    }
    EXPECT_EQ(FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL), 0);
    const FT_Bitmap& bitmap = slot->bitmap;
    ReferenceGlyph glyph;
    glyph.code = code;
    glyph.width = bitmap.width;
    glyph.rows = bitmap.rows;
    glyph.metrics.advanceX = std::floor(static_cast<float>(slot->advance.x) / 64);
    glyph.metrics.bitmapWidth = static_cast<float>(bitmap.width);
    glyph.metrics.bitmapRows = static_cast<float>(bitmap.rows);
    glyph.metrics.bitmapLeft = static_cast<float>(slot->bitmap_left);
    glyph.metrics.bitmapTop = static_cast<float>(slot->bitmap_top);
    for (unsigned int i = 0; i < bitmap.width * bitmap.rows; ++i) {
        const unsigned char* const row =
            bitmap.buffer + i / bitmap.width * static_cast<unsigned>(bitmap.pitch);
        const unsigned int x = i % bitmap.width;
        const bool bits = bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
        glyph.coverage.push_back(bits ? (row[x / 8] << x % 8 & 0x80) / 0x80 * 255 : row[x]);
    }
    return glyph;
}

// A null `text` stands for all characters.
inline ReferenceAtlas MakeReference(const std::string& path, const TextStyle& style,
                                    const std::u16string* text) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    ReferenceAtlas atlas;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Face(library, path.c_str(), 0, &face), 0);
    (void)FT_Set_Pixel_Sizes(face, 0, style.size == 0 ? 40 : style.size);  // unless it has only its own
    FT_Matrix slant{0x10000, 0x3333, 0, 0x10000};
    FT_Set_Transform(face, style.italic ? &slant : nullptr, nullptr);
    if (text != nullptr) {
        for (const char16_t unit : *text) {
            atlas.glyphs.push_back(RenderReference(face, unit, style.bold));
        }
    } else {
        FT_UInt index = 0;
        for (FT_ULong code = FT_Get_First_Char(face, &index); index != 0;
             code = FT_Get_Next_Char(face, code, &index)) {
            atlas.glyphs.push_back(RenderReference(face, code, style.bold));
        }
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);

    unsigned int x = 0;
    unsigned int rowHeight = 0;
    for (ReferenceGlyph& glyph : atlas.glyphs) {
        if (x + glyph.width + 1 > 1023) {
            atlas.height += rowHeight;
            x = rowHeight = 0;
        }
        glyph.x = x;
        glyph.y = atlas.height;
        x += glyph.width + 1;
        atlas.width = std::max(atlas.width, x);
        rowHeight = std::max(rowHeight, glyph.rows);
    }
    atlas.height += rowHeight;
    return atlas;
}

// Of two maps the metrics and, unless it is about measuring, the places are the same.
inline void ExpectGlyphs(const GlyphMap& actual, const ReferenceAtlas& atlas, bool places = true) {
    const auto Fields = [](const TagGlyphInfo& glyph) {
        std::array<float, 8> fields{};
        std::memcpy(fields.data(), &glyph, sizeof(glyph));
        return fields;
    };
    GlyphMap expected;  // of a character's copies the last one
    for (const ReferenceGlyph& glyph : atlas.glyphs) {
        TagGlyphInfo& entry = expected[glyph.code] = glyph.metrics;
        entry.texX = places ? static_cast<float>(glyph.x) / static_cast<float>(atlas.width) : 0;
        entry.texY = places ? static_cast<float>(glyph.y) / static_cast<float>(atlas.height) : 0;
    }
    ASSERT_EQ(actual.size(), expected.size());
    for (const auto& [code, glyph] : expected) {
        ASSERT_EQ(actual.count(code), 1U) << code;
        ASSERT_EQ(Fields(actual.at(code)), Fields(glyph)) << "character " << code;
    }
}

// The texture's alpha is each glyph's coverage, in its place, but for a difference of 1 by sampling.
inline void ExpectTexels(GLuint texture, const ReferenceAtlas& atlas) {
    OSDBlit blit;
    ASSERT_EQ(blit.Init(), 0);
    FBOManager targets(1, 1);
    std::uint32_t handle = 0;
    const auto width = static_cast<int>(atlas.width);
    const auto height = static_cast<int>(atlas.height);
    ASSERT_EQ(targets.GLCreateFBO(handle, width, height, GL_RGBA, false), 0);
    TagFrameBuffObject target{};
    ASSERT_TRUE(targets.GetFBOInst(handle, target));
    blit.Blit({{0, texture, 0, width, height}, target, {0, 1, 1, 1}, {-1, 1, 2, 2}});
    std::vector<std::uint8_t> pixels(std::size_t{4} * atlas.width * atlas.height);
    glBindFramebuffer(GL_FRAMEBUFFER, target.fboId);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());

    for (const ReferenceGlyph& glyph : atlas.glyphs) {
        for (std::size_t i = 0; i < glyph.coverage.size(); ++i) {
            const std::size_t texel = (glyph.y + i / glyph.width) * atlas.width + glyph.x + i % glyph.width;
            ASSERT_NEAR(pixels[4 * texel + 3], glyph.coverage[i], 1)
                << "character " << glyph.code << ", " << i;
        }
    }
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_TEXT_REFERENCEATLAS_H
