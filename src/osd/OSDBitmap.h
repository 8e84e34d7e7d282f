#ifndef KIVGLES_OSD_OSDBITMAP_H
#define KIVGLES_OSD_OSDBITMAP_H

#include <memory>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "osd/TexturedQuad.h"

namespace kivgles {

// Draws a client's pixels, scaled to fill a rectangle, on the window or into a layer. Each draw uploads them
// into a texture of its own; nothing is kept from one bitmap to the next.
//
// Owner:  GLDrawThread; made by Init or by the first bitmap, gone with the context.
// Thread: draw thread, GL context current.
// Units:  destinations in NDC, y upwards; sizes in pixels.
//
// The pixels are read while a draw runs. Nothing is checked: null pixels make a texture of undefined content,
// a size that GL refuses draws black.
class OSDBitmap {
 public:
    OSDBitmap() = default;
    ~OSDBitmap();

    OSDBitmap(const OSDBitmap&) = delete;
    OSDBitmap& operator=(const OSDBitmap&) = delete;

    // Run once, before the first draw. Returns 0 or STATUS_NO_PROGRAM.
    int Init();

    // Clears the window (of `width` by `height`) and draws on it, colours multiplied by their alpha.
    void DisplayBitmap(const TagGLBitmapInfo& info, int width, int height);

    // Replaces the target's pixels, alpha included, or blends over them if `info.blend` says so.
    void DrawBitmap(const TagFrameBuffObject& fbo, const TagGLBitmapInfo& info);

    // The steps of a draw: the texture, and the quad with what is bound.
    void CreateTexture(const TagGLBitmapInfo& info);
    void DeleteTexture();
    void RenderBitmap(const TagGLRectInfo& dstRect) const;

 private:
    std::unique_ptr<ShaderProgram> shaderProgram;
    GLuint texture = 0;  // of the bitmap being drawn; 0 between draws
    TexturedQuad quad;
};

}  // namespace kivgles

#endif  // KIVGLES_OSD_OSDBITMAP_H
