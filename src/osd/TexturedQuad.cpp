#include "osd/TexturedQuad.h"

#include "StatusCode.h"
#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char FRAGMENT_SHADER[] =
    "precision mediump float;\n"
    "varying vec2 texpos;\n"
    "uniform sampler2D tex;\n"
    "void main() {\n"
    "    gl_FragColor = texture2D(tex, texpos);\n"
    "}\n";

constexpr GLsizei INDEX_NUM = 6;
constexpr GLushort INDICES[INDEX_NUM] = {0, 1, 2, 3, 2, 1};

}  // namespace

int InitTexturedQuad(const char* tag, std::unique_ptr<ShaderProgram>& shaderProgram, TexturedQuad& quad) {
    const int status =
        MakeRendererProgram(tag, TEXTURED_VERTEX_SHADER, FRAGMENT_SHADER, shaderProgram, quad.program);
    if (status != STATUS_OK) {
        return status;
    }
    quad.coordLocation = shaderProgram->GetAttribLocation(quad.program, "coord");
    quad.texLocation = shaderProgram->GetUniformLocation(quad.program, "tex");
    glGenBuffers(1, &quad.vbo);
    return STATUS_OK;
}

QuadVertices CopyVertices(const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect) {
    const float srcRight = srcRect.x + srcRect.width;
    const float srcBottom = srcRect.y - srcRect.height;
    const float dstRight = dstRect.x + dstRect.width;
    const float dstBottom = dstRect.y - dstRect.height;
    return {{{dstRect.x, dstBottom, srcRect.x, srcBottom},
             {dstRight, dstBottom, srcRight, srcBottom},
             {dstRect.x, dstRect.y, srcRect.x, srcRect.y},
             {dstRight, dstRect.y, srcRight, srcRect.y}}};
}

void ClearWindow(int width, int height) {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glViewport(0, 0, width, height);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void BindQuadTexture(const TexturedQuad& quad, GLuint texture) {
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glUniform1i(quad.texLocation, 0);
}

void DrawQuadVertices(const TexturedQuad& quad, const QuadVertices& vertices) {
    const auto coord = static_cast<GLuint>(quad.coordLocation);  // -1, logged by Init, is GL's to refuse
    glEnableVertexAttribArray(coord);
    glBindBuffer(GL_ARRAY_BUFFER, quad.vbo);
    glVertexAttribPointer(coord, 4, GL_FLOAT, GL_FALSE, 0, nullptr);
    glBufferData(GL_ARRAY_BUFFER, sizeof(vertices), vertices.data(), GL_DYNAMIC_DRAW);
    glDrawElements(GL_TRIANGLES, INDEX_NUM, GL_UNSIGNED_SHORT, INDICES);
}

void UnbindQuadVertices(const TexturedQuad& quad) {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glDisableVertexAttribArray(static_cast<GLuint>(quad.coordLocation));
}

}  // namespace kivgles
