#ifndef KIVGLES_KIT_IMAGEPAINTER_H
#define KIVGLES_KIT_IMAGEPAINTER_H

#include "LayerState.h"
#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Image.h"

namespace kivgles::kit {

// Draws an image into a layer, in place of what is there or blended over it; `to` is in pixels of GL. Takes
// the lock. Throws Error for `operation`.
void DrawImage(LayerState& layer, const Image& image, const Rect& to, bool blended, const char* operation);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_IMAGEPAINTER_H
