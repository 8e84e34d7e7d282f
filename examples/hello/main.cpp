// hello: a window with a shape and a text, until it is closed.

#include <cstdio>
#include <exception>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

int main() try {
    Window window({"hello", {640, 200}});
    Screen screen(window.Display());
    screen.Connect(window.Native());

    Canvas canvas({640, 200});
    canvas.Clear({24, 40, 64});
    canvas.Disc({70, 100}, 24, {255, 186, 84});
    Text(40, {240, 244, 250}).Middle().Draw(canvas, "Hello, grüezi, γεια!", {120, 0, 480, 200});
    screen.Present(canvas);

    for (Event event; event.type != Event::CLOSED; event = window.Wait()) {
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());  // and the canvas is shown again, scaled
        } else if (event.type == Event::EXPOSED) {
            screen.Refresh();
        }
    }
} catch (const std::exception& error) {
    std::fprintf(stderr, "hello: %s\n", error.what());
    return 1;
}
