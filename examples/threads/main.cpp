// threads: a clock, a ticker and a level meter, each drawn by a thread of its own, into one display.
//
// threads [FRAMES]: the number of times that each of them draws, 200 if not given.

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <future>

#include "Producers.h"
#include "common/ExampleWindow.h"

namespace examples::threads {

namespace {

constexpr char FONT[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr Rect WINDOW_BOX = {0, 0, CANVAS_WIDTH, CANVAS_HEIGHT};

// Shows what is on the canvas. Waiting for each frame keeps the queue short, and this thread at the pace of
// the draw thread.
void Show(Surface& surface, Layer& canvas) {
    canvas.Display(WINDOW_BOX);
    Check(surface.KivRefreshOnSrceen(), "refreshing the window");
    Check(surface.Init(0), "waiting for the draw thread");
}

template <typename Job>
bool IsDone(const std::future<Job>& job) {
    return job.wait_for(std::chrono::milliseconds(5)) == std::future_status::ready;
}

// Shows frames for as long as a producer draws, and then the last one.
void Run(unsigned int frames) {
    const ExampleWindow window({CANVAS_WIDTH, CANVAS_HEIGHT}, "threads");
    Surface surface;
    Check(surface.KivCreateGLContext(), "creating the GL context");
    Check(surface.KivConnectWindowSurface(window.Native()), "connecting the window");
    Check(surface.KivLoadFont(FONT, 40), "loading the font");

    Layer canvas(surface, CANVAS_WIDTH, CANVAS_HEIGHT, 1);
    canvas.FillRect(canvas.Whole(), {14, 22, 38, 255});

    std::array<std::future<void>, 3> producers;
    std::size_t next = 0;
    for (const auto run : {RunClock, RunTicker, RunLevelMeter}) {
        producers[next++] = std::async(std::launch::async, [&, run] { run(surface, canvas, frames); });
    }
    for (auto& producer : producers) {
        while (!IsDone(producer)) {
            Show(surface, canvas);
        }
        producer.get();  // throws what it threw
    }
    Show(surface, canvas);

    std::puts("Press Enter to end.");
    std::getchar();
}

}  // namespace

}  // namespace examples::threads

int main(int argc, char** argv) {
    char* end = nullptr;
    const unsigned long frames = argc == 2 ? std::strtoul(argv[1], &end, 10) : 200;
    if (argc > 2 || (end != nullptr && *end != '\0')) {
        std::fputs("usage: threads [FRAMES]\n", stderr);
        return 2;
    }
    try {
        examples::threads::Run(static_cast<unsigned int>(frames));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "threads: %s\n", error.what());
        return 1;
    }
}
