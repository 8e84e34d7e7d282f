// Cairo draws the layer in memory, which is then uploaded as a texture and shown by GL.

#include <cmath>
#include <vector>

#include <cairo-ft.h>
#include <cairo.h>

#include "Contestant.h"
#include "GlWindow.h"

namespace bench {

const char* const CONTESTANT_NAME = "cairo";

namespace {

// Cairo's bytes are B, G, R, A, colours multiplied by alpha.
constexpr char FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "varying vec2 texpos;\n"
    "uniform sampler2D tex;\n"
    "void main() {\n"
    "    gl_FragColor = texture2D(tex, texpos).bgra;\n"
    "}\n";

cairo_surface_t* layer;
cairo_t* context;
FT_Library library;
cairo_font_face_t* regular;
cairo_font_face_t* bold;
QuadProgram frames;
GLuint texture;

// Each style has a face of its own: Cairo keeps one font for a face.
cairo_font_face_t* OpenFace(const std::string& path) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        Fail("the font does not open");
    }
    return cairo_ft_font_face_create_for_ft_face(face, 0);
}

void SetColor(const Color& color) {
    cairo_set_source_rgba(context, color.r / 255.0, color.g / 255.0, color.b / 255.0, color.a / 255.0);
}

}  // namespace

unsigned long Start(unsigned long window, int layerWidth, int layerHeight) {
    OpenGlWindow(window);
    frames = MakeQuadProgram(FRAGMENT_SHADER);
    glGenTextures(1, &texture);
    layer = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, layerWidth, layerHeight);
    context = cairo_create(layer);
    return window;
}

void LoadFont(const std::string& path) {
    if (FT_Init_FreeType(&library) != 0) {
        Fail("FreeType does not start");
    }
    regular = OpenFace(path);
    bold = OpenFace(path);
    cairo_ft_font_face_set_synthesize(bold, CAIRO_FT_SYNTHESIZE_BOLD);
}

void BeginFrame() {
    cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(context);
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
}

void Draw(const Rect& rect) {
    SetColor(rect.color);
    cairo_rectangle(context, rect.box.x, rect.box.y, rect.box.width, rect.box.height);
    cairo_fill(context);
}

void Draw(const Round& round) {
    SetColor(round.color);
    cairo_save(context);
    cairo_translate(context, round.box.x + round.box.width / 2.0, round.box.y + round.box.height / 2.0);
    cairo_scale(context, round.box.width / 2.0, round.box.height / 2.0);
    cairo_arc(context, 0, 0, 1, 0, 2 * M_PI);
    cairo_restore(context);
    cairo_fill(context);
}

void Draw(const Bitmap& bitmap) {
    const Box& box = bitmap.box;
    const auto count = static_cast<std::size_t>(box.width * box.height);
    static std::vector<std::uint32_t> argb;
    argb.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const pixel = bitmap.rgba + i * 4;
        argb[i] = 0xFF000000U | static_cast<std::uint32_t>(pixel[0] << 16 | pixel[1] << 8 | pixel[2]);
    }
    cairo_surface_t* const image =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(argb.data()),
                                            CAIRO_FORMAT_ARGB32, box.width, box.height, box.width * 4);
    cairo_set_source_surface(context, image, box.x, box.y);
    cairo_rectangle(context, box.x, box.y, box.width, box.height);
    cairo_fill(context);
    cairo_surface_destroy(image);
}

void Draw(const Line& line) {
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
    SetColor(line.color);
    cairo_set_font_face(context, line.bold ? bold : regular);
    cairo_set_font_size(context, line.size);
    cairo_move_to(context, line.box.x, line.box.y + line.box.height - BASELINE_ABOVE_BOTTOM);
    cairo_show_text(context, std::string(line.text.begin(), line.text.end()).c_str());  // it is ASCII
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
}

void EndFrame() {
    cairo_surface_flush(layer);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, cairo_image_surface_get_width(layer),
                 cairo_image_surface_get_height(layer), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 cairo_image_surface_get_data(layer));
    SetTextureParameters();
    glViewport(0, 0, WINDOW_WIDTH, WINDOW_HEIGHT);
    glUseProgram(frames.program);
    BindQuad(frames, texture);
    DrawQuad(frames, {{-1, -1, 0, 1}, {1, -1, 1, 1}, {-1, 1, 0, 0}, {1, 1, 1, 0}});
    UnbindQuad(frames);
    SwapGlWindow();
}

}  // namespace bench
