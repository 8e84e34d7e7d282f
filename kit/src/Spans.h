#ifndef KIVGLES_KIT_SPANS_H
#define KIVGLES_KIT_SPANS_H

#include <vector>

#include "kivgles/kit/Geometry.h"

// Shapes as rectangles of whole pixels, which is what the core fills fastest. A pixel belongs to a shape if
// its middle does. Rows that are alike become one rectangle.
//
// Pure functions, in pixels of GL. What lies outside of `bounds`, from (0, 0) on, is left out. A shape with
// an argument that is not a finite number, or without extent, has no spans.

namespace kivgles::kit {

std::vector<Rect> DiscSpans(const Point& center, double radius, const Size& bounds);

// With round ends.
std::vector<Rect> LineSpans(const Point& from, const Point& to, double thickness, const Size& bounds);

// With straight ends; degrees, clockwise from the right. The radius is the outer one.
std::vector<Rect> ArcSpans(const Point& center, double radius, double thickness, double start, double sweep,
                           const Size& bounds);

// What two rectangles share; empty if nothing.
Rect Intersect(const Rect& a, const Rect& b);

inline bool IsEmpty(const Rect& rect) { return rect.width <= 0 || rect.height <= 0; }

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_SPANS_H
