#include "support/CallText.h"

#include <cmath>
#include <cstdio>
#include <sstream>

namespace recorder {

namespace {

// Those that the library uses. Small ones, which mean different things to different functions, are not among
// them.
// clang-format off
#define NAMED(constant) {constant, #constant}
const std::map<long long, const char*> CONSTANTS = {
    NAMED(GL_ALPHA), NAMED(GL_ARRAY_BUFFER), NAMED(GL_BLEND), NAMED(GL_CLAMP_TO_EDGE),
    NAMED(GL_COLOR_ATTACHMENT0), NAMED(GL_COMPILE_STATUS), NAMED(GL_DYNAMIC_DRAW), NAMED(GL_FLOAT),
    NAMED(GL_FRAGMENT_SHADER), NAMED(GL_FRAMEBUFFER), NAMED(GL_INFO_LOG_LENGTH), NAMED(GL_LINEAR),
    NAMED(GL_LINK_STATUS), NAMED(GL_MAX_TEXTURE_SIZE), NAMED(GL_ONE_MINUS_SRC_ALPHA), NAMED(GL_RENDERER),
    NAMED(GL_RGBA), NAMED(GL_SRC_ALPHA), NAMED(GL_SRC_ALPHA_SATURATE), NAMED(GL_TEXTURE0),
    NAMED(GL_TEXTURE1), NAMED(GL_TEXTURE2), NAMED(GL_TEXTURE_2D), NAMED(GL_TEXTURE_MAG_FILTER),
    NAMED(GL_TEXTURE_MIN_FILTER), NAMED(GL_TEXTURE_WRAP_S), NAMED(GL_TEXTURE_WRAP_T),
    NAMED(GL_UNPACK_ALIGNMENT), NAMED(GL_UNSIGNED_BYTE), NAMED(GL_UNSIGNED_SHORT), NAMED(GL_VENDOR),
    NAMED(GL_VERSION), NAMED(GL_VERTEX_SHADER), NAMED(EGL_ALPHA_SIZE), NAMED(EGL_BLUE_SIZE),
    NAMED(EGL_CONTEXT_CLIENT_VERSION), NAMED(EGL_GREEN_SIZE), NAMED(EGL_HEIGHT), NAMED(EGL_RED_SIZE),
    NAMED(EGL_RENDERABLE_TYPE), NAMED(EGL_SURFACE_TYPE), NAMED(EGL_WIDTH)
};
#undef NAMED
// clang-format on

std::string Variable(const char* kind, GLint location) {
    const auto name = seen.variables.find({kind, seen.program, location});
    return name == seen.variables.end() ? std::to_string(location) : name->second;
}

// To a thousandth: single precision leaves less over.
std::string Length(double value) {
    char text[24];
    (void)std::snprintf(text, sizeof(text), "%.9g", std::round(value * 1000) / 1000 + 0.0);
    return text;
}
// Of normalised device coordinates, in pixels of the viewport from its upper left corner; as they are in one
// without pixels.
std::string Place(float x, float y) {
    const bool hasPixels = seen.viewport.width != 0 && seen.viewport.height != 0;
    return hasPixels ? Length((x + 1.0) / 2 * seen.viewport.width) + " " +
                           Length((1.0 - y) / 2 * seen.viewport.height)
                     : Length(x) + " " + Length(y);
}
// Of texture coordinates, in texels of the texture bound.
std::string Texel(float s, float t) {
    const Size size = seen.textures[seen.texture];
    return Length(double{s} * size.width) + " " + Length(double{t} * size.height);
}
// The corners in the order of the vertices, left or right and top or bottom; then left, top, right and bottom
// edge, of a place and of what of the texture is there if it has any.
std::string Quad(const float* first, std::ptrdiff_t n) {
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
// To the nearest 8 of 255: GLs round what they blend in different ways.
std::string Rounded(const GLubyte* pixel) {
    char text[10];
    const auto rounded = [](GLubyte component) { return std::min((component + 4) / 8 * 8, 255); };
    (void)std::snprintf(text, sizeof(text), "#%02x%02x%02x%02x", rounded(pixel[0]), rounded(pixel[1]),
                        rounded(pixel[2]), rounded(pixel[3]));
    return text;
}
// Where a colour begins in a row: "0 #000000ff 16 #ff0000ff".
std::string Row(const GLubyte* rgba, int width) {
    std::string text;
    std::string former;
    for (int x = 0; x < width; ++x) {
        const std::string color = Rounded(rgba + 4 * x);
        text += color == former ? "" : (x == 0 ? "" : " ") + std::to_string(x) + " " + color;
        former = color;
    }
    return text;
}

}  // namespace

std::string Const(long long value) {
    const auto name = CONSTANTS.find(value);
    char number[20];
    (void)std::snprintf(number, sizeof(number), "0x%llx", value);
    return name == CONSTANTS.end() ? number : name->second;
}
std::string Mode(GLenum mode) {
    return mode == GL_TRIANGLES ? "GL_TRIANGLES" : mode == GL_TRIANGLE_FAN ? "GL_TRIANGLE_FAN" : Const(mode);
}
std::string Mask(GLbitfield mask) {
    return mask == GL_COLOR_BUFFER_BIT                           ? "GL_COLOR_BUFFER_BIT"
           : mask == (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT) ? "GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT"
                                                                 : Const(mask);
}
std::string Name(const std::string& kind, GLuint name) {
    return name == 0 ? "0" : "<" + kind + " " + std::to_string(name) + ">";
}
std::string Name(const std::string& kind, const void* object) {
    char address[24];
    (void)std::snprintf(address, sizeof(address), " %p>", object);
    return object == nullptr ? "null" : "<" + kind + address;
}
std::string Names(const std::string& kind, GLsizei n, const GLuint* names) {
    std::string text;
    std::for_each(names, names + n,
                  [&](GLuint name) { text += (text.empty() ? "" : " ") + Name(kind, name); });
    return text;
}
std::string Surface(EGLSurface surface) {
    return surface == nullptr ? "EGL_NO_SURFACE" : Name("surface", surface);
}
std::string Context(EGLContext context) {
    return context == nullptr ? "EGL_NO_CONTEXT" : Name("context", context);
}

std::string Attribute(GLuint index) { return Variable("attribute", static_cast<GLint>(index)); }
std::string Uniform(GLint location) { return Variable("uniform", location); }

// As #rrggbbaa where it is one of eight bits a component.
std::string Color(const float* rgba) {
    std::string text = "#";
    for (const float* component = rgba; component != rgba + 4; ++component) {
        char byte[8];
        const float scaled = *component * 255;
        (void)std::snprintf(byte, sizeof(byte), "%02x", static_cast<int>(std::round(scaled)) & 255);
        text += byte;
        if (std::fabs(scaled - std::round(scaled)) > 1e-4F || scaled < 0 || scaled > 255) {
            return List(rgba, 4);
        }
    }
    return text;
}

std::string Matrix(const FT_Matrix* m) {
    return m == nullptr ? "null"
                        : "[" + std::to_string(m->xx) + " " + std::to_string(m->xy) + " " +
                              std::to_string(m->yx) + " " + std::to_string(m->yy) + "]";
}

// An outline's coverage is FreeType's, and differs from version to version: it is to be what FreeType
// rendered last. A bitmap font's pixels are shown row by row.
std::string Pixels(const void* data, int width, int height) {
    const auto* const bytes = static_cast<const GLubyte*>(data);
    bool isRendered = seen.glyph != nullptr && seen.glyph->format == FT_GLYPH_FORMAT_BITMAP &&
                      seen.glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY &&
                      seen.glyph->bitmap.width == static_cast<unsigned int>(width) &&
                      seen.glyph->bitmap.rows == static_cast<unsigned int>(height) &&
                      seen.glyph->outline.n_points > 0;
    for (int y = 0; isRendered && y < height; ++y) {
        isRendered = std::equal(bytes + y * width, bytes + (y + 1) * width,
                                seen.glyph->bitmap.buffer + y * seen.glyph->bitmap.pitch);
    }
    if (isRendered || data == nullptr) {
        return isRendered ? "coverage" : "null";
    }
    std::string text;
    for (int y = 0; y < height; ++y) {
        text += y == 0 ? "" : " ";
        for (int x = 0; x < width; ++x) {
            char pixel[4];
            (void)std::snprintf(pixel, sizeof(pixel), "%02x", bytes[y * width + x]);
            text += pixel;
        }
    }
    return text;
}
// A line of source to a line, in quotes: blanks at its end count.
std::string Source(GLsizei n, const GLchar* const* parts) {
    std::string text;
    for (GLsizei i = 0; i < n; ++i) {
        std::istringstream source(parts[i]);
        for (std::string row; std::getline(source, row);) {
            text += "\n\"" + row + "\"";
        }
    }
    return text;
}
// Each in a line.
std::string Attributes(const EGLint* list) {
    std::string text;
    for (; list != nullptr && *list != EGL_NONE; list += 2) {
        const bool isWindow = list[0] == EGL_SURFACE_TYPE && list[1] == EGL_WINDOW_BIT;
        const bool isES2 = list[0] == EGL_RENDERABLE_TYPE && list[1] == EGL_OPENGL_ES2_BIT;
        text += "\n" + Const(list[0]) + ", " +
                (isWindow ? "EGL_WINDOW_BIT"
                 : isES2  ? "EGL_OPENGL_ES2_BIT"
                          : std::to_string(list[1]));
    }
    return text;
}
// A round's fan, or quads, of a long text the first two and the last; anything else number by number.
std::string Vertices(const void* data, GLsizeiptr size) {
    const auto* const v = static_cast<const float*>(data);
    const GLsizeiptr n = size / 4;
    if (n == 152) {  // OSDRoundTest looks at each of its points
        return "\nfan around " + Place(v[0], v[1]) + " by " +
               Length((v[4] - v[0]) / 2.0 * seen.viewport.width) + " " +
               Length((v[41] - v[1]) / 2.0 * seen.viewport.height);
    }
    const GLsizeiptr step = n % 24 == 0 ? 24 : 16;
    if (v == nullptr || n % step != 0) {
        return "\n" + List(v, n);
    }
    std::string text;
    for (GLsizeiptr i = 0; i < n; i += step) {
        const bool isShown = n <= 8 * step || i < 2 * step || i == n - step;
        text += isShown ? Quad(v + i, step) : "";
    }
    return text;
}

std::string Picture(const GLubyte* rgba, int width, int height) {
    std::string text;
    std::string former;
    for (int y = 0; y < height; ++y) {
        const std::string row = Row(rgba + 4 * width * (height - 1 - y), width);  // GL's rows go upwards
        text += row == former ? "" : "y " + std::to_string(y) + ": " + row + "\n";
        former = row;
    }
    return text;
}

}  // namespace recorder
