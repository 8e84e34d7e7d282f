#include "text/GlyphAtlas.h"

#include <algorithm>

#include <android/log.h>

#include "StatusCode.h"

namespace kivgles {

AtlasLimits QueryAtlasLimits() {
    GLint maxTextureSize = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxTextureSize);
    AtlasLimits limits;
    if (maxTextureSize > 0) {  // without an answer there is no texture to outgrow it either
        limits.height = static_cast<unsigned int>(maxTextureSize);
        limits.rowWidth = std::min(ATLAS_ROW_LIMIT, limits.height);
    }
    return limits;
}

void DiscardAtlas(GlyphAtlas& atlas) {
    if (atlas.texture != 0) {
        glDeleteTextures(1, &atlas.texture);
    }
    atlas.glyphs.clear();
    atlas.texture = 0;
    atlas.textureWidth = 0;
    atlas.textureHeight = 0;
}

int SetAtlasSize(const char* tag, unsigned int width, unsigned int height, GlyphAtlas& atlas) {
    atlas.textureWidth = width;
    atlas.textureHeight = height;
    if (width == 0 || height == 0) {
        __android_log_print(ANDROID_LOG_ERROR, tag, "Calculate texture width %ud, height %ud\n", width,
                            height);
        return STATUS_ATLAS_EMPTY;
    }
    return STATUS_OK;
}

int CreateAlphaTexture(const char* tag, GLenum unit, GlyphAtlas& atlas) {
    glActiveTexture(unit);
    glGenTextures(1, &atlas.texture);
    if (atlas.texture == 0) {
        __android_log_print(ANDROID_LOG_ERROR, tag, "Create texture fail\n");
        return STATUS_NO_TEXTURE;
    }
    glBindTexture(GL_TEXTURE_2D, atlas.texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, static_cast<GLsizei>(atlas.textureWidth),
                 static_cast<GLsizei>(atlas.textureHeight), 0, GL_ALPHA, GL_UNSIGNED_BYTE, nullptr);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return STATUS_OK;
}

bool UploadGlyph(const GlyphAtlas& atlas, const GlyphLoader& glyph, const AtlasPlace& place) {
    if (place.x + glyph.Width() > atlas.textureWidth || place.y + glyph.Rows() > atlas.textureHeight) {
        return false;
    }
    glTexSubImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(place.x), static_cast<GLint>(place.y),
                    static_cast<GLsizei>(glyph.Width()), static_cast<GLsizei>(glyph.Rows()), GL_ALPHA,
                    GL_UNSIGNED_BYTE, glyph.Pixels());
    return true;
}

void RecordGlyph(FT_GlyphSlot slot, int x, int y, unsigned long charCode, GlyphAtlas& atlas) {
    TagGlyphInfo glyph = GlyphMetrics(slot);
    glyph.texX = static_cast<float>(x) / static_cast<float>(atlas.textureWidth);
    glyph.texY = static_cast<float>(y) / static_cast<float>(atlas.textureHeight);
    atlas.glyphs[charCode] = glyph;
}

void RecordAdvance(FT_GlyphSlot slot, unsigned long charCode, GlyphAtlas& atlas) {
    const TagGlyphInfo metrics = GlyphMetrics(slot);
    TagGlyphInfo glyph{};
    glyph.advanceX = metrics.advanceX;
    glyph.advanceY = metrics.advanceY;
    atlas.glyphs.emplace(charCode, glyph);
}

unsigned int SetPixelSize(const char* tag, FT_Face face, unsigned int size) {
    const unsigned int pixelSize = size == 0 ? STANDARD_FONT_SIZE : size;
    if (FT_Set_Pixel_Sizes(face, 0, pixelSize) != 0) {
        __android_log_print(ANDROID_LOG_ERROR, tag, "set pixel size fail");
    }
    return pixelSize;
}

}  // namespace kivgles
