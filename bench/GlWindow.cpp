#include "GlWindow.h"

#include <EGL/egl.h>

#include "Contestant.h"
#include "gl/ConfigAttributes.h"

namespace bench {

namespace {

EGLDisplay display = EGL_NO_DISPLAY;
EGLSurface surface = EGL_NO_SURFACE;

GLuint MakeShader(GLenum type, const char* source) {
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

}  // namespace

const char* const TEXTURED_VERTEX_SHADER =
    "attribute vec4 coord;\n"
    "varying vec2 texpos;\n"
    "void main() {\n"
    "    gl_Position = vec4(coord.xy, 0, 1);\n"
    "    texpos = coord.zw;\n"
    "}\n";

const char* const TEXTURED_FRAGMENT_SHADER =
    "precision mediump float;\n"
    "varying vec2 texpos;\n"
    "uniform sampler2D tex;\n"
    "void main() {\n"
    "    gl_FragColor = texture2D(tex, texpos);\n"
    "}\n";

void OpenGlWindow(unsigned long window) {
    constexpr EGLint CONTEXT[] = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;

    display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    eglInitialize(display, nullptr, nullptr);
    eglChooseConfig(display, kivgles::CONFIG_ATTRIBUTES, &config, 1, &count);
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, CONTEXT);
    surface = eglCreateWindowSurface(display, config, static_cast<EGLNativeWindowType>(window), nullptr);
    if (eglMakeCurrent(display, surface, surface, context) != EGL_TRUE) {
        Fail("no GL context on the window");
    }
}

void SwapGlWindow() { eglSwapBuffers(display, surface); }

GLuint MakeProgram(const char* vertexSource, const char* fragmentSource) {
    const GLuint program = glCreateProgram();
    glAttachShader(program, MakeShader(GL_VERTEX_SHADER, vertexSource));
    glAttachShader(program, MakeShader(GL_FRAGMENT_SHADER, fragmentSource));
    glLinkProgram(program);
    GLint linked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked == 0) {
        Fail("a program does not link");
    }
    return program;
}

void SetTextureParameters() {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

QuadProgram MakeQuadProgram(const char* fragmentSource) {
    QuadProgram quad{};
    quad.program = MakeProgram(TEXTURED_VERTEX_SHADER, fragmentSource);
    quad.coord = static_cast<GLuint>(glGetAttribLocation(quad.program, "coord"));
    quad.tex = glGetUniformLocation(quad.program, "tex");
    glGenBuffers(1, &quad.vbo);
    return quad;
}

void BindQuad(const QuadProgram& quad, GLuint texture) {
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(quad.tex, 0);
}

void DrawQuad(const QuadProgram& quad, const QuadVertex (&vertices)[4]) {
    static constexpr GLushort INDICES[] = {0, 1, 2, 3, 2, 1};
    glEnableVertexAttribArray(quad.coord);
    glBindBuffer(GL_ARRAY_BUFFER, quad.vbo);
    glVertexAttribPointer(quad.coord, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBufferData(GL_ARRAY_BUFFER, sizeof(vertices), vertices, GL_DYNAMIC_DRAW);
    glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_SHORT, INDICES);
}

void UnbindQuad(const QuadProgram& quad) {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableVertexAttribArray(quad.coord);
}

}  // namespace bench
