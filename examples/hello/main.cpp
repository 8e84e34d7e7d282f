// hello: the least that a client of the kit does. One window, one layer, a shape and a text.

#include <cstdio>

#include <X11/Xlib.h>
#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>

int main() {
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return 1;  // there is no X server
    }
    const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 640, 200, 0, 0, 0);
    XMapWindow(display, window);
    XSync(display, False);

    kivgles::kit::Screen screen;
    screen.Connect(reinterpret_cast<ANativeWindow*>(window));
    screen.LoadFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");

    kivgles::kit::Layer layer(screen, screen.Size());
    layer.Clear({24, 40, 64});
    layer.Disc({70, 100}, 24, {255, 186, 84});
    kivgles::kit::Text(40, {240, 244, 250}).Middle().Draw(layer, "Hello, grüezi, γεια!", {120, 0, 480, 200});
    screen.Present(layer);
    screen.Finish();

    std::puts("Press Enter to end.");
    std::getchar();
}
