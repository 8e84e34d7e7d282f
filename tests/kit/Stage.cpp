#include "Stage.h"

#include <algorithm>
#include <cstdlib>

namespace kivgles::kit {

std::uint32_t Picture::At(int x, int y) const {
    const bool inside = x >= 0 && x < width && y >= 0 && y < height;
    return inside ? pixels[static_cast<std::size_t>(y * width + x)] : 0;
}

testing::AssertionResult Picture::Shows(Color color, const std::vector<std::pair<int, int>>& at,
                                        int tolerance) const {
    for (const auto& [x, y] : at) {
        const std::uint32_t pixel = At(x, y);
        const auto differs = [&, found = pixel](int shift, std::uint8_t expected) {
            return std::abs(static_cast<int>(found >> shift & 0xFF) - expected) > tolerance;
        };
        if (differs(16, color.r) || differs(8, color.g) || differs(0, color.b)) {
            return testing::AssertionFailure() << "at " << x << "," << y << " it shows " << std::hex << pixel;
        }
    }
    return testing::AssertionSuccess();
}

void PrintTo(const Picture& picture, std::ostream* out) {
    const Rect ink = Ink(picture);
    *out << ink.width << " by " << ink.height << " at " << ink.x << "," << ink.y << "\n";
    for (int y = ink.y; y < ink.y + ink.height; ++y) {
        for (int x = ink.x; x < ink.x + ink.width; ++x) {
            const std::uint32_t pixel = picture.At(x, y);
            *out << (pixel == 0 ? '.' : pixel == 0xFFFFFF ? '#' : '+');
        }
        *out << "\n";
    }
}

Rect Ink(const Picture& picture) {
    int left = picture.width;
    int top = picture.height;
    int right = 0;
    int bottom = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.At(x, y) != 0) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
    }
    return right == 0 ? Rect{} : Rect{left, top, right - left, bottom - top};
}

Picture Stage::Show(Layer& shown) {
    static std::uint8_t frame = 0;
    frame = frame == 250 ? std::uint8_t{10} : static_cast<std::uint8_t>(frame + 10);
    shown.Rectangle({shown.Size().width - 1, shown.Size().height - 1, 1, 1}, {frame, 0, frame});
    screen.Present(shown);
    screen.Finish();
    const Size size = screen.Size();
    EXPECT_TRUE(window.Shows(frame * 0x10001UL, size.width - 1, size.height - 1));
    Picture picture = ReadWindow(window, size);
    picture.pixels.back() = 0;
    return picture;
}

Picture ReadWindow(const X11Window& window, Size size) {
    return {size.width, size.height, window.Pixels(0, 0, size.width, size.height)};
}

}  // namespace kivgles::kit
