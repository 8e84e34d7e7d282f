#ifndef KIVGLES_OSD_FLATSHAPE_H
#define KIVGLES_OSD_FLATSHAPE_H

#include <memory>

#include <GLES2/gl2.h>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"

// What OSDRect and OSDRound share: a program that fills vertices with one colour. Draw thread, GL context
// current.

namespace kivgles {

// The GL side of a flat shape, a part of the renderer that owns the names.
struct FlatShape {
    GLuint program = 0;
    GLuint vbo = 0;  // re-specified at every draw
    GLint positionLocation = 0;
    GLint colorLocation = 0;
};

// A vertex in NDC.
struct FlatVertex {
    GLfloat x, y;
    GLfloat z = 0.0F, w = 1.0F;
};

// Returns 0, or STATUS_NO_PROGRAM (logged under the renderer's tag) with `program` 0.
int InitFlatShape(const char* tag, std::unique_ptr<ShaderProgram>& shaderProgram, FlatShape& shape);

// Draws `count` vertices in `mode`. Blending stays off: the colour, alpha included, replaces the target's
// pixels.
void DrawFlatShape(const FlatShape& shape, const TagFrameBuffObject& fbo, const TagColorRGBA& color,
                   GLenum mode, const FlatVertex* vertices, GLsizei count);

}  // namespace kivgles

#endif  // KIVGLES_OSD_FLATSHAPE_H
