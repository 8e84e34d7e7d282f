#include "Painter.h"

#include <algorithm>
#include <cmath>

#include "Pixels.h"
#include "Sizes.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

constexpr double FAR = 50000;           // pixels
constexpr double MAX_RADIUS = 30000;    // of circles
constexpr double MAX_ROUNDING = 15000;  // of corners and ends: out of sight where their shape is cut
constexpr double MIN_SCALE = 1e-9;      // of pictures that are drawn larger
constexpr double MAX_SCALE = 32767;     // and smaller
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

bool IsCountable(const Rect& rect) { return AreCountable(rect.x, rect.y, rect.width, rect.height); }

void AddStop(cairo_pattern_t* pattern, double place, const Color& color, const Color& hue) {
    cairo_pattern_add_color_stop_rgba(pattern, place, hue.r / 255.0, hue.g / 255.0, hue.b / 255.0,
                                      color.a / 255.0);
}

}  // namespace

Painter::Painter(CanvasState& painted, const char* operationName)
    : canvas(painted), operation(operationName), context(painted.Context()) {
    cairo_new_path(context);
    cairo_set_operator(context, CAIRO_OPERATOR_OVER);
    cairo_set_tolerance(context, TOLERANCE);
}

Painter& Painter::AddRectangle(const Rect& rect) {
    if (IsCountable(rect) && rect.width > 0 && rect.height > 0) {
        const double left = Near(rect.x);
        const double top = Near(rect.y);
        cairo_rectangle(context, left, top, Near(rect.x + rect.width) - left,
                        Near(rect.y + rect.height) - top);
    }
    return *this;
}

Painter& Painter::AddRoundedRectangle(const Rect& rect, double radius) {
    const double r = std::min({radius, rect.width / 2, rect.height / 2, MAX_ROUNDING});
    if (radius <= 0) {
        return AddRectangle(rect);
    }
    if (r > 0 && IsCountable(rect)) {
        const double left = Near(rect.x) + r;
        const double top = Near(rect.y) + r;
        const double right = Near(rect.x + rect.width) - r;
        const double bottom = Near(rect.y + rect.height) - r;
        const Point corners[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
        for (int i = 0; i < 4; ++i) {
            cairo_arc(context, corners[i].x, corners[i].y, r, (i - 2) * 90 * DEGREE, (i - 1) * 90 * DEGREE);
        }
        cairo_close_path(context);
    }
    return *this;
}

Painter& Painter::AddArc(const Point& center, double outer, double inner, double start, double sweep) {
    const bool isInReach =
        std::abs(center.x) < 2 * FAR && std::abs(center.y) < 2 * FAR && outer <= MAX_RADIUS;
    if (!isInReach || !(outer > 0 && inner < outer) || !AreCountable(start, sweep)) {
        return *this;
    }
    const bool isRing = std::abs(sweep) >= 360;
    double from = isRing ? 0 : std::fmod(start, 360) * DEGREE;
    double to = from + (isRing ? 360 : sweep) * DEGREE;
    if (from > to) {
        std::swap(from, to);
    }
    cairo_arc(context, center.x, center.y, outer, from, to);
    if (isRing) {
        cairo_close_path(context);
        cairo_move_to(context, center.x + std::max(inner, 0.0), center.y);
    }
    cairo_arc_negative(context, center.x, center.y, std::max(inner, 0.0), to, from);
    cairo_close_path(context);
    return *this;
}

Painter& Painter::AddLines(const std::vector<Point>& points, bool closed) {
    const auto isCountable = [](const Point& point) { return AreCountable(point.x, point.y); };
    if (points.empty() || !std::all_of(points.begin(), points.end(), isCountable)) {
        return *this;
    }
    cairo_move_to(context, Near(points[0].x), Near(points[0].y));
    for (std::size_t i = 1; i < points.size(); ++i) {
        AddLine(context, points[i - 1], points[i]);
    }
    AddLine(context, points.back(), closed ? points.front() : points.back());  // a single one is a dot
    return *this;
}

void Painter::Fill(const kit::Fill& fill, cairo_operator_t how) {
    if (SetSource(fill) && Touch(0)) {
        cairo_set_operator(context, how);
        cairo_fill(context);
    }
    Check();
}

void Painter::Stroke(const kit::Fill& fill, double thickness) {
    const double width = std::min(thickness, 2 * MAX_ROUNDING);
    if (width > 0 && SetSource(fill) && Touch(width / 2 + 1)) {
        cairo_set_line_width(context, width);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(context);
    }
    Check();
}

void Painter::Draw(cairo_surface_t* picture, const Size& size, const Rect& to, double opacity) {
    if (!(opacity > 0)) {
        return;
    }
    AddRectangle(to);
    Within([&](cairo_t* clipped) {
        // Pixels of the picture for one of the canvas, within what Cairo can count.
        const double right = std::clamp(size.width / to.width, MIN_SCALE, MAX_SCALE);
        const double down = std::clamp(size.height / to.height, MIN_SCALE, MAX_SCALE);
        cairo_matrix_t matrix;
        cairo_matrix_init(&matrix, right, 0, 0, down, -to.x * right, -to.y * down);
        cairo_set_source_surface(clipped, picture, 0, 0);
        cairo_pattern_set_matrix(cairo_get_source(clipped), &matrix);
        cairo_pattern_set_extend(cairo_get_source(clipped), CAIRO_EXTEND_PAD);  // its edges do not fade
        cairo_paint_with_alpha(clipped, std::min(opacity, 1.0));
    });
}

void Painter::Draw(const Image& image, const Rect& to, double opacity) {
    const PixelView view = ViewOf(image, operation);
    CanvasState picture(image.size, operation);
    Convert(view, Whole(image.size), Format::CAIRO, picture.Pixels(), image.size.width);
    cairo_surface_mark_dirty(picture.Surface());
    Draw(picture.Surface(), image.size, to, opacity);
}

void Painter::Draw(const Canvas& picture, const Rect& to, double opacity) {
    const CanvasState& state = CanvasState::Of(picture, operation);
    if (&state == &canvas) {
        throw Error(operation, Error::INVALID_ARGUMENT, "a canvas cannot be drawn into itself");
    }
    Draw(state.Surface(), state.size, to, opacity);
}

// False if the fill is none.
bool Painter::SetSource(const kit::Fill& fill) {
    const auto& [from, first, to, last, isGradient] = fill;
    if (!isGradient) {
        cairo_set_source_rgba(context, first.r / 255.0, first.g / 255.0, first.b / 255.0, first.a / 255.0);
        return true;
    }
    if (!AreCountable(from.x, from.y, to.x, to.y) || (from.x == to.x && from.y == to.y)) {
        return false;
    }
    const Handle<cairo_pattern_t> pattern(cairo_pattern_create_linear(from.x, from.y, to.x, to.y));
    AddStop(pattern.get(), 0, first, first.a == 0 ? last : first);
    AddStop(pattern.get(), 1, last, last.a == 0 ? first : last);
    cairo_set_source(context, pattern.get());
    return true;
}

// Counts the pixels as changed that the path, and so much around it, touches; false if there are none.
bool Painter::Touch(double reach) {
    if (cairo_has_current_point(context) == FALSE) {
        return false;
    }
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_path_extents(context, &left, &top, &right, &bottom);
    const PixelRect touched =
        canvas.Touched({left - reach, top - reach, right - left + 2 * reach, bottom - top + 2 * reach});
    canvas.Changed(touched);
    return !IsEmpty(touched);
}

// What Cairo could not do, it could not for want of memory: all that it is asked for makes sense.
void Painter::Check() const {
    if (cairo_status(context) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "out of memory");
    }
}

}  // namespace kivgles::kit
