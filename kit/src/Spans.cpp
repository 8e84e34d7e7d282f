#include "Spans.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace kivgles::kit {

namespace {

constexpr double ALL = std::numeric_limits<double>::infinity();
constexpr double PI = 3.14159265358979323846;
constexpr double FULL_TURN = 360;
constexpr double HALF_TURN = 180;

// From `begin` to `end` on a row; empty unless begin < end.
struct Interval {
    double begin;
    double end;
};

Interval Common(const Interval& a, const Interval& b) {
    return {std::max(a.begin, b.begin), std::min(a.end, b.end)};
}

bool AreFinite(std::initializer_list<double> numbers) {
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

// Number of pixels, counted from 0 on, whose middle lies before `position`; between 0 and `limit`.
int PixelsBefore(double position, int limit) {
    return static_cast<int>(std::ceil(std::clamp(position, -1.0, limit + 1.0) - 0.5));
}

// Gathers a shape row by row, from the top.
class SpanList {
 public:
    explicit SpanList(const Size& shapeBounds) : bounds(shapeBounds) {}

    // Calls `fill(y)` for each row whose middle, y, lies between the two.
    template <typename Fill>
    void ForRows(double top, double bottom, Fill fill) {
        const int end = std::min(PixelsBefore(bottom, bounds.height), bounds.height);
        for (row = std::max(PixelsBefore(top, bounds.height), 0); row < end; ++row) {
            fill(row + 0.5);
        }
    }

    // In the row that is being filled.
    void Add(const Interval& interval) {
        const int begin = std::max(PixelsBefore(interval.begin, bounds.width), 0);
        const int end = std::min(PixelsBefore(interval.end, bounds.width), bounds.width);
        if (begin >= end) {
            return;
        }
        // What it goes on from is among the last few: no row of any shape here has more than four.
        constexpr std::size_t LOOK_BACK = 8;
        const std::size_t first = spans.size() - std::min(spans.size(), LOOK_BACK);
        for (std::size_t i = first; i < spans.size(); ++i) {
            Rect& span = spans[i];
            if (span.x == begin && span.width == end - begin && span.y + span.height == row) {
                ++span.height;
                return;
            }
        }
        spans.push_back({begin, row, end - begin, 1});
    }

    std::vector<Rect> Take() { return std::move(spans); }

 private:
    Size bounds;
    int row = 0;
    std::vector<Rect> spans;
};

// Half of the width that a circle has `distance` above or below its centre; negative outside, and where both
// are so large that their squares are infinite.
double HalfWidth(double radius, double distance) {
    const double square = radius * radius - distance * distance;
    return square >= 0 ? std::sqrt(square) : -1;
}

// The x for which low <= slope * x + offset <= high.
Interval Solve(double slope, double offset, double low, double high) {
    if (slope == 0) {
        return low <= offset && offset <= high ? Interval{-ALL, ALL} : Interval{0, 0};
    }
    const double a = (low - offset) / slope;
    const double b = (high - offset) / slope;
    return {std::min(a, b), std::max(a, b)};
}

std::vector<Rect> WideLineSpans(const Point& from, const Point& to, double thickness, const Size& bounds) {
    const double radius = thickness / 2;
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double ux = length > 0 ? (to.x - from.x) / length : 1;
    const double uy = length > 0 ? (to.y - from.y) / length : 0;
    SpanList spans(bounds);
    spans.ForRows(std::min(from.y, to.y) - radius, std::max(from.y, to.y) + radius, [&](double y) {
        // Between both ends, and no farther from the line than it is thick.
        const double dy = y - from.y;
        const Interval body = Common(Solve(ux, dy * uy - from.x * ux, 0, length),
                                     Solve(uy, -dy * ux - from.x * uy, -radius, radius));
        Interval all = body.begin < body.end ? body : Interval{ALL, -ALL};
        for (const Point& end : {from, to}) {
            const double half = HalfWidth(radius, y - end.y);
            if (half >= 0) {
                all = {std::min(all.begin, end.x - half), std::max(all.end, end.x + half)};
            }
        }
        spans.Add(all);
    });
    return spans.Take();
}

// Where on a row, `dy` from the centre, directions between the two angles lead: both on its side of the
// centre, from 0 to 180 below it and from 180 to 360 above.
Interval Between(double begin, double end, double dy) {
    const auto reach = [dy](double angle) {
        const double tangent = std::tan(angle * PI / HALF_TURN);
        const bool alongTheRow = std::fmod(angle, HALF_TURN) == 0;
        return alongTheRow ? (angle == HALF_TURN ? -ALL : ALL) : dy / tangent;
    };
    return dy > 0 ? Interval{reach(end), reach(begin)} : Interval{reach(begin), reach(end)};
}

}  // namespace

Rect Intersect(const Rect& a, const Rect& b) {
    // A rectangle may end beyond what an int holds.
    const auto end = [](int begin, int extent) { return std::int64_t{begin} + std::max(extent, 0); };
    const int x = std::max(a.x, b.x);
    const int y = std::max(a.y, b.y);
    const std::int64_t right = std::min(end(a.x, a.width), end(b.x, b.width));
    const std::int64_t bottom = std::min(end(a.y, a.height), end(b.y, b.height));
    if (right <= x || bottom <= y) {
        return {};
    }
    return {x, y, static_cast<int>(right - x), static_cast<int>(bottom - y)};
}

std::vector<Rect> DiscSpans(const Point& center, double radius, const Size& bounds) {
    SpanList spans(bounds);
    if (AreFinite({center.x, center.y, radius}) && radius > 0) {
        spans.ForRows(center.y - radius, center.y + radius, [&](double y) {
            const double half = HalfWidth(radius, y - center.y);
            spans.Add({center.x - half, center.x + half});
        });
    }
    return spans.Take();
}

std::vector<Rect> LineSpans(const Point& from, const Point& to, double thickness, const Size& bounds) {
    if (!AreFinite({from.x, from.y, to.x, to.y, thickness}) || thickness <= 0) {
        return {};
    }
    // Columns where they are fewer than rows.
    if (std::fabs(to.y - from.y) <= std::fabs(to.x - from.x)) {
        return WideLineSpans(from, to, thickness, bounds);
    }
    std::vector<Rect> spans =
        WideLineSpans({from.y, from.x}, {to.y, to.x}, thickness, {bounds.height, bounds.width});
    std::transform(spans.begin(), spans.end(), spans.begin(), [](const Rect& span) {
        return Rect{span.y, span.x, span.height, span.width};
    });
    return spans;
}

std::vector<Rect> ArcSpans(const Point& center, double radius, double thickness, double start, double sweep,
                           const Size& bounds) {
    if (!AreFinite({center.x, center.y, radius, thickness, start, sweep}) || radius <= 0 || thickness <= 0 ||
        sweep == 0) {
        return {};
    }
    // From `begin`, in the first turn, to `end`, in the first or the second one.
    const double turned = std::fmod(sweep < 0 ? start + sweep : start, FULL_TURN);
    const double begin = turned < 0 ? turned + FULL_TURN : turned;
    const double end = begin + std::min(std::fabs(sweep), FULL_TURN);
    const double inner = std::max(radius - thickness, 0.0);

    SpanList spans(bounds);
    spans.ForRows(center.y - radius, center.y + radius, [&](double y) {
        // A row through the centre is taken for the next one below.
        const double dy = y == center.y ? 1e-9 : y - center.y;
        const double outerHalf = HalfWidth(radius, dy);
        const double innerHalf = HalfWidth(inner, dy);
        const std::array<Interval, 2> sides = {Interval{-outerHalf, -std::max(innerHalf, 0.0)},
                                               Interval{std::max(innerHalf, 0.0), outerHalf}};
        const double side = dy > 0 ? 0 : HALF_TURN;
        for (const double turn : {0.0, FULL_TURN}) {
            const Interval angles = Common({begin, end}, {turn + side, turn + side + HALF_TURN});
            if (angles.begin >= angles.end) {
                continue;
            }
            const Interval wedge = Between(angles.begin - turn, angles.end - turn, dy);
            for (const Interval& ring : sides) {
                const Interval part = Common(ring, wedge);
                spans.Add({center.x + part.begin, center.x + part.end});
            }
        }
    });
    return spans.Take();
}

}  // namespace kivgles::kit
