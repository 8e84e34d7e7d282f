#ifndef KIVGLES_TESTS_KIT_STAGE_H
#define KIVGLES_TESTS_KIT_STAGE_H

#include <cstdint>
#include <cstdlib>
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
    Size size;
    std::vector<std::uint32_t> pixels;

    // Black outside of it.
    std::uint32_t At(int x, int y) const {
        const bool inside = x >= 0 && x < size.width && y >= 0 && y < size.height;
        return inside ? pixels[static_cast<std::size_t>(y * size.width + x)] : 0;
    }

    // Whether each of these pixels has the colour, but for what blending rounds.
    testing::AssertionResult Shows(Color color, const std::vector<std::pair<int, int>>& places) const {
        const auto isNear = [](int a, int b) { return std::abs((a & 0xFF) - b) <= 2; };
        for (const auto& [x, y] : places) {
            const auto pixel = static_cast<int>(At(x, y));
            if (!isNear(pixel >> 16, color.r) || !isNear(pixel >> 8, color.g) || !isNear(pixel, color.b)) {
                return testing::AssertionFailure() << "at " << x << "," << y << ": " << std::hex << pixel;
            }
        }
        return testing::AssertionSuccess();
    }
};

// A window with a screen on it and a layer of its size. Throws, and so fails the test, when there is no X
// server. A window that is looked at has more than the 16 KiB that a driver may hold back among its requests.
class Stage {
 public:
    explicit Stage(Size size = {120, 60}, int maxLayerSide = Screen::MAX_LAYER_SIDE)
        : window(static_cast<unsigned int>(size.width), static_cast<unsigned int>(size.height)),
          screen(maxLayerSide),
          layer(Begin()) {}
    Stage(Size size, const std::string& font) : Stage(size) { screen.LoadFont(font); }

    // What the window shows of a layer. The bottom right pixel is the layer's own last: it gets a colour that
    // it did not have before, so that it is known when the X server is done.
    Picture Show(Layer& shown) {
        const Size size = screen.Size();
        marker = static_cast<std::uint8_t>(marker % 250 + 10);
        shown.Rectangle({shown.Size().width - 1, shown.Size().height - 1, 1, 1}, {marker, 0, marker});
        screen.Present(shown);
        screen.Finish();
        EXPECT_TRUE(window.Shows(marker * 0x10001UL, size.width - 1, size.height - 1));
        Picture picture = {size, window.Pixels(0, 0, size.width, size.height)};
        picture.pixels.back() = 0;
        return picture;
    }
    Picture Show() { return Show(layer); }

    X11Window window;
    Screen screen;
    Layer layer;

 private:
    Layer Begin() {
        screen.Connect(window.Native());
        return Layer(screen, screen.Size());
    }

    std::uint8_t marker = 0;
};

// The code of the Error that is thrown, 0 for none.
template <typename Act>
int CodeOf(Act act) {
    try {
        act();
        return 0;
    } catch (const Error& error) {
        return error.Code();
    }
}

}  // namespace kivgles::kit

#endif  // KIVGLES_TESTS_KIT_STAGE_H
