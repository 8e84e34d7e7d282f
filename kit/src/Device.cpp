#include "Device.h"

#include "LayerState.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_QUEUED = 4096;        // some 2.5 MB
constexpr unsigned int FONT_SIZE = 40;  // pixels: the standard style is drawn as large as it says

}  // namespace

DeviceLock::DeviceLock(Device& device) : lock(device.mutex) {}

void Check(int result, const char* operation) {
    if (result != 0) {
        throw Error(operation, result);
    }
}

KivGLDrawSurface& Device::Surface(const char* operation) {
    if (surface == nullptr) {
        throw Error(operation, Error::NOT_CONNECTED);
    }
    if (++queued > MAX_QUEUED) {
        Wait(operation);
    }
    return *surface;
}

void Device::Wait(const char* operation) {
    if (surface == nullptr) {
        throw Error(operation, Error::NOT_CONNECTED);
    }
    queued = 0;
    Check(surface->Init(0), operation);
}

bool Device::SwitchWindow(ANativeWindow* another, const char* operation) {
    if (surface == nullptr || another == window) {
        return false;
    }
    const int result = surface->KivConnectWindowSurface(another);
    if (result != 0) {
        Close();  // the former window is off the screen too, though the core counts it as connected
    }
    Check(result, operation);
    window = another;
    return true;
}

void Device::Restart(ANativeWindow* anotherWindow, const char* operation) {
    Close();
    try {
        SetUp(anotherWindow, operation);
    } catch (...) {
        Close();
        throw;
    }
    wasConnected = true;
}

void Device::SetUp(ANativeWindow* anotherWindow, const char* operation) {
    surface = std::make_unique<KivGLDrawSurface>();
    Check(surface->KivCreateGLContext(), operation);
    Check(surface->KivConnectWindowSurface(anotherWindow), operation);
    window = anotherWindow;
    for (LayerState* const layer : layers) {
        CreateLayer(*layer, operation);
    }
    if (!fontPath.empty()) {
        OpenFont(operation);
    }
}

void Device::Close() {
    surface.reset();
    window = nullptr;
    fontLoaded = false;
    scratch = 0;  // it went with the surface
}

Size Device::WindowSize() const {
    if (surface == nullptr) {
        return {};
    }
    return {static_cast<int>(surface->KivGetWindowWidth()), static_cast<int>(surface->KivGetWindowHeight())};
}

void Device::LoadFont(const std::string& path, const char* operation) {
    (void)Surface(operation);  // without one the former font stays for the next
    fontPath = path;
    try {
        OpenFont(operation);
    } catch (...) {
        fontPath.clear();
        throw;
    }
}

void Device::OpenFont(const char* operation) {
    fontLoaded = false;
    widths.Clear();
    Check(Surface(operation).KivLoadFont(fontPath, FONT_SIZE), operation);
    fontLoaded = true;
}

CharacterWidths& Device::Widths(const char* operation) {
    if (!fontLoaded) {
        throw Error(operation, Error::NO_FONT);
    }
    return widths;
}

void Device::Add(LayerState& layer, const char* operation) {
    CreateLayer(layer, operation);
    layers.insert(&layer);
}

void Device::Remove(LayerState& layer) {
    layers.erase(&layer);
    if (surface != nullptr) {
        (void)surface->KivDestoryGLFBO(layer.handle);  // nobody is left to be told
    }
}

unsigned int Device::Scratch(Size& size, const char* operation) {
    KivGLDrawSurface& maker = Surface(operation);
    const Size screen = WindowSize();
    const Size wanted = size.width <= screen.width && size.height <= screen.height ? screen : size;
    if (scratch == 0 || wanted.width != scratchSize.width || wanted.height != scratchSize.height) {
        DropScratch();
        Check(maker.KivCreateGLFBO(scratch, static_cast<unsigned int>(wanted.width),
                                   static_cast<unsigned int>(wanted.height), KIV_COLOR_FORMAT_RGBA8888),
              operation);
        scratchSize = wanted;
    }
    size = wanted;
    return scratch;
}

void Device::DropScratch() {
    if (scratch != 0) {
        (void)surface->KivDestoryGLFBO(scratch);  // it is no longer needed, whatever the answer
        scratch = 0;
    }
}

void Device::CreateLayer(LayerState& layer, const char* operation) {
    Check(
        Surface(operation).KivCreateGLFBO(layer.handle, static_cast<unsigned int>(layer.width),
                                          static_cast<unsigned int>(layer.height), KIV_COLOR_FORMAT_RGBA8888),
        operation);
}

}  // namespace kivgles::kit
