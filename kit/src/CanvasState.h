#ifndef KIVGLES_KIT_CANVASSTATE_H
#define KIVGLES_KIT_CANVASSTATE_H

#include <memory>
#include <vector>

#include "Checks.h"
#include "Handle.h"
#include "kivgles/kit/Canvas.h"

namespace kivgles::kit {

// Whether places and lengths can be counted in pixels. Sums of a few such are numbers, too.
template <typename... Number>
bool AreCountable(Number... numbers) {
    constexpr double MOST = 1e15;
    return ((numbers >= -MOST && numbers <= MOST) && ...);
}

// The pixels of a canvas, how they are painted, and what each of those who show it has not got yet.
//
// Owner:  a Canvas. It stays where it is when the Canvas is moved.
// Thread: the one that uses the canvas.
class CanvasState {
 public:
    // Transparent. Throws for an operation.
    CanvasState(const Size& pixels, const char* operationName);

    // Of a canvas that an operation uses; throws if it was moved away.
    static CanvasState& Of(const Canvas& canvas, const char* operationName);

    // As Cairo's ARGB32 has them: premultiplied, in the machine's order of bytes, row by row.
    std::uint8_t* Pixels();

    // The pixels that an area touches; none if it is not countable.
    PixelRect Touched(const Rect& area) const;

    void Changed(const PixelRect& rect);  // inside of the picture

    // Belongs to one who shows pictures: what it has not got yet of the one that it took over last, or null.
    using Receiver = std::shared_ptr<cairo_region_t>;
    // For a receiver that is about to take over what it lacks: never less than what has changed, sometimes
    // more, and everything if what it took over last was another picture. Disjoint.
    std::vector<PixelRect> Take(Receiver& receiver);

    // For the client, who may leave it in any state. The area counts as changed; the former one is gone.
    cairo_t* ClientContext(const Rect& area);
    cairo_surface_t* Surface() const { return surface.get(); }

    // Begins an operation: what is added to the path is then painted in one go. Cairo is right up to some
    // 100,000 pixels; what reaches farther is cut, out of every canvas' sight.
    CanvasState& Begin(const char* operationName);
    static CanvasState& Begin(const Canvas& canvas, const char* operationName) {
        return Of(canvas, operationName).Begin(operationName);
    }

    // Nothing is added of what has no extent, or a place or length that is not countable.
    CanvasState& AddRectangle(const Rect& rect);
    CanvasState& AddRoundedRectangle(const Rect& rect, double radius);
    // Angles in degrees. Without an inner radius above 0 it reaches the centre.
    CanvasState& AddArc(const Point& center, double outer, double inner, double start, double sweep);
    CanvasState& AddLines(const std::vector<Point>& points, bool closed);

    void Fill(const kit::Fill& fill, cairo_operator_t how = CAIRO_OPERATOR_OVER);
    void Stroke(const kit::Fill& fill, double thickness);
    // A picture, scaled to fill `to`. Throws for an image that is none, and a canvas that was moved away.
    void Draw(cairo_surface_t* picture, const Size& pictureSize, const Rect& to, double opacity);
    void Draw(const Image& image, const Rect& to, double opacity);
    void Draw(const Canvas& picture, const Rect& to, double opacity);
    // Where the path is: calls what paints there with the context.
    template <typename Paint>
    void Within(Paint paint) {
        if (Touch(0)) {
            cairo_save(context.get());
            cairo_clip(context.get());
            paint(context.get());
            cairo_restore(context.get());
        }
        Check(context);
    }

    const Size size;

 private:
    Handle<cairo_t> NewContext();
    bool SetSource(const kit::Fill& fill);
    bool Touch(double reach);
    void Check(const Handle<cairo_t>& painted) const;

    const Handle<cairo_surface_t> surface;  // has the pixels, and is only read
    Handle<cairo_t> context;
    const char* operation = "";
    Handle<cairo_t> clientContext;
    std::vector<std::weak_ptr<cairo_region_t>> receivers;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CANVASSTATE_H
