#ifndef KIVGLES_OSD_TEXTUREDQUAD_H
#define KIVGLES_OSD_TEXTUREDQUAD_H

#include <array>
#include <memory>

#include <GLES2/gl2.h>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"

// What OSDBitmap, OSDBlit and OSDFrame share: a program that draws a rectangle of a texture. Draw thread, GL
// context current.

namespace kivgles {

// The GL side of a textured quad, a part of the renderer that owns the names.
struct TexturedQuad {
    GLuint program = 0;
    GLuint vbo = 0;  // re-specified at every draw
    GLint texLocation = 0;
    GLint coordLocation = 0;
};

// Position in NDC, and texture coordinates.
struct TexturedVertex {
    GLfloat x, y, s, t;
};

// Drawn as the triangles 0, 1, 2 and 3, 2, 1.
using QuadVertices = std::array<TexturedVertex, 4>;

// Returns 0, or STATUS_NO_PROGRAM (logged under the renderer's tag) with `program` 0.
int InitTexturedQuad(const char* tag, std::unique_ptr<ShaderProgram>& shaderProgram, TexturedQuad& quad);

// The quad of a copy between textures: each corner of the destination (NDC) shows the same corner of the
// source (texture coordinates), so that the copy keeps its orientation.
QuadVertices CopyVertices(const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect);

// Makes the window the target and all of it transparent black.
void ClearWindow(int width, int height);

// Samples `texture` on unit 0, with the quad's program in use.
void BindQuadTexture(const TexturedQuad& quad, GLuint texture);

// Draws with what is bound, and leaves buffer and attribute array to UnbindQuadVertices.
void DrawQuadVertices(const TexturedQuad& quad, const QuadVertices& vertices);
void UnbindQuadVertices(const TexturedQuad& quad);

}  // namespace kivgles

#endif  // KIVGLES_OSD_TEXTUREDQUAD_H
