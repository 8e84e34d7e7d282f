#ifndef KIVGLES_TESTS_KIT_STAGE_H
#define KIVGLES_TESTS_KIT_STAGE_H

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
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
constexpr Color BLACK = {0, 0, 0};

// Filled rectangles; at 40 pixels a unit is a pixel. J hangs over to the left and is wider than its advance.
constexpr char BEARINGS[] = KIVGLES_TEST_FONTS "/bearings.ttf";

// What a window shows: 0xRRGGBB a pixel.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    // Black outside of it.
    std::uint32_t At(int x, int y) const;
    // Whether each of the pixels has the colour, give or take so much of each component.
    testing::AssertionResult Shows(Color color, const std::vector<std::pair<int, int>>& at,
                                   int tolerance = 0) const;
    bool operator==(const Picture& other) const { return width == other.width && pixels == other.pixels; }
};

// '#' for white, '.' for black, '+' in between: only the part that is not black.
void PrintTo(const Picture& picture, std::ostream* out);

// The smallest rectangle with everything that is not black.
Rect Ink(const Picture& picture);

// A window with a screen on it and a layer of its size. Throws, and so fails the test, when there is no X
// server.
class Stage {
 public:
    explicit Stage(Size size = {120, 60}, int maxLayerSide = Screen::MAX_LAYER_SIDE)
        : window(static_cast<unsigned int>(size.width), static_cast<unsigned int>(size.height)),
          screen(maxLayerSide),
          layer(Begin()) {}
    Stage(Size size, const std::string& font) : Stage(size) { screen.LoadFont(font); }

    // What the window shows of a layer. The bottom right pixel is the layer's own last: it gets a colour that
    // it did not have before, so that it is known when the X server is done.
    Picture Show(Layer& shown);
    Picture Show() { return Show(layer); }

    X11Window window;
    Screen screen;
    Layer layer;

 private:
    Layer Begin() {
        screen.Connect(window.Native());
        return Layer(screen, screen.Size());
    }
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
