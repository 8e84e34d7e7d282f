#ifndef KIVGLES_KIT_CANVAS_H
#define KIVGLES_KIT_CANVAS_H

/// @file
/// A picture in memory that anything is painted into.

#include <memory>
#include <string>
#include <vector>

#include "kivgles/kit/Export.h"
#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Image.h"

/// @cond
struct _cairo;
typedef struct _cairo cairo_t;
/// @endcond

namespace kivgles::kit {

class CanvasState;

/// A picture in memory. It belongs to the client, and needs no screen, no window and no GL.
///
/// What is painted blends with what is there, by the opacity of its colour, and has smooth edges; only Clear
/// replaces. Places and lengths are pixels and have fractions; angles are degrees, clockwise, from 0 to the
/// right. A shape without extent draws nothing, and neither does one with a place or length that is no number
/// or beyond 10^15, or a circle with a radius above 30,000. What lies outside is cut off, however far it
/// reaches.
///
/// @code
/// Canvas canvas({640, 200});
/// canvas.Clear({24, 40, 64});
/// canvas.RoundedRectangle({20, 20, 600, 60}, 12, {0, 0, 0, 128});
/// canvas.Disc({70, 130}, 24, {255, 186, 84});
/// cairo_rotate(canvas.Cairo({120, 90, 400, 100}), 0.1);  // with <cairo.h>: whatever else Cairo can
/// @endcode
///
/// Threads: one at a time for each canvas; as many canvases in as many threads as one likes. Nothing here
/// waits.
///
/// Every operation throws Error: INVALID_ARGUMENT on a canvas that was moved away, OUT_OF_MEMORY.
class KIVGLES_KIT_EXPORT Canvas {
 public:
    /// The longest side of a canvas, in pixels.
    static constexpr int MAX_SIDE = 32767;

    /// Makes a transparent canvas.
    /// @param size Pixels, of four bytes each.
    /// @throws Error INVALID_ARGUMENT for a size of 0 or less, TOO_LARGE above MAX_SIDE.
    explicit Canvas(kit::Size size);

    ~Canvas();

    /// @param other Can only be assigned to or destroyed afterwards.
    Canvas(Canvas&& other) noexcept;

    /// @param other Can only be assigned to or destroyed afterwards.
    /// @return This canvas.
    Canvas& operator=(Canvas&& other) noexcept;

    /// @return Its size in pixels.
    kit::Size Size() const;

    /// Reads a picture.
    /// @param path A PNG file.
    /// @return A canvas of the picture's size.
    /// @throws Error BAD_FILE if the file cannot be read or is no PNG, TOO_LARGE.
    static Canvas FromPng(const std::string& path);

    /// Writes the picture.
    /// @param path The file, which is replaced if there is one.
    /// @throws Error BAD_FILE if it cannot be written; there may be a part of it then.
    void WritePng(const std::string& path) const;

    /// @name Shapes
    /// @{

    /// Replaces everything.
    /// @param fill Of every pixel from now on.
    void Clear(const Fill& fill = TRANSPARENT);

    /// Replaces a part. Pixels that an edge crosses keep a share of what was there.
    /// @param rect The part.
    /// @param fill Of the part from now on.
    void Clear(const Rect& rect, const Fill& fill);

    /// @param rect Where.
    /// @param fill With what.
    void Rectangle(const Rect& rect, const Fill& fill);

    /// @param rect Where.
    /// @param radius Of the corners; at most half of the shorter side, and 15,000.
    /// @param fill With what.
    void RoundedRectangle(const Rect& rect, double radius, const Fill& fill);

    /// Fills a circle.
    /// @param center Its centre.
    /// @param radius Its radius.
    /// @param fill With what.
    void Disc(const Point& center, double radius, const Fill& fill);

    /// Draws a circle's outline.
    /// @param center Its centre.
    /// @param radius Its outer radius.
    /// @param thickness Of the outline, inwards.
    /// @param fill With what.
    void Ring(const Point& center, double radius, double thickness, const Fill& fill);

    /// Draws a part of a circle's outline, with straight ends.
    /// @param center The circle's centre.
    /// @param radius Its outer radius.
    /// @param thickness Of the outline, inwards.
    /// @param start The angle where it begins.
    /// @param sweep How far it goes; counter-clockwise if negative. 360 is a ring.
    /// @param fill With what.
    void Arc(const Point& center, double radius, double thickness, double start, double sweep,
             const Fill& fill);

    /// Draws a thick line with round ends, which reach half of its thickness beyond both points.
    /// @param from The middle of its beginning.
    /// @param to The middle of its end.
    /// @param thickness At most 30,000.
    /// @param fill With what.
    void Line(const Point& from, const Point& to, double thickness, const Fill& fill);

    /// Draws a thick line through points, with round ends and corners.
    /// @param points The middle of the line, in their order.
    /// @param thickness At most 30,000.
    /// @param fill With what; where the line crosses itself it blends once.
    void Polyline(const std::vector<Point>& points, double thickness, const Fill& fill);

    /// Fills the area between points. Parts that they go round more than once are filled too, unless as often
    /// in one direction as in the other.
    /// @param points The corners, in their order; the last is joined to the first.
    /// @param fill With what.
    void Polygon(const std::vector<Point>& points, const Fill& fill);

    /// Draws a level: a bar filled from the left up to a share of its width, to a whole pixel.
    /// @param rect The whole bar.
    /// @param level From 0 to 1; less counts as 0, as what is no number does, and more as 1.
    /// @param filled Up to the level.
    /// @param rest Beyond it.
    void Bar(const Rect& rect, double level, const Fill& filled, const Fill& rest);
    /// @}

    /// @name Pictures
    /// @{

    /// Draws an image.
    /// @param image Its pixels are read until the call returns.
    /// @param to Where it goes, scaled to fill it.
    /// @param opacity From 0, which draws nothing, to 1.
    /// @throws Error INVALID_ARGUMENT for an image without pixels or size, TOO_LARGE above MAX_SIDE.
    void Draw(const Image& image, const Rect& to, double opacity = 1);

    /// Draws another canvas.
    /// @param source Which; it is only read.
    /// @param to Where it goes, scaled to fill it.
    /// @param opacity From 0, which draws nothing, to 1.
    /// @throws Error INVALID_ARGUMENT if it is this one.
    void Draw(const Canvas& source, const Rect& to, double opacity = 1);

    /// Draws another canvas in its own size.
    /// @param source Which; it is only read.
    /// @param to Where its top-left corner goes.
    /// @param opacity From 0, which draws nothing, to 1.
    /// @throws Error INVALID_ARGUMENT if it is this one.
    void Draw(const Canvas& source, const Point& to, double opacity = 1);
    /// @}

    /// @name Cairo
    /// For all that Cairo can besides: paths, rotation, dashes, other operators. A context is the canvas'
    /// own, in the state of a new one, not to be destroyed, and good until the next is asked for or the
    /// canvas goes. It is asked for anew for each use: asking is what counts as a change, so what is painted
    /// after the canvas was presented with a context of before may never be shown.
    /// @{

    /// A context for everything, which counts as a change of everything.
    /// @return Never null.
    cairo_t* Cairo();

    /// A context for a part, which counts as a change of that part.
    /// @param rect The part; the context is clipped to the pixels that this touches.
    /// @return Never null.
    cairo_t* Cairo(const Rect& rect);
    /// @}

 private:
    friend class CanvasState;

    std::unique_ptr<CanvasState> state;  // null: moved away
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CANVAS_H
