#include "support/StubGL.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <vector>

#include <EGL/egl.h>

namespace {

using stubgl::Expect;

// A texture's size, none for other objects.
struct Object {
    GLsizei width = 0;
    GLsizei height = 0;
};

struct GLState {
    GLint maxTextureSize = 0;
    unsigned int callsBeforeFailure = UINT_MAX;
    std::uintptr_t lastName = 0;
    std::map<GLuint, Object> objects{};
    std::set<std::uintptr_t> objectsOfEGL{};
    GLuint texture = 0;  // bound
    std::size_t alignment = 4;
    std::vector<std::uint8_t> pixels{};  // last uploaded
    std::vector<GLfloat> vertices{};
};

GLState& state = *new GLState;  // never destroyed: a draw thread may outlive main
thread_local bool hasHadContext = false;

bool Fails() { return state.callsBeforeFailure-- == 0; }

// 0 if it is this call that fails.
GLuint Make() {
    Expect(hasHadContext, "an object is made by a thread that never had a context");
    if (Fails()) {
        return 0;
    }
    const auto name = static_cast<GLuint>(++state.lastName);
    state.objects[name] = {};
    return name;
}
void Delete(GLuint name) {
    Expect(hasHadContext, "an object is deleted by a thread that never had a context");
    state.objects.erase(name);  // or it has gone with its context
}
void Generate(GLsizei count, GLuint* names) { std::generate_n(names, count, Make); }
void DeleteAll(GLsizei count, const GLuint* names) { std::for_each(names, names + count, Delete); }

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
void* MakeOfEGL() {
    return Fails() ? nullptr : reinterpret_cast<void*>(*state.objectsOfEGL.insert(++state.lastName).first);
}
EGLBoolean DestroyOfEGL(void* object) {
    return state.objectsOfEGL.erase(reinterpret_cast<std::uintptr_t>(object)) != 0;
}

}  // namespace

namespace stubgl {

void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure) {
    state = GLState{maxTextureSize, callsBeforeFailure};
}

void MakeCurrent() { hasHadContext = true; }

std::size_t LiveNum() { return state.objects.size() + state.objectsOfEGL.size(); }

void Expect(bool holds, const char* finding) {
    if (!holds) {
        std::fprintf(stderr, "FINDING: %s\n", finding);
        std::abort();
    }
}

}  // namespace stubgl

extern "C" {

// Textures.

void glGenTextures(GLsizei n, GLuint* names) { Generate(n, names); }
void glDeleteTextures(GLsizei n, const GLuint* names) { DeleteAll(n, names); }
void glBindTexture(GLenum, GLuint name) { state.texture = name; }
void glPixelStorei(GLenum, GLint value) { state.alignment = static_cast<std::size_t>(value); }

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    const auto texture = state.objects.find(state.texture);
    const GLint limit = state.maxTextureSize;
    if (texture != state.objects.end() && width >= 0 && height >= 0 && width <= limit && height <= limit) {
        ReadPixels(pixels, width, height, format);
        texture->second = {width, height};
    }  // else GL refuses, and the texture stays without storage
}

void glTexSubImage2D(GLenum, GLint, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum,
                     const void* pixels) {
    const Object& texture = state.objects.at(state.texture);
    Expect(x >= 0 && y >= 0 && width >= 0 && height >= 0 && width <= texture.width - x &&
               height <= texture.height - y,
           "an upload reaches outside its texture");
    Expect(pixels != nullptr || width == 0 || height == 0, "an upload without pixels");
    ReadPixels(pixels, width, height, format);
}

// Vertices. What is uploaded is drawn before anything else is.

void glGenBuffers(GLsizei n, GLuint* names) { Generate(n, names); }
void glDeleteBuffers(GLsizei n, const GLuint* names) { DeleteAll(n, names); }
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    const auto* const first = static_cast<const GLfloat*>(data);
    state.vertices.assign(first, first + static_cast<std::size_t>(size) / sizeof(GLfloat));
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    const auto end = static_cast<std::size_t>(first + count);
    Expect(4 * end <= state.vertices.size(), "vertices are drawn from behind their buffer's end");
}
void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    const auto* const first = static_cast<const GLushort*>(indices);
    glDrawArrays(GL_TRIANGLES, 0, 1 + *std::max_element(first, first + count));
}

// Framebuffers, programs and limits.

void glGenFramebuffers(GLsizei n, GLuint* names) { Generate(n, names); }
void glDeleteFramebuffers(GLsizei n, const GLuint* names) { DeleteAll(n, names); }
GLuint glCreateShader(GLenum) { return Make(); }
void glDeleteShader(GLuint name) { Delete(name); }
void glGetShaderiv(GLuint, GLenum what, GLint* value) { *value = what == GL_COMPILE_STATUS && !Fails(); }
GLuint glCreateProgram() { return Make(); }
void glDeleteProgram(GLuint name) { Delete(name); }
void glGetProgramiv(GLuint, GLenum what, GLint* value) { *value = what == GL_LINK_STATUS && !Fails(); }
void glGetIntegerv(GLenum, GLint* value) { *value = state.maxTextureSize; }

// EGL.

EGLDisplay eglGetDisplay(EGLNativeDisplayType) { return Fails() ? nullptr : &state; }
EGLBoolean eglInitialize(EGLDisplay, EGLint*, EGLint*) { return !Fails(); }
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint*, EGLConfig* configs, EGLint, EGLint* count) {
    *count = 1;
    *configs = &state;
    return !Fails();
}
EGLContext eglCreateContext(EGLDisplay, EGLConfig, EGLContext, const EGLint*) { return MakeOfEGL(); }
EGLSurface eglCreatePbufferSurface(EGLDisplay, EGLConfig, const EGLint*) { return MakeOfEGL(); }
EGLSurface eglCreateWindowSurface(EGLDisplay, EGLConfig, EGLNativeWindowType, const EGLint*) {
    return MakeOfEGL();
}
EGLBoolean eglDestroySurface(EGLDisplay, EGLSurface object) { return DestroyOfEGL(object); }
EGLBoolean eglDestroyContext(EGLDisplay, EGLContext object) { return DestroyOfEGL(object); }
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface, EGLSurface, EGLContext object) {
    if (object != nullptr && Fails()) {
        return EGL_FALSE;
    }
    hasHadContext = true;
    if (object == nullptr) {
        state.objects.clear();
    }
    return EGL_TRUE;
}
EGLBoolean eglQuerySurface(EGLDisplay, EGLSurface, EGLint attribute, EGLint* value) {
    *value = attribute == EGL_WIDTH ? 320 : 200;
    return EGL_TRUE;
}

}  // extern "C"
