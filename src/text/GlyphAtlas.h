#ifndef KIVGLES_TEXT_GLYPHATLAS_H
#define KIVGLES_TEXT_GLYPHATLAS_H

#include <cstdint>

#include <GLES2/gl2.h>

#include "text/GlyphInfo.h"
#include "text/GlyphLoader.h"
#include "text/RowPacker.h"

// What FontAtlas and FontStyleAtlas share: a texture of coverage with the glyphs in it. Draw thread, GL
// context current.

namespace kivgles {

constexpr unsigned int STANDARD_FONT_SIZE = 40;  // pixels; also what a size of 0 means

// A part of the atlas that owns the texture. Without a texture there are no glyphs.
struct GlyphAtlas {
    GLuint texture = 0;
    std::uint32_t textureWidth = 0;   // pixels
    std::uint32_t textureHeight = 0;  // pixels
    GlyphMap glyphs;
};

// The largest atlas that the current context takes.
AtlasLimits QueryAtlasLimits();

// Deletes the texture and forgets its glyphs.
void DiscardAtlas(GlyphAtlas& atlas);

// Sets the size in pixels. Returns 0, or STATUS_ATLAS_EMPTY logged under `tag`.
int SetAtlasSize(const char* tag, unsigned int width, unsigned int height, GlyphAtlas& atlas);

// Makes the texture, undefined inside, and leaves it bound on `unit`, set up for tightly packed uploads.
// Returns 0, or STATUS_NO_TEXTURE logged under `tag`.
int CreateAlphaTexture(const char* tag, GLenum unit, GlyphAtlas& atlas);

// Uploads a glyph to its place in the bound texture. False, and nothing done, when it would reach outside:
// faces may render a glyph differently the second time.
bool UploadGlyph(const GlyphAtlas& atlas, const GlyphLoader& glyph, const AtlasPlace& place);

// Enters the glyph in `slot`, at (x, y) in the texture, into the map.
void RecordGlyph(FT_GlyphSlot slot, int x, int y, unsigned long charCode, GlyphAtlas& atlas);

// Enters a glyph that found no room, unless there is one of the character that did: nothing is drawn, but the
// pen moves as it is measured.
void RecordAdvance(FT_GlyphSlot slot, unsigned long charCode, GlyphAtlas& atlas);

// Sets the face's glyph size in pixels, 0 meaning 40, and returns it. A face that has no such size keeps its
// own, logged under `tag`.
unsigned int SetPixelSize(const char* tag, FT_Face face, unsigned int size);

}  // namespace kivgles

#endif  // KIVGLES_TEXT_GLYPHATLAS_H
