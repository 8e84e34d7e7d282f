#ifndef KIVGLES_KIT_CANVASSTATE_H
#define KIVGLES_KIT_CANVASSTATE_H

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "ChangeList.h"
#include "Handle.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

class Canvas;

// Whether places and lengths can be counted in pixels. Sums of a few such are numbers, too.
template <typename... Number>
bool AreCountable(Number... numbers) {
    constexpr double MOST = 1e15;
    return ((numbers >= -MOST && numbers <= MOST) && ...);
}

// The pixels of a canvas, what Cairo paints them with, and what has changed in them.
//
// Owner:  a Canvas. It stays where it is when the Canvas is moved.
// Thread: the one that uses the canvas.
class CanvasState {
 public:
    // Transparent. Throws for `operation`.
    CanvasState(kit::Size pixels, const char* operation);
    CanvasState(const CanvasState&) = delete;
    CanvasState& operator=(const CanvasState&) = delete;

    // Of a canvas that `operation` uses; throws if it was moved away.
    static CanvasState& Of(const Canvas& canvas, const char* operation);

    // Of the picture, whichever Canvas has it: unique in the process, and never used again.
    std::uint64_t Identity() const { return identity; }
    kit::Size Size() const { return size; }

    // As Cairo's ARGB32 has them: premultiplied, in the machine's order of bytes.
    std::uint8_t* Pixels();
    int Stride() const { return size.width * 4; }  // bytes

    // What a receiver keeps, and asks with for what it has not got yet.
    std::uint64_t Revision() { return changes.Revision(); }
    std::vector<PixelRect> ChangesSince(std::uint64_t revision) { return changes.Since(revision); }

    // The pixels that an area touches; none if it is not countable.
    PixelRect Touched(const Rect& area) const;
    PixelRect Whole() const { return {0, 0, size.width, size.height}; }
    void Changed(const PixelRect& rect) { changes.Add(rect); }

    // For the kit itself, without a clip.
    cairo_t* Context();
    // For the client, who may leave it in any state; the former one is gone. Throws for `operation`.
    cairo_t* ClientContext(const PixelRect& clip, const char* operation);
    cairo_surface_t* Surface() { return surface.get(); }

 private:
    Handle<cairo_surface_t> NewSurface();

    struct Free {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };

    const std::uint64_t identity;
    const kit::Size size;
    const std::unique_ptr<std::uint8_t, Free> pixels;
    const Handle<cairo_surface_t> surface;  // on the pixels, as is each that a client gets
    Handle<cairo_t> context;
    Handle<cairo_t> clientContext;
    ChangeList changes;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_CANVASSTATE_H
