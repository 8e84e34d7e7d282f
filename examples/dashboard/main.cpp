// dashboard: three gauges, each painted by a thread of its own on a canvas of its own, and shown as one.

#include <cmath>
#include <future>
#include <mutex>
#include <thread>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

struct Gauge {
    int x, value, greatest;  // the place, what is shown in the end, and where the scale ends
    const char* name;
    Color color;
};
constexpr Gauge GAUGES[] = {{24, 127, 250, "Speed in km/h", {72, 202, 192}},
                            {432, 62, 150, "Power in kW", {255, 186, 84}},
                            {840, 84, 100, "Battery in %", {112, 204, 108}}};
constexpr Color WHITE{240, 244, 250}, GREY{150, 170, 200}, NIGHT{14, 22, 38};
constexpr Point CENTER{192, 200};

void Paint(Canvas& dial, const Gauge& gauge, double value) {
    constexpr double START = 135, SWEEP = 270;  // degrees, of the scale
    const Text text = Text(20, GREY).Center().Middle();
    const double level = SWEEP * value / gauge.greatest, angle = (START + level) * std::acos(0) / 90;
    dial.Clear(Fill::Gradient({0, 0}, {36, 54, 84}, {0, 384}, NIGHT));
    dial.Arc(CENTER, 164, 14, START, SWEEP, {52, 70, 102});
    dial.Arc(CENTER, 164, 14, START, level, gauge.color);
    for (int part = 0; part <= 10; ++part) {
        dial.Arc(CENTER, 142, 8, START + SWEEP * part / 10 - 0.6, 1.2, GREY);
    }
    text.Draw(dial, std::to_string(gauge.greatest), {274, 310, 40, 30});
    dial.Line(CENTER, {CENTER.x + 100 * std::cos(angle), CENTER.y + 100 * std::sin(angle)}, 8, WHITE);
    text.Sized(52).Colored(WHITE).Tabular().Draw(dial, std::to_string(std::lround(value)),
                                                 {92, 268, 200, 64});
    text.Draw(dial, gauge.name, {92, 336, 200, 30});
}

int main() {
    Window window({"dashboard", {1248, 432}});
    Screen screen(window.Display());
    screen.Connect(window.Native());
    Canvas dashboard({1248, 432});
    dashboard.Clear(NIGHT);
    std::mutex mutex;  // of the dashboard: all that the threads have in common
    const auto run = [&](const Gauge& gauge) {
        Canvas dial({384, 384});
        for (int frame = 0; frame <= 60; ++frame) {
            Paint(dial, gauge, gauge.value * frame / 60.0);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            const std::lock_guard lock(mutex);
            dashboard.Draw(dial, {gauge.x, 24});
        }
    };
    const std::future<void> threads[] = {std::async(std::launch::async, run, GAUGES[0]),
                                         std::async(std::launch::async, run, GAUGES[1]),
                                         std::async(std::launch::async, run, GAUGES[2])};
    for (Event event; event.type != Event::CLOSED; event = window.Wait(std::chrono::milliseconds(20))) {
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());
        }
        const std::lock_guard lock(mutex);
        screen.Present(dashboard);
    }
}
