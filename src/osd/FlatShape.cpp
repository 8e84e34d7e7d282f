#include "osd/FlatShape.h"

#include "StatusCode.h"
#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char VERTEX_SHADER[] =
    "attribute vec4 vPosition;\n"
    "void main() {\n"
    "    gl_Position = vPosition;\n"
    "}\n";

constexpr char FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "uniform vec4 color;\n"
    "void main() {\n"
    "    gl_FragColor = color;\n"
    "}\n";

}  // namespace

int InitFlatShape(const char* tag, std::unique_ptr<ShaderProgram>& shaderProgram, FlatShape& shape) {
    const int status = MakeRendererProgram(tag, VERTEX_SHADER, FRAGMENT_SHADER, shaderProgram, shape.program);
    if (status != STATUS_OK) {
        return status;
    }
    shape.positionLocation = shaderProgram->GetAttribLocation(shape.program, "vPosition");
    shape.colorLocation = shaderProgram->GetUniformLocation(shape.program, "color");
    glGenBuffers(1, &shape.vbo);
    return STATUS_OK;
}

void DrawFlatShape(const FlatShape& shape, const TagFrameBuffObject& fbo, const TagColorRGBA& color,
                   GLenum mode, const FlatVertex* vertices, GLsizei count) {
    // A location of -1, logged by Init, is GL's to refuse.
    const auto position = static_cast<GLuint>(shape.positionLocation);

    // Target.
    glBindFramebuffer(GL_FRAMEBUFFER, fbo.fboId);
    glViewport(0, 0, fbo.width, fbo.height);

    // Program.
    glUseProgram(shape.program);
    const GLfloat components[] = {color.r, color.g, color.b, color.a};
    glUniform4fv(shape.colorLocation, 1, components);

    // Vertices.
    glEnableVertexAttribArray(position);
    glBindBuffer(GL_ARRAY_BUFFER, shape.vbo);
    glVertexAttribPointer(position, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBufferData(GL_ARRAY_BUFFER, count * static_cast<GLsizeiptr>(sizeof(FlatVertex)), vertices,
                 GL_DYNAMIC_DRAW);

    // Draw.
    glDrawArrays(mode, 0, count);

    // Nothing but the program stays bound for the next renderer.
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableVertexAttribArray(position);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

}  // namespace kivgles
