#include "support/Recorder.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>

#include <EGL/egl.h>
#include <GLES2/gl2.h>
#include <android/log.h>
#include <dlfcn.h>
#include <ft2build.h>
#include <pthread.h>
#include FT_FREETYPE_H
#include FT_BITMAP_H
#include FT_OUTLINE_H

#include "support/Constants.h"

namespace recorder {

namespace {

struct Function {
    std::atomic<int> count{0};
    std::atomic<int> failed{0};
    std::atomic<int> failAt{0};  // the count at which to fail; 0: never
    std::atomic<bool> failForGood{false};
    std::atomic<unsigned int> result{0};
};

// Kind, the context that a GL name belongs to, name or address.
using Object = std::tuple<std::string, EGLContext, std::uintptr_t>;

// Uniform or attribute, its program, its location.
using VariableKey = std::tuple<std::string, GLuint, GLint>;

struct Size {
    int width = 1;
    int height = 1;
};

struct State {
    std::mutex mutex;
    std::map<std::string, Function> functions;
    std::vector<std::string> calls;
    std::vector<std::string> log;
    std::set<Object> objects;
    std::map<VariableKey, std::string> variables;
};

std::atomic<bool> recording{false};
std::atomic<bool> pictures{false};
thread_local int forwarding = 0;
thread_local std::size_t ownLine = 0;  // of the call at work, counted from 1; 0: it is not recorded
thread_local GLuint usedProgram = 0;
thread_local GLuint boundTexture = 0;
thread_local std::map<GLuint, Size> textureSizes;
thread_local Size viewport;
thread_local const FT_GlyphSlotRec_* slot = nullptr;  // of the glyph loaded last
thread_local std::string glText;                      // GL's words about itself, asked for last
thread_local EGLint injectedError = EGL_SUCCESS;

// Never destroyed: a draw thread may outlive main.
State& TheState() {
    static State& state = *new State;
    return state;
}

template <typename What>
auto Locked(const What& what) {
    State& state = TheState();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return what(state);
}

Function* Find(const std::string& name) {
    return Locked([&](State& state) { return &state.functions[name]; });
}

template <typename Signature>
Signature* Next(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "recorder: there is no %s to forward to\n", name);
        std::abort();
    }
    return reinterpret_cast<Signature*>(symbol);
}

// Counts a call by the library. Returns whether it has to fail.
bool Enter(Function& function) {
    if (forwarding != 0) {
        return false;
    }
    const int nth = function.count.fetch_add(1, std::memory_order_relaxed) + 1;
    const int failAt = function.failAt.load(std::memory_order_relaxed);
    const bool fails = failAt != 0 && (nth == failAt || (nth > failAt && function.failForGood));
    if (fails) {
        function.failed.fetch_add(1, std::memory_order_relaxed);
    }
    return fails;
}

template <typename Describe>
bool EnterRecorded(Function& function, const Describe& describe) {
    ownLine = 0;
    if (forwarding == 0 && recording.load(std::memory_order_relaxed)) {
        const std::string text = describe();
        ownLine = Locked([&](State& state) { return state.calls.push_back(text), state.calls.size(); });
    }
    return Enter(function);
}

struct Forwarding {
    Forwarding() { ++forwarding; }
    ~Forwarding() { --forwarding; }
};

// --- A call as text, in the names of the API. An object is "<texture 3>" until a reader of the calls gives
// it a name; vertices, colours, indices, shader sources and glyphs are shown, other pointers are not ---

template <typename Argument>
std::string Text(const Argument& argument) {
    char text[32];
    if constexpr (std::is_floating_point_v<Argument>) {
        (void)std::snprintf(text, sizeof(text), "%g", static_cast<double>(argument));
        return text;
    } else if constexpr (std::is_integral_v<Argument>) {
        return std::to_string(argument);
    } else {
        return argument == nullptr ? "null" : "data";
    }
}
std::string Text(const std::string& text) { return text; }
std::string Text(const char* text) { return text; }

template <typename Item>
std::string List(const Item* items, std::ptrdiff_t n) {
    std::string text = "[";
    std::for_each(items, items + (items == nullptr ? 0 : n),
                  [&text](Item item) { text += (text.size() == 1 ? "" : " ") + Text(item); });
    return text + "]";
}

std::string Const(long long value) {
    const auto name = NAMES.find(value);
    char number[20];
    (void)std::snprintf(number, sizeof(number), "0x%llx", value);
    return name == NAMES.end() ? number : name->second;
}
std::string Mode(GLenum mode) {
    return mode == GL_TRIANGLES ? "GL_TRIANGLES" : mode == GL_TRIANGLE_FAN ? "GL_TRIANGLE_FAN" : Const(mode);
}
std::string Mask(GLbitfield mask) {
    return mask == GL_COLOR_BUFFER_BIT                           ? "GL_COLOR_BUFFER_BIT"
           : mask == (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT) ? "GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT"
                                                                 : Const(mask);
}
std::string Name(const char* kind, GLuint name) {
    return name == 0 ? "0" : "<" + (kind + (" " + std::to_string(name))) + ">";
}
std::string Name(const char* kind, const void* object) {
    char name[40];
    (void)std::snprintf(name, sizeof(name), "<%s %p>", kind, object);
    return name;
}
std::string Names(const char* kind, GLsizei n, const GLuint* names) {
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

std::string Variable(const char* kind, GLint location) {
    return Locked([&](State& state) {
        const auto name = state.variables.find({kind, usedProgram, location});
        return name == state.variables.end() ? std::to_string(location) : name->second;
    });
}
std::string Uniform(GLint location) { return Variable("uniform", location); }
std::string Attribute(GLuint index) { return Variable("attribute", static_cast<GLint>(index)); }

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

// To a thousandth: single precision leaves less over.
std::string Length(double value) {
    char text[24];
    (void)std::snprintf(text, sizeof(text), "%.9g", std::round(value * 1000) / 1000 + 0.0);
    return text;
}
// Of normalised device coordinates, in pixels of the viewport from its upper left corner; as they are in one
// without pixels.
std::string Place(float x, float y) {
    const bool hasPixels = viewport.width != 0 && viewport.height != 0;
    return hasPixels ? Length((x + 1.0) / 2 * viewport.width) + " " + Length((1.0 - y) / 2 * viewport.height)
                     : Length(x) + " " + Length(y);
}
// Its corners in the order of its vertices, left or right and top or bottom; then left, top, right and bottom
// edge in pixels, and in texels of the texture bound if it has any.
std::string Quad(const float* v, std::ptrdiff_t n) {
    const float* const end = v + n;
    const float* const first = v;
    const float* const second = v + 4;
    const float* const third = v + 8;
    std::string corners = "\n";
    bool isFlat = true;
    for (; v != end; v += 4) {
        const auto has = [v](const float* corner, int axis) {
            return v[axis] == corner[axis] && v[axis + 2] == corner[axis + 2];
        };
        corners += has(first, 0) ? "l" : has(second, 0) ? "r" : "?";
        corners += has(first, 1) ? "t " : has(third, 1) ? "b " : "? ";
        isFlat = isFlat && v[2] == 0 && v[3] == 1;
    }
    const Size texels = textureSizes[boundTexture];
    return corners + "at " + Place(first[0], first[1]) + " " + Place(second[0], third[1]) +
           (isFlat
                ? ""
                : " from " + Length(first[2] * 1.0 * texels.width) + " " +
                      Length(first[3] * 1.0 * texels.height) + " " + Length(second[2] * 1.0 * texels.width) +
                      " " + Length(third[3] * 1.0 * texels.height));
}
// A centre and 37 points at every ten degrees around it, the last being the first.
bool IsFan(const float* v) {
    const float radiusX = v[4] - v[0];
    const float radiusY = v[4 * 10 + 1] - v[1];
    for (int i = 0; i <= 36; ++i) {
        const double angle = i * 3.14159265358979 / 18;
        const float* const point = v + 4 + 4 * i;
        if (std::fabs(point[0] - v[0] - radiusX * std::cos(angle)) > 1e-5 || point[2] != 0 || point[3] != 1 ||
            std::fabs(point[1] - v[1] - radiusY * std::sin(angle)) > 1e-5) {
            return false;
        }
    }
    return true;
}
// A fan or quads, of a long text the first two and the last; anything else number by number.
std::string Vertices(const void* data, GLsizeiptr size) {
    const auto* const v = static_cast<const float*>(data);
    const GLsizeiptr n = size / 4;
    if (n == 152 && IsFan(v)) {
        return "\nfan around " + Place(v[0], v[1]) + " by " + Length((v[4] - v[0]) / 2.0 * viewport.width) +
               " " + Length((v[41] - v[1]) / 2.0 * viewport.height);
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

// What begins where: "0 255 12 0" for twelve of 255 and then zeros.
template <typename Show>
std::string Runs(int n, const Show& show) {
    std::string text;
    std::string former;
    for (int i = 0; i < n; ++i) {
        const std::string shown = show(i);
        text += shown == former ? "" : (text.empty() ? "" : " ") + std::to_string(i) + " " + shown;
        former = shown;
    }
    return text;
}
// An outline's coverage is FreeType's, and differs from version to version: it is to be what FreeType
// rendered last. A bitmap font's pixels are shown row by row.
std::string Pixels(const void* data, int width, int height) {
    const auto* const bytes = static_cast<const GLubyte*>(data);
    bool isRendered = slot != nullptr && slot->format == FT_GLYPH_FORMAT_BITMAP &&
                      slot->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY &&
                      slot->bitmap.width == static_cast<unsigned int>(width) &&
                      slot->bitmap.rows == static_cast<unsigned int>(height) && slot->outline.n_points > 0;
    for (int y = 0; isRendered && y < height; ++y) {
        isRendered = std::equal(bytes + y * width, bytes + (y + 1) * width,
                                slot->bitmap.buffer + y * slot->bitmap.pitch);
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
std::string Matrix(const FT_Matrix* m) {
    return m == nullptr ? "null"
                        : "[" + std::to_string(m->xx) + " " + std::to_string(m->xy) + " " +
                              std::to_string(m->yx) + " " + std::to_string(m->yy) + "]";
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

// --- Objects alive ---

// Behind the line of the call that made it.
void AddResult(const std::string& name) {
    Locked([&](State& state) {
        if (ownLine != 0 && ownLine <= state.calls.size()) {
            std::string& call = state.calls[ownLine - 1];
            call.insert(std::min(call.find('\n'), call.size()), " = " + name);
        }
    });
}
void SetLive(const char* kind, EGLContext context, std::uintptr_t id, bool isLive) {
    Locked([&](State& state) {
        isLive ? void(state.objects.insert({kind, context, id}))
               : void(state.objects.erase({kind, context, id}));
    });
}

// GL names; without a context none is made or deleted.
void SetLive(const char* kind, GLsizei n, const GLuint* names, bool areLive) {
    if (EGLContext const context = eglGetCurrentContext()) {
        std::for_each(names, names + n, [&](GLuint name) { SetLive(kind, context, name, areLive); });
    }
}
void BornNames(const char* kind, GLsizei n, const GLuint* names) {
    SetLive(kind, n, names, true);
    AddResult(Names(kind, n, names));
}
GLuint BornName(const char* kind, GLuint name) { return BornNames(kind, 1, &name), name; }

template <typename Handle>
Handle Born(const char* kind, Handle handle) {
    if (handle != nullptr) {
        SetLive(kind, nullptr, reinterpret_cast<std::uintptr_t>(handle), true);
        AddResult(Name(kind, handle));
    }
    return handle;
}
void Gone(const char* kind, void* handle) {
    SetLive(kind, nullptr, reinterpret_cast<std::uintptr_t>(handle), false);
}
// With what belongs to it.
void GoneContext(EGLContext context) {
    Gone("context", context);
    Locked([context](State& state) {
        for (auto object = state.objects.begin(); object != state.objects.end();) {
            object =
                std::get<EGLContext>(*object) == context ? state.objects.erase(object) : std::next(object);
        }
    });
}

// --- Failures and arguments ---

template <typename Handle>
FT_Error BornOrNull(const char* kind, FT_Error error, Handle* handle) {
    *handle = error == 0 ? Born(kind, *handle) : nullptr;
    return error;
}
template <typename Result>
Result BadAlloc(Result result) {
    injectedError = EGL_BAD_ALLOC;
    return result;
}
EGLint LastError(EGLint real) {
    const EGLint injected = std::exchange(injectedError, EGL_SUCCESS);
    return injected != EGL_SUCCESS ? injected : real;
}
const GLubyte* Remember(const GLubyte* text) {
    glText = text == nullptr ? "" : reinterpret_cast<const char*>(text);
    return text;
}
GLint Located(const char* kind, GLuint program, const char* name, GLint location) {
    return Locked([&](State& state) { return state.variables[{kind, program, location}] = name, location; });
}

// --- What a window is about to show: each row that differs from the one above, as the columns where a colour
// begins. To the nearest 8 of 255: GLs round what they blend in different ways ---

std::string Color(const GLubyte* pixel) {
    char text[10];
    const auto rounded = [](GLubyte component) { return std::min((component + 4) / 8 * 8, 255); };
    (void)std::snprintf(text, sizeof(text), "#%02x%02x%02x%02x", rounded(pixel[0]), rounded(pixel[1]),
                        rounded(pixel[2]), rounded(pixel[3]));
    return text;
}
void RecordPicture(EGLDisplay display, EGLSurface surface) {
    EGLint width = 0;
    EGLint height = 0;
    eglQuerySurface(display, surface, EGL_WIDTH, &width);
    eglQuerySurface(display, surface, EGL_HEIGHT, &height);
    std::vector<GLubyte> pixels(static_cast<std::size_t>(4 * width * height));
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    std::string former;
    for (int y = 0; y < height; ++y) {
        const GLubyte* const first = pixels.data() + 4 * width * (height - 1 - y);
        const std::string row = Runs(width, [first](int x) { return Color(first + 4 * x); });
        if (row != former) {
            Locked([&](State& state) { state.calls.push_back("y " + std::to_string(y) + ": " + row); });
        }
        former = row;
    }
}
// A driver may send a swapped picture with its next request only, as Mesa's software does one of up to 16
// KiB. For the size it asks the X server, which shows the picture before it answers.
EGLBoolean SwapAndArrive(EGLBoolean (*swap)(EGLDisplay, EGLSurface), EGLDisplay display, EGLSurface surface) {
    const EGLBoolean isSwapped = swap(display, surface);
    EGLint width = 0;
    eglQuerySurface(display, surface, EGL_WIDTH, &width);
    return isSwapped;
}

}  // namespace

void Reset() {
    recording = pictures = false;
    Locked([](State& state) {
        for (auto& [name, function] : state.functions) {
            function.count = function.failed = function.failAt = 0;
        }
        state.calls.clear();
        state.log.clear();
    });
}

void Record(bool withPictures) {
    Locked([](State& state) { state.calls.clear(); });
    recording = true;
    pictures = withPictures;
}

std::vector<std::string> Calls() {
    return Locked([](State& state) { return state.calls; });
}

std::map<std::string, int> Counts() {
    return Locked([](State& state) {
        std::map<std::string, int> counts;
        for (const auto& [name, function] : state.functions) {
            if (function.count != 0) {
                counts[name] = function.count;
            }
        }
        return counts;
    });
}

void Fail(const std::string& function, int nth, bool forGood, unsigned int result) {
    Function& found = *Find(function);
    found.failForGood = forGood;
    found.result = result;
    found.failAt = found.count + nth;
}

int Failed(const std::string& function) { return Find(function)->failed; }

bool Enter(const std::string& function) { return Enter(*Find(function)); }

std::size_t LiveNum(const std::string& kind) {
    return Locked([&](State& state) {
        return static_cast<std::size_t>(
            std::count_if(state.objects.begin(), state.objects.end(),
                          [&](const Object& object) { return kind.empty() || std::get<0>(object) == kind; }));
    });
}

std::vector<std::string> Log(const std::string& beginning) {
    return Locked([&](State& state) {
        std::vector<std::string> lines;
        std::copy_if(
            state.log.begin(), state.log.end(), std::back_inserter(lines),
            [&](const std::string& line) { return line.compare(0, beginning.size(), beginning) == 0; });
        return lines;
    });
}

}  // namespace recorder

using namespace recorder;

// ENTRY(result, name, parameters, arguments as shown, what is done, result of a failure)
// clang-format off
#define ENTRY(Result, name, parameters, shown, done, failed)                 \
    Result name parameters {                                                 \
        static Function& function = *Find(#name);                            \
        static const auto next = Next<Result parameters>(#name);             \
        if (EnterRecorded(function, [&] { return CallOf{#name} shown; })) {  \
            return failed;                                                   \
        }                                                                    \
        const Forwarding forwards;                                           \
        return done;                                                         \
    }
// What most of the functions of each library have in common, and those that make and delete GL names.
#define GL(name, parameters, arguments, shown) ENTRY(void, name, parameters, shown, next arguments, void())
#define EGL(name, parameters, arguments, shown) \
    ENTRY(EGLBoolean, name, parameters, shown, next arguments, BadAlloc<EGLBoolean>(EGL_FALSE))
#define FT(name, parameters, arguments, shown) \
    ENTRY(FT_Error, name, parameters, shown, next arguments, FT_Err_Out_Of_Memory)
// How glyphs are walked through is no promise, so not among the calls.
#define WALK(Result, name, parameters, done, failed)                    \
    Result name parameters {                                            \
        static Function& function = *Find(#name);                       \
        static const auto next = Next<Result parameters>(#name);        \
        if (Enter(function)) {                                          \
            return failed;                                              \
        }                                                               \
        const Forwarding forwards;                                      \
        return done;                                                    \
    }
#define GL_NAMES(kind, Gen, Delete)                                                                  \
    ENTRY(void, Gen, (GLsizei n, GLuint* names), (n),                                                \
          (next(n, names), BornNames(kind, n, names)), void(std::fill_n(names, n, 0U)))              \
    ENTRY(void, Delete, (GLsizei n, const GLuint* names), (n, Names(kind, n, names)),                 \
          (SetLive(kind, n, names, false), next(n, names)), void())

extern "C" {

GL(glActiveTexture, (GLenum unit), (unit), (Const(unit)))
GL(glAttachShader, (GLuint program, GLuint shader), (program, shader),
   (Name("program", program), Name("shader", shader)))
GL(glBindBuffer, (GLenum target, GLuint buffer), (target, buffer), (Const(target), Name("buffer", buffer)))
GL(glBindFramebuffer, (GLenum target, GLuint fbo), (target, fbo), (Const(target), Name("framebuffer", fbo)))
ENTRY(void, glBindTexture, (GLenum target, GLuint texture), (Const(target), Name("texture", texture)),
      (boundTexture = texture, next(target, texture)), void())
GL(glBlendFunc, (GLenum source, GLenum destination), (source, destination),
   (Const(source), destination == GL_ZERO ? "GL_ZERO" : Const(destination)))
GL(glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage), (target, size, data, usage),
   (Const(target), size, Const(usage)) + Vertices(data, size))
ENTRY(GLenum, glCheckFramebufferStatus, (GLenum target), (Const(target)), next(target), function.result)
GL(glClear, (GLbitfield mask), (mask), (Mask(mask)))
GL(glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), (r, g, b, a))
GL(glCompileShader, (GLuint shader), (shader), (Name("shader", shader)))
ENTRY(GLuint, glCreateProgram, (), (), BornName("program", next()), 0)
ENTRY(GLuint, glCreateShader, (GLenum type), (Const(type)), BornName("shader", next(type)), 0)
ENTRY(void, glDeleteProgram, (GLuint name), (Name("program", name)),
      (SetLive("program", 1, &name, false), next(name)), void())
ENTRY(void, glDeleteShader, (GLuint name), (Name("shader", name)),
      (SetLive("shader", 1, &name, false), next(name)), void())
GL(glDisable, (GLenum what), (what), (Const(what)))
GL(glDisableVertexAttribArray, (GLuint index), (index), (Attribute(index)))
GL(glDrawArrays, (GLenum mode, GLint first, GLsizei n), (mode, first, n), (Mode(mode), first, n))
GL(glDrawElements, (GLenum mode, GLsizei n, GLenum type, const void* indices), (mode, n, type, indices),
   (Mode(mode), n, Const(type), List(static_cast<const GLushort*>(indices), n)))
GL(glEnable, (GLenum what), (what), (Const(what)))
GL(glEnableVertexAttribArray, (GLuint index), (index), (Attribute(index)))
GL(glFramebufferTexture2D, (GLenum target, GLenum point, GLenum kind, GLuint texture, GLint level),
   (target, point, kind, texture, level),
   (Const(target), Const(point), Const(kind), Name("texture", texture), level))
GL_NAMES("buffer", glGenBuffers, glDeleteBuffers)
GL_NAMES("framebuffer", glGenFramebuffers, glDeleteFramebuffers)
GL_NAMES("texture", glGenTextures, glDeleteTextures)
ENTRY(GLint, glGetAttribLocation, (GLuint id, const GLchar* name), (Name("program", id), name),
      Located("attribute", id, name, next(id, name)), -1)
ENTRY(void, glGetIntegerv, (GLenum what, GLint* value), (Const(what)), next(what, value),
      void(*value = static_cast<GLint>(function.result)))
ENTRY(void, glGetProgramInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (Name("program", id)),
      (next(id, size, length, log), void(glText = log)), void())
GL(glGetProgramiv, (GLuint program, GLenum what, GLint* value), (program, what, value),
   (Name("program", program), Const(what)))
ENTRY(void, glGetShaderInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (Name("shader", id)),
      (next(id, size, length, log), void(glText = log)), void())
GL(glGetShaderiv, (GLuint shader, GLenum what, GLint* value), (shader, what, value),
   (Name("shader", shader), Const(what)))
ENTRY(const GLubyte*, glGetString, (GLenum what), (Const(what)), Remember(next(what)), nullptr)
ENTRY(GLint, glGetUniformLocation, (GLuint id, const GLchar* name), (Name("program", id), name),
      Located("uniform", id, name, next(id, name)), -1)
ENTRY(GLboolean, glIsProgram, (GLuint name), ("object"), next(name), GL_FALSE)
ENTRY(GLboolean, glIsShader, (GLuint name), ("object"), next(name), GL_FALSE)
GL(glLinkProgram, (GLuint program), (program), (Name("program", program)))
GL(glPixelStorei, (GLenum what, GLint value), (what, value), (Const(what), value))
GL(glShaderSource, (GLuint shader, GLsizei n, const GLchar* const* parts, const GLint* lengths),
   (shader, n, parts, lengths), (Name("shader", shader), n, lengths) + Source(n, parts))
ENTRY(void, glTexImage2D, (GLenum target, GLint level, GLint internal, GLsizei width, GLsizei height, GLint border,
                           GLenum format, GLenum type, const void* data),
      (Const(target), level, Const(internal), width, height, border, Const(format), Const(type), data),
      (textureSizes[boundTexture] = {width, height},
       next(target, level, internal, width, height, border, format, type, data)), void())
GL(glTexParameteri, (GLenum target, GLenum what, GLint value), (target, what, value),
   (Const(target), Const(what), Const(value)))
GL(glTexSubImage2D, (GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                     GLenum format, GLenum type, const void* data),
   (target, level, x, y, width, height, format, type, data),
   (Const(target), level, x, y, width, height, Const(format), Const(type), Pixels(data, width, height)))
GL(glUniform1i, (GLint location, GLint value), (location, value), (Uniform(location), value))
GL(glUniform4fv, (GLint location, GLsizei n, const GLfloat* values), (location, n, values),
   (Uniform(location), n, Color(values)))
ENTRY(void, glUseProgram, (GLuint program), (Name("program", program)), (usedProgram = program, next(program)), void())
GL(glVertexAttribPointer, (GLuint index, GLint size, GLenum type, GLboolean normalised, GLsizei stride,
                           const void* offset), (index, size, type, normalised, stride, offset),
   (Attribute(index), size, Const(type), normalised == GL_FALSE ? "GL_FALSE" : "GL_TRUE", stride, offset))
ENTRY(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height),
      (viewport = {width, height}, next(x, y, width, height)), void())

EGL(eglChooseConfig, (EGLDisplay display, const EGLint* list, EGLConfig* configs, EGLint size, EGLint* n),
    (display, list, configs, size, n), ("display", size) + Attributes(list))
ENTRY(EGLContext, eglCreateContext,
      (EGLDisplay display, EGLConfig config, EGLContext share, const EGLint* list),
      ("display", "config", Context(share)) + Attributes(list),
      Born("context", next(display, config, share, list)), BadAlloc(EGL_NO_CONTEXT))
ENTRY(EGLSurface, eglCreatePbufferSurface, (EGLDisplay display, EGLConfig config, const EGLint* list),
      ("display", "config") + Attributes(list), Born("surface", next(display, config, list)),
      BadAlloc(EGL_NO_SURFACE))
ENTRY(EGLSurface, eglCreateWindowSurface,
      (EGLDisplay display, EGLConfig config, EGLNativeWindowType window, const EGLint* list),
      ("display", "config", "window") + Attributes(list), Born("surface", next(display, config, window, list)),
      BadAlloc(EGL_NO_SURFACE))
ENTRY(EGLBoolean, eglDestroyContext, (EGLDisplay display, EGLContext context), ("display", Context(context)),
      (GoneContext(context), next(display, context)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLBoolean, eglDestroySurface, (EGLDisplay display, EGLSurface surface), ("display", Surface(surface)),
      (Gone("surface", surface), next(display, surface)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLDisplay, eglGetDisplay, (EGLNativeDisplayType id),
      (id == EGL_DEFAULT_DISPLAY ? "EGL_DEFAULT_DISPLAY" : "another"), next(id), BadAlloc(EGL_NO_DISPLAY))
ENTRY(EGLint, eglGetError, (), (), LastError(next()), EGL_SUCCESS)
EGL(eglInitialize, (EGLDisplay display, EGLint* major, EGLint* minor), (display, major, minor), ("display"))
EGL(eglMakeCurrent, (EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context),
    (display, draw, read, context), ("display", Surface(draw), Surface(read), Context(context)))
EGL(eglQuerySurface, (EGLDisplay display, EGLSurface surface, EGLint what, EGLint* value),
    (display, surface, what, value), ("display", Surface(surface), Const(what)))
EGL(eglReleaseThread, (), (), ())
ENTRY(EGLBoolean, eglSwapBuffers, (EGLDisplay display, EGLSurface surface), ("display", Surface(surface)),
      pictures ? (RecordPicture(display, surface), SwapAndArrive(next, display, surface))
               : next(display, surface),
      BadAlloc<EGLBoolean>(EGL_FALSE))
EGL(eglTerminate, (EGLDisplay display), (display), ("display"))

WALK(FT_Error, FT_Bitmap_Convert,
     (FT_Library library, const FT_Bitmap* source, FT_Bitmap* target, FT_Int alignment),
     next(library, source, target, alignment), FT_Err_Out_Of_Memory)
WALK(FT_Error, FT_Bitmap_Done, (FT_Library library, FT_Bitmap* bitmap), next(library, bitmap), FT_Err_Out_Of_Memory)
WALK(void, FT_Bitmap_Init, (FT_Bitmap* bitmap), next(bitmap), void())
ENTRY(FT_Error, FT_Done_Face, (FT_Face face), (Name("face", face)),
      (slot = nullptr, Gone("face", face), next(face)), FT_Err_Out_Of_Memory)
ENTRY(FT_Error, FT_Done_FreeType, (FT_Library library), (Name("library", library)),
      (Gone("library", library), next(library)), FT_Err_Out_Of_Memory)
WALK(FT_ULong, FT_Get_First_Char, (FT_Face face, FT_UInt* n), next(face, n), *n = 0)
WALK(FT_ULong, FT_Get_Next_Char, (FT_Face face, FT_ULong code, FT_UInt* index), next(face, code, index), *index = 0)
ENTRY(FT_Error, FT_Init_FreeType, (FT_Library* library), (),
      BornOrNull("library", next(library), library), BornOrNull("library", FT_Err_Out_Of_Memory, library))
WALK(FT_Error, FT_Load_Char, (FT_Face face, FT_ULong code, FT_Int32 flags), next(face, code, flags),
     FT_Err_Out_Of_Memory)
ENTRY(FT_Error, FT_New_Face, (FT_Library library, const char* path, FT_Long index, FT_Face* face),
      (Name("library", library), path, index), BornOrNull("face", next(library, path, index, face), face),
      BornOrNull("face", FT_Err_Out_Of_Memory, face))
WALK(FT_Error, FT_Outline_Embolden, (FT_Outline* outline, FT_Pos strength), next(outline, strength),
     FT_Err_Out_Of_Memory)
WALK(FT_Error, FT_Render_Glyph, (FT_GlyphSlot glyph, FT_Render_Mode mode), (slot = glyph, next(glyph, mode)),
     FT_Err_Out_Of_Memory)
FT(FT_Set_Pixel_Sizes, (FT_Face face, FT_UInt width, FT_UInt height), (face, width, height),
   (Name("face", face), width, height))
GL(FT_Set_Transform, (FT_Face face, FT_Matrix* matrix, FT_Vector* delta), (face, matrix, delta),
   (Name("face", face), Matrix(matrix), delta))

// Counted and failed, but not among the calls: tests start threads too.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*),
                   void* argument) noexcept {
    static Function& function = *Find("pthread_create");
    static const auto next = Next<decltype(pthread_create)>("pthread_create");
    return Enter(function) ? EAGAIN : next(thread, attributes, body, argument);
}

}  // extern "C"
// clang-format on

// Kept, and written as the platform does for whoever reads the output of a test that failed.
int __android_log_print(int priority, const char* tag, const char* format, ...) {
    char text[8192];
    va_list arguments;
    va_start(arguments, format);
    (void)std::vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    const char letter = "??VDIWEF"[priority & 7];
    std::string line = letter + (std::string(" ") + tag) + ": " + text;
    const std::size_t said = glText.empty() ? std::string::npos : line.find(glText);
    if (said != std::string::npos) {
        line.replace(said, glText.size(), "(GL's words)");  // another GL says something else
    }
    Locked([&](State& state) {
        state.log.push_back(line);
        if (recording) {
            state.calls.push_back(line);
        }
    });
    return __android_log_write(priority, tag, text);
}
