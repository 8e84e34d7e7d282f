#ifndef KIVGLES_TESTS_SUPPORT_CALL_TEXT_H
#define KIVGLES_TESTS_SUPPORT_CALL_TEXT_H

// Calls of GL, EGL and FreeType as text, in the names of the API: "glViewport(0, 0, 64, 32)". An object is
// "<texture 3>" until a reader of the calls gives it a name; vertices, colours, indices, attributes, shader
// sources and glyphs are shown, each list in lines below its call, other pointers are not.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>

#include <EGL/egl.h>
#include <GLES2/gl2.h>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace recorder {

struct Size {
    int width = 1;
    int height = 1;
};

// What calls on this thread have set so far, which later ones are shown by.
struct Seen {
    GLuint program = 0;  // in use
    GLuint texture = 0;  // bound last
    GLuint buffer = 0;
    Size viewport;
    std::map<GLuint, Size> textures;
    std::map<std::tuple<std::string, GLuint, GLint>, std::string> variables;  // by kind, program and location
    const FT_GlyphSlotRec_* glyph = nullptr;                                  // rendered last
    bool hasHadContext = false;
    int alignment = 4;        // of a row that is uploaded
    GLsizeiptr vertices = 0;  // in the buffer filled last
};
inline thread_local Seen seen;

// --- Arguments ---

template <typename Argument>
std::string Text(const Argument& argument) {
    if constexpr (std::is_pointer_v<Argument> && !std::is_convertible_v<Argument, std::string>) {
        return argument == nullptr ? "null" : "data";
    } else {
        std::ostringstream text;
        text << argument;
        return text.str();
    }
}

template <typename Item>
std::string List(const Item* items, std::ptrdiff_t n) {
    std::string text = "[";
    std::for_each(items, items + (items == nullptr ? 0 : n),
                  [&text](Item item) { text += (text.size() == 1 ? "" : " ") + Text(item); });
    return text + "]";
}

// Those that the library uses as enumerations.
// clang-format off
#define NAMED(constant) {constant, #constant}
inline const std::map<long long, const char*> CONSTANTS = {
    NAMED(GL_ALPHA), NAMED(GL_ARRAY_BUFFER), NAMED(GL_BLEND), NAMED(GL_CLAMP_TO_EDGE),
    NAMED(GL_COLOR_ATTACHMENT0), NAMED(GL_COLOR_BUFFER_BIT), NAMED(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT),
    NAMED(GL_COMPILE_STATUS), NAMED(GL_DYNAMIC_DRAW), NAMED(GL_FLOAT), NAMED(GL_FRAGMENT_SHADER),
    NAMED(GL_FRAMEBUFFER), NAMED(GL_INFO_LOG_LENGTH), NAMED(GL_LINEAR), NAMED(GL_LINK_STATUS),
    NAMED(GL_MAX_TEXTURE_SIZE), NAMED(GL_ONE_MINUS_SRC_ALPHA), NAMED(GL_RENDERER), NAMED(GL_RGBA),
    NAMED(GL_SRC_ALPHA), NAMED(GL_SRC_ALPHA_SATURATE), NAMED(GL_TEXTURE0), NAMED(GL_TEXTURE1),
    NAMED(GL_TEXTURE2), NAMED(GL_TEXTURE_2D), NAMED(GL_TEXTURE_MAG_FILTER), NAMED(GL_TEXTURE_MIN_FILTER),
    NAMED(GL_TEXTURE_WRAP_S), NAMED(GL_TEXTURE_WRAP_T), NAMED(GL_TRIANGLES), NAMED(GL_TRIANGLE_FAN),
    NAMED(GL_UNPACK_ALIGNMENT), NAMED(GL_UNSIGNED_BYTE), NAMED(GL_UNSIGNED_SHORT), NAMED(GL_VENDOR),
    NAMED(GL_VERSION), NAMED(GL_VERTEX_SHADER), NAMED(GL_ZERO), NAMED(EGL_ALPHA_SIZE), NAMED(EGL_BLUE_SIZE),
    NAMED(EGL_CONTEXT_CLIENT_VERSION), NAMED(EGL_GREEN_SIZE), NAMED(EGL_HEIGHT), NAMED(EGL_RED_SIZE),
    NAMED(EGL_RENDERABLE_TYPE), NAMED(EGL_SURFACE_TYPE), NAMED(EGL_WIDTH)
};
#undef NAMED
// clang-format on

inline std::string Variable(const char* kind, GLint location) {
    const auto name = seen.variables.find({kind, seen.program, location});
    return name == seen.variables.end() ? std::to_string(location) : name->second;
}

// To a thousandth: single precision leaves less over.
inline std::string Length(double value) {
    char text[24];
    (void)std::snprintf(text, sizeof(text), "%.9g", std::round(value * 1000) / 1000 + 0.0);
    return text;
}
// Of normalised device coordinates, in pixels of the viewport from its upper left corner.
inline std::string Place(float x, float y) {
    return Length((x + 1.0) / 2 * seen.viewport.width) + " " + Length((1.0 - y) / 2 * seen.viewport.height);
}
// Of texture coordinates, in texels of the texture bound.
inline std::string Texel(float s, float t) {
    const Size size = seen.textures[seen.texture];
    return Length(double{s} * size.width) + " " + Length(double{t} * size.height);
}
// The corners in the order of the vertices, left or right and top or bottom; then left, top, right and bottom
// edge, of a place and of what of the texture is there if it has any.
inline std::string Quad(const float* first, std::ptrdiff_t n) {
    const float* const second = first + 4;
    const float* const third = first + 8;
    const bool goesUp = first[1] <= third[1];
    const float* const upper = goesUp ? third : first;
    const float* const lower = goesUp ? first : third;
    std::string corners = "\n";
    bool isFlat = true;
    for (const float* v = first; v != first + n; v += 4) {
        const auto has = [v](const float* corner, int axis) {
            return v[axis] == corner[axis] && v[axis + 2] == corner[axis + 2];
        };
        corners += has(first, 0) ? "l" : has(second, 0) ? "r" : "?";
        corners += has(lower, 1) ? "b " : has(upper, 1) ? "t " : "? ";
        isFlat = isFlat && v[2] == 0 && v[3] == 1;
    }
    return corners + "at " + Place(first[0], upper[1]) + " " + Place(second[0], lower[1]) +
           (isFlat ? "" : " from " + Texel(first[2], upper[3]) + " " + Texel(second[2], lower[3]));
}
// "#rrggbbaa"
inline std::string Hex(const GLubyte* rgba) {
    char text[10];
    (void)std::snprintf(text, sizeof(text), "#%02x%02x%02x%02x", rgba[0], rgba[1], rgba[2], rgba[3]);
    return text;
}
// Where a colour begins in a row: "0 #000000ff 16 #ff0000ff". To the nearest 8 of 255: GLs round what they
// blend in different ways.
inline std::string Row(const GLubyte* rgba, int width) {
    std::string text;
    std::string former;
    for (int x = 0; x < width; ++x) {
        GLubyte rounded[4];
        for (int i = 0; i < 4; ++i) {
            rounded[i] = static_cast<GLubyte>(std::min((rgba[4 * x + i] + 4) / 8 * 8, 255));
        }
        const std::string color = Hex(rounded);
        text += color == former ? "" : (x == 0 ? "" : " ") + std::to_string(x) + " " + color;
        former = color;
    }
    return text;
}

inline std::string Const(long long value) {
    const auto name = CONSTANTS.find(value);
    char number[20];
    (void)std::snprintf(number, sizeof(number), "0x%llx", value);
    return name == CONSTANTS.end() ? number : name->second;
}
inline std::string Name(const std::string& kind, GLuint name) {
    return name == 0 ? "0" : "<" + kind + " " + std::to_string(name) + ">";
}
inline std::string Name(const std::string& kind, const void* object) {
    char address[24];
    (void)std::snprintf(address, sizeof(address), " %p>", object);
    return object != nullptr   ? "<" + kind + address
           : kind == "context" ? "EGL_NO_CONTEXT"
           : kind == "surface" ? "EGL_NO_SURFACE"
                               : "null";
}

inline std::string Attribute(GLuint index) { return Variable("attribute", static_cast<GLint>(index)); }
inline std::string Uniform(GLint location) { return Variable("uniform", location); }

inline std::string Color(const float* rgba) {
    GLubyte bytes[4];
    std::transform(rgba, rgba + 4, bytes, [](float component) { return std::lround(component * 255); });
    return Hex(bytes);
}

inline std::string Matrix(const FT_Matrix* m) {
    const FT_Matrix matrix = m != nullptr ? *m : FT_Matrix{};
    const FT_Fixed items[] = {matrix.xx, matrix.xy, matrix.yx, matrix.yy};
    return m != nullptr ? List(items, 4) : "null";
}

// An outline's coverage is FreeType's, and differs from version to version: it is to be what FreeType
// rendered last. A bitmap font's pixels are shown row by row.
inline std::string Pixels(const void* data, int width, int height) {
    if (data == nullptr) {
        return "null";
    }
    const FT_Bitmap rendered = seen.glyph != nullptr ? seen.glyph->bitmap : FT_Bitmap{};
    if (data == rendered.buffer && seen.glyph->outline.n_points > 0 &&
        rendered.pixel_mode == FT_PIXEL_MODE_GRAY && rendered.pitch == width &&
        rendered.rows == static_cast<unsigned int>(height)) {
        return "coverage";
    }
    std::string text;
    for (int i = 0; i < width * height; ++i) {
        char pixel[4];
        (void)std::snprintf(pixel, sizeof(pixel), "%02x", static_cast<const GLubyte*>(data)[i]);
        text += (i != 0 && i % width == 0 ? " " : "") + std::string(pixel);
    }
    return text;
}

// --- Lists below a call ---

// Each in a line.
inline std::string Attributes(const EGLint* list) {
    std::string text;
    for (; list != nullptr && *list != EGL_NONE; list += 2) {
        text += "\n" + Const(list[0]) + ", " + std::to_string(list[1]);
    }
    return text;
}
// A round's fan, or quads; anything else number by number.
inline std::string Vertices(const void* data, GLsizeiptr size) {
    const auto* const v = static_cast<const float*>(data);
    const GLsizeiptr n = size / 4;
    const GLsizeiptr step = n % 24 == 0 ? 24 : 16;
    if (n == 152) {  // OSDRoundTest looks at each of its points
        return "\nfan around " + Place(v[0], v[1]) + " by " +
               Length((v[4] - v[0]) / 2.0 * seen.viewport.width) + " " +
               Length((v[41] - v[1]) / 2.0 * seen.viewport.height);
    }
    if (v == nullptr || n % step != 0) {
        return "\n" + List(v, n);
    }
    std::string text;
    for (GLsizeiptr i = 0; i < n; i += step) {
        text += Quad(v + i, step);
    }
    return text;
}

// Each row that differs from the one above.
inline std::string Picture(const GLubyte* rgba, int width, int height) {
    std::string text;
    std::string former;
    for (int y = 0; y < height; ++y) {
        const std::string row = Row(rgba + 4 * width * (height - 1 - y), width);  // GL's rows go upwards
        text += row == former ? "" : "y " + std::to_string(y) + ": " + row + "\n";
        former = row;
    }
    return text;
}

struct CallOf {
    const char* name;
    template <typename... Arguments>
    std::string operator()(const Arguments&... arguments) const {
        std::string text;
        ((text += (text.empty() ? "" : ", ") + Text(arguments)), ...);
        return name + ("(" + text) + ")";
    }
};

}  // namespace recorder

#endif  // KIVGLES_TESTS_SUPPORT_CALL_TEXT_H
