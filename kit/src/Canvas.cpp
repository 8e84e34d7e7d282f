#include "kivgles/kit/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Painter.h"
#include "Pixels.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

std::string Cause(const std::string& path, cairo_status_t status) {
    return path + ": " + cairo_status_to_string(status);
}

[[noreturn]] void ThrowReadError(const char* operation, const std::string& path, cairo_status_t status) {
    switch (status) {
        case CAIRO_STATUS_INVALID_SIZE:
            throw Error(operation, Error::TOO_LARGE, path + " is larger than a canvas can be");
        case CAIRO_STATUS_NO_MEMORY:  // so older versions of Cairo say of all that is no PNG, too
        case CAIRO_STATUS_PNG_ERROR:
            throw Error(operation, Error::BAD_FILE, path + " is no PNG file, or there is no memory for it");
        default:
            throw Error(operation, Error::BAD_FILE, Cause(path, status));
    }
}

cairo_t* ClientContext(CanvasState& canvas, const PixelRect& part) {
    if (!IsEmpty(part)) {
        canvas.Changed(part);
    }
    return canvas.ClientContext(part, "Canvas::Cairo");
}

}  // namespace

Canvas::Canvas(kit::Size size) : state(std::make_unique<CanvasState>(size, "Canvas")) {}

Canvas::~Canvas() = default;
Canvas::Canvas(Canvas&& other) noexcept = default;
Canvas& Canvas::operator=(Canvas&& other) noexcept = default;

kit::Size Canvas::Size() const { return CanvasState::Of(*this, "Canvas::Size").Size(); }

Canvas Canvas::FromPng(const std::string& path) {
    constexpr char OPERATION[] = "Canvas::FromPng";
    const Handle<cairo_surface_t> picture(cairo_image_surface_create_from_png(path.c_str()));
    const cairo_status_t status = cairo_surface_status(picture.get());
    if (status != CAIRO_STATUS_SUCCESS) {
        ThrowReadError(OPERATION, path, status);
    }
    const kit::Size size = {cairo_image_surface_get_width(picture.get()),
                            cairo_image_surface_get_height(picture.get())};
    Canvas canvas(size);
    Painter(canvas, OPERATION).Draw(picture.get(), size, canvas.state->Whole(), 1);
    return canvas;
}

void Canvas::WritePng(const std::string& path) const {
    constexpr char OPERATION[] = "Canvas::WritePng";
    const cairo_status_t status =
        cairo_surface_write_to_png(CanvasState::Of(*this, OPERATION).Surface(), path.c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
        throw Error(OPERATION, Error::BAD_FILE, Cause(path, status));
    }
}

void Canvas::Clear(const Fill& fill) { Clear(CanvasState::Of(*this, "Canvas::Clear").Whole(), fill); }

void Canvas::Clear(const Rect& rect, const Fill& fill) {
    Painter(*this, "Canvas::Clear").AddRectangle(rect).Fill(fill, CAIRO_OPERATOR_SOURCE);
}

void Canvas::Rectangle(const Rect& rect, const Fill& fill) {
    Painter(*this, "Canvas::Rectangle").AddRectangle(rect).Fill(fill);
}

void Canvas::RoundedRectangle(const Rect& rect, double radius, const Fill& fill) {
    Painter(*this, "Canvas::RoundedRectangle").AddRoundedRectangle(rect, radius).Fill(fill);
}

void Canvas::Disc(const Point& center, double radius, const Fill& fill) {
    Painter(*this, "Canvas::Disc").AddArc(center, radius, 0, 0, 360).Fill(fill);
}

void Canvas::Ring(const Point& center, double radius, double thickness, const Fill& fill) {
    Painter(*this, "Canvas::Ring").AddArc(center, radius, radius - thickness, 0, 360).Fill(fill);
}

void Canvas::Arc(const Point& center, double radius, double thickness, double start, double sweep,
                 const Fill& fill) {
    Painter(*this, "Canvas::Arc").AddArc(center, radius, radius - thickness, start, sweep).Fill(fill);
}

void Canvas::Line(const Point& from, const Point& to, double thickness, const Fill& fill) {
    Painter(*this, "Canvas::Line").AddLines({from, to}, false).Stroke(fill, thickness);
}

void Canvas::Polyline(const std::vector<Point>& points, double thickness, const Fill& fill) {
    Painter(*this, "Canvas::Polyline").AddLines(points, false).Stroke(fill, thickness);
}

void Canvas::Polygon(const std::vector<Point>& points, const Fill& fill) {
    Painter(*this, "Canvas::Polygon").AddLines(points, true).Fill(fill);
}

void Canvas::Bar(const Rect& rect, double level, const Fill& filled, const Fill& rest) {
    const double share = level > 0 ? std::min(level, 1.0) : 0;  // what is no number is not above 0
    // Two smooth edges in one pixel would let through what is below.
    const double width =
        std::clamp(std::round(rect.x + share * rect.width) - rect.x, 0.0, std::max(rect.width, 0.0));
    const double end = share == 1 ? rect.width : width;
    for (const auto& [part, fill] : {std::pair{Rect(rect.x, rect.y, end, rect.height), filled},
                                     {Rect(rect.x + end, rect.y, rect.width - end, rect.height), rest}}) {
        Painter(*this, "Canvas::Bar").AddRectangle(part).Fill(fill);
    }
}

void Canvas::Draw(const Image& image, const Rect& to, double opacity) {
    constexpr char OPERATION[] = "Canvas::Draw";
    Painter painter(*this, OPERATION);
    if (image.pixels == nullptr) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "the image has no pixels");
    }
    CanvasState picture(image.size, OPERATION);
    const auto pixelNum =
        static_cast<std::size_t>(image.size.width) * static_cast<std::size_t>(image.size.height);
    const auto convert = image.premultiplied ? CairoFromPremultiplied : CairoFromStraight;
    convert(image.pixels, picture.Pixels(), pixelNum);
    cairo_surface_mark_dirty(picture.Surface());
    painter.Draw(picture.Surface(), image.size, to, opacity);
}

void Canvas::Draw(const Canvas& source, const Rect& to, double opacity) {
    constexpr char OPERATION[] = "Canvas::Draw";
    Painter painter(*this, OPERATION);
    CanvasState& picture = CanvasState::Of(source, OPERATION);
    if (&source == this) {
        throw Error(OPERATION, Error::INVALID_ARGUMENT, "a canvas cannot be drawn into itself");
    }
    painter.Draw(picture.Surface(), picture.Size(), to, opacity);
}

void Canvas::Draw(const Canvas& source, const Point& to, double opacity) {
    const kit::Size size = CanvasState::Of(source, "Canvas::Draw").Size();
    Draw(source, {to.x, to.y, size.width, size.height}, opacity);
}

cairo_t* Canvas::Cairo() {
    CanvasState& canvas = CanvasState::Of(*this, "Canvas::Cairo");
    return ClientContext(canvas, canvas.Whole());
}

cairo_t* Canvas::Cairo(const Rect& rect) {
    CanvasState& canvas = CanvasState::Of(*this, "Canvas::Cairo");
    return ClientContext(canvas, canvas.Touched(rect));
}

}  // namespace kivgles::kit
