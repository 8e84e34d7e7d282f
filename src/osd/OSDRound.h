#ifndef KIVGLES_OSD_OSDROUND_H
#define KIVGLES_OSD_OSDROUND_H

#include <memory>

#include "gl/ShaderProgram.h"
#include "kivgles/KivGLRecords.h"
#include "osd/FlatShape.h"

namespace kivgles {

// Fills ellipses with one flat colour, as a fan of 36 triangles.
//
// Owner:  GLDrawThread; made by Init or by the first round drawn, gone with the context.
// Thread: draw thread, GL context current. Between draws only the GL names made by Init are kept.
// Units:  centre and radii in normalised device coordinates, y upwards.
// Blending stays off: the colour, alpha included, replaces the target's pixels.
class OSDRound {
 public:
    OSDRound() = default;
    ~OSDRound();

    OSDRound(const OSDRound&) = delete;
    OSDRound& operator=(const OSDRound&) = delete;

    // Run once, before the first draw. Returns 0 or STATUS_NO_PROGRAM.
    int Init();

    // What lies outside the target is cut off.
    void DrawRound(const TagFrameBuffObject& fbo, const TagGLRoundInfo& round,
                   const TagColorRGBA& color) const;

 private:
    std::unique_ptr<ShaderProgram> shaderProgram;
    FlatShape shape;
};

}  // namespace kivgles

#endif  // KIVGLES_OSD_OSDROUND_H
