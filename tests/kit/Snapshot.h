#ifndef KIVGLES_TESTS_KIT_SNAPSHOT_H
#define KIVGLES_TESTS_KIT_SNAPSHOT_H

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "CanvasState.h"
#include "kivgles/kit/Canvas.h"
#include "kivgles/kit/Error.h"

namespace kivgles::kit {

// The pixels of a canvas at some time: 0xAARRGGBB, premultiplied.
struct Snapshot {
    explicit Snapshot(const Canvas& canvas) : size(canvas.Size()) {
        pixels.resize(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height));
        std::memcpy(pixels.data(), CanvasState::Of(canvas, "").Pixels(), 4 * pixels.size());
    }
    std::uint32_t At(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * size.width + x)); }
    bool operator==(const Snapshot& other) const { return pixels == other.pixels; }

    Size size;
    std::vector<std::uint32_t> pixels;
};

// What is painted on a new canvas.
template <typename Paint>
Snapshot Painted(Size size, Paint paint) {
    Canvas canvas(size);
    paint(canvas);
    return Snapshot(canvas);
}

// The code of the Error that is thrown, and what it says; empty for none.
template <typename Act>
std::string ErrorOf(Act act) {
    try {
        act();
        return "";
    } catch (const Error& error) {
        return std::to_string(error.Code()) + " " + error.what();
    }
}

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_SNAPSHOT_H
