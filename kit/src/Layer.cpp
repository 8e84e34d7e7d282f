#include "kivgles/kit/Layer.h"

#include "LayerState.h"
#include "Pixels.h"
#include "Words.h"
#include "kivgles/kit/Canvas.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Screen.h"

namespace kivgles::kit {

namespace {

constexpr Placing DRAW = {"Layer::Draw", false};
constexpr Placing BLEND = {"Layer::Blend", true};

PixelSource Checked(const Image& image, const Placing& placing) {
    if (image.pixels == nullptr) {
        throw Error(placing.operation, Error::INVALID_ARGUMENT, "the image has no pixels");
    }
    CheckSize(image.size, Canvas::MAX_SIDE, placing.operation, "the image: ");
    return SourceOf(image, placing.blends);
}

PixelSource Checked(const Canvas& canvas, const Placing& placing) {
    return SourceOf(CanvasState::Of(canvas, placing.operation), placing.blends);
}

void FillPart(const LayerState& layer, const PixelRect& visible, const Color& color, const char* operation) {
    const DeviceLock lock(*layer.device, operation);
    KivGLDrawSurface& surface = layer.device->Surface();
    if (!IsEmpty(visible)) {
        layer.device->Check(surface.KivDrawRect(layer.handle, Unsigned(visible), Premultiplied(color)));
    }
}

template <typename Picture>
Canvas Scaled(const Picture& picture, const Size& size, const Rect& to, const char* operation) {
    try {
        Canvas scaled(size);
        scaled.Draw(picture, to);
        return scaled;
    } catch (const Error& error) {
        throw Error(operation, error.Code());
    }
}

// A canvas or an image.
template <typename Picture>
void Place(const std::unique_ptr<LayerState>& state, const Picture& picture, const Rect& to,
           const Placing& placing) {
    const LayerState& layer = StateOf(state, placing.operation);
    const PixelSource source = Checked(picture, placing);
    const Edges edges(to);
    const PixelRect visible = edges.Within(layer.size);
    if (IsEmpty(visible)) {
        FillPart(layer, visible, {}, placing.operation);  // without a window an error all the same
        return;
    }
    const double x = visible.x - edges.across.begin;
    const double y = visible.y - edges.down.begin;
    const double width = edges.across.Length();
    const double height = edges.down.Length();
    if (width == source.size.width && height == source.size.height) {
        layer.Place(source, {int(x), int(y), visible.width, visible.height}, visible, placing);
        return;
    }
    const Canvas scaled =
        Scaled(picture, {visible.width, visible.height}, {-x, -y, width, height}, placing.operation);
    CanvasState& canvas = CanvasState::Of(scaled, placing.operation);
    layer.Place(SourceOf(canvas, placing.blends), canvas.Whole(), visible, placing);
}

void PlaceAt(const std::unique_ptr<LayerState>& state, const Canvas& canvas, int x, int y,
             const Placing& placing) {
    const Size size = CanvasState::Of(canvas, placing.operation).Size();
    Place(state, canvas, {x, y, size.width, size.height}, placing);
}

}  // namespace

Layer::Layer(Screen& screen, kit::Size size) : state(std::make_unique<LayerState>(screen.device, size)) {}

Layer::~Layer() = default;
Layer::Layer(Layer&& other) noexcept = default;
Layer& Layer::operator=(Layer&& other) noexcept = default;

kit::Size Layer::Size() const { return StateOf(state, "Layer::Size").size; }

void Layer::Clear(const Color& color) {
    constexpr const char* OPERATION = "Layer::Clear";
    const LayerState& layer = StateOf(state, OPERATION);
    if (color.a != 0) {
        FillPart(layer, Whole(layer.size), color, OPERATION);
        return;
    }
    const DeviceLock lock(*layer.device, OPERATION);
    layer.device->Check(layer.device->Surface().KivClearGLFBO(layer.handle));
}

void Layer::Rectangle(const Rect& rect, const Color& color) {
    const LayerState& layer = StateOf(state, "Layer::Rectangle");
    FillPart(layer, Edges(rect).Within(layer.size), color, "Layer::Rectangle");
}

void Layer::Draw(const Canvas& canvas, int x, int y) { PlaceAt(state, canvas, x, y, DRAW); }
void Layer::Draw(const Canvas& canvas, const Rect& to) { Place(state, canvas, to, DRAW); }
void Layer::Draw(const Image& image, const Rect& to) { Place(state, image, to, DRAW); }
void Layer::Blend(const Canvas& canvas, int x, int y) { PlaceAt(state, canvas, x, y, BLEND); }
void Layer::Blend(const Canvas& canvas, const Rect& to) { Place(state, canvas, to, BLEND); }
void Layer::Blend(const Image& image, const Rect& to) { Place(state, image, to, BLEND); }

void Layer::Copy(const Layer& source, const Rect& from, const Rect& to) {
    constexpr const char* OPERATION = "Layer::Copy";
    const LayerState& layer = StateOf(state, OPERATION);
    const LayerState& other = StateOf(source.state, OPERATION, "the source");
    if (&other == &layer) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "the source is the layer itself");
    }
    if (other.device != layer.device) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "the source is another screen's");
    }
    const DeviceLock lock(*layer.device, OPERATION);
    layer.Copy(other, Edges(from), Edges(to));
}

void Layer::Copy(const Layer& source, int x, int y) {
    const kit::Size size = StateOf(source.state, "Layer::Copy", "the source").size;
    Copy(source, Rect(0, 0, size.width, size.height), Rect(x, y, size.width, size.height));
}

}  // namespace kivgles::kit
