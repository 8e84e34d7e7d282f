#include "osd/OSDBlit.h"

#include "gl/RendererProgram.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDBlit";

}  // namespace

OSDBlit::~OSDBlit() { DeleteRendererProgram(shaderProgram, quad.program, quad.vbo); }

int OSDBlit::Init() { return InitTexturedQuad(TAG, shaderProgram, quad); }

void OSDBlit::Blit(const TagGLBlitInfo& info) const {
    // Target.
    glBindFramebuffer(GL_FRAMEBUFFER, info.dstFbo.fboId);
    glViewport(0, 0, info.dstFbo.width, info.dstFbo.height);

    // Source.
    glUseProgram(quad.program);
    BindQuadTexture(quad, info.srcFbo.textureId);

    // Draw.
    BlitByDrawing(info.srcRect, info.dstRect);

    // Nothing but the program stays bound for the next renderer.
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

void OSDBlit::BlitByDrawing(const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect) const {
    DrawQuadVertices(quad, CopyVertices(srcRect, dstRect));
    UnbindQuadVertices(quad);
}

}  // namespace kivgles
