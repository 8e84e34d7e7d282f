#ifndef KIVGLES_TEXT_OSDTEXT_H
#define KIVGLES_TEXT_OSDTEXT_H

#include <memory>
#include <string>
#include <vector>

#include <GLES2/gl2.h>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "text/FontAtlas.h"
#include "text/FontStyleAtlas.h"
#include "text/GlyphInfo.h"

namespace kivgles {

// In pixels: what a character without a glyph counts in a measured text, and the height of any text.
constexpr unsigned int MISSING_CHAR_WIDTH = 30;
constexpr unsigned int TEXT_HEIGHT = 50;

// Draws a line of text as one textured quad a character, and measures texts.
//
// Owner:  GLDrawThread. Owns both atlases.
// Thread: draw thread, GL context current. GetTextSize, with the const look-ups it uses, on one client thread
//         at a time; GLDrawThread's textMutex keeps it apart from Init, LoadFont and the destructor.
// Units:  metrics in pixels, the pen in NDC of the target, y upwards.
//
// Operations return 0 or a status of StatusCode.h.
class OSDText {
 public:
    OSDText() = default;
    ~OSDText();

    OSDText(const OSDText&) = delete;
    OSDText& operator=(const OSDText&) = delete;

    // Makes the program, the buffer and two empty atlases. Run once.
    int Init();

    // Loads a font into both atlases; `size` in pixels (0 means 40) is that of the standard style.
    int LoadFont(const std::string& path, unsigned int size);

    // Whether a request is in the standard style: 40 pixels, neither bold nor italic.
    bool IsDrawStandardFont(const TagGLTextInfo& info) const;

    // Whether the font has the character, with ink.
    bool FindCharFromMap(char16_t c) const;

    // Measures in pixels. Always 0.
    int GetTextSize(const TagGLTextInfo& info, unsigned int& width, unsigned int& height) const;

    // Chooses (or builds) the atlas for a request and sets what GLDrawText reads, until the next request.
    int GetFontTex(const TagFrameBuffObject& fbo, const TagGLTextInfo& info);

    // Draws blended over what the target holds, the pen starting at (x, y) on the baseline. Nothing of GL is
    // touched when the atlas fails.
    int DrawText(const TagFrameBuffObject& fbo, const TagGLTextInfo& info, float x, float y);

    // Draw with target, program, blending and texture as they are bound, RenderText binding the vertices too.
    void RenderText(const std::u16string& text, unsigned int count, float x, float y);
    void GLDrawText(const std::u16string& text, unsigned int count, float x, float y);

 private:
    // Position in NDC, and texture coordinates.
    struct Vertex {
        GLfloat x, y, s, t;
    };

    bool HasAtlases() const { return fontAtlas != nullptr && fontStyleAtlas != nullptr; }
    const TagGlyphInfo* FindVisibleGlyph(char16_t c) const;
    bool NeedsGlyphsOnDemand(const TagGLTextInfo& info) const;
    void UseStandardAtlas();
    int UseStyledAtlas(const TagGLTextInfo& info);
    void BindRequestTexture() const;
    void AppendGlyph(const TagGlyphInfo& glyph, float penX, float penY);

    std::unique_ptr<FontAtlas> fontAtlas;
    std::unique_ptr<FontStyleAtlas> fontStyleAtlas;
    std::unique_ptr<ShaderProgram> shaderProgram;
    GLuint program = 0;
    GLuint vbo = 0;

    GLuint fontTexture = 0;  // of the current request; the atlas's
    std::uint32_t fontTextureWidth = 0;
    std::uint32_t fontTextureHeight = 0;
    GLint texLocation = 0;
    GLint coordLocation = 0;
    GLint colorLocation = 0;
    float scaleX = 0.0F;  // one pixel of the current target in NDC
    float scaleY = 0.0F;
    // Copy of the styled atlas's map. A standard request reads the standard atlas's in place, which only
    // changes with the font: a copy would make a text dearer the more characters the font has.
    GlyphMap glyphs;
    bool drawsStyled = false;      // the current request draws from the styled atlas
    std::vector<Vertex> vertices;  // kept for its storage
};

}  // namespace kivgles

#endif  // KIVGLES_TEXT_OSDTEXT_H
