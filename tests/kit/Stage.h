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
    CanvasState& state = CanvasState::Of(canvas, "");
    const auto* const first = reinterpret_cast<const std::uint32_t*>(state.Pixels());
    return {first, first + Area(Whole(state.size))};
}

template <typename Test>
testing::AssertionResult All(const Places& places, Test isRight) {
    for (const auto& [x, y] : places) {
        if (!isRight(x, y)) {
            return testing::AssertionFailure() << "not at " << x << "," << y;
        }
    }
    return testing::AssertionSuccess();
}

inline testing::AssertionResult Shows(const Canvas& canvas, std::uint32_t color, const Places& places) {
    return All(places, [&, pixels = PixelsOf(canvas)](int x, int y) {
        return pixels.at(static_cast<std::size_t>(y * canvas.Size().width + x)) == color;
    });
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

// A window with a screen on it and a layer of its size. Throws, and so fails the test, when there is no X
// server. A window that is looked at has more than the 16 KiB that a driver may hold back among its requests.
struct Stage {
    explicit Stage(unsigned int width = 120, unsigned int height = 60, int maxSide = Screen::MAX_LAYER_SIDE)
        : window(width, height), screen({}, maxSide) {
        screen.Connect(window.Native());
        layer = std::make_unique<Layer>(screen, screen.Size());
    }

    // Whether the window has this colour at each of these places, when what was shown last is there.
    testing::AssertionResult Shows(const Color& color, const Places& places) {
        screen.Finish();
        const auto rgb = static_cast<unsigned long>(color.r << 16 | color.g << 8 | color.b);
        return All(places, [&](int x, int y) { return window.Shows(rgb, x, y); });
    }

    X11Window window;
    Screen screen;
    std::unique_ptr<Layer> layer;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_STAGE_H
