#include "Device.h"

#include <algorithm>
#include <string>
#include <utility>

#include "kivgles/KivGLRecords.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_QUEUED = 256;  // so that nobody waits long for what somebody else has queued
constexpr int MAX_LAYERS = 15;   // this and the core's code for more

void CheckResult(const char* operation, int result) {
    if (result != 0) {
        throw Error(operation, result, "failed with code " + std::to_string(result) + ", the log says why");
    }
}

}  // namespace

TagKivRectInfo Unsigned(const PixelRect& rect) {
    return {static_cast<std::uint32_t>(rect.x), static_cast<std::uint32_t>(rect.y),
            static_cast<std::uint32_t>(rect.width), static_cast<std::uint32_t>(rect.height)};
}

DeviceLock::DeviceLock(Device& device, const char* operation) : lock(device.mutex) {
    device.operation = operation;
}

KivGLDrawSurface& Device::Surface() {
    if (surface == nullptr) {
        throw Error(operation, Error::NOT_CONNECTED, "no window is connected");
    }
    if (++queued > MAX_QUEUED) {
        queued = 0;
        Check(surface->Init(0));
    }
    return *surface;
}

void Device::Check(int result) const { CheckResult(operation, result); }

void Device::Blit(unsigned int from, const PixelRect& part, unsigned int to, const PixelRect& place) {
    Check(Surface().KivBlit({from, to, Unsigned(part), Unsigned(place)}));
}

void Device::Wait(const char* operationName) {
    KivGLDrawSurface* waitedFor = nullptr;
    std::shared_lock<std::shared_mutex> use(inUse, std::defer_lock);
    {
        const DeviceLock lock(*this, operationName);
        queued = 0;
        waitedFor = &Surface();
        use.lock();
    }
    CheckResult(operationName, waitedFor->Init(0));
}

std::function<void()> Device::Connect(ANativeWindow* another, bool isNew) {
    isNew = isNew || surface == nullptr || another == window;
    try {
        if (isNew) {
            Close();
            surface = std::make_unique<KivGLDrawSurface>();
            Check(surface->KivCreateGLContextOn(display));
        }
        Check(surface->KivConnectWindowSurface(another));
        for (LayerState* const layer : isNew ? layers : std::set<LayerState*>()) {
            layer->handle = Create(layer->size);
        }
        window = another;
        windowSize = {static_cast<int>(surface->KivGetWindowWidth()),
                      static_cast<int>(surface->KivGetWindowHeight())};
        (void)ShowAgain();  // if there is something
    } catch (...) {
        Close();  // a former window is off the screen too, though the core counts it as connected
        throw;
    }
    return isNew && std::exchange(wasConnected, true) ? repaint : nullptr;
}

void Device::Close() {
    const std::lock_guard<std::shared_mutex> alone(inUse);
    surface.reset();
    window = nullptr;
    windowSize = {};
    spares = {};  // they went with the surface, and so did what layers held
    shown = nullptr;
}

void Device::Add(LayerState& layer) {
    CheckLayerSize(layer.size, maxSide, operation);
    (void)Surface();  // without a window no spare layer goes
    MakePlace(0);
    layer.handle = Create(layer.size);
    layers.insert(&layer);
}

void Device::Remove(LayerState& layer) {
    layers.erase(&layer);
    shown = shown == &layer ? nullptr : shown;
    if (surface != nullptr) {
        (void)surface->KivDestoryGLFBO(layer.handle);  // nobody is left to be told
    }
}

SpareLayer& Device::Provide(Spare spare, const Size& size) {
    SpareLayer& layer = spares[spare];
    if (layer.handle == 0 || !AreEqual(layer.size, size)) {
        CheckLayerSize(size, maxSide, operation);
        Drop(layer);
        MakePlace(spare + 1);
        layer = {Create(size), size};
    }
    return layer;
}

bool Device::IsFull() const {
    const auto spareNum = std::count_if(spares.begin(), spares.end(),
                                        [](const SpareLayer& spare) { return spare.handle != 0; });
    return static_cast<std::ptrdiff_t>(layers.size()) + spareNum >= MAX_LAYERS;
}

void Device::MakePlace(std::size_t first) {
    for (std::size_t i = SPARE_NUM; i > first && IsFull(); --i) {
        Drop(spares[i - 1]);
    }
    if (IsFull()) {
        throw Error(operation, MAX_LAYERS,
                    "all " + std::to_string(MAX_LAYERS) + " layers of the screen are in use");
    }
}

void Device::Drop(SpareLayer& spare) {
    if (spare.handle != 0) {
        (void)surface->KivDestoryGLFBO(spare.handle);  // it is no longer needed, whatever the answer
        spare = {};
    }
}

unsigned int Device::Create(const Size& size) {
    const TagKivRectInfo rect = Unsigned(Whole(size));
    unsigned int handle = 0;
    Check(Surface().KivCreateGLFBO(handle, rect.width, rect.height, KIV_COLOR_FORMAT_RGBA8888));
    return handle;
}

LayerState::LayerState(const std::shared_ptr<Device>& layerDevice, const Size& pixels)
    : device(layerDevice), size(pixels) {
    const DeviceLock lock(*device, "Layer");
    device->Add(*this);
}

LayerState::~LayerState() {
    const DeviceLock lock(*device, "Layer");
    device->Remove(*this);
}

LayerState& LayerState::Of(const std::unique_ptr<LayerState>& state, const char* operation,
                           const char* name) {
    if (state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, std::string(name) + " was moved away");
    }
    return *state;
}

}  // namespace kivgles::kit
