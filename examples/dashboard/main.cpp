// dashboard: three gauges, each painted by a thread of its own.

#include <chrono>
#include <cmath>
#include <future>
#include <string>

#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>

#include "common/ExampleWindow.h"

using namespace kivgles::kit;

struct Gauge {
    int x, value, greatest;  // the place, what is shown in the end, and where the scale ends
    const char* name;
    Color color;
};

constexpr Color WHITE{240, 244, 250}, GREY{150, 170, 200}, CARD{27, 41, 64};
constexpr double PI = 3.14159265358979323846, START = 135, SWEEP = 270;  // degrees, of the scale
constexpr Point CENTER{192, 200};
constexpr Gauge GAUGES[] = {{24, 127, 250, "Speed in km/h", {72, 202, 192}},
                            {432, 62, 150, "Power in kW", {255, 186, 84}},
                            {840, 84, 100, "Battery in %", {112, 204, 108}}};

// A place on the dial, at a share of the scale.
Point At(double share, double radius) {
    const double angle = (START + SWEEP * share) * PI / 180;
    return {CENTER.x + radius * std::cos(angle), CENTER.y + radius * std::sin(angle)};
}

// What stays. This and what follows is for a layer of factor 2: edges are smooth when it is copied.
void PaintFace(Layer& layer, const Gauge& gauge) {
    const Text text = Text(18, GREY).Center().Middle();
    layer.RoundedRectangle({0, 0, 384, 384}, 24, CARD);
    layer.Arc(CENTER, 164, 14, START, SWEEP, {52, 70, 102});
    for (int part = 0; part <= 10; ++part) {
        const auto [x, y] = At(part / 10.0, 112);
        layer.Line(At(part / 10.0, 134), At(part / 10.0, 141), 3, GREY);
        text.Draw(layer, std::to_string(gauge.greatest * part / 10), {int(x) - 30, int(y) - 15, 60, 30});
    }
    text.Sized(22).Draw(layer, gauge.name, {92, 336, 200, 30});
}

void PaintValue(Layer& layer, const Gauge& gauge, double value) {
    layer.Arc(CENTER, 164, 14, START, SWEEP * value / gauge.greatest, gauge.color);
    layer.Line(At(value / gauge.greatest, 12), At(value / gauge.greatest, 86), 6, WHITE);
    layer.Ring(CENTER, 16, 8, WHITE);
    Text(52, WHITE).Tabular().Center().Draw(layer, std::to_string(std::lround(value)), {92, 268, 200, 64});
}

// Paints in layers of its own and hands over whole, by one copy: what is shown is never half of a gauge.
void Run(Screen& screen, Layer& dashboard, const Gauge& gauge) {
    Layer face(screen, {384, 384}, 2), dial(screen, {384, 384}, 2);
    PaintFace(face, gauge);
    for (int frame = 0; frame <= 60; ++frame) {
        dial.Copy(face, 0, 0);
        PaintValue(dial, gauge, gauge.value * std::sin(PI / 2 * frame / 60));
        dashboard.Copy(dial, gauge.x, 24);
        screen.Finish();  // no faster than the screen can draw
    }
}

int main() {
    examples::ExampleWindow window(1248, 432, "dashboard");
    Screen screen;
    screen.Connect(window.Native());
    screen.LoadFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    Layer dashboard(screen, {1248, 432});
    std::future<void> threads[3];
    for (int i = 0; i < 3; ++i) {
        threads[i] = std::async(std::launch::async, [&, i] { Run(screen, dashboard, GAUGES[i]); });
    }
    for (std::future<void>& thread : threads) {
        while (thread.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
            screen.Present(dashboard);
        }
        thread.get();  // throws what it threw
    }
    screen.Present(dashboard);
    window.WaitForEnd();
}
