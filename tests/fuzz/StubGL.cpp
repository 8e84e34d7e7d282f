#include "StubGL.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include <EGL/egl.h>

namespace {

using stubgl::Context;
using stubgl::Expect;
using stubgl::Kind;

constexpr std::size_t TEXTURE_UNITS = 8;
constexpr std::size_t ATTRIBUTE_SIZE = 4;  // floats a vertex

struct Object {
    explicit Object(Kind theKind) : kind(theKind) {}

    Kind kind;
    GLsizei width = 0;  // a texture's
    GLsizei height = 0;
    std::vector<GLsizei> filledTo;  // a texture's: per column, the row below the lowest upload
    std::vector<GLfloat> vertices;  // a buffer's
};

struct State {
    GLint maxTextureSize = 0;
    unsigned int callsBeforeFailure = UINT_MAX;
    stubgl::Drawing drawing = nullptr;
    GLuint lastName = 0;
    std::map<GLuint, Object> objects;  // of EGL too
    std::size_t unit = 0;
    GLuint boundTexture[TEXTURE_UNITS] = {};
    GLuint arrayBuffer = 0;
    GLuint attributeBuffer = 0;
    GLint alignment = 4;
    GLfloat color[4] = {};
    bool colorIsNew = false;
};

State& state = *new State;  // never destroyed: a draw thread may outlive main
thread_local Context context = Context::NEVER;

bool IsCurrent() {
    Expect(context != Context::NEVER, "GL is called by a thread that never had a context");
    return context == Context::CURRENT;
}

// Reads all bytes: the sanitizers check the whole range of a copy.
void Read(const void* data, std::size_t size) {
    static auto& sink = *new std::vector<unsigned char>;  // a draw thread may outlive main
    sink.resize(std::max(sink.size(), size));
    if (data != nullptr && size != 0) {
        std::memcpy(sink.data(), data, size);
    }
}

bool Fails() { return state.callsBeforeFailure-- == 0; }

// 0 if it is this call that fails.
GLuint Make(Kind kind) {
    if (Fails()) {
        return 0;
    }
    state.objects.emplace(++state.lastName, kind);
    return state.lastName;
}

void Generate(Kind kind, GLsizei count, GLuint* names) {
    for (GLsizei i = 0; IsCurrent() && i < count; ++i) {
        names[i] = Make(kind);
    }
}

// Null without a context, too.
Object* Find(Kind kind, GLuint name) {
    const auto found = state.objects.find(name);
    return IsCurrent() && found != state.objects.end() && found->second.kind == kind ? &found->second
                                                                                     : nullptr;
}

void Delete(Kind kind, GLsizei count, const GLuint* names) {
    for (GLsizei i = 0; IsCurrent() && i < count; ++i) {
        Expect(Find(kind, names[i]) != nullptr, "a GL name that does not exist is deleted");
        state.objects.erase(names[i]);
    }
}

Object* BoundTexture() { return Find(Kind::TEXTURE, state.boundTexture[state.unit]); }

// Bytes from the first to the last one of an upload, as GL finds its rows.
std::size_t UploadSize(GLsizei width, GLsizei height, GLenum format) {
    const auto row = static_cast<std::size_t>(width) * (format == GL_RGBA ? 4 : 1);
    const auto alignment = static_cast<std::size_t>(state.alignment);
    const std::size_t stride = (row + alignment - 1) / alignment * alignment;
    return height == 0 ? 0 : stride * static_cast<std::size_t>(height - 1) + row;
}

void* MakeEGLObject() { return reinterpret_cast<void*>(static_cast<std::uintptr_t>(Make(Kind::EGL))); }
EGLBoolean DestroyEGLObject(void* object) {
    return state.objects.erase(static_cast<GLuint>(reinterpret_cast<std::uintptr_t>(object))) != 0;
}

}  // namespace

namespace stubgl {

void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure, Drawing drawing) {
    state = State();
    state.maxTextureSize = maxTextureSize;
    state.callsBeforeFailure = callsBeforeFailure;
    state.drawing = drawing;
}

Context SetContext(Context newContext) { return std::exchange(context, newContext); }

std::size_t CountLive(Kind kind) {
    return static_cast<std::size_t>(std::count_if(state.objects.begin(), state.objects.end(),
                                                  [kind](const auto& it) { return it.second.kind == kind; }));
}
std::size_t CountLive() { return state.objects.size(); }

void Report(const char* finding) {
    std::fprintf(stderr, "FINDING: %s\n", finding);
    std::abort();
}

}  // namespace stubgl

extern "C" {

// Textures.

void glGenTextures(GLsizei n, GLuint* names) { Generate(Kind::TEXTURE, n, names); }
void glDeleteTextures(GLsizei n, const GLuint* names) { Delete(Kind::TEXTURE, n, names); }
void glActiveTexture(GLenum unit) {
    state.unit = unit - GL_TEXTURE0;
    Expect(state.unit < TEXTURE_UNITS, "no such texture unit");
}
void glBindTexture(GLenum, GLuint name) { state.boundTexture[state.unit] = name; }
void glPixelStorei(GLenum, GLint value) { state.alignment = value; }

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    Object* const texture = BoundTexture();
    const GLint limit = state.maxTextureSize;
    if (texture == nullptr || width < 0 || height < 0 || width > limit || height > limit) {
        return;  // GL refuses, and the texture stays without storage
    }
    Read(pixels, UploadSize(width, height, format));
    texture->width = width;
    texture->height = height;
    texture->filledTo.clear();
}

void glTexSubImage2D(GLenum, GLint, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum,
                     const void* pixels) {
    if (!IsCurrent()) {
        return;
    }
    Object* const texture = BoundTexture();
    Expect(texture != nullptr && x >= 0 && y >= 0 && width >= 0 && height >= 0 &&
               width <= texture->width - x && height <= texture->height - y,
           "an upload reaches outside its texture");
    Expect(pixels != nullptr || width == 0 || height == 0, "an upload without pixels");
    Read(pixels, UploadSize(width, height, format));
    texture->filledTo.resize(static_cast<std::size_t>(texture->width));
    const auto first = texture->filledTo.begin() + x;
    Expect(height == 0 || std::all_of(first, first + width, [y](GLsizei row) { return row <= y; }),
           "an upload covers another one");
    std::fill(first, first + width, y + height);
}

// Vertices.

void glGenBuffers(GLsizei n, GLuint* names) { Generate(Kind::BUFFER, n, names); }
void glDeleteBuffers(GLsizei n, const GLuint* names) { Delete(Kind::BUFFER, n, names); }
void glBindBuffer(GLenum, GLuint name) { state.arrayBuffer = name; }
void glVertexAttribPointer(GLuint, GLint size, GLenum, GLboolean, GLsizei, const void*) {
    Expect(size == ATTRIBUTE_SIZE, "vertices of another size");
    state.attributeBuffer = state.arrayBuffer;
}
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    Object* const buffer = Find(Kind::BUFFER, state.arrayBuffer);
    if (buffer != nullptr) {
        const auto* const first = static_cast<const GLfloat*>(data);
        buffer->vertices.assign(first, first + static_cast<std::size_t>(size) / sizeof(GLfloat));
    }
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    const Object* const buffer = Find(Kind::BUFFER, state.attributeBuffer);
    if (buffer == nullptr) {
        return;
    }
    const auto end = static_cast<std::size_t>(first + count);
    Expect(end * ATTRIBUTE_SIZE <= buffer->vertices.size(),
           "vertices are drawn from behind their buffer's end");
    const GLfloat* const color = std::exchange(state.colorIsNew, false) ? state.color : nullptr;
    if (state.drawing != nullptr) {
        state.drawing(buffer->vertices.data(), end, color);
    }
}
void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    const auto* const first = static_cast<const GLushort*>(indices);
    const GLushort largest = *std::max_element(first, first + count);
    glDrawArrays(GL_TRIANGLES, 0, largest + 1);
}

// Framebuffers and state.

void glGenFramebuffers(GLsizei n, GLuint* names) { Generate(Kind::FRAMEBUFFER, n, names); }
void glDeleteFramebuffers(GLsizei n, const GLuint* names) { Delete(Kind::FRAMEBUFFER, n, names); }
GLenum glCheckFramebufferStatus(GLenum) {
    return Fails() ? GL_FRAMEBUFFER_UNSUPPORTED : GL_FRAMEBUFFER_COMPLETE;
}
void glGetIntegerv(GLenum, GLint* value) {
    if (IsCurrent()) {
        *value = state.maxTextureSize;
    }
}

// Programs.

GLuint glCreateShader(GLenum) { return IsCurrent() ? Make(Kind::SHADER) : 0; }
void glDeleteShader(GLuint name) { Delete(Kind::SHADER, 1, &name); }
void glGetShaderiv(GLuint, GLenum what, GLint* value) { *value = what == GL_COMPILE_STATUS && !Fails(); }
GLboolean glIsShader(GLuint name) { return Find(Kind::SHADER, name) != nullptr; }
GLuint glCreateProgram() { return IsCurrent() ? Make(Kind::PROGRAM) : 0; }
void glDeleteProgram(GLuint name) { Delete(Kind::PROGRAM, 1, &name); }
void glGetProgramiv(GLuint, GLenum what, GLint* value) { *value = what == GL_LINK_STATUS && !Fails(); }
GLboolean glIsProgram(GLuint name) { return Find(Kind::PROGRAM, name) != nullptr; }
GLint glGetAttribLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
GLint glGetUniformLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
void glUniform4fv(GLint, GLsizei, const GLfloat* value) {
    std::copy(value, value + 4, state.color);
    state.colorIsNew = true;
}

// EGL.

EGLint eglGetError() { return EGL_BAD_ALLOC; }
EGLDisplay eglGetDisplay(EGLNativeDisplayType) { return Fails() ? nullptr : &state; }
EGLBoolean eglInitialize(EGLDisplay, EGLint*, EGLint*) { return !Fails(); }
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint*, EGLConfig* configs, EGLint, EGLint* count) {
    *count = 1;
    *configs = &state;
    return !Fails();
}
EGLContext eglCreateContext(EGLDisplay, EGLConfig, EGLContext, const EGLint*) { return MakeEGLObject(); }
EGLSurface eglCreatePbufferSurface(EGLDisplay, EGLConfig, const EGLint*) { return MakeEGLObject(); }
EGLSurface eglCreateWindowSurface(EGLDisplay, EGLConfig, EGLNativeWindowType, const EGLint*) {
    return MakeEGLObject();
}
EGLBoolean eglDestroySurface(EGLDisplay, EGLSurface surface) { return DestroyEGLObject(surface); }
EGLBoolean eglDestroyContext(EGLDisplay, EGLContext object) { return DestroyEGLObject(object); }
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface, EGLSurface, EGLContext object) {
    if (object != nullptr && Fails()) {
        return EGL_FALSE;
    }
    context = object != nullptr ? Context::CURRENT : Context::RELEASED;  // with or without a surface
    for (auto it = state.objects.begin(); object == nullptr && it != state.objects.end();) {
        it = it->second.kind == Kind::EGL ? std::next(it) : state.objects.erase(it);
    }
    return EGL_TRUE;
}
EGLBoolean eglQuerySurface(EGLDisplay, EGLSurface, EGLint attribute, EGLint* value) {
    *value = attribute == EGL_WIDTH ? 320 : 200;
    return EGL_TRUE;
}
EGLBoolean eglSwapBuffers(EGLDisplay, EGLSurface) { return EGL_TRUE; }
EGLBoolean eglTerminate(EGLDisplay) { return EGL_TRUE; }
EGLBoolean eglReleaseThread() { return EGL_TRUE; }

}  // extern "C"
