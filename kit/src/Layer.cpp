#include "kivgles/kit/Layer.h"

#include <cmath>

#include "Device.h"
#include "Pixels.h"
#include "kivgles/kit/Screen.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_REACH = 1 << 20;  // of what the core is asked for: GL's floats are exact to a pixel there

double Nearest(double place) { return std::floor(place + 0.5); }

// From one whole number to another, as far away as one likes.
struct Span {
    double begin = 0;
    double end = 0;

    double Length() const { return end - begin; }
};

PixelRect Pixels(const Span& across, const Span& down) {
    return {static_cast<int>(across.begin), static_cast<int>(down.begin), static_cast<int>(across.Length()),
            static_cast<int>(down.Length())};
}

struct Edges {
    Span across;
    Span down;
};

// Each at the nearest pixel; empty if the rectangle has a number that is none, or no extent.
Edges EdgesOf(const Rect& rect) {
    if (!std::isfinite(rect.x + rect.y + rect.width + rect.height) || !(rect.width > 0 && rect.height > 0)) {
        return {};
    }
    return {{Nearest(rect.x), Nearest(rect.x + rect.width)},
            {Nearest(rect.y), Nearest(rect.y + rect.height)}};
}

// The part from (0, 0) to there.
PixelRect Within(const Size& size, const Span& across, const Span& down) {
    const auto cut = [](const Span& span, double extent) {
        return Span{std::clamp(span.begin, 0.0, extent), std::clamp(span.end, 0.0, extent)};
    };
    return Pixels(cut(across, size.width), cut(down, size.height));
}

void FillPart(const LayerState& layer, const PixelRect& visible, const Color& color, const char* operation) {
    const DeviceLock lock(*layer.device, operation);
    KivGLDrawSurface& surface = layer.device->Surface();  // without a window an error, even for nothing
    if (!IsEmpty(visible)) {
        layer.device->Check(surface.KivDrawRect(layer.handle, Unsigned(visible), Premultiplied(color)));
    }
}

// How a picture is put into a layer: replaces what is there, or blends with it, as the client called it.
struct Placing {
    const char* operation;
    int (KivGLDrawSurface::*draw)(unsigned int handle, const TagKivBitmapInfo& bitmap) noexcept;
    Format format;
};
constexpr Placing DRAW = {"Layer::Draw", &KivGLDrawSurface::KivDrawBitmap, Format::PREMULTIPLIED};
constexpr Placing BLEND = {"Layer::Blend", &KivGLDrawSurface::KivDrawBitmapByBlend, Format::STRAIGHT};

// A rectangle of a layer as the core takes it for a bitmap, as if of the window's size. False if not even.
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

// A part of a picture, unscaled: `to` is as large, and inside of the layer.
void Place(const LayerState& layer, const PixelView& picture, const PixelRect& part, const PixelRect& to,
           const Placing& placing) {
    std::vector<std::uint8_t> room;
    TagKivBitmapInfo bitmap = BitmapOf(picture, part, placing.format, room, placing.operation);
    Device& device = *layer.device;
    const DeviceLock lock(device, placing.operation);
    KivGLDrawSurface& surface = device.Surface();
    const Size window = device.windowSize;
    if (ForBitmap(to, layer.size, window, bitmap.dstRect)) {
        device.Check((surface.*placing.draw)(layer.handle, bitmap));
        return;
    }
    // By way of a layer of the window's size, so that it serves again, or of just this.
    const Size extent = {to.width, to.height};
    const bool windowHolds = extent.width <= window.width && extent.height <= window.height &&
                             std::max(window.width, window.height) <= device.maxSide;
    const Size between = windowHolds ? window : extent;
    const unsigned int spare = device.Provide(PART, between).handle;
    if (placing.format == Format::STRAIGHT) {
        device.Blit(layer.handle, to, spare, Whole(extent));
    }
    (void)ForBitmap(Whole(extent), between, window, bitmap.dstRect);  // even for both
    device.Check((surface.*placing.draw)(spare, bitmap));
    device.Blit(spare, Whole(extent), layer.handle, to);
}

// A canvas or an image, scaled to fill `to`.
template <typename Picture>
void Place(const std::unique_ptr<LayerState>& state, const Picture& picture, const Rect& to,
           const Placing& placing) {
    const LayerState& layer = LayerState::Of(state, placing.operation);
    const PixelView view = ViewOf(picture, placing.operation);
    const auto [across, down] = EdgesOf(to);
    const PixelRect visible = Within(layer.size, across, down);
    if (IsEmpty(visible) || !AreCountable(to.x, to.y, to.width, to.height)) {
        FillPart(layer, {}, {}, placing.operation);
        return;
    }
    const double x = visible.x - across.begin;
    const double y = visible.y - down.begin;
    if (across.Length() == view.size.width && down.Length() == view.size.height) {
        Place(layer, view, {int(x), int(y), visible.width, visible.height}, visible, placing);
        return;
    }
    CanvasState scaled({visible.width, visible.height}, placing.operation);
    scaled.Begin(placing.operation).Draw(picture, {-x, -y, across.Length(), down.Length()}, 1);
    Place(layer, ViewOf(scaled), Whole(scaled.size), visible, placing);
}

void PlaceAt(const std::unique_ptr<LayerState>& state, const Canvas& canvas, int x, int y,
             const Placing& placing) {
    const Size size = CanvasState::Of(canvas, placing.operation).size;
    Place(state, canvas, {x, y, size.width, size.height}, placing);
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

// Scaled to fill `to`; what lies outside of either layer is left out.
void Copy(const LayerState& source, const Edges& from, const LayerState& target, const Edges& to)
    KIVGLES_REQUIRES(DEVICE_LOCK) {
    Device& device = *target.device;
    (void)device.Surface();  // without a window an error, even if there is nothing to copy
    const Axis across =
        MakeAxis(from.across, to.across, source.size.width, target.size.width, device.maxSide);
    const Axis down = MakeAxis(from.down, to.down, source.size.height, target.size.height, device.maxSide);
    const PixelRect visible = Within(target.size, across.to, down.to);
    if (IsEmpty(visible)) {
        return;
    }
    unsigned int taken = source.handle;
    PixelRect part = Pixels(across.from, down.from);
    const auto goBy = [&](Spare spare, const Size& extent) KIVGLES_REQUIRES(DEVICE_LOCK) {
        const unsigned int between = device.Provide(spare, extent).handle;
        device.Blit(taken, part, between, Whole(extent));
        taken = between;
        part = Whole(extent);
    };
    if (across.isCutOut || down.isCutOut) {
        goBy(PART, {part.width, part.height});
    }
    if (std::max(across.to.Length(), down.to.Length()) > MAX_REACH) {
        throw Error(device.operation, Error::TOO_LARGE, "a pixel of the source becomes too large");
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
    device.Blit(taken, part, target.handle, place);
}

}  // namespace

Layer::Layer(Screen& screen, kit::Size size) : state(std::make_unique<LayerState>(screen.device, size)) {}

Layer::~Layer() = default;
Layer::Layer(Layer&& other) noexcept = default;
Layer& Layer::operator=(Layer&& other) noexcept = default;

kit::Size Layer::Size() const { return LayerState::Of(state, "Layer::Size").size; }

void Layer::Clear(const Color& color) {
    constexpr char OPERATION[] = "Layer::Clear";
    const LayerState& layer = LayerState::Of(state, OPERATION);
    if (color.a != 0) {
        FillPart(layer, Whole(layer.size), color, OPERATION);
        return;
    }
    const DeviceLock lock(*layer.device, OPERATION);
    layer.device->Check(layer.device->Surface().KivClearGLFBO(layer.handle));
}

void Layer::Rectangle(const Rect& rect, const Color& color) {
    constexpr char OPERATION[] = "Layer::Rectangle";
    const LayerState& layer = LayerState::Of(state, OPERATION);
    const auto [across, down] = EdgesOf(rect);
    FillPart(layer, Within(layer.size, across, down), color, OPERATION);
}

void Layer::Draw(const Canvas& canvas, int x, int y) { PlaceAt(state, canvas, x, y, DRAW); }
void Layer::Draw(const Canvas& canvas, const Rect& to) { Place(state, canvas, to, DRAW); }
void Layer::Draw(const Image& image, const Rect& to) { Place(state, image, to, DRAW); }
void Layer::Blend(const Canvas& canvas, int x, int y) { PlaceAt(state, canvas, x, y, BLEND); }
void Layer::Blend(const Canvas& canvas, const Rect& to) { Place(state, canvas, to, BLEND); }
void Layer::Blend(const Image& image, const Rect& to) { Place(state, image, to, BLEND); }

void Layer::Copy(const Layer& source, const Rect& from, const Rect& to) {
    constexpr char OPERATION[] = "Layer::Copy";
    const LayerState& layer = LayerState::Of(state, OPERATION);
    const LayerState& other = LayerState::Of(source.state, OPERATION, "the source");
    if (&other == &layer) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "the source is the layer itself");
    }
    if (other.device != layer.device) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "the source is another screen's");
    }
    const DeviceLock lock(*layer.device, OPERATION);
    kit::Copy(other, EdgesOf(from), layer, EdgesOf(to));
}

void Layer::Copy(const Layer& source, int x, int y) {
    const kit::Size size = LayerState::Of(source.state, "Layer::Copy", "the source").size;
    Copy(source, Whole(size), {x, y, size.width, size.height});
}

}  // namespace kivgles::kit
