#ifndef KIVGLES_OSD_OSDFRAME_H
#define KIVGLES_OSD_OSDFRAME_H

#include <memory>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "osd/TexturedQuad.h"

namespace kivgles {

// Shows a rectangle of a layer on the window: clears all of the window, then draws the layer's pixels with
// their colour multiplied by their alpha. What is seen changes at the next swap only.
//
// Owner:  GLDrawThread; made by Init or by the first display, gone with the context.
// Thread: draw thread, GL context current. Between draws only the GL names made by Init are kept.
// Units:  source in texture coordinates, destination in NDC, y upwards in both; window size in pixels.
class OSDFrame {
 public:
    OSDFrame() = default;
    ~OSDFrame();

    OSDFrame(const OSDFrame&) = delete;
    OSDFrame& operator=(const OSDFrame&) = delete;

    // Run once, before the first draw. Returns 0 or STATUS_NO_PROGRAM.
    int Init();

    // `texture` is the layer's; `width` and `height` are the window's.
    void DisplayFBO(GLuint texture, const TagGLRectInfo& srcRect, const TagGLRectInfo& dstRect, int width,
                    int height) const;

 private:
    std::unique_ptr<ShaderProgram> shaderProgram;
    TexturedQuad quad;
};

}  // namespace kivgles

#endif  // KIVGLES_OSD_OSDFRAME_H
