#ifndef KIVGLES_KIT_GEOMETRY_H
#define KIVGLES_KIT_GEOMETRY_H

/// @file
/// Places, sizes, colours and fills, copied by value.
///
/// Coordinates are pixels: the origin is the top-left corner of the canvas, layer or window, x grows to the
/// right, y downwards. They are signed; what lies outside is cut off.

#include <cstdint>
#include <type_traits>

namespace kivgles::kit {

/// A number of any arithmetic type, so that `{x, y, 10, 10}` takes `int x` and `double y`.
struct Number {
    double value;  ///< As near as a double comes.

    /// @param number The number.
    template <typename T, typename = std::enable_if_t<std::is_arithmetic_v<T>>>
    // NOLINTNEXTLINE(google-explicit-constructor): stands in for plain numbers
    constexpr Number(T number) : value(static_cast<double>(number)) {}
};

/// A place, between pixels where it has a fraction: (0.5, 0.5) is the middle of the first pixel.
struct Point {
    double x = 0;  ///< From the left edge, in pixels.
    double y = 0;  ///< From the top edge, in pixels.

    constexpr Point() = default;  ///< The top-left corner.
    /// @param left,top Its coordinates.
    constexpr Point(Number left, Number top) : x(left.value), y(top.value) {}
};

/// A width and a height in pixels.
struct Size {
    int width = 0;   ///< Extent to the right.
    int height = 0;  ///< Extent downwards.
};

/// A rectangle of whole pixels. One without width or height, or with a negative one, is empty.
struct PixelRect {
    int x = 0;       ///< Left edge.
    int y = 0;       ///< Top edge.
    int width = 0;   ///< Extent to the right.
    int height = 0;  ///< Extent downwards.
};

/// As PixelRect, with edges between pixels where it has fractions.
struct Rect {
    double x = 0;       ///< Left edge.
    double y = 0;       ///< Top edge.
    double width = 0;   ///< Extent to the right.
    double height = 0;  ///< Extent downwards.

    constexpr Rect() = default;  ///< An empty one.
    /// @param left,top,right,down Its edges, and how far it goes from there to the right and downwards.
    constexpr Rect(Number left, Number top, Number right, Number down)
        : x(left.value), y(top.value), width(right.value), height(down.value) {}
    /// @param pixels Whole ones.
    // NOLINTNEXTLINE(google-explicit-constructor): as good as any other
    constexpr Rect(const PixelRect& pixels) : Rect(pixels.x, pixels.y, pixels.width, pixels.height) {}
};

/// A colour, not premultiplied, each component from 0 to 255.
struct Color {
    std::uint8_t r = 0;    ///< Red.
    std::uint8_t g = 0;    ///< Green.
    std::uint8_t b = 0;    ///< Blue.
    std::uint8_t a = 255;  ///< Opacity: 0 shows what is below.

    constexpr Color() = default;  ///< Opaque black.
    /// @param red,green,blue,opacity Less than 0 counts as 0, more than 255 as 255.
    constexpr Color(Number red, Number green, Number blue, Number opacity = 255)
        : r(Component(red)), g(Component(green)), b(Component(blue)), a(Component(opacity)) {}

 private:
    static constexpr std::uint8_t Component(Number number) {
        return static_cast<std::uint8_t>(!(number.value > 0) ? 0 : number.value > 255 ? 255 : number.value);
    }
};

constexpr Color TRANSPARENT = {0, 0, 0, 0};  ///< Nothing but what is below.

/// What a shape is filled with: one colour, or a gradient between two.
///
/// @code
/// canvas.Rectangle({0, 0, 640, 20}, {0, 0, 0, 128});
/// canvas.Rectangle({0, 20, 640, 180}, Fill::Gradient({0, 20}, {24, 40, 64}, {0, 200}, {8, 12, 20}));
/// @endcode
class Fill {
 public:
    /// @param everywhere One colour.
    // NOLINTNEXTLINE(google-explicit-constructor): so that shapes take colours
    constexpr Fill(const Color& everywhere) : Fill({}, everywhere, {}, everywhere, false) {}
    /// @param red,green,blue,opacity One colour, as Color has it.
    constexpr Fill(Number red, Number green, Number blue, Number opacity = 255)
        : Fill(Color(red, green, blue, opacity)) {}

    /// A gradient along a line, of one colour each beyond its ends. A colour of opacity 0 takes its hue from
    /// the other one. Between two equal places, or ones that are no numbers, it fills nothing.
    /// @param from,first Where the line begins, in the canvas, and the colour there.
    /// @param to,last Where it ends, and the colour there. @return The fill.
    static constexpr Fill Gradient(const Point& from, const Color& first, const Point& to,
                                   const Color& last) {
        return {from, first, to, last, true};
    }

 private:
    friend class CanvasState;

    constexpr Fill(const Point& begin, const Color& atBegin, const Point& end, const Color& atEnd,
                   bool varies)
        : from(begin), first(atBegin), to(end), last(atEnd), isGradient(varies) {}

    Point from;
    Color first;
    Point to;
    Color last;
    bool isGradient;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_GEOMETRY_H
