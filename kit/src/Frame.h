#ifndef KIVGLES_KIT_FRAME_H
#define KIVGLES_KIT_FRAME_H

#include <cstdint>
#include <vector>

#include "CanvasState.h"
#include "Device.h"

namespace kivgles::kit {

// What a window shows: a canvas' picture, or a layer.
//
// Of a canvas a copy is kept, in the core's order of bytes, so that it can be shown again when the canvas has
// been painted since or is gone. It goes to the window in one of two ways:
// - what has changed into a spare layer of the window's size, and that onto the window: a change costs what
//   it takes;
// - all of it straight onto the window, scaled if its size is another one: cheaper than the detour where much
//   changes every time.
//
// Owner:  Device.
// Thread: any, with a DeviceLock.
class Frame {
 public:
    explicit Frame(Device& owner) : device(owner) {}

    // Puts it on the window and asks for its refresh. After an error everything is handed over.
    void Show(CanvasState& canvas) KIVGLES_REQUIRES(DEVICE_LOCK);
    void Show(const LayerState& layer) KIVGLES_REQUIRES(DEVICE_LOCK);
    // What was shown last, a layer as it is now; false if there is nothing.
    bool ShowAgain() KIVGLES_REQUIRES(DEVICE_LOCK);
    bool Shows(const LayerState& layer) const { return shown == &layer; }
    void ForgetLayer() { shown = nullptr; }  // it goes, or what it held

 private:
    std::vector<PixelRect> Take(CanvasState& canvas) KIVGLES_REQUIRES(DEVICE_LOCK);
    void ShowCopy(std::vector<PixelRect> changed) KIVGLES_REQUIRES(DEVICE_LOCK);
    void HandOver(unsigned int target, const PixelRect& part, const PixelRect& to)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    Device& device;
    bool showsCopy = false;
    const LayerState* shown = nullptr;  // a layer instead

    CanvasState::Receiver receiver;  // has what is in the copy
    Size size;
    std::vector<std::uint8_t> copy;
    int largeInARow = 1;             // changes of more than a quarter; the first picture counts as the second
    std::vector<std::uint8_t> room;  // for rows without anything between them
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_FRAME_H
