#ifndef KIVGLES_KIT_PAINTER_H
#define KIVGLES_KIT_PAINTER_H

#include <vector>

#include "CanvasState.h"
#include "kivgles/kit/Canvas.h"

namespace kivgles::kit {

// One operation on a canvas: what is added to the path is then painted in one go. Cairo is right up to some
// 100,000 pixels; what reaches farther is cut, out of every canvas' sight.
//
// Owner, thread: the operation's.
class Painter {
 public:
    Painter(CanvasState& painted, const char* operationName);
    // Throws if the canvas was moved away.
    Painter(const Canvas& painted, const char* operationName)
        : Painter(CanvasState::Of(painted, operationName), operationName) {}

    // Nothing is added of what has no extent, or a place or length that is not countable.
    Painter& AddRectangle(const Rect& rect);
    Painter& AddRoundedRectangle(const Rect& rect, double radius);
    // Angles in degrees. Without an inner radius above 0 it reaches the centre.
    Painter& AddArc(const Point& center, double outer, double inner, double start, double sweep);
    Painter& AddLines(const std::vector<Point>& points, bool closed);

    void Fill(const kit::Fill& fill, cairo_operator_t how = CAIRO_OPERATOR_OVER);
    void Stroke(const kit::Fill& fill, double thickness);
    // A picture, scaled to fill `to`. Throws for an image that is none, and a canvas that was moved away.
    void Draw(cairo_surface_t* picture, const Size& size, const Rect& to, double opacity);
    void Draw(const Image& image, const Rect& to, double opacity);
    void Draw(const Canvas& picture, const Rect& to, double opacity);
    // Where the path is: calls what paints there with the context.
    template <typename Paint>
    void Within(Paint paint) {
        if (Touch(0)) {
            cairo_save(context);
            cairo_clip(context);
            paint(context);
            cairo_restore(context);
        }
        Check();
    }

 private:
    bool SetSource(const kit::Fill& fill);
    bool Touch(double reach);
    void Check() const;

    CanvasState& canvas;
    const char* const operation;
    cairo_t* const context;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_PAINTER_H
