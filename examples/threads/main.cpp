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

template <typename Job>
bool IsDone(const std::future<Job>& job) {
    return job.wait_for(std::chrono::milliseconds(5)) == std::future_status::ready;
}

// Shows frames for as long as a producer draws, and then the last one.
void Run(int frames) {
    ExampleWindow window(CANVAS_SIZE.width, CANVAS_SIZE.height, "threads");
    kivgles::kit::Screen screen;
    screen.Connect(window.Native());
    screen.LoadFont(FONT);

    kivgles::kit::Layer canvas(screen, CANVAS_SIZE);
    canvas.Clear({14, 22, 38});

    std::array<std::future<void>, 3> producers;
    std::size_t next = 0;
    for (const auto run : {RunClock, RunTicker, RunLevelMeter}) {
        producers[next++] = std::async(std::launch::async, [&, run] { run(screen, canvas, frames); });
    }
    for (auto& producer : producers) {
        while (!IsDone(producer)) {
            screen.Present(canvas);
        }
        producer.get();  // throws what it threw
    }
    screen.Present(canvas);
    window.WaitForEnd();
}

}  // namespace

}  // namespace examples::threads

int main(int argc, char** argv) {
    char* end = nullptr;
    const long frames = argc == 2 ? std::strtol(argv[1], &end, 10) : 200;
    if (argc > 2 || frames < 0 || frames > 1'000'000 || (end != nullptr && *end != '\0')) {
        std::fputs("usage: threads [FRAMES]\n", stderr);
        return 2;
    }
    try {
        examples::threads::Run(static_cast<int>(frames));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "threads: %s\n", error.what());
        return 1;
    }
}
