#ifndef KIVGLES_KIT_CANVAS_H
#define KIVGLES_KIT_CANVAS_H

#include <memory>
#include <string>
#include <vector>

#include "kivgles/kit/Error.h"
#include "kivgles/kit/Geometry.h"

/// @cond
struct _cairo;
typedef struct _cairo cairo_t;
/// @endcond

namespace kivgles::kit {

class CanvasState;

/// A view of pixels that the client has loaded and keeps until the call that is given it returns.
struct Image {
    /// `size.width` * `size.height` pixels of four bytes R, G, B, A, top row first, without padding.
    const std::uint8_t* pixels = nullptr;
    Size size;  ///< Of the image in its own pixels; drawn it is scaled to where it goes.
    /// Whether R, G and B have been multiplied by A already, as Cairo and many decoders do it. PNG does not.
    bool premultiplied = false;
};

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
/// waits. Arguments are only read, and until the call returns.
///
/// Every operation throws Error: OUT_OF_MEMORY, and INVALID_ARGUMENT on a canvas that was moved away, good
/// only to be assigned to or destroyed.
class KIVGLES_KIT_EXPORT Canvas {
 public:
    static constexpr int MAX_SIDE = 32767;  ///< The longest side of a canvas, in pixels.

    /// Makes a transparent canvas. @param size Pixels, of four bytes each.
    /// @throws Error INVALID_ARGUMENT for a size of 0 or less, TOO_LARGE above MAX_SIDE.
    explicit Canvas(kit::Size size);

    ~Canvas();
    Canvas(Canvas&&) noexcept;             ///< The canvas stays the same for the screens that show it.
    Canvas& operator=(Canvas&&) noexcept;  ///< As above. @return This canvas.

    kit::Size Size() const;  ///< @return Its size in pixels.

    /// @param path A PNG file. @return A canvas of the picture's size.
    /// @throws Error BAD_FILE if the file cannot be read or is no PNG, TOO_LARGE.
    static Canvas FromPng(const std::string& path);

    /// @param path A PNG file, replaced if there is one. @throws Error BAD_FILE; there may be a part of it.
    void WritePng(const std::string& path) const;

    /// @name Shapes
    /// @{

    void Clear(const Fill& fill = TRANSPARENT);  ///< Replaces everything. @param fill Of every pixel.
    /// Replaces a part. Pixels on an edge keep a share of what was there. @param rect,fill Where, with what.
    void Clear(const Rect& rect, const Fill& fill);

    void Rectangle(const Rect& rect, const Fill& fill);  ///< @param rect,fill Where, and with what.
    /// @param rect,fill Where, and with what. @param radius Up to half of the shorter side, and 15,000.
    void RoundedRectangle(const Rect& rect, double radius, const Fill& fill);

    /// @param center,radius,fill Where, and with what.
    void Disc(const Point& center, double radius, const Fill& fill);
    /// @param center,radius,fill The outer edge, and with what. @param thickness Of the outline, inwards.
    void Ring(const Point& center, double radius, double thickness, const Fill& fill);
    /// A part of a ring, with straight ends. @param center,radius,thickness,fill As for a ring.
    /// @param start,sweep The angle where it begins, and how far it goes; counter-clockwise if negative.
    void Arc(const Point& center, double radius, double thickness, double start, double sweep,
             const Fill& fill);

    /// A line with round ends, which reach half of its thickness beyond both points.
    /// @param from,to,thickness,fill The middle of its ends, pixels up to 30,000, and with what.
    void Line(const Point& from, const Point& to, double thickness, const Fill& fill);
    /// A line through points, with round ends and corners. Where it crosses itself it blends once.
    /// @param points,thickness,fill The middle of the line, pixels up to 30,000, and with what.
    void Polyline(const std::vector<Point>& points, double thickness, const Fill& fill);
    /// The area that points go round, more often in one direction than in the other.
    /// @param points,fill The corners, the last of which is joined to the first, and with what.
    void Polygon(const std::vector<Point>& points, const Fill& fill);

    /// A bar that is filled from the left up to a share of its width, to a whole pixel.
    /// @param rect,level Where; the share, 0 to 1 (no number: 0). @param filled,rest Up to there, and beyond.
    void Bar(const Rect& rect, double level, const Fill& filled, const Fill& rest);
    /// @}

    /// @name Pictures
    /// Scaled to fill where they go. An opacity of 0 draws nothing. They throw Error INVALID_ARGUMENT for an
    /// image without pixels or size and for this canvas itself, TOO_LARGE for an image above MAX_SIDE.
    /// @{

    /// @param image,to,opacity What, where, and how much of it: from 0 to 1.
    void Draw(const Image& image, const Rect& to, double opacity = 1);
    /// @param source,to,opacity What, where, and how much of it: from 0 to 1.
    void Draw(const Canvas& source, const Rect& to, double opacity = 1);
    /// @param source,to,opacity What, unscaled, where its top-left corner goes, and how much of it.
    void Draw(const Canvas& source, const Point& to, double opacity = 1);
    /// @}

    /// @name Cairo
    /// For all that Cairo can besides: paths, rotation, dashes, other operators. A context is the canvas'
    /// own, never null, in the state of a new one, not to be destroyed, and good until the next is asked for
    /// or the canvas goes. It is asked for anew for each use: asking is what counts as a change, so what is
    /// painted after the canvas was presented with a context of before may never be shown.
    /// @{

    cairo_t* Cairo();  ///< @return A context for everything, which counts as a change of everything.
    /// @param rect The part that counts as changed. @return A context, clipped to the pixels that it touches.
    cairo_t* Cairo(const Rect& rect);
    /// @}

 private:
    friend class CanvasState;

    std::unique_ptr<CanvasState> state;  // null: moved away
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CANVAS_H
