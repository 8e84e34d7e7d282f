#include "support/X11Window.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kivgles {

X11Connection ConnectToX11(const char* server) {
    XInitThreads();
    if (Display* const display = XOpenDisplay(server)) {
        return {display, XCloseDisplay};
    }
    throw std::runtime_error("this test needs an X server and found none");
}

X11Window::X11Window(unsigned int width, unsigned int height, X11Connection to)
    : connection(std::move(to)), display(connection.get()) {
    XSetWindowAttributes attributes = {};
    attributes.backing_store = Always;
    attributes.override_redirect = True;
    window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, width, height, 0, 0, 0);
    XChangeWindowAttributes(display, window, CWBackingStore | CWOverrideRedirect, &attributes);
    XMapWindow(display, window);
    XSync(display, False);
}

X11Window::~X11Window() {
    XDestroyWindow(display, window);
    XFlush(display);
}

void X11Window::Resize(unsigned int width, unsigned int height) {
    XResizeWindow(display, window, width, height);
    XSync(display, False);
}

bool X11Window::Shows(unsigned long color, int x, int y) const {
    std::fprintf(stderr, "awaiting #%06lx at %d,%d\n", color, x, y);
    for (unsigned long shown = ~color; shown != color;) {
        XImage* const image = XGetImage(display, window, x, y, 1, 1, AllPlanes, ZPixmap);
        shown = XGetPixel(image, 0, 0) & 0xFFFFFF;
        XDestroyImage(image);
    }
    return true;
}

}  // namespace kivgles
