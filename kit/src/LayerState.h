#ifndef KIVGLES_KIT_LAYERSTATE_H
#define KIVGLES_KIT_LAYERSTATE_H

#include <memory>
#include <string>

#include "Bitmap.h"
#include "Device.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

// From one whole number to another, as far away as one likes.
struct Span {
    double begin = 0;
    double end = 0;

    double Length() const { return end - begin; }
};

// A rectangle with each edge at the nearest pixel; empty if it has a number that is none, or no extent.
struct Edges {
    Span across;
    Span down;

    Edges(const Span& leftToRight, const Span& topToBottom) : across(leftToRight), down(topToBottom) {}
    explicit Edges(const Rect& rect);

    PixelRect Within(const Size& size) const;  // the part from (0, 0) to there
};

// Replaces what is there, or blends with it, as the client called it.
struct Placing {
    const char* operation;
    bool blends;
};

// A layer of the core, with the size that is needed to make it anew.
//
// Owner:  a Layer. It stays where it is when the Layer is moved: the device knows it by its address.
// Thread: any, with the device's lock held; construction and destruction take it.
class LayerState {
 public:
    LayerState(const std::shared_ptr<Device>& layerDevice, const Size& pixels)
        : device(layerDevice), size(pixels) {
        const DeviceLock lock(*device, "Layer");
        device->Add(*this);
    }
    ~LayerState() {
        const DeviceLock lock(*device, "Layer");
        device->Remove(*this);
    }
    LayerState(const LayerState&) = delete;
    LayerState& operator=(const LayerState&) = delete;

    // Puts a part of a picture there: unscaled, `to` is as large as the part and inside of the layer. Takes
    // the device's lock.
    void Place(const PixelSource& source, const PixelRect& part, const PixelRect& to,
               const Placing& placing) const;
    // Copies a part of another layer, scaled to fill `to`; what lies outside of either layer is left out.
    void Copy(const LayerState& source, const Edges& from, const Edges& to) const
        KIVGLES_REQUIRES(DEVICE_LOCK);

    const std::shared_ptr<Device> device;
    const Size size;
    unsigned int handle KIVGLES_GUARDED_BY(DEVICE_LOCK) = 0;  // changes with the surface
};

// What a layer stands for. Throws for `operation` if it, "the layer" or "the source", was moved away.
inline LayerState& StateOf(const std::unique_ptr<LayerState>& state, const char* operation,
                           const char* name = "the layer") {
    if (state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, std::string(name) + " was moved away");
    }
    return *state;
}

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_LAYERSTATE_H
