// Shapes as rectangles of pixels, beside the shapes' own definition.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "Spans.h"

namespace kivgles::kit {
namespace {

constexpr Size BOUNDS = {24, 20};

// Each pixel is covered once if its middle belongs to the shape, and not at all beyond the bounds.
template <typename Contains>
void ExpectShape(const std::vector<Rect>& spans, Contains contains) {
    for (int y = -1; y <= BOUNDS.height; ++y) {
        for (int x = -1; x <= BOUNDS.width; ++x) {
            const bool inside = x >= 0 && x < BOUNDS.width && y >= 0 && y < BOUNDS.height;
            const auto covers = [x, y](const Rect& span) { return !IsEmpty(Intersect(span, {x, y, 1, 1})); };
            ASSERT_EQ(std::count_if(spans.begin(), spans.end(), covers),
                      inside && contains(x + 0.5, y + 0.5) ? 1 : 0)
                << "at " << x << "," << y;
        }
    }
}

TEST(Spans, OfADiscAreThePixelsWithinItsRadius) {
    for (const Point center : {Point{12, 10}, {7.3, 8.9}, {-3, 10}, {23, -2}, {12.2, 10.6}}) {
        for (const double radius : {0.4, 1.0, 5.5, 9.0, 40.0}) {
            SCOPED_TRACE(testing::Message() << center.x << "," << center.y << " " << radius);
            ExpectShape(DiscSpans(center, radius, BOUNDS),
                        [&](double x, double y) { return std::hypot(x - center.x, y - center.y) < radius; });
        }
    }
    EXPECT_LE(DiscSpans({50, 50}, 40, {100, 100}).size(), 64U) << "rows that are alike are one span";
}

TEST(Spans, OfALineAreThePixelsWithinHalfItsThickness) {
    const Point from = {4.1, 5.2};
    for (const Point to :
         {Point{20.3, 5.2}, {4.1, 17.4}, {19.7, 16.3}, {-8.2, 30.1}, {7.1, -6.3}, {4.1, 5.2}}) {
        for (const double thickness : {1.1, 3.3, 8.7}) {
            SCOPED_TRACE(testing::Message() << to.x << "," << to.y << " " << thickness);
            ExpectShape(LineSpans(from, to, thickness, BOUNDS), [&](double x, double y) {
                const double dx = to.x - from.x;
                const double dy = to.y - from.y;
                const double square = dx * dx + dy * dy;
                const double along = square == 0 ? 0 : ((x - from.x) * dx + (y - from.y) * dy) / square;
                const double nearest = std::clamp(along, 0.0, 1.0);
                return std::hypot(x - from.x - nearest * dx, y - from.y - nearest * dy) < thickness / 2;
            });
        }
    }
    ExpectShape(LineSpans({-1e9, 10}, {1e9, 10}, 2, BOUNDS),
                [](double, double y) { return y > 9 && y < 11; });
}

TEST(Spans, OfAnArcAreThePixelsOfTheRingBetweenItsAngles) {
    const Point center = {11.7, 9.4};
    for (const double start : {0.0, 45.0, 135.0, 170.0, 268.0, -30.0, 765.0, 1e18}) {
        for (const double sweep : {10.0, 90.0, 180.0, 270.0, 359.0, 360.0, 900.0, -100.0}) {
            for (const double thickness : {4.1, 20.0}) {
                SCOPED_TRACE(testing::Message() << start << " " << sweep << " " << thickness);
                ExpectShape(ArcSpans(center, 9.2, thickness, start, sweep, BOUNDS), [&](double x, double y) {
                    const double distance = std::hypot(x - center.x, y - center.y);
                    const double angle = std::atan2(y - center.y, x - center.x) * 180 / std::acos(-1.0);
                    const double begin = std::fmod(sweep < 0 ? start + sweep : start, 360);
                    const double turned = angle - begin - 360 * std::floor((angle - begin) / 360);
                    return distance < 9.2 && distance >= 9.2 - thickness && turned < std::fabs(sweep);
                });
            }
        }
    }
    EXPECT_EQ(ArcSpans({11.5, 9.5}, 9, 4, 0, 180, BOUNDS).at(0).y, 9)
        << "a row through the centre belongs to the half below";
}

TEST(Spans, OfWhatHasNoExtentOrIsNoNumberAreNone) {
    for (const double bad : {NAN, INFINITY}) {
        for (std::size_t i = 0; i < 6; ++i) {
            std::array<double, 6> a = {5, 5, 4, 2, 90, 90};
            a[i] = bad;
            EXPECT_TRUE(ArcSpans({a[0], a[1]}, a[2], a[3], a[4], a[5], BOUNDS).empty()) << i << ": " << bad;
            EXPECT_TRUE(i > 4 || LineSpans({a[0], a[1]}, {a[2], a[3]}, a[4], BOUNDS).empty()) << i;
            EXPECT_TRUE(i > 2 || DiscSpans({a[0], a[1]}, a[2], BOUNDS).empty()) << i;
        }
    }
    for (const double none : {0.0, -1.0}) {
        EXPECT_TRUE(DiscSpans({5, 5}, none, BOUNDS).empty());
        EXPECT_TRUE(LineSpans({5, 5}, {9, 9}, none, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, none, 2, 0, 90, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, 4, none, 0, 90, BOUNDS).empty());
    }
    EXPECT_TRUE(DiscSpans({1e300, 5}, 1e10, BOUNDS).empty());
}

}  // namespace
}  // namespace kivgles::kit
