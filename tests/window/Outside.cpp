#include "window/Outside.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace kivgles::outside {

namespace {

// A user's own connection to the X server.
Display* User() {
    static Display* const display = XOpenDisplay(nullptr);
    return display;
}

Window Find(const std::string& title) {
    Window ignored = 0, found = 0, *windows = nullptr;
    unsigned int count = 0;
    XQueryTree(User(), DefaultRootWindow(User()), &ignored, &ignored, &windows, &count);
    for (unsigned int i = 0; i < count; ++i) {
        char* name = nullptr;
        found = XFetchName(User(), windows[i], &name) != 0 && title == name ? windows[i] : found;
        XFree(name);
    }
    XFree(windows);
    if (found == 0) {  // which Xlib would take for the window under the pointer
        throw std::runtime_error("there is no window " + title);
    }
    return found;
}

void Send(const std::string& title, XEvent event) {
    event.xany.window = Find(title);
    XSendEvent(User(), event.xany.window, False, NoEventMask, &event);
    XSync(User(), False);
}

void Sway(const std::string& title, const std::string& command) {
    if (std::system(("swaymsg -q '[title=\"^" + title + "$\"] " + command + "'").c_str()) != 0) {
        throw std::runtime_error("sway does not " + command + " " + title);
    }
}

std::uint32_t Pixel(int x, int y) {
    if (IsWayland()) {
        const std::string place = std::to_string(x) + "," + std::to_string(y) + " 1x1";
        const std::unique_ptr<FILE, int (*)(FILE*)> picture(
            popen(("grim -g '" + place + "' -t ppm -").c_str(), "r"), pclose);
        unsigned char color[3] = {};
        (void)std::fscanf(picture.get(), "P6 1 1 255%*c%c%c%c", &color[0], &color[1], &color[2]);
        return static_cast<std::uint32_t>(color[0] << 16 | color[1] << 8 | color[2]);
    }
    XImage* const image = XGetImage(User(), DefaultRootWindow(User()), x, y, 1, 1, AllPlanes, ZPixmap);
    const unsigned long color = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return static_cast<std::uint32_t>(color & 0xFFFFFF);
}

}  // namespace

bool IsWayland() { return std::getenv("WAYLAND_DISPLAY") != nullptr; }

void Place(const std::string& title, int x, int y) {
    if (IsWayland()) {
        Sway(title, "move absolute position " + std::to_string(x) + " " + std::to_string(y));
    }
}

void Resize(const std::string& title, int width, int height) {
    if (IsWayland()) {
        return Sway(title, "resize set " + std::to_string(width) + " " + std::to_string(height));
    }
    XResizeWindow(User(), Find(title), static_cast<unsigned int>(width), static_cast<unsigned int>(height));
    XSync(User(), False);
}

void Hide(const std::string& title) {
    if (IsWayland()) {
        return Sway(title, "move scratchpad");
    }
    XUnmapWindow(User(), Find(title));
    XSync(User(), False);
}

void Close(const std::string& title) {
    if (IsWayland()) {
        return Sway(title, "kill");
    }
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.message_type = XInternAtom(User(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(User(), "WM_DELETE_WINDOW", False));
    Send(title, event);
}

void PressQ(const std::string& title) {
    if (IsWayland()) {
        return Sway(title, "focus; exec wtype -s 1000 q");
    }
    XEvent event{};
    event.xkey.type = KeyPress;
    event.xkey.keycode = XKeysymToKeycode(User(), XStringToKeysym("q"));
    Send(title, event);
}

void Await(std::uint32_t color, int x, int y) {
    std::printf("awaiting #%06x at %d,%d\n", color, x, y);
    while (Pixel(x, y) != color) {
    }
}

}  // namespace kivgles::outside
