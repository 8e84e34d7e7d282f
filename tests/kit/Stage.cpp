#include "Stage.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kivgles::kit {

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

Picture Stage::Show(Layer& layer) {
    static std::uint8_t frame = 0;
    frame = frame == 250 ? std::uint8_t{10} : static_cast<std::uint8_t>(frame + 10);
    const Size size = layer.Size();
    layer.Rectangle({size.width - 1, size.height - 1, 1, 1}, {frame, 0, frame});
    screen.Present(layer);
    screen.Finish();
    const Size shown = screen.Size();
    EXPECT_TRUE(window.Shows(frame * 0x10001UL, shown.width - 1, shown.height - 1));
    Picture picture = ReadWindow(window, shown);
    picture.pixels.back() = 0;
    return picture;
}

Picture ReadWindow(const X11Window& window, Size size) {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        throw std::runtime_error("this test needs an X server and found none");
    }
    XImage* const image = XGetImage(display, reinterpret_cast<Window>(window.Native()), 0, 0,
                                    static_cast<unsigned int>(size.width),
                                    static_cast<unsigned int>(size.height), AllPlanes, ZPixmap);
    Picture picture = {size.width, size.height, {}};
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            picture.pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y) & 0xFFFFFF));
        }
    }
    XDestroyImage(image);
    XCloseDisplay(display);
    return picture;
}

}  // namespace kivgles::kit
