#include "LayerState.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace kivgles::kit {

namespace {

constexpr int MAX_REACH = 1 << 20;  // of what the core is asked for: GL's floats are exact to a pixel there

double Nearest(double place) { return std::floor(place + 0.5); }

// A rectangle of a layer as the core takes it for a bitmap: as if the layer had the window's size. False if
// that does not come out even.
bool ForBitmap(const PixelRect& rect, const Size& layer, const Size& window, TagKivRectInfo& converted) {
    bool isEven = true;
    const auto convert = [&isEven](int number, int from, int to) {
        const std::int64_t product = std::int64_t{number} * to;
        isEven = isEven && product % from == 0;
        return static_cast<std::uint32_t>(product / from);
    };
    converted = {convert(rect.x, layer.width, window.width), convert(rect.y, layer.height, window.height),
                 convert(rect.width, layer.width, window.width),
                 convert(rect.height, layer.height, window.height)};
    return isEven;
}

// One direction of a copy: these pixels of the source go there in the target, which may be below 0.
struct Axis {
    Span from;
    Span to;
    bool isCutOut = false;  // a part that is scaled up: colour would come from beside it
};

// In layers of these extents. GL cuts off at the right and lower edge; where `to` is longer than `longest`,
// the source is cut to what is seen, with a pixel beside it for what lies in between.
Axis MakeAxis(const Span& from, const Span& to, int source, int target, int longest) {
    const double scale = to.Length() / from.Length();
    Span cut = {std::max(from.begin, 0.0), std::min(from.end, double{1} * source)};
    if (to.Length() > longest) {
        cut.begin = std::max(cut.begin, std::floor(from.begin - to.begin / scale) - 1);
        cut.end = std::min(cut.end, std::ceil(from.begin + (target - to.begin) / scale) + 1);
    }
    if (!(cut.Length() > 0)) {
        return {};
    }
    const bool isPart =
        (cut.begin == from.begin && cut.begin > 0) || (cut.end == from.end && cut.end < source);
    const auto place = [&](double edge) { return Nearest(to.begin + (edge - from.begin) * scale); };
    return {cut, {place(cut.begin), place(cut.end)}, scale > 1 && isPart};
}

PixelRect Pixels(const Span& across, const Span& down) {
    return {static_cast<int>(across.begin), static_cast<int>(down.begin), static_cast<int>(across.Length()),
            static_cast<int>(down.Length())};
}

}  // namespace

Edges::Edges(const Rect& rect) {
    if (std::isfinite(rect.x + rect.y + rect.width + rect.height) && rect.width > 0 && rect.height > 0) {
        across = {Nearest(rect.x), Nearest(rect.x + rect.width)};
        down = {Nearest(rect.y), Nearest(rect.y + rect.height)};
    }
}

PixelRect Edges::Within(const Size& size) const {
    const auto cut = [](const Span& span, double extent) {
        return Span{std::clamp(span.begin, 0.0, extent), std::clamp(span.end, 0.0, extent)};
    };
    return Pixels(cut(across, size.width), cut(down, size.height));
}

void LayerState::Place(const PixelSource& source, const PixelRect& part, const PixelRect& to,
                       const Placing& placing) const {
    std::vector<std::uint8_t> room;
    TagKivBitmapInfo bitmap = BitmapOf(source, part, room, placing.operation);
    const DeviceLock lock(*device, placing.operation);
    KivGLDrawSurface& surface = device->Surface();
    const auto draw =
        placing.blends ? &KivGLDrawSurface::KivDrawBitmapByBlend : &KivGLDrawSurface::KivDrawBitmap;
    const Size window = device->windowSize;
    if (ForBitmap(to, size, window, bitmap.dstRect)) {
        device->Check((surface.*draw)(handle, bitmap));
        return;
    }
    // By way of a layer of the window's size, so that it serves again, or of just this.
    const Size extent = {to.width, to.height};
    const bool windowHolds = extent.width <= window.width && extent.height <= window.height &&
                             std::max(window.width, window.height) <= device->maxSide;
    const Size between = windowHolds ? window : extent;
    const unsigned int spare = device->Provide(PART, between).handle;
    if (placing.blends) {
        device->Blit(handle, to, spare, Whole(extent));
    }
    (void)ForBitmap(Whole(extent), between, window, bitmap.dstRect);  // even for both
    device->Check((surface.*draw)(spare, bitmap));
    device->Blit(spare, Whole(extent), handle, to);
}

void LayerState::Copy(const LayerState& source, const Edges& from, const Edges& to) const {
    (void)device->Surface();  // without a window an error, even if there is nothing to copy
    const Axis across = MakeAxis(from.across, to.across, source.size.width, size.width, device->maxSide);
    const Axis down = MakeAxis(from.down, to.down, source.size.height, size.height, device->maxSide);
    const PixelRect visible = Edges(across.to, down.to).Within(size);
    if (IsEmpty(visible)) {
        return;
    }
    unsigned int taken = source.handle;
    PixelRect part = Pixels(across.from, down.from);
    const auto goBy = [&](Spare spare, const Size& extent) KIVGLES_REQUIRES(DEVICE_LOCK) {
        const unsigned int between = device->Provide(spare, extent).handle;
        device->Blit(taken, part, between, Whole(extent));
        taken = between;
        part = Whole(extent);
    };
    if (across.isCutOut || down.isCutOut) {
        goBy(PART, {part.width, part.height});
    }
    if (std::max(across.to.Length(), down.to.Length()) > MAX_REACH) {
        throw Error(device->operation, Error::TOO_LARGE, "a pixel of the source becomes too large");
    }
    PixelRect place = Pixels(across.to, down.to);
    const auto isScaled = [&] { return place.width != part.width || place.height != part.height; };
    if (isScaled() && (place.x < 0 || place.y < 0)) {
        goBy(SCALED, {place.width, place.height});  // the core takes no place below 0
    }
    if (!isScaled()) {
        part = {part.x + visible.x - place.x, part.y + visible.y - place.y, visible.width, visible.height};
        place = visible;
    }
    device->Blit(taken, part, handle, place);
}

}  // namespace kivgles::kit
