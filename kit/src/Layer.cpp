#include "kivgles/kit/Layer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Device.h"
#include "ImagePainter.h"
#include "LayerState.h"
#include "Pixels.h"
#include "Spans.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Screen.h"

namespace kivgles::kit {

namespace {

// A round of the core has 36 corners: up to this radius, in pixels of GL, it is a circle to half a pixel.
constexpr double MAX_ROUND_RADIUS = 128;

std::unique_ptr<LayerState> MakeState(const std::shared_ptr<Device>& device, const Size& size, int factor) {
    constexpr char OPERATION[] = "Layer";
    if (size.width <= 0 || size.height <= 0 || factor < 1 || factor > 2) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT);
    }
    if (std::max(size.width, size.height) > device->MaxLayerSide() / factor) {
        throw Error(OPERATION, Error::TOO_LARGE);
    }
    return std::make_unique<LayerState>(device, size, factor, OPERATION);
}

void Fill(LayerState& layer, const std::vector<Rect>& rects, const Color& color, const char* operation)
    KIVGLES_REQUIRES(DEVICE_LOCK) {
    (void)layer.device->Surface(operation);  // without a window an error, even if there is nothing to fill
    for (const Rect& rect : rects) {
        layer.Fill(rect, color, operation);
    }
}

bool IsWhole(double number) { return number == std::floor(number); }

// Whether the core draws this disc as it should be: the centre is whole and unsigned, no corner is seen.
bool IsRoundOfCore(const Point& center, double radius) {
    constexpr double FAR = 1 << 20;
    return center.x >= 0 && center.x < FAR && center.y >= 0 && center.y < FAR && radius > 0 &&
           radius <= MAX_ROUND_RADIUS && IsWhole(center.x) && IsWhole(center.y) && IsWhole(radius);
}

// In pixels of GL.
void FillDisc(LayerState& layer, const Point& center, double radius, const Color& color,
              const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK) {
    if (!IsRoundOfCore(center, radius)) {
        Fill(layer, DiscSpans(center, radius, layer.Bounds()), color, operation);
        return;
    }
    const auto wholeRadius = static_cast<std::uint32_t>(radius);
    Check(layer.device->Surface(operation).KivDrawRound(
              layer.handle,
              {static_cast<std::uint32_t>(center.x), static_cast<std::uint32_t>(center.y), wholeRadius,
               wholeRadius},
              Premultiplied(color)),
          operation);
}

// A place from 0 to `from`, in what is scaled to reach from 0 to `to`.
int Share(std::int64_t place, int from, int to) { return static_cast<int>((place * to + from / 2) / from); }

// Where `visible`, a part of `whole`, lies in what is scaled to fill `whole`.
Rect PartOf(const Rect& scaled, const Rect& whole, const Rect& visible) {
    const std::int64_t x = std::int64_t{visible.x} - whole.x;
    const std::int64_t y = std::int64_t{visible.y} - whole.y;
    const int left = Share(x, whole.width, scaled.width);
    const int top = Share(y, whole.height, scaled.height);
    const int right = Share(x + visible.width, whole.width, scaled.width);
    const int bottom = Share(y + visible.height, whole.height, scaled.height);
    return {scaled.x + left, scaled.y + top, right - left, bottom - top};
}

// In pixels of GL; what lies outside of either layer is left out.
void CopyPart(const LayerState& source, const Rect& from, const LayerState& target, const Rect& to,
              const char* operation) KIVGLES_REQUIRES(DEVICE_LOCK) {
    KivGLDrawSurface& surface = target.device->Surface(operation);
    if (IsEmpty(from) || IsEmpty(to)) {
        return;
    }
    const Rect visibleFrom = source.Visible(from);
    if (IsEmpty(visibleFrom)) {
        return;
    }
    const Rect reached = PartOf(to, from, visibleFrom);
    const Rect visibleTo = target.Visible(reached);
    if (IsEmpty(visibleTo)) {
        return;
    }
    const Rect copied = PartOf(visibleFrom, reached, visibleTo);
    if (!IsEmpty(copied)) {
        Check(surface.KivBlit({source.handle, target.handle, Unsigned(copied), Unsigned(visibleTo)}),
              operation);
    }
}

}  // namespace

Layer::Layer(Screen& screen, kit::Size size, int factor) : state(MakeState(screen.device, size, factor)) {}

Layer::~Layer() = default;
Layer::Layer(Layer&& other) noexcept = default;
Layer& Layer::operator=(Layer&& other) noexcept = default;

kit::Size Layer::Size() const {
    const LayerState& layer = StateOf(state, "Layer::Size");
    return {layer.width / layer.factor, layer.height / layer.factor};
}

int Layer::Factor() const { return StateOf(state, "Layer::Factor").factor; }

void Layer::Clear(const Color& color) {
    constexpr char OPERATION[] = "Layer::Clear";
    LayerState& layer = StateOf(state, OPERATION);
    const DeviceLock lock(*layer.device);
    if (color.a != 0) {
        Fill(layer, {{0, 0, layer.width, layer.height}}, color, OPERATION);
        return;
    }
    Check(layer.device->Surface(OPERATION).KivClearGLFBO(layer.handle), OPERATION);
}

void Layer::Rectangle(const Rect& rect, const Color& color) {
    LayerState& layer = StateOf(state, "Layer::Rectangle");
    const DeviceLock lock(*layer.device);
    Fill(layer, {layer.Scaled(rect)}, color, "Layer::Rectangle");
}

void Layer::RoundedRectangle(const Rect& rect, double radius, const Color& color) {
    constexpr char OPERATION[] = "Layer::RoundedRectangle";
    LayerState& layer = StateOf(state, OPERATION);
    const Rect box = layer.Scaled(rect);
    const DeviceLock lock(*layer.device);
    if (IsEmpty(box) || std::isnan(radius)) {
        Fill(layer, {}, color, OPERATION);
        return;
    }
    const int longest = std::min(box.width, box.height) / 2;
    const int r =
        static_cast<int>(std::lround(std::clamp(radius * layer.factor, 0.0, static_cast<double>(longest))));
    Fill(layer,
         {{box.x, box.y + r, box.width, box.height - 2 * r},
          {box.x + r, box.y, box.width - 2 * r, r},
          {box.x + r, box.y + box.height - r, box.width - 2 * r, r}},
         color, OPERATION);
    for (const int x : {box.x + r, box.x + box.width - r}) {
        for (const int y : {box.y + r, box.y + box.height - r}) {
            FillDisc(layer, {static_cast<double>(x), static_cast<double>(y)}, r, color, OPERATION);
        }
    }
}

void Layer::Disc(const Point& center, double radius, const Color& color) {
    LayerState& layer = StateOf(state, "Layer::Disc");
    const DeviceLock lock(*layer.device);
    FillDisc(layer, layer.Scaled(center), radius * layer.factor, color, "Layer::Disc");
}

void Layer::Ring(const Point& center, double radius, double thickness, const Color& color) {
    Arc(center, radius, thickness, 0, 360, color);
}

void Layer::Arc(const Point& center, double radius, double thickness, double start, double sweep,
                const Color& color) {
    LayerState& layer = StateOf(state, "Layer::Arc");
    const DeviceLock lock(*layer.device);
    Fill(layer,
         ArcSpans(layer.Scaled(center), radius * layer.factor, thickness * layer.factor, start, sweep,
                  layer.Bounds()),
         color, "Layer::Arc");
}

void Layer::Line(const Point& from, const Point& to, double thickness, const Color& color) {
    LayerState& layer = StateOf(state, "Layer::Line");
    const DeviceLock lock(*layer.device);
    Fill(layer, LineSpans(layer.Scaled(from), layer.Scaled(to), thickness * layer.factor, layer.Bounds()),
         color, "Layer::Line");
}

void Layer::Bar(const Rect& rect, double level, const Color& filled, const Color& rest) {
    LayerState& layer = StateOf(state, "Layer::Bar");
    const Rect box = layer.Scaled(rect);
    const double share = level > 0 ? std::min(level, 1.0) : 0;  // not a number is not above 0
    const int width = static_cast<int>(std::lround(share * box.width));
    const DeviceLock lock(*layer.device);
    Fill(layer, {{box.x, box.y, width, box.height}}, filled, "Layer::Bar");
    Fill(layer, {{box.x + width, box.y, box.width - width, box.height}}, rest, "Layer::Bar");
}

void Layer::Draw(const Image& image, const Rect& to) {
    LayerState& layer = StateOf(state, "Layer::Draw");
    DrawImage(layer, image, layer.Scaled(to), false, "Layer::Draw");
}

void Layer::Blend(const Image& image, const Rect& to) {
    LayerState& layer = StateOf(state, "Layer::Blend");
    DrawImage(layer, image, layer.Scaled(to), true, "Layer::Blend");
}

void Layer::Copy(const Layer& source, const Rect& from, const Rect& to) {
    constexpr char OPERATION[] = "Layer::Copy";
    LayerState& layer = StateOf(state, OPERATION);
    LayerState& other = StateOf(source.state, OPERATION);
    if (&other == &layer || other.device != layer.device) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT);
    }
    const DeviceLock lock(*layer.device);
    CopyPart(other, other.Scaled(from), layer, layer.Scaled(to), OPERATION);
}

void Layer::Copy(const Layer& source, int x, int y) {
    const kit::Size size = source.Size();
    Copy(source, {0, 0, size.width, size.height}, {x, y, size.width, size.height});
}

}  // namespace kivgles::kit
