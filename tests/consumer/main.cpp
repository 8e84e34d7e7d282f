// A program outside the project: draws one rectangle and looks for it on the window.

#include <cstdio>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <kivgles/KivGLDrawSurface.h>

namespace {

constexpr unsigned int WIDTH = 64;
constexpr unsigned int HEIGHT = 48;
constexpr kivgles::TagKivRectInfo RECT = {16, 12, 32, 24};
constexpr kivgles::TagKivColorRGBA COLOR = {255, 128, 64, 255};
constexpr unsigned long COLOR_PIXEL = 0xFF8040;
constexpr unsigned long CLEAR_PIXEL = 0;

unsigned long Pixel(Display* display, Window window, int x, int y) {
    XImage* const image = XGetImage(display, window, x, y, 1, 1, AllPlanes, ZPixmap);
    const unsigned long pixel = XGetPixel(image, 0, 0) & 0xFFFFFF;
    XDestroyImage(image);
    return pixel;
}

// The server shows a frame in its own time: looks until it has. A picture that never comes ends with the
// test's time, and what was there at first is the last thing said.
void WaitForPixel(Display* display, Window window, int x, int y, unsigned long expected) {
    unsigned long pixel = Pixel(display, window, x, y);
    std::printf("pixel (%d, %d): expected %06lx, first found %06lx\n", x, y, expected, pixel);
    std::fflush(stdout);
    while (pixel != expected) {
        pixel = Pixel(display, window, x, y);
    }
}

int Draw(kivgles::KivGLDrawSurface& surface, Window window) {
    unsigned int layer = 0;
    int result = surface.KivCreateGLContext();
    if (result == 0) {
        result = surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(window));
    }
    if (result == 0) {
        result = surface.KivCreateGLFBO(layer, WIDTH, HEIGHT, kivgles::KIV_COLOR_FORMAT_RGBA8888);
    }
    if (result == 0) {
        result = surface.KivDrawRect(layer, RECT, COLOR);
    }
    if (result == 0) {
        result = surface.KivDisplayFBO(layer, {0, 0, WIDTH, HEIGHT}, {0, 0, WIDTH, HEIGHT});
    }
    if (result == 0) {
        result = surface.KivRefreshOnSrceen();
    }
    return result == 0 ? surface.Init(0) : result;
}

}  // namespace

int main() {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::puts("no X server");
        return 1;
    }
    const Window window =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, WIDTH, HEIGHT, 0, 0, 0xFFFFFF);
    XMapWindow(display, window);
    XSync(display, False);

    kivgles::KivGLDrawSurface surface;
    const int result = Draw(surface, window);
    if (result != 0) {
        std::printf("result code %d\n", result);
        return 1;
    }
    WaitForPixel(display, window, 16, 12, COLOR_PIXEL);
    WaitForPixel(display, window, 47, 35, COLOR_PIXEL);
    WaitForPixel(display, window, 15, 12, CLEAR_PIXEL);
    WaitForPixel(display, window, 48, 36, CLEAR_PIXEL);

    surface.KivDestoryGLContext();
    XCloseDisplay(display);
    std::puts("the rectangle is there");
    return 0;
}
