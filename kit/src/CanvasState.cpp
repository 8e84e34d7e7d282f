#include "CanvasState.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <string>

#include "Words.h"
#include "kivgles/kit/Canvas.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

namespace {

std::uint64_t NextIdentity() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

// Zeroed pixels, or null if there is no memory for them.
std::uint8_t* Allocate(Size size, const char* operation) {
    if (size.width <= 0 || size.height <= 0) {
        throw Error(operation, Error::INVALID_ARGUMENT, InWords(size) + " hold nothing");
    }
    if (std::max(size.width, size.height) > Canvas::MAX_SIDE) {
        throw Error(operation, Error::TOO_LARGE,
                    InWords(size) + " are more than " + std::to_string(Canvas::MAX_SIDE) + " on a side");
    }
    void* const memory =
        std::calloc(static_cast<std::size_t>(size.height), static_cast<std::size_t>(size.width) * 4);
    if (memory == nullptr) {
        throw Error(operation, Error::OUT_OF_MEMORY, "no memory for " + InWords(size));
    }
    return static_cast<std::uint8_t*>(memory);
}

}  // namespace

CanvasState::CanvasState(kit::Size pixelSize, const char* operation)
    : identity(NextIdentity()),
      size(pixelSize),
      pixels(Allocate(pixelSize, operation)),
      surface(NewSurface()),
      context(cairo_create(surface.get())) {
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY, "no memory for " + InWords(size));
    }
    Changed(Whole());
}

CanvasState& CanvasState::Of(const Canvas& canvas, const char* operation) {
    if (canvas.state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT, "the canvas was moved away");
    }
    return *canvas.state;
}

std::uint8_t* CanvasState::Pixels() {
    cairo_surface_flush(surface.get());
    return pixels.get();
}

PixelRect CanvasState::Touched(const Rect& area) const {
    if (!AreCountable(area.x, area.y, area.width, area.height) || !(area.width > 0 && area.height > 0)) {
        return {};
    }
    const auto cut = [](double place, int end) {
        return static_cast<int>(std::clamp<double>(place, 0, end));
    };
    const int x = cut(std::floor(area.x), size.width);
    const int y = cut(std::floor(area.y), size.height);
    return {x, y, cut(std::ceil(area.x + area.width), size.width) - x,
            cut(std::ceil(area.y + area.height), size.height) - y};
}

cairo_t* CanvasState::Context() {
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        context.reset(cairo_create(surface.get()));  // there may be memory again
    }
    return context.get();
}

cairo_t* CanvasState::ClientContext(const PixelRect& clip, const char* operation) {
    const Handle<cairo_surface_t> target = NewSurface();
    clientContext.reset(cairo_create(target.get()));
    cairo_rectangle(clientContext.get(), clip.x, clip.y, clip.width, clip.height);
    cairo_clip(clientContext.get());
    if (cairo_status(clientContext.get()) != CAIRO_STATUS_SUCCESS) {
        throw Error(operation, Error::OUT_OF_MEMORY);
    }
    return clientContext.get();
}

Handle<cairo_surface_t> CanvasState::NewSurface() {
    return Handle<cairo_surface_t>(cairo_image_surface_create_for_data(pixels.get(), CAIRO_FORMAT_ARGB32,
                                                                       size.width, size.height, Stride()));
}

}  // namespace kivgles::kit
