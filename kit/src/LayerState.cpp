#include "LayerState.h"

#include <algorithm>
#include <cstdint>

#include "Pixels.h"
#include "Spans.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

Rect Scaled(const Rect& rect, int factor) {
    const auto scaled = [factor](int number) {
        constexpr std::int64_t FAR = 1 << 29;
        return static_cast<int>(std::clamp(std::int64_t{number} * factor, -FAR, FAR));
    };
    return {scaled(rect.x), scaled(rect.y), scaled(rect.width), scaled(rect.height)};
}

LayerState::LayerState(const std::shared_ptr<Device>& layerDevice, const Size& size, int layerFactor,
                       const char* operation)
    : device(layerDevice),
      width(size.width * layerFactor),
      height(size.height * layerFactor),
      factor(layerFactor) {
    const DeviceLock lock(*device);
    device->Add(*this, operation);
}

LayerState::~LayerState() {
    const DeviceLock lock(*device);
    device->Remove(*this);
}

Rect LayerState::Visible(const Rect& rect) const { return Intersect(rect, {0, 0, width, height}); }

void LayerState::Fill(const Rect& rect, const Color& color, const char* operation) {
    const Rect visible = Visible(rect);
    if (!IsEmpty(visible)) {
        Check(device->Surface(operation).KivDrawRect(handle, Unsigned(visible), Premultiplied(color)),
              operation);
    }
}

void LayerState::DrawBeyondEdges(const Rect& region, bool blended,
                                 const std::function<void(unsigned int, const Size&)>& draw,
                                 const char* operation) {
    const Rect visible = Visible(region);
    if (IsEmpty(visible)) {
        return;
    }
    KivGLDrawSurface& surface = device->Surface(operation);
    Size size = {region.width, region.height};
    const unsigned int scratch = device->Scratch(size, operation);
    const TagKivRectInfo there =
        Unsigned({visible.x - region.x, visible.y - region.y, visible.width, visible.height});
    if (blended) {
        Check(surface.KivBlit({handle, scratch, Unsigned(visible), there}), operation);
    }
    draw(scratch, size);
    Check(surface.KivBlit({scratch, handle, there, Unsigned(visible)}), operation);
}

LayerState& StateOf(const std::unique_ptr<LayerState>& state, const char* operation) {
    if (state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT);
    }
    return *state;
}

TagKivRectInfo Unsigned(const Rect& rect) {
    return {static_cast<std::uint32_t>(rect.x), static_cast<std::uint32_t>(rect.y),
            static_cast<std::uint32_t>(rect.width), static_cast<std::uint32_t>(rect.height)};
}

}  // namespace kivgles::kit
