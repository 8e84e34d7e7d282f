#include "WindowPicture.h"

#include <memory>
#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace examples::osd_demo {

namespace {

// Xlib's own answer to a request that the server refuses is to end the program.
class ErrorsIgnored {
 public:
    ErrorsIgnored() : former(XSetErrorHandler([](Display*, XErrorEvent*) { return 0; })) {}
    ~ErrorsIgnored() { XSetErrorHandler(former); }
    ErrorsIgnored(const ErrorsIgnored&) = delete;
    ErrorsIgnored& operator=(const ErrorsIgnored&) = delete;

 private:
    XErrorHandler former;
};

struct Closer {
    void operator()(Display* display) const { XCloseDisplay(display); }
    void operator()(XImage* image) const { XDestroyImage(image); }
};

// One channel of a pixel, from the bits of `mask` to 0..255.
std::uint8_t Channel(unsigned long pixel, unsigned long mask) {
    return mask == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>((pixel & mask) * 255 / mask);
}

}  // namespace

Image ReadWindow(const ANativeWindow* window) {
    const auto id = reinterpret_cast<Window>(window);
    const ErrorsIgnored ignored;
    const std::unique_ptr<Display, Closer> display(XOpenDisplay(nullptr));
    if (display == nullptr) {
        throw std::runtime_error("the X server is gone");
    }
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display.get(), id, &attributes) == 0) {
        throw std::runtime_error("the window is gone");
    }
    const std::unique_ptr<XImage, Closer> picture(
        XGetImage(display.get(), id, 0, 0, static_cast<unsigned int>(attributes.width),
                  static_cast<unsigned int>(attributes.height), AllPlanes, ZPixmap));
    if (picture == nullptr) {
        throw std::runtime_error(
            "the X server does not give the window's picture: is all of it on the screen?");
    }

    Image image(static_cast<std::uint32_t>(attributes.width), static_cast<std::uint32_t>(attributes.height));
    for (std::uint32_t y = 0; y < image.height; ++y) {
        for (std::uint32_t x = 0; x < image.width; ++x) {
            const unsigned long pixel = XGetPixel(picture.get(), static_cast<int>(x), static_cast<int>(y));
            image.Set(x, y,
                      {Channel(pixel, picture->red_mask), Channel(pixel, picture->green_mask),
                       Channel(pixel, picture->blue_mask), 255});
        }
    }
    return image;
}

}  // namespace examples::osd_demo
