// signage: two signs in one process. The second one is closed and opened again while the first one goes on,
// whose end is the program's. After signage TENTHS, of a second, both stand still.

#include <climits>
#include <optional>
#include <string>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

struct Sign {
    explicit Sign(const WindowOptions& options) : window(options), screen(window.Display()) {
        screen.Connect(window.Native());
    }
    Window window;
    Screen screen;  // ends before its window
    Canvas canvas{{400, 300}};
};

void PaintDepartures(Canvas& canvas, int tenth) {
    const Text text = Text().Sized(28).Family("DejaVu Sans").Middle();
    canvas.Clear({18, 28, 48});
    text.Bold().Draw(canvas, "Abfahrt", {24, 0, 352, 64});
    text.Tabular().Right().Draw(canvas, "12:04:" + std::to_string(10 + tenth / 10 % 50), {24, 0, 352, 64});
    text.Spaced(64).Draw(canvas, "11  Flughafen\n4  Hönggerberg\n33  Αθήνα", {24, 72, 352, 192});
    text.Spaced(64).Colored({255, 186, 84}).Right().Draw(canvas, "2′\n5′\n8′", {24, 72, 352, 192});
    canvas.Bar({24, 278, 352, 6}, tenth % 500 / 500.0, {255, 186, 84}, {70, 84, 104});
}

void PaintMenu(Canvas& canvas) {
    const Text text = Text().Sized(26).Family("DejaVu Sans").Center();
    canvas.Clear(Fill::Gradient({0, 0}, {28, 84, 68}, {0, 300}, {12, 32, 28}));
    text.Sized(36).Bold().Draw(canvas, "Mittagstisch", {0, 24, 400, 50});
    text.Wrapped().Draw(canvas, "Linsensuppe mit Minze, dazu Fladenbrot und Salat", {40, 92, 320, 110});
    text.Sized(40).Colored({255, 186, 84}).Draw(canvas, "9,80 €", {0, 214, 400, 60});
}

int main(int argc, char** argv) {
    const int last = argc > 1 ? std::stoi(argv[1]) : INT_MAX;
    Sign departures({"signage", {400, 300}, Position{0, 0}});
    std::optional<Sign> menu;
    for (int tenth = 0; true; tenth += tenth < last ? 1 : 0) {
        if (tenth % 50 == 0 && !menu) {
            menu.emplace(WindowOptions{"menu", {400, 300}, Position{400, 0}});
            PaintMenu(menu->canvas);
            menu->screen.Present(menu->canvas);
        } else if (tenth % 50 == 30) {
            menu.reset();
        }
        PaintDepartures(departures.canvas, tenth);
        departures.screen.Present(departures.canvas);
        const Event event = Window::WaitForAny({&departures.window, menu ? &menu->window : nullptr},
                                               std::chrono::milliseconds(100));
        Sign& sign = menu && event.window == &menu->window ? *menu : departures;
        if (event.type == Event::RESIZED) {
            sign.screen.Reconnect(sign.window.Native());
        } else if (event.type == Event::EXPOSED) {
            sign.screen.Refresh();
        } else if (event.type == Event::CLOSED && &sign == &departures) {
            return 0;
        } else if (event.type == Event::CLOSED) {
            menu.reset();
        }
    }
}
