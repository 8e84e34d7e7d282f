#include "osd/OSDFrame.h"

#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDFrame";

}  // namespace

OSDFrame::~OSDFrame() { DeleteRendererProgram(shaderProgram, quad.program, quad.vbo); }

int OSDFrame::Init() { return InitTexturedQuad(TAG, shaderProgram, quad); }

void OSDFrame::DisplayFBO(GLuint texture, const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect,
                          int width, int height) const {
    // Target.
    ClearWindow(width, height);

    // Blending: over alpha 0 the saturated factor is the source's own alpha, which premultiplies the colour.
    glUseProgram(quad.program);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA_SATURATE, GL_ZERO);

    // Draw.
    BindQuadTexture(quad, texture);
    DrawQuadVertices(quad, CopyVertices(srcRect, dstRect));

    // Nothing but the program stays bound for the next renderer.
    glDisable(GL_BLEND);
    UnbindQuadVertices(quad);
    glBindTexture(GL_TEXTURE_2D, 0);
}

}  // namespace kivgles
