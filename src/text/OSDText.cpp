#include "text/OSDText.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include <android/log.h>

#include "StatusCode.h"
#include "gl/RendererProgram.h"
#include "text/TextUnits.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDText";

constexpr char FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "varying vec2 texpos;\n"
    "uniform sampler2D tex;\n"
    "uniform vec4 color;\n"
    "void main() {\n"
    "    gl_FragColor = vec4(1, 1, 1, texture2D(tex, texpos).a) * color;\n"
    "}\n";

constexpr float EMPTINESS = 1e-6F;
constexpr std::size_t GLYPH_VERTEX_NUM = 6;

// The map's glyph, or an absent one.
const TagGlyphInfo& FindGlyph(const GlyphMap& glyphs, char16_t c) {
    static constexpr TagGlyphInfo ABSENT{};
    const auto found = glyphs.find(c);
    return found == glyphs.end() ? ABSENT : found->second;
}

// What a drawn character adds to a text's width: one that hangs over to the left counts in full.
float MeasuredWidth(const TagGlyphInfo& glyph) {
    const bool overhangs = glyph.bitmapLeft < 0.0F && glyph.advanceX > 0.0F;
    return overhangs ? std::max(glyph.advanceX, glyph.bitmapWidth) : glyph.advanceX;
}

// A font may claim any advance: sums end at the largest number instead of wrapping.
unsigned int AddMissing(unsigned int total) {
    return total < UINT_MAX - MISSING_CHAR_WIDTH ? total + MISSING_CHAR_WIDTH : UINT_MAX;
}
unsigned int AddWidth(unsigned int total, float width) {
    const float sum = width + static_cast<float>(total);
    return sum < static_cast<float>(UINT_MAX) ? static_cast<unsigned int>(sum) : UINT_MAX;
}

}  // namespace

OSDText::~OSDText() { DeleteRendererProgram(shaderProgram, program, vbo); }

int OSDText::Init() {
    const int status =
        MakeRendererProgram(TAG, TEXTURED_VERTEX_SHADER, FRAGMENT_SHADER, shaderProgram, program);
    if (status != STATUS_OK) {
        return status;
    }
    coordLocation = shaderProgram->GetAttribLocation(program, "coord");
    texLocation = shaderProgram->GetUniformLocation(program, "tex");
    colorLocation = shaderProgram->GetUniformLocation(program, "color");
    glGenBuffers(1, &vbo);
    fontAtlas = std::make_unique<FontAtlas>();
    fontStyleAtlas = std::make_unique<FontStyleAtlas>();
    return STATUS_OK;
}

int OSDText::LoadFont(const std::string& path, unsigned int size) {
    if (!HasAtlases()) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSDText is not inited\n");
        return STATUS_NO_TEXT;
    }
    int status = fontAtlas->LoadFontByPath(path, size);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Load standard font lib fail %d\n", status);
        return status;
    }
    status = fontStyleAtlas->LoadFontByPath(path);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Load dynamic font lib fail %d\n", status);
        return status;
    }
    return STATUS_OK;
}

bool OSDText::IsDrawStandardFont(const TagGLTextInfo& info) const {
    return info.fontSize == STANDARD_FONT_SIZE && info.bold == 0 && info.italic == 0;
}

bool OSDText::FindCharFromMap(char16_t c) const { return FindVisibleGlyph(c) != nullptr; }

// The standard atlas's glyph, or null for a character that is missing or has no ink. The standard atlas tells
// for styled requests too.
const TagGlyphInfo* OSDText::FindVisibleGlyph(char16_t c) const {
    if (fontAtlas == nullptr) {
        return nullptr;
    }
    const GlyphMap& standardGlyphs = fontAtlas->GetGlyphs();
    const auto found = standardGlyphs.find(c);
    if (found == standardGlyphs.end()) {
        return nullptr;
    }
    const TagGlyphInfo& glyph = found->second;
    return std::fabs(glyph.bitmapWidth) > EMPTINESS && std::fabs(glyph.bitmapRows) > EMPTINESS ? &glyph
                                                                                               : nullptr;
}

int OSDText::GetTextSize(const TagGLTextInfo& info, unsigned int& width, unsigned int& height) const {
    const bool standard = IsDrawStandardFont(info);
    GlyphMap styledGlyphs;
    if (!standard && fontStyleAtlas != nullptr) {
        fontStyleAtlas->GetFontGlyphs(info, styledGlyphs);
    }

    unsigned int total = 0;
    for (const char16_t c : TextUnits(info)) {
        const TagGlyphInfo* const standardGlyph = FindVisibleGlyph(c);
        if (standardGlyph == nullptr) {
            LogAbsentChar(TAG, c);
            total = AddMissing(total);
        } else {
            total = AddWidth(total, MeasuredWidth(standard ? *standardGlyph : FindGlyph(styledGlyphs, c)));
        }
    }
    width = total;
    height = TEXT_HEIGHT;
    return STATUS_OK;
}

int OSDText::GetFontTex(const TagFrameBuffObject& fbo, const TagGLTextInfo& info) {
    if (fbo.width == 0 || fbo.height == 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Param is invalid\n");
        return STATUS_NOT_FOUND;
    }
    if (!HasAtlases()) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSDText is not inited\n");
        return STATUS_NO_TEXT;
    }

    const bool standard = IsDrawStandardFont(info);
    const bool onDemand = standard && NeedsGlyphsOnDemand(info);
    if (standard && !onDemand) {
        UseStandardAtlas();
    } else {
        TagGLTextInfo styled = info;
        if (onDemand) {
            styled.fontSize = fontAtlas->GetPixelSize();  // so that it looks like the standard style
        }
        const int status = UseStyledAtlas(styled);
        if (status != STATUS_OK) {
            return status;
        }
    }
    scaleX = 2.0F / static_cast<float>(fbo.width);
    scaleY = 2.0F / static_cast<float>(fbo.height);
    return STATUS_OK;
}

bool OSDText::NeedsGlyphsOnDemand(const TagGLTextInfo& info) const {
    const std::u16string_view units = TextUnits(info);
    return std::any_of(units.begin(), units.end(),
                       [this](char16_t c) { return fontAtlas->IsOnDemand(c) && FindCharFromMap(c); });
}

void OSDText::UseStandardAtlas() {
    drawsStyled = false;
    fontTexture = fontAtlas->GetFontTexture();
    fontTextureWidth = fontAtlas->GetFontTextureWidth();
    fontTextureHeight = fontAtlas->GetFontTextureHeight();
}

int OSDText::UseStyledAtlas(const TagGLTextInfo& info) {
    drawsStyled = true;
    const int status = fontStyleAtlas->GetFontTexture(info, fontTexture);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Get font atlas texture fail %d", status);
        return status;
    }
    fontTextureWidth = fontStyleAtlas->GetFontTextureWidth();
    fontTextureHeight = fontStyleAtlas->GetFontTextureHeight();
    glyphs = fontStyleAtlas->GetGlyphs();
    return STATUS_OK;
}

int OSDText::DrawText(const TagFrameBuffObject& fbo, const TagGLTextInfo& info, float x, float y) {
    const int status = GetFontTex(fbo, info);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "get font alpha texture fail %d\n", status);
        return status;
    }

    // Target.
    glBindFramebuffer(GL_FRAMEBUFFER, fbo.fboId);
    glViewport(0, 0, fbo.width, fbo.height);

    // Program, blending, texture.
    glUseProgram(program);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    const GLfloat color[] = {info.fgColor.r, info.fgColor.g, info.fgColor.b, info.fgColor.a};
    glUniform4fv(colorLocation, 1, color);
    BindRequestTexture();

    // Draw.
    RenderText(std::u16string(TextUnits(info)), info.textLength, x, y);

    // Nothing but the program stays bound for the next renderer.
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return STATUS_OK;
}

// Each atlas makes its texture on a unit of its own, and is sampled from there.
void OSDText::BindRequestTexture() const {
    const GLint unit = drawsStyled ? 2 : 1;
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, fontTexture);
    glUniform1i(texLocation, unit);
}

void OSDText::RenderText(const std::u16string& text, unsigned int count, float x, float y) {
    const auto coord = static_cast<GLuint>(coordLocation);  // -1, logged by Init, is GL's to refuse
    glEnableVertexAttribArray(coord);
    glBindBuffer(GL_ARRAY_BUFFER, vbo);
    glVertexAttribPointer(coord, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    GLDrawText(text, count, x, y);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableVertexAttribArray(coord);
}

void OSDText::GLDrawText(const std::u16string& text, unsigned int count, float x, float y) {
    vertices.clear();
    for (const char16_t c : std::u16string_view(text).substr(0, count)) {
        const TagGlyphInfo* const standardGlyph = FindVisibleGlyph(c);
        if (standardGlyph == nullptr) {
            LogAbsentChar(TAG, c);
            continue;
        }
        const TagGlyphInfo& glyph = drawsStyled ? FindGlyph(glyphs, c) : *standardGlyph;
        if (drawsStyled || fontAtlas->HasTexels(c)) {
            AppendGlyph(glyph, x, y);
        } else {
            LogAbsentChar(TAG, c);  // as the styled atlas does for one that has no room there
        }
        x += glyph.advanceX * scaleX;
        y += glyph.advanceY * scaleY;
    }

    // The buffer has room for every unit, those of skipped characters left zero.
    const auto drawn = static_cast<GLsizei>(vertices.size());
    vertices.resize(count * GLYPH_VERTEX_NUM);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size() * sizeof(Vertex)), vertices.data(),
                 GL_DYNAMIC_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, drawn);
}

void OSDText::AppendGlyph(const TagGlyphInfo& glyph, float penX, float penY) {
    // A glyph that hangs over to the left and is wider than its advance is not shifted.
    const bool keepsPen =
        glyph.bitmapLeft < 0.0F && glyph.advanceX > 0.0F && glyph.advanceX < glyph.bitmapWidth;
    const float left = keepsPen ? penX : penX + glyph.bitmapLeft * scaleX;
    const float right = left + glyph.bitmapWidth * scaleX;
    const float top = penY + glyph.bitmapTop * scaleY;
    const float bottom = top - glyph.bitmapRows * scaleY;

    const float s0 = glyph.texX;
    const float t0 = glyph.texY;
    const float s1 = glyph.texX + glyph.bitmapWidth / static_cast<float>(fontTextureWidth);
    const float t1 = glyph.texY + glyph.bitmapRows / static_cast<float>(fontTextureHeight);

    vertices.insert(vertices.end(), {{left, top, s0, t0},
                                     {right, top, s1, t0},
                                     {left, bottom, s0, t1},
                                     {right, top, s1, t0},
                                     {left, bottom, s0, t1},
                                     {right, bottom, s1, t1}});
}

}  // namespace kivgles
