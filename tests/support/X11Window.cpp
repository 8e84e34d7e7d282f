#include "support/X11Window.h"

#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kivgles {

X11Window::X11Window(unsigned int width, unsigned int height, int x, int y) : display(XOpenDisplay(nullptr)) {
    if (display == nullptr) {
        throw std::runtime_error("this test needs an X server and found none");
    }
    XSetWindowAttributes attributes = {};
    attributes.backing_store = Always;
    window = XCreateWindow(display, DefaultRootWindow(display), x, y, width, height, 0, CopyFromParent,
                           InputOutput, nullptr, CWBackPixel | CWBackingStore, &attributes);
    XMapWindow(display, window);
    XSync(display, False);
}

X11Window::~X11Window() { XCloseDisplay(display); }

void X11Window::Resize(unsigned int width, unsigned int height) {
    XResizeWindow(display, window, width, height);
    XSync(display, False);
}

bool X11Window::Shows(unsigned long color, int x, int y) const {
    bool shows = false;
    for (int roundTrips = 0; roundTrips < 1000 && !shows; ++roundTrips) {
        XImage* const image = XGetImage(display, window, x, y, 1, 1, AllPlanes, ZPixmap);
        shows = (XGetPixel(image, 0, 0) & 0xFFFFFF) == color;
        XDestroyImage(image);
    }
    return shows;
}

}  // namespace kivgles
