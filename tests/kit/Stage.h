#ifndef KIVGLES_TESTS_KIT_STAGE_H
#define KIVGLES_TESTS_KIT_STAGE_H

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kivgles/kit/Error.h"
#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"
#include "support/X11Window.h"

namespace kivgles::kit {

constexpr Color RED = {255, 0, 0};
constexpr Color GREEN = {0, 255, 0};
constexpr Color BLUE = {0, 0, 255};
constexpr Color WHITE = {255, 255, 255};

// What a window shows: 0xRRGGBB a pixel.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t At(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    bool operator==(const Picture& other) const { return width == other.width && pixels == other.pixels; }
};

// '#' for white, '.' for black, '+' in between: only the part that is not black.
void PrintTo(const Picture& picture, std::ostream* out);

// The smallest rectangle with everything that is not black.
Rect Ink(const Picture& picture);

// A window with a screen on it. Throws, and so fails the test, when there is no X server.
class Stage {
 public:
    explicit Stage(Size size = {120, 60}, int maxLayerSide = Screen::MAX_LAYER_SIDE)
        : window(static_cast<unsigned int>(size.width), static_cast<unsigned int>(size.height)),
          screen(maxLayerSide) {
        screen.Connect(window.Native());
    }

    // What the window shows of a layer. The bottom right pixel is the layer's own last: it gets a colour that
    // it did not have before, so that it is known when the X server is done.
    Picture Show(Layer& layer);

    X11Window window;
    Screen screen;
};

// Reads the window, as it is now.
Picture ReadWindow(const X11Window& window, Size size);

// The code of the Error that is thrown, 0 for none, with the operation in `operation` if it is not null.
template <typename Act>
int CodeOf(Act act, std::string* operation = nullptr) {
    try {
        act();
        return 0;
    } catch (const Error& error) {
        if (operation != nullptr) {
            *operation = error.Operation();
        }
        return error.Code();
    }
}

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_STAGE_H
