// chart [FRAME]: four lines of 500 points, painted anew 20 times a second; they stand still at FRAME.

#include <cmath>

#include <cairo.h>
#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

struct Sensor {
    const char* name;
    double mean, swing, pace;  // degrees Celsius, and points for a radian
    Color color;
};
constexpr Sensor SENSORS[] = {{"Boiler", 78, 9, 49, {255, 120, 96}},
                              {"Flow", 61, 6, 27, {255, 190, 84}},
                              {"Return", 44, 5, 20, {112, 204, 140}},
                              {"Outside", 14, 10, 111, {104, 170, 255}}};
constexpr double LEFT = 100, WIDTH = 1060, BOTTOM = 650, DEGREE = 6;  // pixels
const Text TEXT = Text(20, {150, 168, 196}).Middle();

void PaintAxes(Canvas& chart) {
    chart.Clear({18, 24, 38});
    for (int part = 0; part <= 5; ++part) {
        const double x = LEFT + WIDTH * part / 5, y = BOTTOM - 20 * part * DEGREE;
        chart.Rectangle({LEFT, y, WIDTH, 1}, {255, 255, 255, part == 0 ? 160 : 40});
        chart.Rectangle({x, 50, 1, 600}, {255, 255, 255, part == 0 ? 160 : 40});
        TEXT.Right().Draw(chart, std::to_string(20 * part), {40, y - 15, 48, 30});
        TEXT.Center().Draw(chart, std::to_string(5 * part - 25) + " s", {x - 50, 660, 100, 30});
    }
    Canvas title({600, 30});
    TEXT.Center().Draw(title, "Temperature in °C", {0, 0, 600, 30});
    cairo_t* const cairo = chart.Cairo({10, 50, 30, 600});
    cairo_rotate(cairo, -std::acos(0));  // a quarter turn, which is not among the canvas' own
    cairo_set_source_surface(cairo, cairo_get_target(title.Cairo()), -650, 10);
    cairo_paint(cairo);
}

void PaintLine(Canvas& chart, const Sensor& sensor, int frame) {
    std::vector<Point> points;
    for (int i = 0; i < 500; ++i) {
        const double time = (i + frame) / sensor.pace, wave = std::sin(time) + std::sin(7 * time) / 5;
        points.emplace_back(LEFT + WIDTH * i / 499, BOTTOM - DEGREE * (sensor.mean + sensor.swing * wave));
    }
    chart.Polyline(points, 2.5, sensor.color);
    TEXT.Colored(sensor.color).Draw(chart, sensor.name, {1172, points.back().y - 15, 100, 30});
}

int main(int argc, char** argv) {
    Window window({"chart", {1280, 720}});
    Screen screen(window.Display());
    screen.Connect(window.Native());
    Canvas chart({1280, 720});
    Event event;
    for (int frame = argc > 1 ? std::stoi(argv[1]) : 0; event.type != Event::CLOSED; frame += 2 - argc) {
        PaintAxes(chart);
        for (const Sensor& sensor : SENSORS) {
            PaintLine(chart, sensor, frame);
        }
        screen.Present(chart);
        event = window.Wait(std::chrono::milliseconds(50));
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());
        }
    }
}
