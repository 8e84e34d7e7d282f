#ifndef KIVGLES_TESTS_SCENARIOS_CONTRACTS_H
#define KIVGLES_TESTS_SCENARIOS_CONTRACTS_H

// What the order of calls and the log promise, each written out once. An object has the name that it gets in
// the line that makes it ("glGenTextures(1) = atlas") until another one gets it.

#include <string>
#include <vector>

#include <EGL/egl.h>

#include "scenarios/Scenario.h"

namespace kivgles {

using Words = const std::string&;

// --- A context ---

// With eight bits a component, for windows and OpenGL ES 2.
inline Calls ChooseConfig() {
    return {"eglGetDisplay(EGL_DEFAULT_DISPLAY); eglInitialize(display); eglChooseConfig(display, 1)",
            Line("EGL_SURFACE_TYPE, {}; EGL_RENDERABLE_TYPE, {}", EGL_WINDOW_BIT, EGL_OPENGL_ES2_BIT),
            "EGL_RED_SIZE, 8; EGL_GREEN_SIZE, 8; EGL_BLUE_SIZE, 8; EGL_ALPHA_SIZE, 8"};
}
inline Calls MakeContext() {
    return {ChooseConfig(),
            "eglCreateContext(display, config, EGL_NO_CONTEXT) = context; EGL_CONTEXT_CLIENT_VERSION, 2"};
}
// Without a size, as nothing is drawn there, and of the configuration that was asked for windows: those of
// drivers are for pbuffers too, and where one is not, EGL refuses this (EGL_BAD_MATCH).
inline Calls MakePbuffer() {
    return {"eglCreatePbufferSurface(display, config) = pbuffer",
            "eglMakeCurrent(display, pbuffer, pbuffer, context)"};
}
// The size of a new surface; who GL is. That is news of priority E, so that it stands in a log of errors
// only: it is what a report of one begins with.
inline Calls QuerySurface(Words surface) {
    return {
        Line("eglQuerySurface(display, {}, EGL_WIDTH); eglQuerySurface(display, {}, EGL_HEIGHT)", surface),
        "glGetString(GL_VERSION); E EGLManager: GL Version = (GL's words)",
        "glGetString(GL_VENDOR); E EGLManager: GL Vendor = (GL's words)",
        "glGetString(GL_RENDERER); E EGLManager: GL Renderer = (GL's words)"};
}
inline Calls CreateContext() { return {MakeContext(), MakePbuffer(), QuerySurface("pbuffer")}; }
inline Calls CreateWindowSurface() {
    return {"eglCreateWindowSurface(display, config, window) = window surface",
            "eglMakeCurrent(display, window surface, window surface, context)",
            QuerySurface("window surface")};
}
// A window's surface in place of the former one, in the same context.
inline Calls ConnectWindow(Words former) {
    return {"eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)",
            Line("eglDestroySurface(display, {})", former), CreateWindowSurface()};
}
inline Calls ReleaseDisplay() {
    return "eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT); eglTerminate(display); "
           "eglReleaseThread()";
}
inline Calls EndThread() { return "W GLDrawThread: exit draw thread; W GLDrawThread: ~GLDrawThread"; }
// EGL goes first, and with the context all that GL has made in it. What is deleted then goes to no context,
// and GL takes no notice: the objects of the client's side end after those of EGL's.
inline Calls EndContext(Words surface, const Calls& deletions) {
    return {Line("eglDestroyContext(display, context); eglDestroySurface(display, {})", surface),
            ReleaseDisplay(), deletions, "W EGLManager: EGL Context has been released", EndThread()};
}

// --- A layer: a texture with a framebuffer around it, transparent from the start ---

inline Calls BindTarget(const Target& target) {
    return Line("glBindFramebuffer(GL_FRAMEBUFFER, {}); glViewport(0, 0, {}, {})", target.Bound(),
                target.width, target.height);
}
inline Calls ClearTarget(const Target& target) {
    return {BindTarget(target), "glClearColor(0, 0, 0, 0); glClear(GL_COLOR_BUFFER_BIT)",
            "glBindFramebuffer(GL_FRAMEBUFFER, 0)"};
}
inline Calls Filter() {
    return "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR); "
           "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)";
}
inline Calls Clamp() {
    return "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE); "
           "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)";
}
// A side as GL is given it: every GL refuses a negative one, and some not all that are larger than any GL's.
inline int Side(unsigned int pixels) { return pixels > 0x20000 ? -1 : static_cast<int>(pixels); }
// A new texture in place of the unit's: of four bytes a pixel, or one (GL_ALPHA).
inline Calls MakeTexture(int unit, Words name, Words format, unsigned int width, unsigned int height,
                         Words pixels) {
    return {Line("glActiveTexture(GL_TEXTURE{}); glGenTextures(1) = {}; glBindTexture(GL_TEXTURE_2D, {})",
                 unit, name),
            Line("glTexImage2D(GL_TEXTURE_2D, 0, {}, {}, {}, 0, {}, GL_UNSIGNED_BYTE, {})", format,
                 Side(width), Side(height), format, pixels)};
}
// Whatever state the framebuffer is in: that is only logged.
inline Calls SetUpLayer(const Target& layer, Words handle, Words state = "Framebuffer complete.") {
    return {MakeTexture(0, layer.Texture(), "GL_RGBA", layer.width, layer.height, "null"),
            Filter(),
            Clamp(),
            Line("glGenFramebuffers(1) = {}; glBindFramebuffer(GL_FRAMEBUFFER, {})", layer.Bound()),
            Line("glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, {}, 0)",
                 layer.Texture()),
            Line("glCheckFramebufferStatus(GL_FRAMEBUFFER); E FBOManager: {}", state),
            "glBindTexture(GL_TEXTURE_2D, 0); glBindFramebuffer(GL_FRAMEBUFFER, 0)",
            ClearTarget(layer),
            Line("W GLDrawThread: Create fbo fboHandleIndex {}, width {}, height {}", handle, layer.width,
                 layer.height)};
}
inline Calls DeleteLayer(const Target& layer) {
    return Line("glDeleteTextures(1, {}); glDeleteFramebuffers(1, {})", layer.Texture(), layer.Bound());
}
inline Calls DropLayer(const Target& layer, Words handle) {
    return {DeleteLayer(layer), Line("W GLDrawThread: Destory FBO fboHandleIndex {}", handle)};
}
// A handle without a layer: where the client's thread looks for it, or the draw thread does.
inline Calls MissHandle(const Target& target, Words where = "KivGLDrawSurface") {
    return Line("E GLDrawThread: There is not the fbo {}; E {}: There is not the fbo {}", target.name, where,
                target.name);
}

// --- Renderers: each a program and a buffer for its vertices ---

inline Calls Compile(Words shader, Words type) {
    return {Line("glCreateShader({}) = {}; glShaderSource({}, 3, null)", type, shader),
            Line("glCompileShader({}); glGetShaderiv({}, GL_COMPILE_STATUS)", shader)};
}
inline Calls CompileShaders() {
    return {Compile("vertex shader", "GL_VERTEX_SHADER"), Compile("fragment shader", "GL_FRAGMENT_SHADER")};
}
inline Calls Link(Words renderer) {
    return {Line("glCreateProgram() = {}'s program", renderer),
            Line("glAttachShader({}'s program, vertex shader); glAttachShader({}'s program, fragment shader)",
                 renderer),
            Line("glLinkProgram({}'s program); glGetProgramiv({}'s program, GL_LINK_STATUS)", renderer)};
}
inline Calls DeleteShaders() { return "glDeleteShader(vertex shader); glDeleteShader(fragment shader)"; }
inline Calls MakeRenderer(Words renderer, Words attribute, Words uniform, const Calls& otherUniforms = {}) {
    return {CompileShaders(),
            Link(renderer),
            DeleteShaders(),
            Line("glGetAttribLocation({}'s program, {})", renderer, attribute),
            Line("glGetUniformLocation({}'s program, {})", renderer, uniform),
            otherUniforms,
            Line("glGenBuffers(1) = {}'s buffer", renderer)};
}
// OSDRect and OSDRound have one colour; OSDBitmap, OSDBlit and OSDFrame show a texture; OSDText colours the
// coverage that an atlas has in its alpha.
inline Calls MakeFlatRenderer(Words renderer) { return MakeRenderer(renderer, "vPosition", "color"); }
inline Calls MakeTextureRenderer(Words renderer) { return MakeRenderer(renderer, "coord", "tex"); }
inline Calls MakeTextRenderer() {
    return MakeRenderer("OSDText", "coord", "tex", "glGetUniformLocation(OSDText's program, color)");
}
inline Calls DeleteRenderer(Words renderer) {
    return Line("glDeleteBuffers(1, {}'s buffer); glDeleteProgram({}'s program)", renderer);
}

// --- One draw of each kind ---
//
// The edges of a quad are left, top, right and bottom, in pixels from the upper left corner. What of a
// texture is there is in texels, in the order of its rows: a bitmap's begin at the top, those of a layer at
// the bottom. lt is the vertex at the left and top, and so on.

inline Calls BindVertices(Words renderer, Words attribute) {
    return {Line("glEnableVertexAttribArray({}); glBindBuffer(GL_ARRAY_BUFFER, {}'s buffer)", attribute,
                 renderer),
            Line("glVertexAttribPointer({}, 4, GL_FLOAT, GL_FALSE, 0, null)", attribute)};
}
inline Calls UnbindVertices(Words attribute) {
    return Line("glBindBuffer(GL_ARRAY_BUFFER, 0); glDisableVertexAttribArray({})", attribute);
}
// Without blending: a shape replaces what was there.
inline Calls FillShape(Words renderer, const Target& target, Color color, Words mode, int vertices,
                       Words shape) {
    return {BindTarget(target),
            Line("glUseProgram({}'s program); glUniform4fv(color, 1, {})", renderer, Hex(color)),
            BindVertices(renderer, "vPosition"),
            Line("glBufferData(GL_ARRAY_BUFFER, {}, GL_DYNAMIC_DRAW); {}", 16 * vertices, shape),
            Line("glDrawArrays({}, 0, {})", mode, vertices),
            UnbindVertices("vPosition"),
            "glBindFramebuffer(GL_FRAMEBUFFER, 0)"};
}
inline Calls FillRectangle(const Target& target, Color color, Words edges) {
    return FillShape("OSDRect", target, color, "GL_TRIANGLES", 6, "lt rt lb rb lb rt at " + edges);
}
// 37 points at every ten degrees around a centre, the last one being the first.
inline Calls FillRound(const Target& target, Color color, Words centre, Words radii) {
    return FillShape("OSDRound", target, color, "GL_TRIANGLE_FAN", 38,
                     Line("fan around {} by {}", centre, radii));
}

inline Calls TexturedQuad(Words renderer, Words texture, Words corners, Words edges, Words texels) {
    return {
        Line("glActiveTexture(GL_TEXTURE0); glBindTexture(GL_TEXTURE_2D, {}); glUniform1i(tex, 0)", texture),
        BindVertices(renderer, "coord"),
        Line("glBufferData(GL_ARRAY_BUFFER, 64, GL_DYNAMIC_DRAW); {} at {} from {}", corners, edges, texels),
        "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_SHORT, [0 1 2 3 2 1])"};
}
// What is shown replaces all that the window has, and is multiplied by its opacity, as a window's pixels are:
// where the target has just been cleared, GL_SRC_ALPHA_SATURATE, min(alpha, 1 - 0), is the source's alpha for
// its colours; for its alpha the factor is 1.
inline Calls ClearWindow(const Target& window, Words renderer) {
    return {BindTarget(window),
            "glClearColor(0, 0, 0, 0); glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
            Line("glUseProgram({}'s program)", renderer),
            "glEnable(GL_BLEND); glBlendFunc(GL_SRC_ALPHA_SATURATE, GL_ZERO)"};
}
// A bitmap has a texture for as long as it is drawn. The alignment is set after the upload, for whoever
// uploads next: its own rows, of four bytes a pixel, are as good with the 1 that an atlas may have left.
inline Calls PutBitmap(const Calls& setUp, Words edges, unsigned int width, unsigned int height,
                       const Calls& restore = {}) {
    return {MakeTexture(0, "bitmap's texture", "GL_RGBA", width, height, "data"),
            "glPixelStorei(GL_UNPACK_ALIGNMENT, 4)",
            Filter(),
            Clamp(),
            "glBindTexture(GL_TEXTURE_2D, 0)",
            setUp,
            TexturedQuad("OSDBitmap", "bitmap's texture", "lt rt lb rb", edges,
                         Line("0 0 {} {}", Side(width), Side(height))),
            UnbindVertices("coord"),
            restore,
            "glBindTexture(GL_TEXTURE_2D, 0); glDeleteTextures(1, bitmap's texture)"};
}
inline Calls DrawBitmap(const Target& target, Words edges, unsigned int width = 2, unsigned int height = 1) {
    return PutBitmap({BindTarget(target), "glUseProgram(OSDBitmap's program)"}, edges, width, height);
}
inline Calls BlendBitmap(const Target& target, Words edges, unsigned int width = 2, unsigned int height = 1) {
    const Calls blend = "glEnable(GL_BLEND); glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)";
    return PutBitmap({BindTarget(target), blend, "glUseProgram(OSDBitmap's program)"}, edges, width, height,
                     "glDisable(GL_BLEND)");
}
inline Calls ShowBitmap(const Target& window, Words edges, unsigned int width, unsigned int height) {
    return PutBitmap(ClearWindow(window, "OSDBitmap"), edges, width, height, "glDisable(GL_BLEND)");
}
inline Calls BlitTexture(const Target& source, const Target& target, Words edges, Words texels) {
    return {BindTarget(target), "glUseProgram(OSDBlit's program)",
            TexturedQuad("OSDBlit", source.Texture(), "lb rb lt rt", edges, texels), UnbindVertices("coord"),
            "glBindTexture(GL_TEXTURE_2D, 0); glBindFramebuffer(GL_FRAMEBUFFER, 0)"};
}
inline Calls DisplayTexture(const Target& source, const Target& window, Words edges, Words texels) {
    return {ClearWindow(window, "OSDFrame"),
            TexturedQuad("OSDFrame", source.Texture(), "lb rb lt rt", edges, texels), "glDisable(GL_BLEND)",
            UnbindVertices("coord"), "glBindTexture(GL_TEXTURE_2D, 0)"};
}
constexpr char SWAP[] = "eglSwapBuffers(display, window surface)";

// --- Fonts and their atlases ---

// A font that tests/text/make_fonts.py has made, to sizes in pixels at 40; what its standard atlas is like.
// Glyphs are one pixel apart, each told by place and size. What FreeType makes of an outline is `coverage`;
// of a bitmap each row is told behind a colon, two digits a pixel.
struct Font {
    Font(Words name, unsigned int columns, unsigned int rows, const std::vector<std::string>& uploads,
         int pixels = 40)
        : file(name), width(columns), height(rows), glyphs(uploads), size(pixels) {}

    std::string file;
    unsigned int width;
    unsigned int height;
    std::vector<std::string> glyphs;
    int size;
};
const Font BEARINGS("bearings.ttf", 74, 20,
                    {"0, 0, 0, 0: null", "1, 0, 10, 20", "12, 0, 12, 20", "25, 0, 8, 10", "34, 0, 6, 4",
                     "41, 0, 10, 10", "52, 0, 10, 10", "63, 0, 10, 10"});
const Font OUTLINES("outlines.ttf", 25, 20, {"0, 0, 0, 0: null", "1, 0, 10, 20", "12, 0, 12, 20"});

// A line of the log stands where the glyph would that it is about.
inline Calls UploadGlyphs(const std::vector<std::string>& glyphs) {
    Calls calls;
    for (Words glyph : glyphs) {
        const std::size_t colon = glyph.find(": ");
        calls.Add(glyph[0] == 'E'
                      ? glyph
                      : Line("glTexSubImage2D(GL_TEXTURE_2D, 0, {}, GL_ALPHA, GL_UNSIGNED_BYTE, {})",
                             glyph.substr(0, colon),
                             colon == std::string::npos ? "coverage" : glyph.substr(colon + 2)));
    }
    return calls;
}
// Of one byte a pixel: the alignment is for the glyphs, which follow.
inline Calls AlphaTexture(int unit, Words name, unsigned int width, unsigned int height) {
    return {MakeTexture(unit, name, "GL_ALPHA", width, height, "null"),
            "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)", Clamp(), Filter()};
}
inline Calls OpenFace(const Font& font) {
    return {"FT_Init_FreeType() = atlas library",
            Line("FT_New_Face(atlas library, {}, 0) = atlas face", font.file),
            Line("FT_Set_Pixel_Sizes(atlas face, 0, {}); glGetIntegerv(GL_MAX_TEXTURE_SIZE)", font.size)};
}
inline Calls CloseFace() { return "FT_Done_Face(atlas face); FT_Done_FreeType(atlas library)"; }
// The standard atlas has all characters of a font that find room, in one size and no style; its face is
// closed again.
inline Calls FillAtlas(const Font& font, const Calls& warnings = {}) {
    return {AlphaTexture(1, "atlas", font.width, font.height),
            UploadGlyphs(font.glyphs),
            Line("W FontAtlas: Generated a {} x {} ({} kb) texture atlas", font.width, font.height,
                 font.width * font.height / 1024),
            warnings,
            "glBindTexture(GL_TEXTURE_2D, 0)",
            CloseFace()};
}
// Two more faces stay open for other styles, one to draw and one to measure: client threads measure.
inline Calls OpenStyles(const Font& font) {
    return {"glGetIntegerv(GL_MAX_TEXTURE_SIZE); FT_Init_FreeType() = style library",
            Line("FT_New_Face(style library, {}, 0) = drawing face", font.file),
            Line("FT_New_Face(style library, {}, 0) = measuring face", font.file)};
}
inline Calls CloseStyles() {
    return "FT_Done_Face(measuring face); FT_Done_Face(drawing face); FT_Done_FreeType(style library)";
}
inline Calls LoadFirstFont(const Font& font, const Calls& warnings = {}) {
    return {OpenFace(font), FillAtlas(font, warnings), OpenStyles(font)};
}
inline Calls LoadNextFont(const Font& font) {
    return {OpenFace(font), FillAtlas(font), CloseStyles(), OpenStyles(font)};
}
inline Calls FailToLoad(Words file) {
    return {Line("FT_Init_FreeType() = atlas library; FT_New_Face(atlas library, {}, 0)", file),
            "E FontAtlas: Error loading font face; FT_Done_FreeType(atlas library)",
            "E OSDText: Load standard font lib fail 31"};
}
// No character has pixels.
inline Calls FailToFillAtlas(const Font& font) {
    return {OpenFace(font),
            Line("E FontAtlas: Calculate texture width {}d, height {}d", font.width, font.height),
            CloseFace(), "E OSDText: Load standard font lib fail 32"};
}
// Other sizes and styles are FreeType's work on the same file's outlines, and what the scenarios tell of them
// follows from make_fonts.py: a size in pixels scales what is said there for 40, and is rounded outwards to
// whole pixels; bold (FT_Outline_Embolden) makes an outline one pixel wider and higher, but not its advance;
// italic moves what is n pixels above the baseline n / 5 to the right (a matrix of 16.16 fixed point).
constexpr char ITALIC[] = "[65536 13107 0 65536]";
inline Calls SetStyle(Words face, int size, Words matrix) {
    return Line("FT_Set_Pixel_Sizes({}, 0, {}); FT_Set_Transform({}, {}, null)", face, size, face, matrix);
}
inline Calls DrawStyled(int size, Words matrix = "null") { return SetStyle("drawing face", size, matrix); }
inline Calls MeasureStyled(int size, Words matrix = "null") {
    return SetStyle("measuring face", size, matrix);
}
// A styled atlas has the characters of one text.
inline Calls FillStyledAtlas(unsigned int width, unsigned int height,
                             const std::vector<std::string>& glyphs) {
    return {AlphaTexture(2, "styled atlas", width, height), UploadGlyphs(glyphs),
            "glBindTexture(GL_TEXTURE_2D, 0)"};
}
inline Calls FailToFillStyledAtlas() {
    return {"E FontStyleAtlas: Calculate texture width 0d, height 0d",
            "E OSDText: Get font atlas texture fail 32; E OSDText: get font alpha texture fail 32"};
}

// --- Texts ---

// Where a text's glyphs come from: each texture is on a unit of its own.
constexpr char STANDARD[] = "atlas";
constexpr char STYLED[] = "styled atlas";

constexpr char GLYPH_A[] = "2 18 12 38 from 1 0 11 20";  // of both fonts above, at the left of layer a

// Coverage is blended. Each glyph is two triangles, "2 18 12 38 from 1 0 11 20"; those without pixels stand
// behind the others, in one point each ("32 24"), and are not drawn.
inline Calls DrawText(const Target& target, Words atlas, const std::vector<std::string>& glyphs,
                      const Calls& complaints = {}, Color color = WHITE) {
    const int unit = atlas == STYLED ? 2 : 1;
    std::size_t drawn = 0;
    Calls quads;
    for (Words glyph : glyphs) {
        const bool isDrawn = glyph.find("from") != std::string::npos;
        drawn += isDrawn ? 1 : 0;
        quads.Add(isDrawn ? "lt rt lb rt lb rb at " + glyph
                          : Line("lb lb lb lb lb lb at {} {} from 0 0 0 0", glyph));
    }
    return {BindTarget(target),
            "glUseProgram(OSDText's program)",
            "glEnable(GL_BLEND); glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
            Line("glUniform4fv(color, 1, {}); glActiveTexture(GL_TEXTURE{})", Hex(color), unit),
            Line("glBindTexture(GL_TEXTURE_2D, {}); glUniform1i(tex, {})", atlas, unit),
            BindVertices("OSDText", "coord"),
            complaints,
            Line("glBufferData(GL_ARRAY_BUFFER, {}, GL_DYNAMIC_DRAW)", 96 * glyphs.size()),
            quads,
            Line("glDrawArrays(GL_TRIANGLES, 0, {})", 6 * drawn),
            UnbindVertices("coord"),
            "glDisable(GL_BLEND); glBindTexture(GL_TEXTURE_2D, 0); glBindFramebuffer(GL_FRAMEBUFFER, 0)"};
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SCENARIOS_CONTRACTS_H
