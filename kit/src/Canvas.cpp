#include "kivgles/kit/Canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Painter.h"
#include "Sizes.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_PARTS = 16;  // each is handed over by itself, which has its price

PixelRect Part(const cairo_region_t* region, int i) {
    cairo_rectangle_int_t part;
    cairo_region_get_rectangle(region, i, &part);
    return {part.x, part.y, part.width, part.height};
}

void Unite(cairo_region_t* region, const PixelRect& rect) {
    const cairo_rectangle_int_t part = {rect.x, rect.y, rect.width, rect.height};
    if (cairo_region_union_rectangle(region, &part) != CAIRO_STATUS_SUCCESS) {
        throw std::bad_alloc();
    }
}

Handle<cairo_surface_t> NewSurface(const Size& size, const char* operation) {
    CheckSize(size, Canvas::MAX_SIDE, operation);
    return Handle<cairo_surface_t>(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size.width, size.height));
}

void CheckFile(cairo_status_t status, const std::string& path, const char* operation) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::BAD_FILE, path + ": " + cairo_status_to_string(status));
    }
}

}  // namespace

CanvasState::CanvasState(const kit::Size& pixels, const char* operation)
    : size(pixels), surface(NewSurface(pixels, operation)), context(cairo_create(surface.get())) {
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "no memory for " + InWords(size));
    }
}

CanvasState& CanvasState::Of(const Canvas& canvas, const char* operation) {
    if (canvas.state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, "the canvas was moved away");
    }
    return *canvas.state;
}

std::uint8_t* CanvasState::Pixels() {
    cairo_surface_flush(surface.get());
    return cairo_image_surface_get_data(surface.get());
}

PixelRect CanvasState::Touched(const Rect& area) const {
    if (!AreCountable(area.x, area.y, area.width, area.height) || !(area.width > 0 && area.height > 0)) {
        return {};
    }
    const auto cut = [](double place, int end) {
        return static_cast<int>(std::clamp<double>(place, 0, end));
    };
    const int x = cut(std::floor(area.x), size.width);
    const int y = cut(std::floor(area.y), size.height);
    return {x, y, cut(std::ceil(area.x + area.width), size.width) - x,
            cut(std::ceil(area.y + area.height), size.height) - y};
}

// Beyond so many parts, one around all of them costs no more.
void CanvasState::Changed(const PixelRect& rect) {
    for (const auto& [receiver, region] : missing) {
        Unite(region.get(), rect);
        if (cairo_region_num_rectangles(region.get()) > MAX_PARTS) {
            cairo_rectangle_int_t around;
            cairo_region_get_extents(region.get(), &around);
            (void)cairo_region_union_rectangle(region.get(), &around);
        }
    }
}

std::vector<PixelRect> CanvasState::Take(Receiver& receiver) {
    const auto isGone = [](const Missing& part) { return part.receiver.expired(); };
    missing.erase(std::remove_if(missing.begin(), missing.end(), isGone), missing.end());
    auto found = std::find_if(missing.begin(), missing.end(),
                              [&](const Missing& part) { return part.receiver.lock() == receiver; });
    if (found == missing.end()) {
        receiver = std::make_shared<int>();  // what it took over before forgets it
        found = missing.insert(found, {receiver, Handle<cairo_region_t>(cairo_region_create())});
        Unite(found->region.get(), Whole(size));
    }
    std::vector<PixelRect> parts;
    for (int i = 0; i < cairo_region_num_rectangles(found->region.get()); ++i) {
        parts.push_back(Part(found->region.get(), i));
    }
    found->region.reset(cairo_region_create());
    return parts;
}

cairo_t* CanvasState::Context() {
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        context.reset(cairo_create(surface.get()));  // there may be memory again
    }
    return context.get();
}

cairo_t* CanvasState::ClientContext(const Rect& area, const char* operation) {
    const Handle<cairo_surface_t> target(cairo_image_surface_create_for_data(
        Pixels(), CAIRO_FORMAT_ARGB32, size.width, size.height, cairo_image_surface_get_stride(Surface())));
    clientContext.reset(cairo_create(target.get()));
    const PixelRect clip = Touched(area);
    cairo_rectangle(clientContext.get(), clip.x, clip.y, clip.width, clip.height);
    cairo_clip(clientContext.get());
    if (cairo_status(clientContext.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "out of memory");
    }
    Changed(clip);
    return clientContext.get();
}

Canvas::Canvas(kit::Size size) : state(std::make_unique<CanvasState>(size, "Canvas")) {}

Canvas::~Canvas() = default;
Canvas::Canvas(Canvas&& other) noexcept = default;
Canvas& Canvas::operator=(Canvas&& other) noexcept = default;

kit::Size Canvas::Size() const { return CanvasState::Of(*this, "Canvas::Size").size; }

Canvas Canvas::FromPng(const std::string& path) {
    constexpr char OPERATION[] = "Canvas::FromPng";
    const Handle<cairo_surface_t> picture(cairo_image_surface_create_from_png(path.c_str()));
    const cairo_status_t status = cairo_surface_status(picture.get());
    if (status == CAIRO_STATUS_INVALID_SIZE) {
        throw Error(OPERATION, Error::TOO_LARGE, path + " is larger than a canvas can be");
    }
    // So older versions of Cairo say of all that is no PNG, too.
    if (status == CAIRO_STATUS_NO_MEMORY || status == CAIRO_STATUS_PNG_ERROR) {
        throw Error(OPERATION, Error::BAD_FILE, path + " is no PNG file, or there is no memory for it");
    }
    CheckFile(status, path, OPERATION);
    const kit::Size size = {cairo_image_surface_get_width(picture.get()),
                            cairo_image_surface_get_height(picture.get())};
    Canvas canvas(size);
    Painter(canvas, OPERATION).Draw(picture.get(), size, Whole(size), 1);
    return canvas;
}

void Canvas::WritePng(const std::string& path) const {
    constexpr char OPERATION[] = "Canvas::WritePng";
    CheckFile(cairo_surface_write_to_png(CanvasState::Of(*this, OPERATION).Surface(), path.c_str()), path,
              OPERATION);
}

void Canvas::Clear(const Fill& fill) { Clear(Whole(CanvasState::Of(*this, "Canvas::Clear").size), fill); }

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
    Painter(*this, "Canvas::Draw").Draw(image, to, opacity);
}

void Canvas::Draw(const Canvas& source, const Rect& to, double opacity) {
    Painter(*this, "Canvas::Draw").Draw(source, to, opacity);
}

void Canvas::Draw(const Canvas& source, const Point& to, double opacity) {
    const kit::Size size = CanvasState::Of(source, "Canvas::Draw").size;
    Draw(source, {to.x, to.y, size.width, size.height}, opacity);
}

cairo_t* Canvas::Cairo() { return Cairo(Whole(CanvasState::Of(*this, "Canvas::Cairo").size)); }

cairo_t* Canvas::Cairo(const Rect& rect) {
    return CanvasState::Of(*this, "Canvas::Cairo").ClientContext(rect, "Canvas::Cairo");
}

}  // namespace kivgles::kit
