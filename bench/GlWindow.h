#ifndef KIVGLES_BENCH_GLWINDOW_H
#define KIVGLES_BENCH_GLWINDOW_H

#include <GLES2/gl2.h>

// What the contestants that call GL themselves share. Main thread.

namespace bench {

// Makes an OpenGL ES 2.0 context current on the X11 window, in the configuration that the library chooses.
void OpenGlWindow(unsigned long window);

// Shows what was drawn on the window. With software GL the work is done when it returns.
void SwapGlWindow();

GLuint MakeProgram(const char* vertexSource, const char* fragmentSource);

// Sets filters and edges of the bound texture.
void SetTextureParameters();

// A program that draws a rectangle of a texture, and its vertex buffer.
struct QuadProgram {
    GLuint program;
    GLuint vbo;
    GLint tex;
    GLuint coord;
};

extern const char* const TEXTURED_VERTEX_SHADER;  // attribute "coord", varying "texpos"
QuadProgram MakeQuadProgram(const char* fragmentSource);
extern const char* const TEXTURED_FRAGMENT_SHADER;  // uniform "tex"

// The corners of a quad in the order of its four vertices: position in NDC, texture coordinates.
struct QuadVertex {
    GLfloat x, y, s, t;
};

// Draws the texture on unit 0; vertices are drawn as the triangles 0, 1, 2 and 3, 2, 1.
void BindQuad(const QuadProgram& quad, GLuint texture);
void DrawQuad(const QuadProgram& quad, const QuadVertex (&vertices)[4]);
void UnbindQuad(const QuadProgram& quad);

}  // namespace bench

#endif  // KIVGLES_BENCH_GLWINDOW_H
