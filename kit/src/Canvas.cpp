#include "kivgles/kit/Canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "CanvasState.h"

namespace kivgles::kit {

Canvas::Canvas(kit::Size size) : state(std::make_unique<CanvasState>(size, "Canvas")) {}

Canvas::~Canvas() = default;
Canvas::Canvas(Canvas&& other) noexcept = default;
Canvas& Canvas::operator=(Canvas&& other) noexcept = default;

kit::Size Canvas::Size() const { return CanvasState::Of(*this, "Canvas::Size").size; }

Canvas Canvas::FromPng(const std::string& path) {
    constexpr char OPERATION[] = "Canvas::FromPng";
    CheckFile(path, OPERATION);
    const Handle<cairo_surface_t> picture(cairo_image_surface_create_from_png(path.c_str()));
    const cairo_status_t status = cairo_surface_status(picture.get());
    if (status == CAIRO_STATUS_INVALID_SIZE) {
        throw Error(OPERATION, Error::TOO_LARGE, path + " is too large");
    }
    if (status != CAIRO_STATUS_SUCCESS) {  // older versions of Cairo say NO_MEMORY of all that is no PNG
        throw Error(OPERATION, Error::BAD_FILE, path + " is no PNG file, or there is no memory for it");
    }
    const kit::Size size = {cairo_image_surface_get_width(picture.get()),
                            cairo_image_surface_get_height(picture.get())};
    Canvas canvas({1, 1});
    canvas.state = std::make_unique<CanvasState>(size, OPERATION);
    canvas.state->Draw(picture.get(), size, Whole(size), 1);
    return canvas;
}

void Canvas::WritePng(const std::string& path) const {
    constexpr char OPERATION[] = "Canvas::WritePng";
    const cairo_status_t status =
        cairo_surface_write_to_png(CanvasState::Of(*this, OPERATION).Surface(), path.c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
        throw Error(OPERATION, status == CAIRO_STATUS_NO_MEMORY ? Error::OUT_OF_MEMORY : Error::BAD_FILE,
                    path + ": " + cairo_status_to_string(status));
    }
}

void Canvas::Clear(const Fill& fill) { Clear(Whole(CanvasState::Of(*this, "Canvas::Clear").size), fill); }

void Canvas::Clear(const Rect& rect, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Clear").AddRectangle(rect).Fill(fill, CAIRO_OPERATOR_SOURCE);
}

void Canvas::Rectangle(const Rect& rect, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Rectangle").AddRectangle(rect).Fill(fill);
}

void Canvas::RoundedRectangle(const Rect& rect, double radius, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::RoundedRectangle").AddRoundedRectangle(rect, radius).Fill(fill);
}

void Canvas::Disc(const Point& center, double radius, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Disc").AddArc(center, radius, 0, 0, 360).Fill(fill);
}

void Canvas::Ring(const Point& center, double radius, double thickness, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Ring").AddArc(center, radius, radius - thickness, 0, 360).Fill(fill);
}

void Canvas::Arc(const Point& center, double radius, double thickness, double start, double sweep,
                 const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Arc")
        .AddArc(center, radius, radius - thickness, start, sweep)
        .Fill(fill);
}

void Canvas::Line(const Point& from, const Point& to, double thickness, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Line").AddLines({from, to}, false).Stroke(fill, thickness);
}

void Canvas::Polyline(const std::vector<Point>& points, double thickness, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Polyline").AddLines(points, false).Stroke(fill, thickness);
}

void Canvas::Polygon(const std::vector<Point>& points, const Fill& fill) {
    CanvasState::Begin(*this, "Canvas::Polygon").AddLines(points, true).Fill(fill);
}

void Canvas::Bar(const Rect& rect, double level, const Fill& filled, const Fill& rest) {
    const double share = level > 0 ? std::min(level, 1.0) : 0;  // what is no number is not above 0
    // Two smooth edges in one pixel would let through what is below.
    const double width =
        std::clamp(std::round(rect.x + share * rect.width) - rect.x, 0.0, std::max(rect.width, 0.0));
    const double end = share == 1 ? rect.width : width;
    for (const auto& [part, fill] : {std::pair{Rect(rect.x, rect.y, end, rect.height), filled},
                                     {Rect(rect.x + end, rect.y, rect.width - end, rect.height), rest}}) {
        CanvasState::Begin(*this, "Canvas::Bar").AddRectangle(part).Fill(fill);
    }
}

void Canvas::Draw(const Image& image, const Rect& to, double opacity) {
    CanvasState::Begin(*this, "Canvas::Draw").Draw(image, to, opacity);
}

void Canvas::Draw(const Canvas& source, const Rect& to, double opacity) {
    CanvasState::Begin(*this, "Canvas::Draw").Draw(source, to, opacity);
}

void Canvas::Draw(const Canvas& source, const Point& to, double opacity) {
    const kit::Size size = CanvasState::Of(source, "Canvas::Draw").size;
    Draw(source, {to.x, to.y, size.width, size.height}, opacity);
}

cairo_t* Canvas::Cairo() { return Cairo(Whole(CanvasState::Of(*this, "Canvas::Cairo").size)); }

cairo_t* Canvas::Cairo(const Rect& rect) {
    return CanvasState::Begin(*this, "Canvas::Cairo").ClientContext(rect);
}

}  // namespace kivgles::kit
