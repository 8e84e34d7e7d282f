#ifndef KIVGLES_OSD_OSDRECT_H
#define KIVGLES_OSD_OSDRECT_H

#include <memory>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "osd/FlatShape.h"

namespace kivgles {

// Fills rectangles with one flat colour.
//
// Owner:  GLDrawThread; made by Init or by the first rectangle drawn, gone with the context.
// Thread: draw thread, GL context current. Between draws only the GL names made by Init are kept.
// Units:  normalised device coordinates, y upwards; a rectangle extends down from its y.
// Blending stays off: the colour, alpha included, replaces the target's pixels.
class OSDRect {
 public:
    OSDRect() = default;
    ~OSDRect();

    OSDRect(const OSDRect&) = delete;
    OSDRect& operator=(const OSDRect&) = delete;

    // Run once, before the first draw. Returns 0 or STATUS_NO_PROGRAM.
    int Init();

    // What lies outside the target is cut off.
    void DrawRect(const TagFrameBuffObject& fbo, const TagGLRectInfo& rect, const TagColorRGBA& color) const;

 private:
    std::unique_ptr<ShaderProgram> shaderProgram;
    FlatShape shape;
};

}  // namespace kivgles

#endif  // KIVGLES_OSD_OSDRECT_H
