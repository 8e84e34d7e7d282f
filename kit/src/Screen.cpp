#include "kivgles/kit/Screen.h"

#include <utility>

#include "Device.h"
#include "LayerState.h"
#include "kivgles/KivComponents.h"
#include "kivgles/KivGLRecords.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Layer.h"

namespace kivgles::kit {

namespace {

void RefuseNull(const ANativeWindow* window, const char* operation) {
    if (window == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT);
    }
}

// A new surface, and outside of the lock what the client paints on it.
void Restart(Device& device, ANativeWindow* window, const char* operation) {
    std::function<void()> repaint;
    {
        const DeviceLock lock(device);
        if (device.wasConnected) {
            repaint = device.repaint;
        }
        device.Restart(window, operation);
    }
    if (repaint) {
        repaint();
    }
}

}  // namespace

Screen::Screen(int maxLayerSide) : device(std::make_shared<Device>(maxLayerSide)) {}

Screen::~Screen() {
    OnReconnect(nullptr);  // what it holds may be a layer, and so the device
    const DeviceLock lock(*device);
    device->Close();
}

void Screen::Connect(ANativeWindow* window) {
    RefuseNull(window, "Screen::Connect");
    {
        const DeviceLock lock(*device);
        if (device->SwitchWindow(window, "Screen::Connect")) {
            return;
        }
    }
    Restart(*device, window, "Screen::Connect");
}

void Screen::Reconnect(ANativeWindow* window) {
    RefuseNull(window, "Screen::Reconnect");
    Restart(*device, window, "Screen::Reconnect");
}

void Screen::OnReconnect(std::function<void()> paint) {
    const DeviceLock lock(*device);
    device->repaint.swap(paint);  // the former one goes without the lock, which a layer that it holds takes
}

void Screen::LoadFont(const std::string& path) {
    const DeviceLock lock(*device);
    device->LoadFont(path, "Screen::LoadFont");
}

void Screen::Present(const Layer& layer) {
    constexpr char OPERATION[] = "Screen::Present";
    if (layer.state == nullptr || layer.state->device != device) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT);
    }
    const DeviceLock lock(*device);
    KivGLDrawSurface& surface = device->Surface(OPERATION);
    const auto width = static_cast<std::uint32_t>(layer.state->width);
    const auto height = static_cast<std::uint32_t>(layer.state->height);

    // Until the frame before has been shown: this one is the only one in flight.
    device->Wait(OPERATION);
    Check(surface.KivBlit({layer.state->handle,
                           FBO_HANDLE_BASE,
                           {0, 0, width, height},
                           {0, 0, surface.KivGetWindowWidth(), surface.KivGetWindowHeight()}}),
          OPERATION);
    Check(surface.KivRefreshOnSrceen(), OPERATION);
}

void Screen::Finish() {
    const DeviceLock lock(*device);
    device->Wait("Screen::Finish");
}

kit::Size Screen::Size() const {
    const DeviceLock lock(*device);
    return device->WindowSize();
}

}  // namespace kivgles::kit
