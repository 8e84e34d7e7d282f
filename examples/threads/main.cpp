// threads [FRAME]: a clock, a level meter and news, each painted by a thread of its own at its own pace,
// until they stand still at FRAME. They share one layer without a lock: it never shows half of a picture.

#include <atomic>
#include <future>
#include <thread>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

constexpr Color WHITE{240, 244, 250}, AMBER{255, 186, 84}, GREEN{72, 202, 140}, NIGHT{18, 28, 46};
const Text TEXT = Text(22, {158, 176, 202}).Aligned(VerticalAlign::BASELINE);

void PaintClock(Canvas& canvas, int frame) {
    const std::string time = "14:27:" + std::to_string(10 + frame % 50);
    canvas.Clear(NIGHT);
    TEXT.Draw(canvas, "Local time", {32, 0, 340, 56});
    TEXT.Sized(56).Colored(AMBER).Bold().Tabular().Draw(canvas, time, {32, 0, 340, 118});
}

void PaintLevel(Canvas& canvas, int frame) {
    const int level = (12 - std::abs(frame % 24 - 12)) * (24 - frame / 24 % 3 * 4) / 12;
    canvas.Clear(NIGHT);
    TEXT.Draw(canvas, "Level", {32, 0, 200, 56});
    for (int part = 0; part < 24; ++part) {
        const Color color = part >= level ? Color(52, 70, 102) : part < 16 ? GREEN : AMBER;
        canvas.RoundedRectangle({32 + part * 21, 76, 17, 44}, 3, color);
    }
}

void PaintNews(Canvas& canvas, int frame) {
    canvas.Clear({40, 58, 92});
    const char* const news = "Ferry to the islands leaves from pier 3 – Museum open until eight";
    TEXT.Sized(40).Colored(WHITE).Draw(canvas, news, {480 - frame * 6 % 1920, 0, 1440, 55});
}

int main(int argc, char** argv) {
    const int last = argc > 1 ? std::stoi(argv[1]) : 1 << 30;
    Window window({"threads", {960, 240}});
    Screen screen(window.Display());
    screen.Connect(window.Native());
    Layer display(screen, {960, 240});
    std::atomic<bool> open{true};
    const auto start = [&](const PixelRect& place, int pause, void (*paint)(Canvas&, int)) {
        return std::async(std::launch::async, [&, place, pause, paint] {
            Canvas canvas({place.width, place.height});
            for (int frame = 1; open; frame += frame < last ? 1 : 0) {
                paint(canvas, frame);
                display.Draw(canvas, place.x, place.y);
                std::this_thread::sleep_for(std::chrono::milliseconds(pause));
            }
        });
    };
    const std::future<void> threads[] = {start({0, 0, 380, 160}, 23, PaintClock),
                                         start({380, 0, 580, 160}, 17, PaintLevel),
                                         start({0, 160, 960, 80}, 11, PaintNews)};
    for (Event event; event.type != Event::CLOSED; event = window.Wait(std::chrono::milliseconds(16))) {
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());
        }
        screen.Present(display);
    }
    open = false;
}
