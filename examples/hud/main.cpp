// hud: a volume display that fades in and out over a film, which could be another program's: it has a window
// of its own, see-through and click-through. After hud FRAMES, 25 a second, both stand still.

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <string>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

constexpr Color WHITE{240, 244, 250}, AMBER{255, 186, 84};

void PaintFilm(Canvas& canvas, double time) {
    canvas.Clear(Fill::Gradient({0, 0}, {34, 44, 92}, {0, 360}, {255, 190, 120}));
    canvas.Disc({440 - 8 * time, 190 + 4 * time}, 44, {255, 238, 204});
    for (int hill = 0; hill < 5; ++hill) {
        const double shift = std::fmod(hill * 220 + 1100 - (12 + 4 * hill) * time, 1100);
        canvas.Disc({shift - 220, 520 - 14 * hill}, 230, {122 - 16 * hill, 72 - 10 * hill, 104 - 8 * hill});
    }
}

void PaintVolume(Canvas& canvas, double level, double opacity) {
    const auto faded = [&](Color color, double share) {
        return Color(color.r, color.g, color.b, 255 * share * opacity);
    };
    canvas.Clear();
    canvas.RoundedRectangle({120, 268, 400, 64}, 20, faded({12, 16, 28}, 0.72));
    canvas.Polygon({{146, 292}, {156, 292}, {168, 280}, {168, 320}, {156, 308}, {146, 308}}, faded(WHITE, 1));
    canvas.Arc({168, 300}, 20, 4, -50, 100, faded(WHITE, 1));
    canvas.Bar({204, 296, 236, 8}, level, faded(AMBER, 1), faded(WHITE, 0.3));
    const Text text = Text(24, faded(WHITE, 1)).Family("DejaVu Sans").Bold().Tabular();
    text.Right().Middle().Draw(canvas, std::to_string(std::lround(100 * level)), {440, 280, 60, 40});
}

int main(int argc, char** argv) {
    const int last = argc > 1 ? std::stoi(argv[1]) : INT_MAX;
    Window film({"film", {640, 360}, Position{0, 0}});
    WindowOptions glass{"hud", {640, 360}, Position{0, 0}};
    glass.transparent = glass.clickThrough = glass.aboveOthers = true;
    glass.decorated = false;
    Window hud(glass);
    for (const std::string& warning : hud.Warnings()) {
        std::puts(warning.c_str());
    }
    Screen filmScreen(film.Display()), hudScreen(hud.Display());
    filmScreen.Connect(film.Native());
    hudScreen.Connect(hud.Native());
    Canvas picture({640, 360}), volume({640, 360});
    for (int frame = 0; true; frame += frame < last ? 1 : 0) {
        const double since = frame % 100 / 25.0;
        PaintFilm(picture, frame % 1000 / 25.0);
        PaintVolume(volume, 0.25 + 0.1 * since, std::min(1.0, 3.5 - 2.5 * std::abs(since - 1.4)));
        filmScreen.Present(picture);
        hudScreen.Present(volume);
        const Event event = Window::WaitForAny({&film, &hud}, std::chrono::milliseconds(40));
        if (event.type == Event::CLOSED) {
            return 0;
        }
        if (event.type == Event::RESIZED) {
            (event.window == &film ? filmScreen : hudScreen).Reconnect(event.window->Native());
        }
    }
}
