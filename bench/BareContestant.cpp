// Bare GL: the calls that the library makes, in its order, from one thread, without a queue and without a
// heap object per request. What it costs is the limit for the library.

#include <cmath>

#include "BareFont.h"
#include "Contestant.h"
#include "GlWindow.h"

namespace bench {

const char* const CONTESTANT_NAME = "bare";

namespace {

constexpr double PI = 3.141592653589793;
constexpr std::size_t RIM_POINTS = 37;
constexpr std::size_t MAX_CHARACTERS = 127;

constexpr char FLAT_VERTEX_SHADER[] =
    "attribute vec4 vPosition;\n"
    "void main() {\n"
    "    gl_Position = vPosition;\n"
    "}\n";

constexpr char FLAT_FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "uniform vec4 color;\n"
    "void main() {\n"
    "    gl_FragColor = color;\n"
    "}\n";

constexpr char TEXT_FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "varying vec2 texpos;\n"
    "uniform sampler2D tex;\n"
    "uniform vec4 color;\n"
    "void main() {\n"
    "    gl_FragColor = vec4(1, 1, 1, texture2D(tex, texpos).a) * color;\n"
    "}\n";

struct FlatVertex {
    GLfloat x, y, z, w;
};

struct FlatProgram {
    GLuint program;
    GLuint vbo;
    GLint color;
    GLuint position;
};

struct {
    GLuint texture, fbo;
    GLsizei width, height;
} layer;

// One program and one buffer for each kind of request, as in the library.
FlatProgram rects, rounds;
QuadProgram bitmaps, texts, frames;
GLint textColor;
BareFont font;

FlatProgram MakeFlatProgram() {
    FlatProgram flat{};
    flat.program = MakeProgram(FLAT_VERTEX_SHADER, FLAT_FRAGMENT_SHADER);
    flat.position = static_cast<GLuint>(glGetAttribLocation(flat.program, "vPosition"));
    flat.color = glGetUniformLocation(flat.program, "color");
    glGenBuffers(1, &flat.vbo);
    return flat;
}

// Pixels of the layer to NDC.
float Span(int pixels, GLsizei size) { return 2.0F * static_cast<float>(pixels) / static_cast<float>(size); }
float ToX(int x) { return Span(x, layer.width) - 1.0F; }
float ToY(int y) { return 1.0F - Span(y, layer.height); }

void BindLayer() {
    glBindFramebuffer(GL_FRAMEBUFFER, layer.fbo);
    glViewport(0, 0, layer.width, layer.height);
}

void SetColor(GLint location, const Color& color) {
    const GLfloat components[] = {
        static_cast<GLfloat>(color.r) / 255.0F, static_cast<GLfloat>(color.g) / 255.0F,
        static_cast<GLfloat>(color.b) / 255.0F, static_cast<GLfloat>(color.a) / 255.0F};
    glUniform4fv(location, 1, components);
}

template <std::size_t COUNT>
void DrawFlat(const FlatProgram& flat, const Color& color, GLenum mode, const FlatVertex (&vertices)[COUNT]) {
    BindLayer();
    glUseProgram(flat.program);
    SetColor(flat.color, color);
    glEnableVertexAttribArray(flat.position);
    glBindBuffer(GL_ARRAY_BUFFER, flat.vbo);
    glVertexAttribPointer(flat.position, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBufferData(GL_ARRAY_BUFFER, sizeof(vertices), vertices, GL_DYNAMIC_DRAW);
    glDrawArrays(mode, 0, COUNT);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableVertexAttribArray(flat.position);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

// Writes the two triangles of a glyph.
void PutGlyph(const Atlas& atlas, const Glyph& glyph, float penX, float penY, QuadVertex* vertex) {
    const float scaleX = 2.0F / static_cast<float>(layer.width);
    const float scaleY = 2.0F / static_cast<float>(layer.height);
    const bool overhangs = glyph.left < 0.0F && glyph.advance > 0.0F && glyph.advance < glyph.width;
    const float left = overhangs ? penX : penX + glyph.left * scaleX;
    const float right = left + glyph.width * scaleX;
    const float top = penY + glyph.top * scaleY;
    const float bottom = top - glyph.rows * scaleY;
    const float s1 = glyph.s + glyph.width / static_cast<float>(atlas.width);
    const float t1 = glyph.t + glyph.rows / static_cast<float>(atlas.height);
    vertex[0] = {left, top, glyph.s, glyph.t};
    vertex[1] = vertex[3] = {right, top, s1, glyph.t};
    vertex[2] = vertex[4] = {left, bottom, glyph.s, t1};
    vertex[5] = {right, bottom, s1, t1};
}

void DrawGlyphs(const Atlas& atlas, const Line& line) {
    static QuadVertex vertices[MAX_CHARACTERS * 6];
    float penX = ToX(line.box.x);
    const float penY = ToY(line.box.y + line.box.height - BASELINE_ABOVE_BOTTOM);
    GLsizei count = 0;
    for (const char16_t unit : line.text) {
        if (const Glyph* const glyph = atlas.glyphs.Find(unit)) {
            PutGlyph(atlas, *glyph, penX, penY, vertices + count);
            penX += glyph->advance * 2.0F / static_cast<float>(layer.width);
            count += 6;
        }
    }
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(line.text.size() * 6 * sizeof(QuadVertex)),
                 vertices, GL_DYNAMIC_DRAW);
    glDrawArrays(GL_TRIANGLES, 0, count);
}

}  // namespace

unsigned long Start(unsigned long window, int layerWidth, int layerHeight) {
    OpenGlWindow(window);
    rects = MakeFlatProgram();
    rounds = MakeFlatProgram();
    bitmaps = MakeQuadProgram(TEXTURED_FRAGMENT_SHADER);
    frames = MakeQuadProgram(TEXTURED_FRAGMENT_SHADER);
    texts = MakeQuadProgram(TEXT_FRAGMENT_SHADER);
    textColor = glGetUniformLocation(texts.program, "color");

    layer.width = layerWidth;
    layer.height = layerHeight;
    glGenTextures(1, &layer.texture);
    glBindTexture(GL_TEXTURE_2D, layer.texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, layerWidth, layerHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    SetTextureParameters();
    glGenFramebuffers(1, &layer.fbo);
    glBindFramebuffer(GL_FRAMEBUFFER, layer.fbo);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, layer.texture, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return window;
}

void LoadFont(const std::string& path) { font.Load(path); }

void BeginFrame() {
    BindLayer();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void Draw(const Rect& rect) {
    const Box& box = rect.box;
    const float left = ToX(box.x);
    const float top = ToY(box.y);
    const float right = left + Span(box.width, layer.width);
    const float bottom = top - Span(box.height, layer.height);
    const FlatVertex vertices[] = {{left, top, 0, 1},     {right, top, 0, 1},   {left, bottom, 0, 1},
                                   {right, bottom, 0, 1}, {left, bottom, 0, 1}, {right, top, 0, 1}};
    DrawFlat(rects, rect.color, GL_TRIANGLES, vertices);
}

void Draw(const Round& round) {
    const Box& box = round.box;
    const float centerX = ToX(box.x + box.width / 2);
    const float centerY = ToY(box.y + box.height / 2);
    const float radiusX = Span(box.width / 2, layer.width);
    const float radiusY = Span(box.height / 2, layer.height);
    FlatVertex vertices[1 + RIM_POINTS];
    vertices[0] = {centerX, centerY, 0, 1};
    for (std::size_t i = 0; i < RIM_POINTS; ++i) {
        const auto angle = static_cast<float>(static_cast<double>(2 * i) * PI / 36);
        vertices[1 + i] = {centerX + std::cos(angle) * radiusX, centerY + std::sin(angle) * radiusY, 0, 1};
    }
    DrawFlat(rounds, round.color, GL_TRIANGLE_FAN, vertices);
}

void Draw(const Bitmap& bitmap) {
    const Box& box = bitmap.box;
    glActiveTexture(GL_TEXTURE0);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, box.width, box.height, 0, GL_RGBA, GL_UNSIGNED_BYTE, bitmap.rgba);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    SetTextureParameters();
    glBindTexture(GL_TEXTURE_2D, 0);

    BindLayer();
    glUseProgram(bitmaps.program);
    BindQuad(bitmaps, texture);
    const float left = ToX(box.x);
    const float top = ToY(box.y);
    const float right = left + Span(box.width, layer.width);
    const float bottom = top - Span(box.height, layer.height);
    DrawQuad(bitmaps, {{left, top, 0, 0}, {right, top, 1, 0}, {left, bottom, 0, 1}, {right, bottom, 1, 1}});
    UnbindQuad(bitmaps);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDeleteTextures(1, &texture);
}

void Draw(const Line& line) {
    const bool isStandard = line.size == STANDARD_SIZE && !line.bold;
    const Atlas& atlas = isStandard ? font.Standard() : font.BuildStyled(line);
    const GLint unit = isStandard ? 1 : 2;

    BindLayer();
    glUseProgram(texts.program);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    SetColor(textColor, line.color);
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, atlas.texture);
    glUniform1i(texts.tex, unit);

    glEnableVertexAttribArray(texts.coord);
    glBindBuffer(GL_ARRAY_BUFFER, texts.vbo);
    glVertexAttribPointer(texts.coord, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    DrawGlyphs(atlas, line);
    UnbindQuad(texts);

    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void EndFrame() {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glViewport(0, 0, WINDOW_WIDTH, WINDOW_HEIGHT);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glUseProgram(frames.program);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA_SATURATE, GL_ZERO);
    BindQuad(frames, layer.texture);
    DrawQuad(frames, {{-1, -1, 0, 0}, {1, -1, 1, 0}, {-1, 1, 0, 1}, {1, 1, 1, 1}});
    glDisable(GL_BLEND);
    UnbindQuad(frames);
    glBindTexture(GL_TEXTURE_2D, 0);
    SwapGlWindow();
}

}  // namespace bench
