#ifndef KIVGLES_KIT_LAYERSTATE_H
#define KIVGLES_KIT_LAYERSTATE_H

#include <functional>
#include <memory>

#include "Device.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

// To pixels of GL; numbers far outside of any layer are cut down, so that sums hold.
Rect Scaled(const Rect& rect, int factor);

// A layer of the core, with the size that is needed to make it anew.
//
// Owner:  a Layer. It stays where it is when the Layer is moved: the device knows it by its address.
// Thread: any, with the device's lock held; construction and destruction take it.
// Units:  pixels of GL, that is of what is shown times the factor, unless said otherwise.
class LayerState {
 public:
    // The size in pixels of what is shown.
    LayerState(const std::shared_ptr<Device>& layerDevice, const Size& size, int layerFactor,
               const char* operation);
    ~LayerState();
    LayerState(const LayerState&) = delete;
    LayerState& operator=(const LayerState&) = delete;

    // From pixels of what is shown.
    Rect Scaled(const Rect& rect) const { return kit::Scaled(rect, factor); }
    Point Scaled(const Point& point) const { return {point.x * factor, point.y * factor}; }
    Size Bounds() const { return {width, height}; }
    // The part of a rectangle that is in the layer.
    Rect Visible(const Rect& rect) const;

    // Draws where the core does not reach, beyond the left and upper edge: into another layer with `region`
    // in its top-left corner, from where the visible part comes here. `draw` gets that layer's handle and
    // size. With `blended` it draws over what is here.
    void DrawBeyondEdges(const Rect& region, bool blended,
                         const std::function<void(unsigned int, const Size&)>& draw, const char* operation)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    void Fill(const Rect& rect, const Color& color, const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK);

    const std::shared_ptr<Device> device;
    const int width;
    const int height;
    const int factor;
    unsigned int handle KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;  // changes with the surface
};

// What a layer stands for. Throws INVALID_ARGUMENT for `operation` if that was moved away.
LayerState& StateOf(const std::unique_ptr<LayerState>& state, const char* operation);

// As the core takes what has been cut off at the edges, where no number is negative.
TagKivRectInfo Unsigned(const Rect& rect);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_LAYERSTATE_H
