#include "support/Recorder.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
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

struct State {
    std::mutex mutex;
    std::map<std::string, Function> functions;
    std::vector<std::string> calls;
    std::vector<std::string> log;
    std::set<Object> objects;
};

std::atomic<bool> recording{false};
std::atomic<bool> pictures{false};
thread_local int forwarding = 0;
thread_local std::string glText;  // GL's words about itself, asked for last
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
    if (forwarding == 0 && recording.load(std::memory_order_relaxed)) {
        Locked([&](State& state) { state.calls.push_back(describe()); });
    }
    return Enter(function);
}

struct Forwarding {
    Forwarding() { ++forwarding; }
    ~Forwarding() { --forwarding; }
};

// --- A call as text. Vertices, colours, indices, names to delete, shader sources and glyphs are shown, other
// pointers as "pointer" or "null" ---

using Floats = std::vector<float>;
using Numbers = std::vector<int>;

template <typename Argument>
std::string Text(const Argument& argument) {
    char text[32] = "null";
    if constexpr (std::is_floating_point_v<Argument>) {
        (void)std::snprintf(text, sizeof(text), "%g", static_cast<double>(argument));
    } else if constexpr (std::is_integral_v<Argument> || std::is_enum_v<Argument>) {
        const auto number = static_cast<long long>(argument);  // enumerators are read as hexadecimal numbers
        (void)std::snprintf(text, sizeof(text), number < 0x300 ? "%lld" : "0x%llx", number);
    } else {
        return argument == nullptr ? text : "pointer";
    }
    return text;
}
std::string Text(const std::string& text) { return text; }
std::string Text(const char* text) { return text; }
template <typename Item>
std::string Text(const std::vector<Item>& items) {
    std::string text = "[";
    for (const Item& item : items) {
        text += (text.size() == 1 ? "" : " ") + Text(item);
    }
    return text + "]";
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
GLuint BornName(const char* kind, GLuint name) { return SetLive(kind, 1, &name, true), name; }

template <typename Handle>
Handle Born(const char* kind, Handle handle) {
    if (handle != nullptr) {
        SetLive(kind, nullptr, reinterpret_cast<std::uintptr_t>(handle), true);
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
template <typename Item, typename Shown>
std::vector<Shown> Items(const void* data, std::ptrdiff_t n, Shown) {
    const auto* const items = static_cast<const Item*>(data);
    return data == nullptr ? std::vector<Shown>() : std::vector<Shown>(items, items + n);
}
Floats FloatsAt(const void* data, GLsizeiptr n) { return Items<GLfloat>(data, n, 0.0F); }
Numbers AttributesAt(const EGLint* list) {
    return Items<EGLint>(list, std::find(list, list + 64, EGL_NONE) - list, 0);
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
std::string BytesAt(const void* data, int n) {
    const auto* const bytes = static_cast<const GLubyte*>(data);
    return "[" + (data == nullptr ? "" : Runs(n, [bytes](int i) { return std::to_string(bytes[i]); })) + "]";
}
std::string Joined(GLsizei n, const GLchar* const* parts) {
    std::string text;
    std::for_each(parts, parts + n, [&text](const GLchar* part) { text += std::string(part) + "|"; });
    return text;
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
            Locked([&](State& state) { state.calls.push_back("  y " + std::to_string(y) + ": " + row); });
        }
        former = row;
    }
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
#define GL(name, parameters, arguments) ENTRY(void, name, parameters, arguments, next arguments, void())
#define EGL(name, parameters, arguments) \
    ENTRY(EGLBoolean, name, parameters, arguments, next arguments, BadAlloc<EGLBoolean>(EGL_FALSE))
#define FT(name, parameters, arguments) \
    ENTRY(FT_Error, name, parameters, arguments, next arguments, FT_Err_Out_Of_Memory)
#define GL_NAMES(kind, Gen, Delete)                                                                  \
    ENTRY(void, Gen, (GLsizei n, GLuint* names), (n, names),                                         \
          (next(n, names), SetLive(kind, n, names, true)), void(std::fill_n(names, n, 0U)))              \
    ENTRY(void, Delete, (GLsizei n, const GLuint* names), (n, Items<GLuint>(names, n, 0)),           \
          (SetLive(kind, n, names, false), next(n, names)), void())

extern "C" {

GL(glActiveTexture, (GLenum unit), (unit))
GL(glAttachShader, (GLuint program, GLuint shader), (program, shader))
GL(glBindBuffer, (GLenum target, GLuint buffer), (target, buffer))
GL(glBindFramebuffer, (GLenum target, GLuint fbo), (target, fbo))
GL(glBindTexture, (GLenum target, GLuint texture), (target, texture))
GL(glBlendFunc, (GLenum source, GLenum destination), (source, destination))
ENTRY(void, glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage),
      (target, size, FloatsAt(data, size / 4), usage), next(target, size, data, usage), void())
ENTRY(GLenum, glCheckFramebufferStatus, (GLenum target), (target), next(target), function.result)
GL(glClear, (GLbitfield mask), (mask))
GL(glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a))
GL(glCompileShader, (GLuint shader), (shader))
ENTRY(GLuint, glCreateProgram, (), (), BornName("program", next()), 0)
ENTRY(GLuint, glCreateShader, (GLenum type), (type), BornName("shader", next(type)), 0)
ENTRY(void, glDeleteProgram, (GLuint name), (name), (SetLive("program", 1, &name, false), next(name)), void())
ENTRY(void, glDeleteShader, (GLuint name), (name), (SetLive("shader", 1, &name, false), next(name)), void())
GL(glDisable, (GLenum what), (what))
GL(glDisableVertexAttribArray, (GLuint index), (index))
GL(glDrawArrays, (GLenum mode, GLint first, GLsizei n), (mode, first, n))
ENTRY(void, glDrawElements, (GLenum mode, GLsizei n, GLenum type, const void* indices),
      (mode, n, type, Items<GLushort>(indices, n, 0)), next(mode, n, type, indices), void())
GL(glEnable, (GLenum what), (what))
GL(glEnableVertexAttribArray, (GLuint index), (index))
GL(glFramebufferTexture2D, (GLenum target, GLenum point, GLenum kind, GLuint texture, GLint level),
   (target, point, kind, texture, level))
GL_NAMES("buffer", glGenBuffers, glDeleteBuffers)
GL_NAMES("framebuffer", glGenFramebuffers, glDeleteFramebuffers)
GL_NAMES("texture", glGenTextures, glDeleteTextures)
ENTRY(GLint, glGetAttribLocation, (GLuint id, const GLchar* name), (id, name), next(id, name), -1)
ENTRY(void, glGetIntegerv, (GLenum what, GLint* value), (what, value), next(what, value),
      void(*value = static_cast<GLint>(function.result)))
GL(glGetProgramInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (id, size, length, log))
GL(glGetProgramiv, (GLuint program, GLenum what, GLint* value), (program, what, value))
GL(glGetShaderInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (id, size, length, log))
GL(glGetShaderiv, (GLuint shader, GLenum what, GLint* value), (shader, what, value))
ENTRY(const GLubyte*, glGetString, (GLenum what), (what), Remember(next(what)), nullptr)
ENTRY(GLint, glGetUniformLocation, (GLuint id, const GLchar* name), (id, name), next(id, name), -1)
ENTRY(GLboolean, glIsProgram, (GLuint name), (name), next(name), GL_FALSE)
ENTRY(GLboolean, glIsShader, (GLuint name), (name), next(name), GL_FALSE)
GL(glLinkProgram, (GLuint program), (program))
GL(glPixelStorei, (GLenum what, GLint value), (what, value))
ENTRY(void, glShaderSource, (GLuint shader, GLsizei n, const GLchar* const* parts, const GLint* lengths),
      (shader, n, Joined(n, parts), lengths), next(shader, n, parts, lengths), void())
GL(glTexImage2D, (GLenum target, GLint level, GLint internal, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, const void* data),
   (target, level, internal, width, height, border, format, type, data))
GL(glTexParameteri, (GLenum target, GLenum what, GLint value), (target, what, value))
ENTRY(void, glTexSubImage2D, (GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                              GLenum format, GLenum type, const void* data),
      (target, level, x, y, width, height, format, type, BytesAt(data, width * height)),
      next(target, level, x, y, width, height, format, type, data), void())
GL(glUniform1i, (GLint location, GLint value), (location, value))
ENTRY(void, glUniform4fv, (GLint location, GLsizei n, const GLfloat* values),
      (location, n, FloatsAt(values, 4 * n)), next(location, n, values), void())
GL(glUseProgram, (GLuint program), (program))
GL(glVertexAttribPointer, (GLuint index, GLint size, GLenum type, GLboolean normalised, GLsizei stride,
                           const void* offset), (index, size, type, normalised, stride, offset))
GL(glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height))

ENTRY(EGLBoolean, eglChooseConfig,
      (EGLDisplay display, const EGLint* list, EGLConfig* configs, EGLint size, EGLint* n),
      (display, AttributesAt(list), configs, size, n), next(display, list, configs, size, n),
      BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLContext, eglCreateContext,
      (EGLDisplay display, EGLConfig config, EGLContext share, const EGLint* list),
      (display, config, share, AttributesAt(list)), Born("context", next(display, config, share, list)),
      BadAlloc(EGL_NO_CONTEXT))
ENTRY(EGLSurface, eglCreatePbufferSurface, (EGLDisplay display, EGLConfig config, const EGLint* list),
      (display, config, list), Born("surface", next(display, config, list)), BadAlloc(EGL_NO_SURFACE))
ENTRY(EGLSurface, eglCreateWindowSurface,
      (EGLDisplay display, EGLConfig config, EGLNativeWindowType window, const EGLint* list),
      (display, config, "window", list), Born("surface", next(display, config, window, list)),
      BadAlloc(EGL_NO_SURFACE))
ENTRY(EGLBoolean, eglDestroyContext, (EGLDisplay display, EGLContext context), (display, context),
      (GoneContext(context), next(display, context)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLBoolean, eglDestroySurface, (EGLDisplay display, EGLSurface surface), (display, surface),
      (Gone("surface", surface), next(display, surface)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLDisplay, eglGetDisplay, (EGLNativeDisplayType id), (id), next(id), BadAlloc(EGL_NO_DISPLAY))
ENTRY(EGLint, eglGetError, (), (), LastError(next()), EGL_SUCCESS)
EGL(eglInitialize, (EGLDisplay display, EGLint* major, EGLint* minor), (display, major, minor))
EGL(eglMakeCurrent, (EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context),
    (display, draw, read, context))
EGL(eglQuerySurface, (EGLDisplay display, EGLSurface surface, EGLint what, EGLint* value),
    (display, surface, what, value))
EGL(eglReleaseThread, (), ())
ENTRY(EGLBoolean, eglSwapBuffers, (EGLDisplay display, EGLSurface surface), (display, surface),
      (pictures ? RecordPicture(display, surface) : void(), next(display, surface)),
      BadAlloc<EGLBoolean>(EGL_FALSE))
EGL(eglTerminate, (EGLDisplay display), (display))

FT(FT_Bitmap_Convert, (FT_Library library, const FT_Bitmap* source, FT_Bitmap* target, FT_Int alignment),
   (library, source, target, alignment))
FT(FT_Bitmap_Done, (FT_Library library, FT_Bitmap* bitmap), (library, bitmap))
GL(FT_Bitmap_Init, (FT_Bitmap* bitmap), (bitmap))
ENTRY(FT_Error, FT_Done_Face, (FT_Face face), (face), (Gone("face", face), next(face)), FT_Err_Out_Of_Memory)
ENTRY(FT_Error, FT_Done_FreeType, (FT_Library library), (library), (Gone("library", library), next(library)),
      FT_Err_Out_Of_Memory)
ENTRY(FT_ULong, FT_Get_First_Char, (FT_Face face, FT_UInt* n), (face, n), next(face, n), *n = 0)
ENTRY(FT_ULong, FT_Get_Next_Char, (FT_Face face, FT_ULong code, FT_UInt* index), (face, code, index),
      next(face, code, index), *index = 0)
ENTRY(FT_Error, FT_Init_FreeType, (FT_Library* library), (library),
      BornOrNull("library", next(library), library), BornOrNull("library", FT_Err_Out_Of_Memory, library))
FT(FT_Load_Char, (FT_Face face, FT_ULong code, FT_Int32 flags), (face, code, flags))
ENTRY(FT_Error, FT_New_Face, (FT_Library library, const char* path, FT_Long index, FT_Face* face),
      (library, path, index, face), BornOrNull("face", next(library, path, index, face), face),
      BornOrNull("face", FT_Err_Out_Of_Memory, face))
FT(FT_Outline_Embolden, (FT_Outline* outline, FT_Pos strength), (outline, strength))
FT(FT_Render_Glyph, (FT_GlyphSlot slot, FT_Render_Mode mode), (slot, mode))
FT(FT_Set_Pixel_Sizes, (FT_Face face, FT_UInt width, FT_UInt height), (face, width, height))
GL(FT_Set_Transform, (FT_Face face, FT_Matrix* matrix, FT_Vector* delta), (face, matrix, delta))

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
        line.replace(said, glText.size(), "...");  // another GL says something else
    }
    Locked([&](State& state) {
        state.log.push_back(line);
        if (recording) {
            state.calls.push_back(line);
        }
    });
    return __android_log_write(priority, tag, text);
}
