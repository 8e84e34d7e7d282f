// Cairo alone: what one would write without the library. The X server gets what has changed.

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "CairoPainter.h"
#include "Contestant.h"

namespace bench {

const char* const CONTESTANT_NAME = "ximage";

namespace {

CairoPainter painter;
Display* display;
Window target;
GC graphics;
XImage* image;

}  // namespace

unsigned long Start(unsigned long window, int, int) {
    display = XOpenDisplay(nullptr);
    target = window;
    graphics = XCreateGC(display, target, 0, nullptr);
    // The frame is whole though the other contestants' windows cover it, and only a part of it is put again.
    XSetWindowAttributes attributes{};
    attributes.backing_store = Always;
    XChangeWindowAttributes(display, target, CWBackingStore, &attributes);
    const int screen = DefaultScreen(display);
    image = XCreateImage(display, DefaultVisual(display, screen),
                         static_cast<unsigned int>(DefaultDepth(display, screen)), ZPixmap, 0,
                         reinterpret_cast<char*>(painter.Pixels()), WINDOW_WIDTH, WINDOW_HEIGHT, 32, 0);
    if (image == nullptr || image->bits_per_pixel != 32) {
        Fail("the X server's pixels are not of 32 bits");
    }
    return window;
}

void Show(const Picture& picture) {
    painter.Paint(picture);
    (void)painter.Pixels();  // Cairo is done with them
    const auto& [x, y, width, height] = picture.changed;
    if (width > 0) {
        XPutImage(display, target, graphics, image, x, y, x, y, static_cast<unsigned int>(width),
                  static_cast<unsigned int>(height));
    }
    XSync(display, False);
}

}  // namespace bench
