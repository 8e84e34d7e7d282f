#ifndef KIVGLES_TESTS_KIT_STAGE_H
#define KIVGLES_TESTS_KIT_STAGE_H

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kivgles/kit/Canvas.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"
#include "support/X11Window.h"

namespace kivgles::kit {

constexpr Color RED = {255, 0, 0}, GREEN = {0, 255, 0}, BLUE = {0, 0, 255};
constexpr Color WHITE = {255, 255, 255}, BLACK = {0, 0, 0};

// A window with a screen on it and a layer of its size. Throws, and so fails the test, when there is no X
// server. A window that is looked at has more than the 16 KiB that a driver may hold back among its requests.
struct Stage {
    explicit Stage(Size size = {120, 60}, int maxSide = Screen::MAX_LAYER_SIDE)
        : window(static_cast<unsigned int>(size.width), static_cast<unsigned int>(size.height)),
          screen({}, maxSide),
          layer((screen.Connect(window.Native()), screen), size) {}

    // Whether the window has this colour at each of these places, when what was shown last is there.
    testing::AssertionResult Shows(const Color& color, const std::vector<std::pair<int, int>>& places) {
        screen.Finish();
        const auto rgb = static_cast<unsigned long>(color.r << 16 | color.g << 8 | color.b);
        for (const auto& [x, y] : places) {
            if (!window.Shows(rgb, x, y)) {
                return testing::AssertionFailure() << "not at " << x << "," << y;
            }
        }
        return testing::AssertionSuccess();
    }

    X11Window window;
    Screen screen;
    Layer layer;
};

// What the Error says that is thrown; empty for none.
template <typename Act>
std::string ErrorOf(Act act) {
    try {
        act();
        return "";
    } catch (const Error& error) {
        return error.what();
    }
}

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_STAGE_H
