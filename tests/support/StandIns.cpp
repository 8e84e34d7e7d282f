// The functions of GL, EGL, FreeType and the system that the library calls. Each one here stands between the
// library and the real one: tells the recorder of the call, fails if it has to, and calls the real one
// otherwise.

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include <EGL/egl.h>
#include <GLES2/gl2.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_BITMAP_H
#include FT_OUTLINE_H
#include <pthread.h>

#include "support/CallText.h"
#include "support/Recorder.h"

using namespace recorder;

namespace {

std::string Program(GLuint name) { return Name("program", name); }
std::string Shader(GLuint name) { return Name("shader", name); }
std::string Face(FT_Face face) { return Name("face", face); }
std::string Context(EGLContext context) { return Name("context", context); }
std::string Surface(EGLSurface surface) { return Name("surface", surface); }

thread_local EGLint injectedError = EGL_SUCCESS;

// --- Objects alive ---

template <typename Object>
void ExpectContext(Object) {
    Expect(!std::is_integral_v<Object> || seen.hasHadContext,
           "an object of GL's is made or deleted by a thread that never had a context");
}
template <typename Object>
Object Born(const char* kind, Object object) {
    ExpectContext(object);
    AddObject(Name(kind, object));
    return object;
}
template <typename Object>
void Gone(const char* kind, Object object) {
    ExpectContext(object);
    RemoveObjects(Name(kind, object));
}
void ContextGone(EGLContext context) {
    Gone("context", context);
    for (const char* kind : {"<texture ", "<buffer ", "<framebuffer ", "<program ", "<shader "}) {
        RemoveObjects(kind);
    }
}
template <typename Handle>
FT_Error BornOrNull(const char* kind, FT_Error error, Handle* handle) {
    *handle = error == 0 ? Born(kind, *handle) : nullptr;
    return error;
}

// --- Failures, and what later calls are shown by ---

template <typename Result>
Result BadAlloc(Result result) {
    injectedError = EGL_BAD_ALLOC;
    return result;
}
EGLint LastError(EGLint real) {
    const EGLint injected = std::exchange(injectedError, EGL_SUCCESS);
    return injected != EGL_SUCCESS ? injected : real;
}
// What GL says in its own words, each GL in others.
constexpr char WORDS[] = "(GL's words)";
void SetWords(GLsizei size, GLchar* text) {
    (void)std::snprintf(text, static_cast<std::size_t>(size), "%s", WORDS);
}

GLint Located(const char* kind, GLuint program, const char* name, GLint location) {
    seen.variables[{kind, program, location}] = name;
    return location;
}

// --- What is drawn ---

// A driver may crash when it draws without a buffer, which is not the library's fault if it got none.
bool CanDraw(GLsizei vertices) {
    Expect(maxTextureSize == 0 || vertices <= seen.vertices,
           "vertices are drawn from behind their buffer's end");
    return seen.buffer != 0;
}

// --- Without a driver ---

// Answers are numbers of their own, never 0.
template <typename Answer>
Answer NextAnswer() {
    const std::uintptr_t number = lastAnswer.fetch_add(1, std::memory_order_relaxed) + 1;
    if constexpr (std::is_pointer_v<Answer>) {
        return reinterpret_cast<Answer>(number);
    } else if constexpr (!std::is_void_v<Answer>) {
        return static_cast<Answer>(number);
    }
}
template <typename Argument>
void Fill(const Argument& argument) {
    if constexpr (std::is_same_v<Argument, GLuint*> || std::is_same_v<Argument, GLint*>) {
        if (argument != nullptr) {
            *argument = NextAnswer<std::decay_t<decltype(*argument)>>();
        }
    }
}
// The real function, or one that only answers.
template <typename Result, typename... Arguments, bool isNoexcept>
auto Real(const char* name, Result (* /*stand-in*/)(Arguments...) noexcept(isNoexcept)) {
    Result (*const alone)(Arguments...) = [](Arguments... arguments) {
        (Fill(arguments), ...);
        return NextAnswer<Result>();
    };
    const bool isDrivers = name[0] == 'e' || name[0] == 'g';
    return isDrivers && maxTextureSize != 0 ? alone : Next<Result(Arguments...)>(name);
}

// Where GL finds them, to the last byte of the last row.
void ReadPixels(const void* pixels, GLsizei width, GLsizei height, int bytes) {
    static thread_local std::vector<GLubyte> read;
    if (pixels != nullptr && width > 0 && height > 0) {
        const GLsizeiptr row = GLsizeiptr{width} * bytes;
        const GLsizeiptr stride = (row + seen.alignment - 1) / seen.alignment * seen.alignment;
        const auto* const first = static_cast<const GLubyte*>(pixels);
        read.assign(first, first + stride * (height - 1) + row);
    }
}
void SetTexture(GLsizei width, GLsizei height, GLenum format, const void* pixels) {
    const GLint limit = maxTextureSize;
    const bool isRefused = width < 0 || height < 0 || width > limit || height > limit;
    seen.textures[seen.texture] = limit != 0 && isRefused ? Size{0, 0} : Size{width, height};
    if (!isRefused) {
        ReadPixels(pixels, width, height, format == GL_RGBA ? 4 : 1);
    }
}
void FillTexture(GLint x, GLint y, GLsizei width, GLsizei height, const void* pixels) {
    if (maxTextureSize != 0) {
        const Size size = seen.textures[seen.texture];
        Expect(x >= 0 && y >= 0 && width >= 0 && height >= 0 && width <= size.width - x &&
                   height <= size.height - y,
               "an upload reaches outside its texture");
        Expect(pixels != nullptr || width == 0 || height == 0, "an upload without pixels");
        ReadPixels(pixels, width, height, 1);
    }
}
GLsizei LastOf(GLsizei n, const GLushort* indices) { return *std::max_element(indices, indices + n); }

// --- What a window is about to show ---

void RecordPicture(EGLDisplay display, EGLSurface surface) {
    EGLint width = 0;
    EGLint height = 0;
    eglQuerySurface(display, surface, EGL_WIDTH, &width);
    eglQuerySurface(display, surface, EGL_HEIGHT, &height);
    std::vector<GLubyte> pixels(static_cast<std::size_t>(4 * width * height));
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    AddLine(Picture(pixels.data(), width, height));
}

}  // namespace

// STAND_IN(result, name, parameters, whether to fail, what is done, result of a failure)
// clang-format off
#define STAND_IN(Result, name, parameters, fails, done, failed)   \
    __attribute__((weak)) Result name parameters {                                      \
        static Function& function = Find(#name);                  \
        static const auto next = Real(#name, name);        \
        if (fails) {                                              \
            return failed;                                        \
        }                                                         \
        const Forwarding forwards;                                \
        return done;                                              \
    }
// ENTRY(result, name, parameters, arguments as shown, what is done, result of a failure)
#define ENTRY(Result, name, parameters, shown, done, failed)                                                        \
    STAND_IN(Result, name, parameters, EnterRecorded(function, [&] { return CallOf{#name} shown; }), done, failed)
// What ends something does so also when it has to fail.
#define ENDING(Result, name, parameters, shown, done, failed) \
    ENTRY(Result, name, parameters, shown, done, ((void)(done), failed))
// How glyphs are walked through is no promise, so not among the calls. Tests start threads too.
#define WALK(Result, name, parameters, done, failed) \
    STAND_IN(Result, name, parameters, Enter(function), done, failed)
// What most of the functions of each library have in common, and those that make and delete GL names, which the
// library does one by one.
#define GL(name, parameters, arguments, shown) ENTRY(void, name, parameters, shown, next arguments, void())
#define EGL(name, parameters, arguments, shown) \
    ENTRY(EGLBoolean, name, parameters, shown, next arguments != EGL_FALSE ? EGL_TRUE : EGL_FALSE, BadAlloc<EGLBoolean>(EGL_FALSE))
#define FT(name, parameters, arguments, shown) \
    ENTRY(FT_Error, name, parameters, shown, next arguments, FT_Err_Out_Of_Memory)
#define GL_NAMES(kind, Gen, Delete)                                                                  \
    ENTRY(void, Gen, (GLsizei n, GLuint* names), (n),                                                \
          (next(n, names), void(Born(kind, *names))), void(*names = 0))                              \
    ENTRY(void, Delete, (GLsizei n, const GLuint* names), (n, Name(kind, *names)),                   \
          (Gone(kind, *names), next(n, names)), void())

extern "C" {

GL(glActiveTexture, (GLenum unit), (unit), (Const(unit)))
GL(glAttachShader, (GLuint program, GLuint shader), (program, shader), (Program(program), Shader(shader)))
ENTRY(void, glBindBuffer, (GLenum target, GLuint buffer), (Const(target), Name("buffer", buffer)),
      (seen.buffer = buffer, next(target, buffer)), void())
GL(glBindFramebuffer, (GLenum target, GLuint fbo), (target, fbo), (Const(target), Name("framebuffer", fbo)))
ENTRY(void, glBindTexture, (GLenum target, GLuint texture), (Const(target), Name("texture", texture)),
      (seen.texture = texture, next(target, texture)), void())
GL(glBlendFunc, (GLenum source, GLenum destination), (source, destination), (Const(source), Const(destination)))
ENTRY(void, glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage),
      (Const(target), size, Const(usage)) + Vertices(data, size),
      (seen.vertices = size / 16, next(target, size, data, usage)),
      next(target, size, nullptr, usage))  // a driver may crash when it draws more than the buffer has
ENTRY(GLenum, glCheckFramebufferStatus, (GLenum target), (Const(target)), next(target), function.result)
GL(glClear, (GLbitfield mask), (mask), (Const(mask)))
GL(glClearColor, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), (r, g, b, a))
GL(glCompileShader, (GLuint shader), (shader), (Shader(shader)))
ENTRY(GLuint, glCreateProgram, (), (), Born("program", next()), 0)
ENTRY(GLuint, glCreateShader, (GLenum type), (Const(type)), Born("shader", next(type)), 0)
ENTRY(void, glDeleteProgram, (GLuint name), (Program(name)), (Gone("program", name), next(name)), void())
ENTRY(void, glDeleteShader, (GLuint name), (Shader(name)), (Gone("shader", name), next(name)), void())
GL(glDisable, (GLenum what), (what), (Const(what)))
GL(glDisableVertexAttribArray, (GLuint index), (index), (Attribute(index)))
ENTRY(void, glDrawArrays, (GLenum mode, GLint first, GLsizei n), (Const(mode), first, n),
      CanDraw(first + n) ? next(mode, first, n) : void(), void())
ENTRY(void, glDrawElements, (GLenum mode, GLsizei n, GLenum type, const void* indices),
      (Const(mode), n, Const(type), List(static_cast<const GLushort*>(indices), n)),
      CanDraw(1 + LastOf(n, static_cast<const GLushort*>(indices))) ? next(mode, n, type, indices) : void(), void())
GL(glEnable, (GLenum what), (what), (Const(what)))
GL(glEnableVertexAttribArray, (GLuint index), (index), (Attribute(index)))
GL(glFramebufferTexture2D, (GLenum target, GLenum point, GLenum kind, GLuint texture, GLint level),
   (target, point, kind, texture, level), (Const(target), Const(point), Const(kind), Name("texture", texture), level))
GL_NAMES("buffer", glGenBuffers, glDeleteBuffers)
GL_NAMES("framebuffer", glGenFramebuffers, glDeleteFramebuffers)
GL_NAMES("texture", glGenTextures, glDeleteTextures)
ENTRY(GLint, glGetAttribLocation, (GLuint id, const GLchar* name), (Program(id), name),
      Located("attribute", id, name, next(id, name)), -1)
ENTRY(void, glGetIntegerv, (GLenum what, GLint* value), (Const(what)),
      maxTextureSize != 0 ? void(*value = maxTextureSize) : next(what, value),
      void(*value = static_cast<GLint>(function.result)))
ENTRY(void, glGetProgramInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (Program(id)),
      (next(id, size, length, log), SetWords(size, log)), void())
GL(glGetProgramiv, (GLuint program, GLenum what, GLint* value), (program, what, value), (Program(program), Const(what)))
ENTRY(void, glGetShaderInfoLog, (GLuint id, GLsizei size, GLsizei* length, GLchar* log), (Shader(id)),
      (next(id, size, length, log), SetWords(size, log)), void())
GL(glGetShaderiv, (GLuint shader, GLenum what, GLint* value), (shader, what, value), (Shader(shader), Const(what)))
ENTRY(const GLubyte*, glGetString, (GLenum what), (Const(what)),
      (next(what), reinterpret_cast<const GLubyte*>(WORDS)), nullptr)
ENTRY(GLint, glGetUniformLocation, (GLuint id, const GLchar* name), (Program(id), name),
      Located("uniform", id, name, next(id, name)), -1)
ENTRY(GLboolean, glIsProgram, (GLuint name), ("object"), next(name), GL_FALSE)
ENTRY(GLboolean, glIsShader, (GLuint name), ("object"), next(name), GL_FALSE)
GL(glLinkProgram, (GLuint program), (program), (Program(program)))
ENTRY(void, glPixelStorei, (GLenum what, GLint value), (Const(what), value),
      (seen.alignment = value, next(what, value)), void())
GL(glShaderSource, (GLuint shader, GLsizei n, const GLchar* const* parts, const GLint* lengths),
   (shader, n, parts, lengths), (Shader(shader), n, lengths))
ENTRY(void, glTexImage2D, (GLenum target, GLint level, GLint internal, GLsizei width, GLsizei height, GLint border,
      GLenum format, GLenum type, const void* data),
      (Const(target), level, Const(internal), width, height, border, Const(format), Const(type), data),
      (SetTexture(width, height, format, data),
      next(target, level, internal, width, height, border, format, type, data)), void())
GL(glTexParameteri, (GLenum target, GLenum what, GLint value), (target, what, value),
   (Const(target), Const(what), Const(value)))
ENTRY(void, glTexSubImage2D, (GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
      GLenum format, GLenum type, const void* data),
      (Const(target), level, x, y, width, height, Const(format), Const(type), Pixels(data, width, height)),
      (FillTexture(x, y, width, height, data),
      next(target, level, x, y, width, height, format, type, data)), void())
GL(glUniform1i, (GLint location, GLint value), (location, value), (Uniform(location), value))
GL(glUniform4fv, (GLint location, GLsizei n, const GLfloat* values), (location, n, values),
   (Uniform(location), n, Color(values)))
ENTRY(void, glUseProgram, (GLuint program), (Program(program)), (seen.program = program, next(program)), void())
GL(glVertexAttribPointer, (GLuint index, GLint size, GLenum type, GLboolean normalised, GLsizei stride,
   const void* offset), (index, size, type, normalised, stride, offset),
   (Attribute(index), size, Const(type), normalised == GL_FALSE ? "GL_FALSE" : "GL_TRUE", stride, offset))
ENTRY(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height),
      (seen.viewport = {width, height}, next(x, y, width, height)), void())

EGL(eglChooseConfig, (EGLDisplay display, const EGLint* list, EGLConfig* configs, EGLint size, EGLint* n),
    (display, list, configs, size, n), ("display", size) + Attributes(list))
ENTRY(EGLContext, eglCreateContext, (EGLDisplay display, EGLConfig config, EGLContext share, const EGLint* list),
      ("display", "config", Context(share)) + Attributes(list),
      Born("context", next(display, config, share, list)), BadAlloc(EGL_NO_CONTEXT))
ENTRY(EGLSurface, eglCreatePbufferSurface, (EGLDisplay display, EGLConfig config, const EGLint* list),
      ("display", "config") + Attributes(list), Born("surface", next(display, config, list)), BadAlloc(EGL_NO_SURFACE))
ENTRY(EGLSurface, eglCreateWindowSurface,
      (EGLDisplay display, EGLConfig config, EGLNativeWindowType window, const EGLint* list),
      ("display", "config", "window") + Attributes(list), Born("surface", next(display, config, window, list)),
      BadAlloc(EGL_NO_SURFACE))
ENDING(EGLBoolean, eglDestroyContext, (EGLDisplay display, EGLContext context), ("display", Context(context)),
      (ContextGone(context), next(display, context)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENDING(EGLBoolean, eglDestroySurface, (EGLDisplay display, EGLSurface surface), ("display", Surface(surface)),
      (Gone("surface", surface), next(display, surface)), BadAlloc<EGLBoolean>(EGL_FALSE))
ENTRY(EGLDisplay, eglGetDisplay, (EGLNativeDisplayType id),
      (id == EGL_DEFAULT_DISPLAY ? "EGL_DEFAULT_DISPLAY" : "another"), next(id), BadAlloc(EGL_NO_DISPLAY))
ENTRY(EGLint, eglGetError, (), (), LastError(next()), EGL_SUCCESS)
EGL(eglInitialize, (EGLDisplay display, EGLint* major, EGLint* minor), (display, major, minor), ("display"))
ENTRY(EGLBoolean, eglMakeCurrent, (EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context),
      ("display", Surface(draw), Surface(read), Context(context)),
      (seen.hasHadContext = true, next(display, draw, read, context)), BadAlloc<EGLBoolean>(EGL_FALSE))
EGL(eglQuerySurface, (EGLDisplay display, EGLSurface surface, EGLint what, EGLint* value),
    (display, surface, what, value), ("display", Surface(surface), Const(what)))
EGL(eglReleaseThread, (), (), ())
ENTRY(EGLBoolean, eglSwapBuffers, (EGLDisplay display, EGLSurface surface), ("display", Surface(surface)),
      (pictures ? RecordPicture(display, surface) : void(), next(display, surface)),
      BadAlloc<EGLBoolean>(EGL_FALSE))
ENDING(EGLBoolean, eglTerminate, (EGLDisplay display), ("display"), next(display), BadAlloc<EGLBoolean>(EGL_FALSE))

WALK(FT_Error, FT_Bitmap_Convert, (FT_Library library, const FT_Bitmap* source, FT_Bitmap* target, FT_Int alignment),
     next(library, source, target, alignment), FT_Err_Out_Of_Memory)
WALK(FT_Error, FT_Bitmap_Done, (FT_Library library, FT_Bitmap* bitmap), next(library, bitmap),
     (next(library, bitmap), FT_Err_Out_Of_Memory))
ENDING(FT_Error, FT_Done_Face, (FT_Face face), (Face(face)),
      (seen.glyph = nullptr, Gone("face", face), next(face)), FT_Err_Out_Of_Memory)
ENDING(FT_Error, FT_Done_FreeType, (FT_Library library), (Name("library", library)),
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
WALK(FT_Error, FT_Render_Glyph, (FT_GlyphSlot glyph, FT_Render_Mode mode), (seen.glyph = glyph, next(glyph, mode)),
     FT_Err_Out_Of_Memory)
FT(FT_Set_Pixel_Sizes, (FT_Face face, FT_UInt width, FT_UInt height), (face, width, height),
   (Face(face), width, height))
GL(FT_Set_Transform, (FT_Face face, FT_Matrix* matrix, FT_Vector* delta), (face, matrix, delta),
   (Face(face), Matrix(matrix), delta))

#ifndef KIVGLES_FUZZES  // where the sanitizer has its own in the program
WALK(int, pthread_create,
     (pthread_t* thread, const pthread_attr_t* attributes, void* (*body)(void*), void* argument) noexcept,
     next(thread, attributes, body, argument), EAGAIN)
#endif

}  // extern "C"
// clang-format on
