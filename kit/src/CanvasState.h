#ifndef KIVGLES_KIT_CANVASSTATE_H
#define KIVGLES_KIT_CANVASSTATE_H

#include <memory>
#include <vector>

#include "Handle.h"
#include "Sizes.h"

namespace kivgles::kit {

class Canvas;

// Whether places and lengths can be counted in pixels. Sums of a few such are numbers, too.
template <typename... Number>
bool AreCountable(Number... numbers) {
    constexpr double MOST = 1e15;
    return ((numbers >= -MOST && numbers <= MOST) && ...);
}

// The pixels of a canvas, what Cairo paints them with, and what each of those who show it has not got yet.
//
// Owner:  a Canvas. It stays where it is when the Canvas is moved.
// Thread: the one that uses the canvas.
class CanvasState {
 public:
    // Transparent. Throws for `operation`.
    CanvasState(const Size& pixels, const char* operation);
    CanvasState(const CanvasState&) = delete;
    CanvasState& operator=(const CanvasState&) = delete;

    // Of a canvas that `operation` uses; throws if it was moved away.
    static CanvasState& Of(const Canvas& canvas, const char* operation);

    // As Cairo's ARGB32 has them: premultiplied, in the machine's order of bytes, row by row.
    std::uint8_t* Pixels();

    // The pixels that an area touches; none if it is not countable.
    PixelRect Touched(const Rect& area) const;

    void Changed(const PixelRect& rect);  // inside of the picture

    // Stands for one who shows pictures, and for what it has got: null for nothing.
    using Receiver = std::shared_ptr<const int>;
    // For a receiver that is about to take over what it lacks: never less than what has changed, sometimes
    // more, and everything if what it took over last was another picture. Disjoint.
    std::vector<PixelRect> Take(Receiver& receiver);

    // For the kit itself, without a clip.
    cairo_t* Context();
    // For the client, who may leave it in any state, to paint there, which counts as changed; the former one
    // is gone. Throws for `operation`.
    cairo_t* ClientContext(const Rect& area, const char* operation);
    cairo_surface_t* Surface() const { return surface.get(); }

    const Size size;

 private:
    struct Missing {
        std::weak_ptr<const int> receiver;
        Handle<cairo_region_t> region;
    };

    const Handle<cairo_surface_t> surface;
    Handle<cairo_t> context;
    Handle<cairo_t> clientContext;  // on a surface of its own, of the same pixels
    std::vector<Missing> missing;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CANVASSTATE_H
