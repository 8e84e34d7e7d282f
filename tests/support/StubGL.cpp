#include "support/StubGL.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include <EGL/egl.h>

namespace {

using stubgl::Expect;

constexpr std::size_t ATTRIBUTE_SIZE = 4;  // floats a vertex

struct Object {
    std::string_view kind;
    GLsizei width = 0;  // a texture's
    GLsizei height = 0;
    std::vector<GLsizei> filledTo;  // a texture's: per column, the row below the lowest upload
    std::vector<GLfloat> vertices;  // a buffer's
};

struct GLState {
    GLint maxTextureSize = 0;
    unsigned int callsBeforeFailure = UINT_MAX;
    stubgl::Drawing drawing = nullptr;
    GLuint lastName = 0;
    std::map<GLuint, Object> objects{};
    GLenum unit = GL_TEXTURE0;
    std::map<GLenum, GLuint> boundTextures{};  // by unit
    GLuint arrayBuffer = 0;
    GLuint attributeBuffer = 0;
    std::size_t alignment = 4;
    std::vector<std::uint8_t> pixels{};  // last uploaded
    GLfloat color[4] = {};
    bool colorIsNew = false;
};

enum class Context { NEVER, RELEASED, CURRENT };

GLState& state = *new GLState;  // never destroyed: a draw thread may outlive main
thread_local Context context = Context::NEVER;

bool IsCurrent() {
    Expect(context != Context::NEVER, "GL is called by a thread that never had a context");
    return context == Context::CURRENT;
}

bool Fails() { return state.callsBeforeFailure-- == 0; }

// 0 if it is this call that fails.
GLuint Make(std::string_view kind) {
    if (Fails()) {
        return 0;
    }
    state.objects[++state.lastName].kind = kind;
    return state.lastName;
}

void Generate(std::string_view kind, GLsizei count, GLuint* names) {
    std::generate_n(names, count, [kind] { return IsCurrent() ? Make(kind) : 0; });
}

// Null without a context, too.
Object* Find(std::string_view kind, GLuint name) {
    const auto found = state.objects.find(name);
    const bool exists = IsCurrent() && found != state.objects.end() && found->second.kind == kind;
    return exists ? &found->second : nullptr;
}

void Delete(std::string_view kind, GLsizei count, const GLuint* names) {
    for (GLsizei i = 0; IsCurrent() && i < count; ++i) {
        Expect(Find(kind, names[i]) != nullptr, "a GL name that does not exist is deleted");
        state.objects.erase(names[i]);
    }
}

Object* BoundTexture() { return Find("texture", state.boundTextures[state.unit]); }

// Reads the rows where GL finds them, to the last byte of the last one.
void ReadPixels(const void* pixels, GLsizei width, GLsizei height, GLenum format) {
    if (pixels != nullptr && width != 0 && height != 0) {
        const auto row = static_cast<std::size_t>(width) * (format == GL_RGBA ? 4 : 1);
        const std::size_t stride = (row + state.alignment - 1) / state.alignment * state.alignment;
        const auto* const first = static_cast<const std::uint8_t*>(pixels);
        state.pixels.assign(first, first + stride * static_cast<std::size_t>(height - 1) + row);
    }
}

// Of EGL's objects the pointer is the name.
void* MakeEGLObject() { return reinterpret_cast<void*>(std::uintptr_t{Make("EGL")}); }
EGLBoolean DestroyEGLObject(void* object) {
    return state.objects.erase(static_cast<GLuint>(reinterpret_cast<std::uintptr_t>(object))) != 0;
}

}  // namespace

namespace stubgl {

void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure, Drawing drawing) {
    state = GLState{maxTextureSize, callsBeforeFailure, drawing};
}

void MakeCurrent() { context = Context::CURRENT; }

std::size_t LiveNum(std::string_view kind) {
    const auto isOfKind = [kind](const auto& it) { return kind.empty() || it.second.kind == kind; };
    return static_cast<std::size_t>(std::count_if(state.objects.begin(), state.objects.end(), isOfKind));
}

void Expect(bool holds, const char* finding) {
    if (!holds) {
        std::fprintf(stderr, "FINDING: %s\n", finding);
        std::abort();
    }
}

}  // namespace stubgl

extern "C" {

// Textures.

void glGenTextures(GLsizei n, GLuint* names) { Generate("texture", n, names); }
void glDeleteTextures(GLsizei n, const GLuint* names) { Delete("texture", n, names); }
void glActiveTexture(GLenum unit) { state.unit = unit; }
void glBindTexture(GLenum, GLuint name) { state.boundTextures[state.unit] = name; }
void glPixelStorei(GLenum, GLint value) { state.alignment = static_cast<std::size_t>(value); }

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    Object* const texture = BoundTexture();
    const GLint limit = state.maxTextureSize;
    if (texture == nullptr || width < 0 || height < 0 || width > limit || height > limit) {
        return;  // GL refuses, and the texture stays without storage
    }
    ReadPixels(pixels, width, height, format);
    texture->width = width;
    texture->height = height;
    texture->filledTo.assign(static_cast<std::size_t>(width), 0);
}

void glTexSubImage2D(GLenum, GLint, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum,
                     const void* pixels) {
    Object* const texture = BoundTexture();
    Expect(texture != nullptr && x >= 0 && y >= 0 && width >= 0 && height >= 0 &&
               width <= texture->width - x && height <= texture->height - y,
           "an upload reaches outside its texture");
    Expect(pixels != nullptr || width == 0 || height == 0, "an upload without pixels");
    ReadPixels(pixels, width, height, format);
    const auto first = texture->filledTo.begin() + x;
    Expect(height == 0 || std::all_of(first, first + width, [y](GLsizei row) { return row <= y; }),
           "an upload covers another one");
    std::fill(first, first + width, y + height);
}

// Vertices.

void glGenBuffers(GLsizei n, GLuint* names) { Generate("buffer", n, names); }
void glDeleteBuffers(GLsizei n, const GLuint* names) { Delete("buffer", n, names); }
void glBindBuffer(GLenum, GLuint name) { state.arrayBuffer = name; }
void glVertexAttribPointer(GLuint, GLint size, GLenum, GLboolean, GLsizei, const void*) {
    Expect(size == ATTRIBUTE_SIZE, "vertices of another size");
    state.attributeBuffer = state.arrayBuffer;
}
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    Object* const buffer = Find("buffer", state.arrayBuffer);
    if (buffer != nullptr) {
        const auto* const first = static_cast<const GLfloat*>(data);
        buffer->vertices.assign(first, first + static_cast<std::size_t>(size) / sizeof(GLfloat));
    }
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    const Object* const buffer = Find("buffer", state.attributeBuffer);
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

void glGenFramebuffers(GLsizei n, GLuint* names) { Generate("framebuffer", n, names); }
void glDeleteFramebuffers(GLsizei n, const GLuint* names) { Delete("framebuffer", n, names); }
GLenum glCheckFramebufferStatus(GLenum) {
    return Fails() ? GL_FRAMEBUFFER_UNSUPPORTED : GL_FRAMEBUFFER_COMPLETE;
}
void glGetIntegerv(GLenum, GLint* value) { *value = IsCurrent() ? state.maxTextureSize : *value; }

// Programs.

GLuint glCreateShader(GLenum) { return IsCurrent() ? Make("shader") : 0; }
void glDeleteShader(GLuint name) { Delete("shader", 1, &name); }
void glGetShaderiv(GLuint, GLenum what, GLint* value) { *value = what == GL_COMPILE_STATUS && !Fails(); }
GLboolean glIsShader(GLuint name) { return Find("shader", name) != nullptr; }
GLuint glCreateProgram() { return IsCurrent() ? Make("program") : 0; }
void glDeleteProgram(GLuint name) { Delete("program", 1, &name); }
void glGetProgramiv(GLuint, GLenum what, GLint* value) { *value = what == GL_LINK_STATUS && !Fails(); }
GLboolean glIsProgram(GLuint name) { return Find("program", name) != nullptr; }
GLint glGetAttribLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
GLint glGetUniformLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
void glUniform4fv(GLint, GLsizei, const GLfloat* value) {
    std::copy(value, value + 4, state.color);
    state.colorIsNew = true;
}

// EGL.

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
EGLBoolean eglDestroySurface(EGLDisplay, EGLSurface object) { return DestroyEGLObject(object); }
EGLBoolean eglDestroyContext(EGLDisplay, EGLContext object) { return DestroyEGLObject(object); }
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface, EGLSurface, EGLContext object) {
    if (object != nullptr && Fails()) {
        return EGL_FALSE;
    }
    context = object != nullptr ? Context::CURRENT : Context::RELEASED;  // with or without a surface
    for (auto it = state.objects.begin(); object == nullptr && it != state.objects.end();) {
        it = it->second.kind == "EGL" ? std::next(it) : state.objects.erase(it);
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
