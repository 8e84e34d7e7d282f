#ifndef KIVGLES_TESTS_SUPPORT_CALL_TEXT_H
#define KIVGLES_TESTS_SUPPORT_CALL_TEXT_H

// Calls of GL, EGL and FreeType as text, in the names of the API: "glViewport(0, 0, 64, 32)". An object is
// "<texture 3>" until a reader of the calls gives it a name; vertices, colours, indices, attributes, shader
// sources and glyphs are shown, each list in lines below its call, other pointers are not.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
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
    Size viewport;
    std::map<GLuint, Size> textures;
    std::map<std::tuple<std::string, GLuint, GLint>, std::string> variables;  // by kind, program and location
    const FT_GlyphSlotRec_* glyph = nullptr;                                  // rendered last
};
inline thread_local Seen seen;

// --- Arguments ---
template <typename Argument>
std::string Text(const Argument& argument) {
    if constexpr (std::is_floating_point_v<Argument>) {
        char text[32];
        (void)std::snprintf(text, sizeof(text), "%g", static_cast<double>(argument));
        return text;
    } else if constexpr (std::is_integral_v<Argument>) {
        return std::to_string(argument);
    } else {
        return argument == nullptr ? "null" : "data";
    }
}
inline std::string Text(const std::string& text) { return text; }
inline std::string Text(const char* text) { return text; }

template <typename Item>
std::string List(const Item* items, std::ptrdiff_t n) {
    std::string text = "[";
    std::for_each(items, items + (items == nullptr ? 0 : n),
                  [&text](Item item) { text += (text.size() == 1 ? "" : " ") + Text(item); });
    return text + "]";
}

std::string Const(long long value);
std::string Name(const std::string& kind, GLuint name);
std::string Name(const std::string& kind, const void* object);
std::string Attribute(GLuint index);
std::string Uniform(GLint location);
std::string Color(const float* rgba);
std::string Matrix(const FT_Matrix* matrix);
std::string Pixels(const void* data, int width, int height);  // of one byte

// --- Lists below a call ---
std::string Attributes(const EGLint* list);
std::string Source(GLsizei n, const GLchar* const* parts);
std::string Vertices(const void* data, GLsizeiptr size);

// Each row that differs from the one above, as the columns where a colour begins: "y 8: 0 #000000ff 16
// #ff0000ff".
std::string Picture(const GLubyte* rgba, int width, int height);

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
