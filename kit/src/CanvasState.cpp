#include "CanvasState.h"

#include <algorithm>
#include <cmath>

#include "Pixels.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_PARTS = 16;           // each is handed over by itself, which has its price
constexpr double FAR = 50000;           // pixels
constexpr double MAX_RADIUS = 30000;    // of circles
constexpr double MAX_ROUNDING = 15000;  // of corners and ends: out of sight where their shape is cut
constexpr double MAX_SCALE = 32767;     // of pictures that are drawn smaller
constexpr double TOLERANCE = 0.03;      // pixels between an arc and its lines
constexpr double DEGREE = 3.14159265358979323846 / 180;

double Near(double place) { return std::clamp(place, -FAR, FAR); }

double Crossing(double place, double from, double to) {
    return from == to ? 1 : (place - from) / (to - from);
}

// What is outside goes along the border.
void AddLine(cairo_t* context, const Point& from, const Point& to) {
    double shares[] = {Crossing(-FAR, from.x, to.x), Crossing(FAR, from.x, to.x),
                       Crossing(-FAR, from.y, to.y), Crossing(FAR, from.y, to.y), 1};
    std::sort(std::begin(shares), std::end(shares));
    for (const double share : shares) {
        if (share > 0 && share <= 1) {
            cairo_line_to(context, Near(from.x + (to.x - from.x) * share),
                          Near(from.y + (to.y - from.y) * share));
        }
    }
}

bool HasExtent(const Rect& rect) {
    return AreCountable(rect.x, rect.y, rect.width, rect.height) && rect.width > 0 && rect.height > 0;
}

void AddStop(cairo_pattern_t* pattern, double place, const Color& color, const Color& other) {
    const Color& hue = color.a == 0 ? other : color;
    cairo_pattern_add_color_stop_rgba(pattern, place, hue.r / 255.0, hue.g / 255.0, hue.b / 255.0,
                                      color.a / 255.0);
}

}  // namespace

CanvasState::CanvasState(const kit::Size& pixels, const char* operationName)
    : size(pixels),
      surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size.width, size.height)),
      context(NewContext()),
      operation(operationName) {
    CheckSize(size, Canvas::MAX_SIDE, operation);
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "no memory for " + InWords(size));
    }
    cairo_surface_mark_dirty(surface.get());  // or Cairo goes on taking it for transparent
}

CanvasState& CanvasState::Of(const Canvas& canvas, const char* operationName) {
    if (canvas.state == nullptr) {
        throw Error(operationName, Error::INVALID_ARGUMENT, "the canvas was moved away");
    }
    return *canvas.state;
}

std::uint8_t* CanvasState::Pixels() {
    cairo_surface_flush(surface.get());
    return cairo_image_surface_get_data(surface.get());
}

PixelRect CanvasState::Touched(const Rect& area) const {
    if (!HasExtent(area)) {
        return {};
    }
    const auto cut = [](double place, int end) { return int(std::clamp<double>(place, 0, end)); };
    const int x = cut(std::floor(area.x), size.width);
    const int y = cut(std::floor(area.y), size.height);
    return {x, y, cut(std::ceil(area.x + area.width), size.width) - x,
            cut(std::ceil(area.y + area.height), size.height) - y};
}

// Too many parts become one around all of them. Where memory ran out Take finds a region that is none.
void CanvasState::Changed(const PixelRect& rect) {
    const cairo_rectangle_int_t part = {rect.x, rect.y, rect.width, rect.height};
    for (const auto& receiver : receivers) {
        const Receiver missing = receiver.lock();
        if (missing != nullptr) {
            (void)cairo_region_union_rectangle(missing.get(), &part);
            if (cairo_region_num_rectangles(missing.get()) > MAX_PARTS) {
                cairo_rectangle_int_t around;
                cairo_region_get_extents(missing.get(), &around);
                (void)cairo_region_union_rectangle(missing.get(), &around);
            }
        }
    }
}

std::vector<PixelRect> CanvasState::Take(Receiver& receiver) {
    const auto isIt = [&](const auto& other) { return other.lock() == receiver; };
    std::vector<PixelRect> parts;
    if (receiver == nullptr || std::none_of(receivers.begin(), receivers.end(), isIt) ||
        cairo_region_status(receiver.get()) != CAIRO_STATUS_SUCCESS) {
        parts = {Whole(size)};
    } else {
        cairo_rectangle_int_t part;
        for (int i = 0; i < cairo_region_num_rectangles(receiver.get()); ++i) {
            cairo_region_get_rectangle(receiver.get(), i, &part);
            parts.push_back({part.x, part.y, part.width, part.height});
        }
    }
    receiver.reset(cairo_region_create(), cairo_region_destroy);  // its former picture forgets it
    const auto isGone = [](const auto& other) { return other.expired(); };
    receivers.erase(std::remove_if(receivers.begin(), receivers.end(), isGone), receivers.end());
    receivers.push_back(receiver);
    return parts;
}

// On a surface of its own, because what fails for want of memory leaves its surface without use for good.
Handle<cairo_t> CanvasState::NewContext() {
    const Handle<cairo_surface_t> target(cairo_image_surface_create_for_data(
        Pixels(), CAIRO_FORMAT_ARGB32, size.width, size.height, cairo_image_surface_get_stride(Surface())));
    return Handle<cairo_t>(cairo_create(target.get()));
}

cairo_t* CanvasState::ClientContext(const Rect& area) {
    clientContext = NewContext();
    const PixelRect clip = Touched(area);
    cairo_rectangle(clientContext.get(), clip.x, clip.y, clip.width, clip.height);
    cairo_clip(clientContext.get());
    Check(clientContext);
    Changed(clip);
    return clientContext.get();
}

CanvasState& CanvasState::Begin(const char* operationName) {
    operation = operationName;
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        context = NewContext();  // there may be memory again
    }
    cairo_surface_mark_dirty(cairo_get_target(context.get()));  // a client may have painted meanwhile
    cairo_new_path(context.get());
    cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
    cairo_set_tolerance(context.get(), TOLERANCE);
    return *this;
}

CanvasState& CanvasState::AddRectangle(const Rect& rect) {
    if (HasExtent(rect)) {
        const double left = Near(rect.x);
        const double top = Near(rect.y);
        cairo_rectangle(context.get(), left, top, Near(rect.x + rect.width) - left,
                        Near(rect.y + rect.height) - top);
    }
    return *this;
}

CanvasState& CanvasState::AddRoundedRectangle(const Rect& rect, double radius) {
    if (HasExtent(rect) && AreCountable(radius)) {
        const double r = std::clamp(std::min({radius, rect.width / 2, rect.height / 2}), 0.0, MAX_ROUNDING);
        const double left = Near(rect.x) + r;
        const double top = Near(rect.y) + r;
        const double right = Near(rect.x + rect.width) - r;
        const double bottom = Near(rect.y + rect.height) - r;
        const Point corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
        for (int i = 0; i < 4; ++i) {
            cairo_arc(context.get(), corners[i].x, corners[i].y, r, (i - 2) * 90 * DEGREE,
                      (i - 1) * 90 * DEGREE);
        }
        cairo_close_path(context.get());
    }
    return *this;
}

CanvasState& CanvasState::AddArc(const Point& center, double outer, double inner, double start,
                                 double sweep) {
    const bool isInReach =
        std::abs(center.x) < 2 * FAR && std::abs(center.y) < 2 * FAR && outer <= MAX_RADIUS;
    if (!isInReach || !(outer > 0 && inner < outer) || !AreCountable(inner, start, sweep)) {
        return *this;
    }
    const bool isRing = std::abs(sweep) >= 360;
    const double begin = isRing ? 0 : std::fmod(start, 360) * DEGREE;
    const double end = begin + (isRing ? 360 : sweep) * DEGREE;
    const auto [from, to] = std::minmax({begin, end});
    cairo_arc(context.get(), center.x, center.y, outer, from, to);
    if (isRing) {
        cairo_close_path(context.get());
        cairo_move_to(context.get(), center.x + std::max(inner, 0.0), center.y);
    }
    cairo_arc_negative(context.get(), center.x, center.y, std::max(inner, 0.0), to, from);
    cairo_close_path(context.get());
    return *this;
}

CanvasState& CanvasState::AddLines(const std::vector<Point>& points, bool closed) {
    const auto isCountable = [](const Point& point) { return AreCountable(point.x, point.y); };
    if (points.empty() || !std::all_of(points.begin(), points.end(), isCountable)) {
        return *this;
    }
    cairo_move_to(context.get(), Near(points[0].x), Near(points[0].y));
    for (std::size_t i = 1; i < points.size(); ++i) {
        AddLine(context.get(), points[i - 1], points[i]);
    }
    AddLine(context.get(), points.back(), closed ? points.front() : points.back());  // a single one is a dot
    return *this;
}

void CanvasState::Fill(const kit::Fill& fill, cairo_operator_t how) {
    if (SetSource(fill) && Touch(0)) {
        cairo_set_operator(context.get(), how);
        cairo_fill(context.get());
    }
    Check(context);
}

void CanvasState::Stroke(const kit::Fill& fill, double thickness) {
    const double width = std::min(thickness, 2 * MAX_ROUNDING);
    if (width > 0 && AreCountable(thickness) && SetSource(fill) && Touch(width / 2 + 1)) {
        cairo_set_line_width(context.get(), width);
        cairo_set_line_cap(context.get(), CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(context.get());
    }
    Check(context);
}

void CanvasState::Draw(cairo_surface_t* picture, const Size& pictureSize, const Rect& to, double opacity) {
    AddRectangle(opacity > 0 ? to : Rect());
    Within([&](cairo_t* clipped) {
        // Pixels of the picture for one of the canvas, within what Cairo can count.
        const double right = std::min(pictureSize.width / to.width, MAX_SCALE);
        const double down = std::min(pictureSize.height / to.height, MAX_SCALE);
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, right, 0, 0, down, -to.x * right, -to.y * down);
        cairo_set_source_surface(clipped, picture, 0, 0);
        cairo_pattern_set_matrix(cairo_get_source(clipped), &matrix);
        cairo_pattern_set_extend(cairo_get_source(clipped), CAIRO_EXTEND_PAD);  // its edges do not fade
        cairo_paint_with_alpha(clipped, opacity);
    });
}

void CanvasState::Draw(const Image& image, const Rect& to, double opacity) {
    const PixelView view = ViewOf(image, operation);
    CanvasState picture(image.size, operation);
    Convert(view, Whole(image.size), Format::CAIRO, picture.Pixels(), image.size.width);
    Draw(picture.Surface(), image.size, to, opacity);
}

void CanvasState::Draw(const Canvas& picture, const Rect& to, double opacity) {
    const CanvasState& state = CanvasState::Of(picture, operation);
    if (&state == this) {
        throw Error(operation, Error::INVALID_ARGUMENT, "a canvas cannot be drawn into itself");
    }
    Draw(state.Surface(), state.size, to, opacity);
}

// False if the fill is none.
bool CanvasState::SetSource(const kit::Fill& fill) {
    const auto& [from, first, to, last, isGradient] = fill;
    if (!isGradient) {
        cairo_set_source_rgba(context.get(), first.r / 255.0, first.g / 255.0, first.b / 255.0,
                              first.a / 255.0);
        return true;
    }
    if (!AreCountable(from.x, from.y, to.x, to.y) || (from.x == to.x && from.y == to.y)) {
        return false;
    }
    const Handle<cairo_pattern_t> pattern(cairo_pattern_create_linear(from.x, from.y, to.x, to.y));
    AddStop(pattern.get(), 0, first, last);
    AddStop(pattern.get(), 1, last, first);
    cairo_set_source(context.get(), pattern.get());
    return true;
}

// Counts the pixels as changed that the path, and so much around it, touches; false if there are none.
bool CanvasState::Touch(double reach) {
    if (cairo_has_current_point(context.get()) == FALSE) {
        return false;
    }
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_path_extents(context.get(), &left, &top, &right, &bottom);
    const PixelRect touched =
        Touched({left - reach, top - reach, right - left + 2 * reach, bottom - top + 2 * reach});
    Changed(touched);
    return !IsEmpty(touched);
}

// What Cairo could not do, it could not for want of memory: all that it is asked for makes sense.
void CanvasState::Check(const Handle<cairo_t>& painted) const {
    if (cairo_status(painted.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "out of memory");
    }
}

}  // namespace kivgles::kit
