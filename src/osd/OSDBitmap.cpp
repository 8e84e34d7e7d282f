#include "osd/OSDBitmap.h"

#include "gl/RendererProgram.h"
#include "gl/TextureSide.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "OSDBitmap";

constexpr GLint PIXEL_ALIGNMENT = 4;

// The whole bitmap, its first row (t 0) on the destination's top edge.
QuadVertices BitmapVertices(const TagGLRectInfo& dstRect) {
    const float right = dstRect.x + dstRect.width;
    const float bottom = dstRect.y - dstRect.height;
    return {{{dstRect.x, dstRect.y, 0.0F, 0.0F},
             {right, dstRect.y, 1.0F, 0.0F},
             {dstRect.x, bottom, 0.0F, 1.0F},
             {right, bottom, 1.0F, 1.0F}}};
}

}  // namespace

OSDBitmap::~OSDBitmap() { DeleteRendererProgram(shaderProgram, quad.program, quad.vbo); }

int OSDBitmap::Init() { return InitTexturedQuad(TAG, shaderProgram, quad); }

void OSDBitmap::DisplayBitmap(const TagGLBitmapInfo& info, int width, int height) {
    CreateTexture(info);

    // Target.
    ClearWindow(width, height);

    // Blending: over alpha 0 the saturated factor is the source's own alpha, which premultiplies the colour.
    glUseProgram(quad.program);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA_SATURATE, GL_ZERO);

    // Draw.
    BindQuadTexture(quad, texture);
    RenderBitmap(info.dstRect);

    // Nothing but the program stays bound for the next renderer.
    glDisable(GL_BLEND);
    glBindTexture(GL_TEXTURE_2D, 0);
    DeleteTexture();
}

void OSDBitmap::DrawBitmap(const TagFrameBuffObject& fbo, const TagGLBitmapInfo& info) {
    const bool blend = info.blend != 0;
    CreateTexture(info);

    // Target. It stays bound: every renderer binds its own.
    glBindFramebuffer(GL_FRAMEBUFFER, fbo.fboId);
    glViewport(0, 0, fbo.width, fbo.height);

    if (blend) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }

    // Draw.
    glUseProgram(quad.program);
    BindQuadTexture(quad, texture);
    RenderBitmap(info.dstRect);

    if (blend) {
        glDisable(GL_BLEND);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    DeleteTexture();
}

void OSDBitmap::CreateTexture(const TagGLBitmapInfo& info) {
    glActiveTexture(GL_TEXTURE0);
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(
        GL_TEXTURE_2D, 0, static_cast<GLint>(info.glFormat), TextureSide(static_cast<GLsizei>(info.width)),
        TextureSide(static_cast<GLsizei>(info.height)), 0, info.glFormat, GL_UNSIGNED_BYTE, info.data);
    // Set after the upload, for the next one: rows of whole pixels are read alike at every alignment.
    glPixelStorei(GL_UNPACK_ALIGNMENT, PIXEL_ALIGNMENT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void OSDBitmap::DeleteTexture() {
    if (texture != 0) {
        glDeleteTextures(1, &texture);
        texture = 0;
    }
}

void OSDBitmap::RenderBitmap(const TagGLRectInfo& dstRect) const {
    DrawQuadVertices(quad, BitmapVertices(dstRect));
    UnbindQuadVertices(quad);
}

}  // namespace kivgles
