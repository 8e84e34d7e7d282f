#ifndef KIVGLES_GL_RENDERERPROGRAM_H
#define KIVGLES_GL_RENDERERPROGRAM_H

#include <memory>

#include "gl/ShaderProgram.h"

// What every renderer does with its program and vertex buffer. Draw thread.

namespace kivgles {

// Everything that samples a texture has this one: "coord" gives the position in x and y and the texture
// coordinates in z and w.
constexpr char TEXTURED_VERTEX_SHADER[] =
    "attribute vec4 coord;\n"
    "varying vec2 texpos;\n"
    "void main() {\n"
    "    gl_Position = vec4(coord.xy, 0, 1);\n"
    "    texpos = coord.zw;\n"
    "}\n";

// Makes a new ShaderProgram and with it the renderer's program. Returns 0, or STATUS_NO_PROGRAM with
// `program` 0, logged under the renderer's tag.
int MakeRendererProgram(const char* tag, const char* vertexSource, const char* fragmentSource,
                        std::unique_ptr<ShaderProgram>& shaderProgram, GLuint& program);

// Serves a renderer's destructor. Without a context, which took the GL objects along, GL ignores the calls.
void DeleteRendererProgram(const std::unique_ptr<ShaderProgram>& shaderProgram, GLuint program, GLuint vbo);

}  // namespace kivgles

#endif  // KIVGLES_GL_RENDERERPROGRAM_H
