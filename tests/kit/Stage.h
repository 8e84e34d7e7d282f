#ifndef KIVGLES_TESTS_KIT_STAGE_H
#define KIVGLES_TESTS_KIT_STAGE_H

#include <gtest/gtest.h>

#include "CanvasState.h"
#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"
#include "support/X11Window.h"

namespace kivgles::kit {

constexpr Color RED = {255, 0, 0}, GREEN = {0, 255, 0}, BLUE = {0, 0, 255};
constexpr Color WHITE = {255, 255, 255}, BLACK = {0, 0, 0};
using Places = std::vector<std::pair<int, int>>;

// 0xAARRGGBB, premultiplied, row by row.
inline std::vector<std::uint32_t> PixelsOf(const Canvas& canvas) {
    const auto* const first = reinterpret_cast<std::uint32_t*>(CanvasState::Of(canvas, "").Pixels());
    return {first, first + Area(Whole(canvas.Size()))};
}

// The code of the Error that is thrown, and what it says; empty for none.
template <typename Act>
std::string ErrorOf(Act act) try {
    act();
    return "";
} catch (const Error& error) {
    return std::to_string(error.Code()) + " " + error.what();
}

// A window, of more than the 16 KiB that a driver may hold back among requests, with a screen and a layer.
struct Stage {
    Stage() : window(120, 60) {
        screen.Connect(window.Native());
        layer = std::make_unique<Layer>(screen, screen.Size());
    }

    // Returns, true, when the window has this colour at each of these places.
    bool Shows(const Color& color, const Places& places) {
        screen.Finish();
        const auto rgb = static_cast<unsigned long>(color.r << 16 | color.g << 8 | color.b);
        return std::all_of(places.begin(), places.end(),
                           [&](const auto& place) { return window.Shows(rgb, place.first, place.second); });
    }

    X11Window window;
    Screen screen = Screen({}, 4000);  // pixels on a side of a layer, at most
    std::unique_ptr<Layer> layer;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_STAGE_H
