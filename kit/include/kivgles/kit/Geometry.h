#ifndef KIVGLES_KIT_GEOMETRY_H
#define KIVGLES_KIT_GEOMETRY_H

/// @file
/// Places, sizes and colours, copied by value.
///
/// Coordinates are pixels of what is shown: the origin is the top-left corner of the layer or window, x grows
/// to the right, y downwards. They are signed; what lies outside is cut off.

#include <cstdint>

namespace kivgles::kit {

/// A place, between pixels where it has a fraction: (0.5, 0.5) is the middle of the first pixel.
struct Point {
    double x = 0;  ///< From the left edge, in pixels.
    double y = 0;  ///< From the top edge, in pixels.
};

/// A width and a height in pixels.
struct Size {
    int width = 0;   ///< Extent to the right.
    int height = 0;  ///< Extent downwards.
};

/// A rectangle of whole pixels. One without width or height, or with a negative one, is empty.
struct Rect {
    int x = 0;       ///< Left edge.
    int y = 0;       ///< Top edge.
    int width = 0;   ///< Extent to the right.
    int height = 0;  ///< Extent downwards.
};

/// A colour, not premultiplied, each component from 0 to 255. Opaque unless said otherwise.
///
/// To the core a component of 1 is the full intensity; the kit draws it as 2, so here it is as dark as it
/// looks.
struct Color {
    std::uint8_t r = 0;    ///< Red.
    std::uint8_t g = 0;    ///< Green.
    std::uint8_t b = 0;    ///< Blue.
    std::uint8_t a = 255;  ///< Opacity: 0 shows what is behind the window, or black on an opaque one.
};

/// Nothing but what is behind the window.
constexpr Color TRANSPARENT = {0, 0, 0, 0};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_GEOMETRY_H
