#include "kivgles/kit/Screen.h"

#include "Device.h"
#include "kivgles/kit/Layer.h"

namespace kivgles::kit {

namespace {

void Connect(Device& device, ANativeWindow* window, bool isNew, const char* operation) {
    if (window == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, "the window is null");
    }
    std::function<void()> repaint;
    {
        const DeviceLock lock(device, operation);
        repaint = device.Connect(window, isNew);
    }
    if (repaint) {
        repaint();
    }
}

constexpr char PRESENT[] = "Screen::Present";

// A canvas or a layer, on a device that is kept: the screen may go while this waits.
template <typename Picture>
void Present(const std::shared_ptr<Device>& kept, Picture& picture) {
    kept->Wait(PRESENT);
    const DeviceLock lock(*kept, PRESENT);
    kept->Show(picture);
}

}  // namespace

Screen::Screen(const TagKivDisplayInfo& display, int maxLayerSide)
    : device(std::make_shared<Device>(display, maxLayerSide)) {}

Screen::~Screen() {
    OnReconnect(nullptr);  // what it holds may be a layer, and so the device
    const DeviceLock lock(*device, "Screen");
    device->Close();
}

void Screen::Connect(ANativeWindow* window) { kit::Connect(*device, window, false, "Screen::Connect"); }

void Screen::Reconnect(ANativeWindow* window) { kit::Connect(*device, window, true, "Screen::Reconnect"); }

void Screen::OnReconnect(std::function<void()> paint) {
    const DeviceLock lock(*device, "Screen::OnReconnect");
    device->repaint.swap(paint);  // the former one goes without the lock, which a layer that it holds takes
}

void Screen::Present(const Canvas& canvas) {
    kit::Present(std::shared_ptr<Device>(device), CanvasState::Of(canvas, PRESENT));
}

void Screen::Present(const Layer& layer) {
    const LayerState& picture = LayerState::Of(layer.state, PRESENT);
    if (picture.device != device) {
        throw Error(PRESENT, Error::INVALID_ARGUMENT, "the layer is another screen's");
    }
    kit::Present(std::shared_ptr<Device>(device), picture);
}

bool Screen::Refresh() {
    const std::shared_ptr<Device> kept = device;
    kept->Wait("Screen::Refresh");
    const DeviceLock lock(*kept, "Screen::Refresh");
    return kept->ShowAgain();
}

void Screen::Finish() { std::shared_ptr<Device>(device)->Wait("Screen::Finish"); }

kit::Size Screen::Size() const {
    const DeviceLock lock(*device, "Screen::Size");
    return device->windowSize;
}

}  // namespace kivgles::kit
