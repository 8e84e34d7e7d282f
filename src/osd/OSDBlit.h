#ifndef KIVGLES_OSD_OSDBLIT_H
#define KIVGLES_OSD_OSDBLIT_H

#include <memory>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "osd/TexturedQuad.h"

namespace kivgles {

// Copies a rectangle of one layer into another layer or the window slot, scaled to fill its destination.
//
// Owner:  GLDrawThread; made by Init or by the first blit, gone with the context.
// Thread: draw thread, GL context current. Between draws only the GL names made by Init are kept.
// Units:  source in texture coordinates, destination in NDC, y upwards in both.
// Blending stays off: the copied pixels, alpha included, replace those of the destination.
class OSDBlit {
 public:
    OSDBlit() = default;
    ~OSDBlit();

    OSDBlit(const OSDBlit&) = delete;
    OSDBlit& operator=(const OSDBlit&) = delete;

    // Run once, before the first draw. Returns 0 or STATUS_NO_PROGRAM.
    int Init();

    // What a blit of a layer into itself shows is undefined.
    void Blit(const TagGLBlitInfo& info) const;

    // Draws the quad with program, texture and framebuffer as they are bound.
    void BlitByDrawing(const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect) const;

 private:
    std::unique_ptr<ShaderProgram> shaderProgram;
    TexturedQuad quad;
};

}  // namespace kivgles

#endif  // KIVGLES_OSD_OSDBLIT_H
