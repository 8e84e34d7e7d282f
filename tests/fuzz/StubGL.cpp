#include "StubGL.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include <EGL/egl.h>

namespace {

constexpr GLint ATTRIBUTE_SIZE = 4;  // floats a vertex
constexpr EGLint WINDOW_WIDTH = 320;
constexpr EGLint WINDOW_HEIGHT = 200;
constexpr std::size_t TEXTURE_UNITS = 8;

struct Texture {
    GLsizei width = 0;
    GLsizei height = 0;
    std::vector<GLsizei> filledTo;  // per column, the row below the lowest upload
};

struct State {
    GLint maxTextureSize = 0;
    unsigned int callsBeforeFailure = UINT_MAX;
    GLuint lastName = 0;
    std::map<GLuint, Texture> textures;
    std::map<GLuint, std::vector<GLfloat>> buffers;
    std::set<GLuint> framebuffers, programs, shaders;
    std::set<void*> eglObjects;
    std::size_t unit = 0;
    GLuint boundTexture[TEXTURE_UNITS] = {};
    GLuint arrayBuffer = 0;
    GLuint attributeBuffer = 0;
    GLint alignment = 4;
    std::vector<GLfloat> lastVertices;
};

State state;
thread_local bool current = false;

// Reads all bytes: the sanitizer checks the whole range of a copy.
void Read(const void* data, std::size_t size) {
    static std::vector<unsigned char> sink;
    sink.resize(std::max(sink.size(), size));
    if (data != nullptr && size != 0) {
        std::memcpy(sink.data(), data, size);
    }
}

bool Fails() { return state.callsBeforeFailure-- == 0; }

GLuint NewName() { return Fails() ? 0 : ++state.lastName; }

EGLSurface NewEGLObject() {
    if (Fails()) {
        return nullptr;
    }
    void* const object = reinterpret_cast<void*>(static_cast<std::size_t>(++state.lastName));
    state.eglObjects.insert(object);
    return object;
}

template <typename Objects>
void Generate(GLsizei count, GLuint* names, Objects create) {
    for (GLsizei i = 0; current && i < count; ++i) {
        names[i] = NewName();
        if (names[i] != 0) {
            create(names[i]);
        }
    }
}

template <typename Objects>
void Delete(GLsizei count, const GLuint* names, Objects& objects) {
    for (GLsizei i = 0; current && i < count; ++i) {
        if (objects.erase(names[i]) == 0) {
            stubgl::Report("a GL name that does not exist is deleted");
        }
    }
}

Texture* BoundTexture() {
    const auto found = state.textures.find(state.boundTexture[state.unit]);
    return current && found != state.textures.end() ? &found->second : nullptr;
}

// Bytes from the first to the last one of an upload, as GL finds its rows.
std::size_t UploadSize(GLsizei width, GLsizei height, GLenum format) {
    const auto row = static_cast<std::size_t>(width) * (format == GL_RGBA ? 4 : 1);
    const auto alignment = static_cast<std::size_t>(state.alignment);
    const std::size_t stride = (row + alignment - 1) / alignment * alignment;
    return height == 0 ? 0 : stride * static_cast<std::size_t>(height - 1) + row;
}

}  // namespace

namespace stubgl {

void Reset(GLint maxTextureSize, unsigned int callsBeforeFailure) {
    state = State();
    state.maxTextureSize = maxTextureSize;
    state.callsBeforeFailure = callsBeforeFailure;
}

void MakeCurrent() { current = true; }

LiveObjects CountLiveObjects() {
    return {state.textures.size(), state.framebuffers.size(), state.buffers.size(),
            state.programs.size(), state.shaders.size(),      state.eglObjects.size()};
}

const std::vector<GLfloat>& LastVertices() { return state.lastVertices; }

void Report(const char* finding) {
    std::fprintf(stderr, "FINDING: %s\n", finding);
    std::abort();
}

}  // namespace stubgl

extern "C" {

// Textures.

void glGenTextures(GLsizei n, GLuint* names) {
    Generate(n, names, [](GLuint name) { state.textures[name]; });
}
void glDeleteTextures(GLsizei n, const GLuint* names) { Delete(n, names, state.textures); }
void glActiveTexture(GLenum unit) {
    state.unit = unit - GL_TEXTURE0;
    if (state.unit >= TEXTURE_UNITS) {
        stubgl::Report("no such texture unit");
    }
}
void glBindTexture(GLenum, GLuint name) { state.boundTexture[state.unit] = name; }
void glPixelStorei(GLenum, GLint value) { state.alignment = value; }
void glTexParameteri(GLenum, GLenum, GLint) {}

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    Texture* const texture = BoundTexture();
    const GLint limit = state.maxTextureSize;
    if (texture == nullptr || width < 0 || height < 0 || width > limit || height > limit) {
        return;  // GL refuses, and the texture stays without storage
    }
    Read(pixels, UploadSize(width, height, format));
    texture->width = width;
    texture->height = height;
    texture->filledTo.assign(static_cast<std::size_t>(width), 0);
}

void glTexSubImage2D(GLenum, GLint, GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum,
                     const void* pixels) {
    Texture* const texture = BoundTexture();
    if (!current) {
        return;
    }
    if (texture == nullptr || x < 0 || y < 0 || width < 0 || height < 0 || width > texture->width - x ||
        height > texture->height - y) {
        stubgl::Report("an upload reaches outside its texture");
    }
    if (pixels == nullptr && width != 0 && height != 0) {
        stubgl::Report("an upload without pixels");
    }
    Read(pixels, UploadSize(width, height, format));
    const auto first = texture->filledTo.begin() + x;
    if (height != 0 && std::any_of(first, first + width, [y](GLsizei row) { return row > y; })) {
        stubgl::Report("an upload covers another one");
    }
    std::fill(first, first + width, y + height);
}

// Vertices.

void glGenBuffers(GLsizei n, GLuint* names) {
    Generate(n, names, [](GLuint name) { state.buffers[name]; });
}
void glDeleteBuffers(GLsizei n, const GLuint* names) { Delete(n, names, state.buffers); }
void glBindBuffer(GLenum, GLuint name) { state.arrayBuffer = name; }
void glEnableVertexAttribArray(GLuint) {}
void glDisableVertexAttribArray(GLuint) {}
void glVertexAttribPointer(GLuint, GLint size, GLenum, GLboolean, GLsizei, const void*) {
    if (size != ATTRIBUTE_SIZE) {
        stubgl::Report("vertices of another size");
    }
    state.attributeBuffer = state.arrayBuffer;
}
void glBufferData(GLenum, GLsizeiptr size, const void* data, GLenum) {
    const auto found = state.buffers.find(state.arrayBuffer);
    if (current && found != state.buffers.end()) {
        found->second.resize(static_cast<std::size_t>(size) / sizeof(GLfloat));
        if (size != 0) {
            std::memcpy(found->second.data(), data, static_cast<std::size_t>(size));
        }
    }
}
void glDrawArrays(GLenum, GLint first, GLsizei count) {
    const auto found = state.buffers.find(state.attributeBuffer);
    if (!current || found == state.buffers.end()) {
        return;
    }
    const auto end = static_cast<std::size_t>(first + count) * ATTRIBUTE_SIZE;
    if (end > found->second.size()) {
        stubgl::Report("vertices are drawn from behind their buffer's end");
    }
    state.lastVertices.assign(found->second.begin(),
                              found->second.begin() + static_cast<std::ptrdiff_t>(end));
}
void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    const auto* const first = static_cast<const GLushort*>(indices);
    const GLushort largest = *std::max_element(first, first + count);
    glDrawArrays(GL_TRIANGLES, 0, largest + 1);
}

// Framebuffers and state.

void glGenFramebuffers(GLsizei n, GLuint* names) {
    Generate(n, names, [](GLuint name) { state.framebuffers.insert(name); });
}
void glDeleteFramebuffers(GLsizei n, const GLuint* names) { Delete(n, names, state.framebuffers); }
void glBindFramebuffer(GLenum, GLuint) {}
void glFramebufferTexture2D(GLenum, GLenum, GLenum, GLuint, GLint) {}
GLenum glCheckFramebufferStatus(GLenum) {
    return Fails() ? GL_FRAMEBUFFER_UNSUPPORTED : GL_FRAMEBUFFER_COMPLETE;
}
void glViewport(GLint, GLint, GLsizei, GLsizei) {}
void glClearColor(GLfloat, GLfloat, GLfloat, GLfloat) {}
void glClear(GLbitfield) {}
void glEnable(GLenum) {}
void glDisable(GLenum) {}
void glBlendFunc(GLenum, GLenum) {}
void glGetIntegerv(GLenum, GLint* value) {
    if (current) {
        *value = state.maxTextureSize;
    }
}
const GLubyte* glGetString(GLenum) { return nullptr; }

// Programs.

GLuint glCreateShader(GLenum) {
    const GLuint name = current ? NewName() : 0;
    return name != 0 ? *state.shaders.insert(name).first : 0;
}
void glDeleteShader(GLuint name) { Delete(1, &name, state.shaders); }
void glShaderSource(GLuint, GLsizei, const GLchar* const*, const GLint*) {}
void glCompileShader(GLuint) {}
void glGetShaderiv(GLuint, GLenum what, GLint* value) { *value = what == GL_COMPILE_STATUS && !Fails(); }
void glGetShaderInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
GLboolean glIsShader(GLuint name) { return static_cast<GLboolean>(state.shaders.count(name)); }
GLuint glCreateProgram() {
    const GLuint name = current ? NewName() : 0;
    return name != 0 ? *state.programs.insert(name).first : 0;
}
void glDeleteProgram(GLuint name) { Delete(1, &name, state.programs); }
void glAttachShader(GLuint, GLuint) {}
void glLinkProgram(GLuint) {}
void glGetProgramiv(GLuint, GLenum what, GLint* value) { *value = what == GL_LINK_STATUS && !Fails(); }
void glGetProgramInfoLog(GLuint, GLsizei, GLsizei*, GLchar*) {}
GLboolean glIsProgram(GLuint name) { return static_cast<GLboolean>(state.programs.count(name)); }
void glUseProgram(GLuint) {}
GLint glGetAttribLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
GLint glGetUniformLocation(GLuint, const GLchar*) { return Fails() ? -1 : 0; }
void glUniform1i(GLint, GLint) {}
void glUniform4fv(GLint, GLsizei, const GLfloat* value) { Read(value, 4 * sizeof(GLfloat)); }

// EGL. A context takes all GL objects with it when it is released.

EGLint eglGetError() { return EGL_BAD_ALLOC; }
EGLDisplay eglGetDisplay(EGLNativeDisplayType) { return Fails() ? nullptr : &state; }
EGLBoolean eglInitialize(EGLDisplay, EGLint*, EGLint*) { return !Fails(); }
EGLBoolean eglChooseConfig(EGLDisplay, const EGLint*, EGLConfig* configs, EGLint, EGLint* count) {
    *count = 1;
    *configs = &state;
    return !Fails();
}
EGLContext eglCreateContext(EGLDisplay, EGLConfig, EGLContext, const EGLint*) { return NewEGLObject(); }
EGLSurface eglCreatePbufferSurface(EGLDisplay, EGLConfig, const EGLint*) { return NewEGLObject(); }
EGLSurface eglCreateWindowSurface(EGLDisplay, EGLConfig, EGLNativeWindowType, const EGLint*) {
    return NewEGLObject();
}
EGLBoolean eglDestroySurface(EGLDisplay, EGLSurface surface) {
    return static_cast<EGLBoolean>(state.eglObjects.erase(surface));
}
EGLBoolean eglDestroyContext(EGLDisplay, EGLContext context) {
    return static_cast<EGLBoolean>(state.eglObjects.erase(context));
}
EGLBoolean eglMakeCurrent(EGLDisplay, EGLSurface, EGLSurface, EGLContext context) {
    if (context != nullptr && Fails()) {
        return EGL_FALSE;
    }
    current = context != nullptr;  // with or without a surface
    if (context == nullptr) {
        state.textures.clear();
        state.buffers.clear();
        state.framebuffers.clear();
        state.programs.clear();
        state.shaders.clear();
    }
    return EGL_TRUE;
}
EGLBoolean eglQuerySurface(EGLDisplay, EGLSurface, EGLint attribute, EGLint* value) {
    *value = attribute == EGL_WIDTH ? WINDOW_WIDTH : WINDOW_HEIGHT;
    return EGL_TRUE;
}
EGLBoolean eglSwapBuffers(EGLDisplay, EGLSurface) { return EGL_TRUE; }
EGLBoolean eglTerminate(EGLDisplay) { return EGL_TRUE; }
EGLBoolean eglReleaseThread() { return EGL_TRUE; }

}  // extern "C"
