// Shapes as rectangles of pixels, beside the shapes' own definition.

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Spans.h"

namespace kivgles::kit {
namespace {

constexpr Size BOUNDS = {24, 20};
constexpr double PI = 3.14159265358979323846;

// Rows of '#', and '2' for a pixel that two spans cover; a span beyond the bounds is said to be.
std::string Picture(const std::vector<Rect>& spans) {
    std::string picture;
    for (int y = 0; y < BOUNDS.height; ++y) {
        picture += std::string(static_cast<std::size_t>(BOUNDS.width), '.') + "\n";
    }
    for (const Rect& span : spans) {
        if (span.x < 0 || span.y < 0 || span.x + span.width > BOUNDS.width ||
            span.y + span.height > BOUNDS.height) {
            return "a span reaches beyond the bounds";
        }
        for (int y = span.y; y < span.y + span.height; ++y) {
            for (int x = span.x; x < span.x + span.width; ++x) {
                char& pixel = picture[static_cast<std::size_t>(y * (BOUNDS.width + 1) + x)];
                pixel = pixel == '.' ? '#' : '2';
            }
        }
    }
    return picture;
}

std::string PictureOf(const std::function<bool(double, double)>& contains) {
    std::vector<Rect> pixels;
    for (int y = 0; y < BOUNDS.height; ++y) {
        for (int x = 0; x < BOUNDS.width; ++x) {
            if (contains(x + 0.5, y + 0.5)) {
                pixels.push_back({x, y, 1, 1});
            }
        }
    }
    return Picture(pixels);
}

TEST(Spans, OfADiscAreThePixelsWithinItsRadius) {
    for (const Point center : {Point{12, 10}, {7.3, 8.9}, {-3, 10}, {23, -2}, {12.2, 10.6}}) {
        for (const double radius : {0.4, 1.0, 5.5, 9.0, 40.0}) {
            EXPECT_EQ(Picture(DiscSpans(center, radius, BOUNDS)), PictureOf([&](double x, double y) {
                          return std::hypot(x - center.x, y - center.y) < radius;
                      }))
                << center.x << "," << center.y << " " << radius;
        }
    }
}

TEST(Spans, OfALineAreThePixelsWithinHalfItsThickness) {
    const Point from = {4.1, 5.2};
    for (const Point to :
         {Point{20.3, 5.2}, {4.1, 17.4}, {19.7, 16.3}, {-8.2, 30.1}, {7.1, -6.3}, {4.1, 5.2}}) {
        for (const double thickness : {1.1, 3.3, 8.7}) {
            EXPECT_EQ(
                Picture(LineSpans(from, to, thickness, BOUNDS)), PictureOf([&](double x, double y) {
                    const double dx = to.x - from.x;
                    const double dy = to.y - from.y;
                    const double square = dx * dx + dy * dy;
                    const double along = square == 0 ? 0 : ((x - from.x) * dx + (y - from.y) * dy) / square;
                    const double nearest = std::min(std::max(along, 0.0), 1.0);
                    return std::hypot(x - from.x - nearest * dx, y - from.y - nearest * dy) < thickness / 2;
                }))
                << to.x << "," << to.y << " " << thickness;
        }
    }
}

TEST(Spans, OfAnArcAreThePixelsOfTheRingBetweenItsAngles) {
    const Point center = {11.6, 9.4};
    for (const double start : {0.0, 45.0, 135.0, 170.0, 268.0, -30.0, 765.0}) {
        for (const double sweep : {10.0, 90.0, 180.0, 270.0, 359.0, 360.0, 900.0, -100.0}) {
            EXPECT_EQ(Picture(ArcSpans(center, 9.2, 4.1, start, sweep, BOUNDS)),
                      PictureOf([&](double x, double y) {
                          const double distance = std::hypot(x - center.x, y - center.y);
                          const double angle = std::atan2(y - center.y, x - center.x) / PI * 180;
                          const double begin = sweep < 0 ? start + sweep : start;
                          const double turned = angle - begin - 360 * std::floor((angle - begin) / 360);
                          return distance < 9.2 && distance >= 5.1 && turned < std::fabs(sweep);
                      }))
                << start << " " << sweep;
        }
    }
    EXPECT_EQ(Picture(ArcSpans(center, 9.2, 20, 0, 360, BOUNDS)), Picture(DiscSpans(center, 9.2, BOUNDS)))
        << "a ring thicker than its radius is a disc";
    EXPECT_EQ(Picture(ArcSpans({11.5, 9.5}, 9, 4, 0, 180, BOUNDS)).substr(0, 9 * 25),
              Picture({}).substr(0, 9 * 25))
        << "a row through the centre belongs to the half below";
    EXPECT_EQ(Picture(ArcSpans(center, 9.2, 4.1, 1e18, 90, BOUNDS)),
              Picture(ArcSpans(center, 9.2, 4.1, std::fmod(1e18, 360), 90, BOUNDS)))
        << "whole turns are exact, however many";
}

TEST(Spans, OfRowsThatAreAlikeAreOne) {
    EXPECT_EQ(LineSpans({10, 5}, {10, 15}, 1, {100, 100}).size(), 1U);
    EXPECT_LE(DiscSpans({50, 50}, 40, {100, 100}).size(), 64U);
}

TEST(Spans, OfWhatHasNoExtentOrIsNoNumberAreNone) {
    constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    for (const double bad : {0.0, -1.0, NOT_A_NUMBER, INFINITE}) {
        EXPECT_TRUE(DiscSpans({5, 5}, bad, BOUNDS).empty());
        EXPECT_TRUE(LineSpans({5, 5}, {9, 9}, bad, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, bad, 2, 0, 90, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, 4, bad, 0, 90, BOUNDS).empty());
    }
    for (const double bad : {NOT_A_NUMBER, INFINITE}) {
        EXPECT_TRUE(DiscSpans({bad, 5}, 3, BOUNDS).empty());
        EXPECT_TRUE(LineSpans({5, bad}, {9, 9}, 2, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, 4, 2, bad, 90, BOUNDS).empty());
        EXPECT_TRUE(ArcSpans({5, 5}, 4, 2, 0, bad, BOUNDS).empty());
    }
    EXPECT_EQ(Picture(DiscSpans({1e300, 5}, 1e10, BOUNDS)), Picture({}));
    EXPECT_EQ(Picture(LineSpans({-1e9, 10}, {1e9, 10}, 2, BOUNDS)), Picture({{0, 9, 24, 2}}));
}

}  // namespace
}  // namespace kivgles::kit
