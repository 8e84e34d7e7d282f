// The main program of every contestant: opens the window, prepares the workload, then measures on request.
//
// It answers each line on its standard input with a line of JSON on its standard output, so that a script can
// let several contestants take turns:
//
//   slice SECONDS   draws empty frames and full ones in turn; medians of their CPU and wall time
//   load            loads the font once more; its CPU and wall time
//   picture FILE    draws the full frame and writes the window to FILE (PPM)

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>

#include <CLI/CLI.hpp>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <time.h>

#include "Contestant.h"

namespace bench {

namespace {

// In microseconds. CPU time is that of the whole process, user and system.
struct Cost {
    double cpu;
    double wall;
};

double Now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

template <typename Work>
Cost CostOf(Work work) {
    const double wall = Now(CLOCK_MONOTONIC);
    const double cpu = Now(CLOCK_PROCESS_CPUTIME_ID);
    work();
    return {Now(CLOCK_PROCESS_CPUTIME_ID) - cpu, Now(CLOCK_MONOTONIC) - wall};
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Median by median: the frame with the median CPU time need not be the one with the median wall time.
Cost Median(const std::vector<Cost>& costs) {
    std::vector<double> cpu;
    std::vector<double> wall;
    for (const Cost& cost : costs) {
        cpu.push_back(cost.cpu);
        wall.push_back(cost.wall);
    }
    return {Median(std::move(cpu)), Median(std::move(wall))};
}

void MeasureSlice(const Frames& frames, double seconds) {
    std::vector<Cost> empty;
    std::vector<Cost> full;
    frames.full();  // the first after a rest is not counted
    const double end = Now(CLOCK_MONOTONIC) + seconds * 1e6;
    do {
        empty.push_back(CostOf(frames.empty));
        full.push_back(CostOf(frames.full));
    } while (Now(CLOCK_MONOTONIC) < end || full.size() < 3);

    const Cost emptyCost = Median(empty);
    const Cost fullCost = Median(full);
    std::cout << "{\"empty_cpu\":" << emptyCost.cpu << ",\"empty_wall\":" << emptyCost.wall
              << ",\"full_cpu\":" << fullCost.cpu << ",\"full_wall\":" << fullCost.wall
              << ",\"frames\":" << full.size() << "}" << std::endl;
}

void MeasureLoad(const std::string& font) {
    const Cost cost = CostOf([&font] { LoadFont(font); });
    std::cout << "{\"full_cpu\":" << cost.cpu << ",\"full_wall\":" << cost.wall << "}" << std::endl;
}

void WritePicture(Display* display, Window window, const std::string& path) {
    XSync(display, False);
    XImage* const image = XGetImage(display, window, 0, 0, WINDOW_WIDTH, WINDOW_HEIGHT, AllPlanes, ZPixmap);
    if (image == nullptr) {
        Fail("the window cannot be read");
    }
    std::ofstream file(path, std::ios::binary);
    file << "P6 " << WINDOW_WIDTH << ' ' << WINDOW_HEIGHT << " 255\n";
    for (int y = 0; y < WINDOW_HEIGHT; ++y) {
        for (int x = 0; x < WINDOW_WIDTH; ++x) {
            const unsigned long pixel = XGetPixel(image, x, y);
            file.put(static_cast<char>(pixel >> 16)).put(static_cast<char>(pixel >> 8));
            file.put(static_cast<char>(pixel));
        }
    }
    XDestroyImage(image);
    std::cout << "{\"picture\":" << (file.flush() ? "true" : "false") << "}" << std::endl;
}

// Which buffers share cache lines and sets depends on where the heap begins within a page, and is worth some
// per cent: each process begins elsewhere, so that the rounds' median does not depend on it.
void ShiftHeap() {
    static std::vector<char> kept;
    kept.resize(std::random_device()() % 0x10000);
}

Window OpenWindow(Display* display) {
    const Window window =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, WINDOW_WIDTH, WINDOW_HEIGHT, 0, 0, 0);
    XMapWindow(display, window);
    XSync(display, False);
    return window;
}

long ResidentKiB() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long kib = 0;
    while (status >> word && word != "VmRSS:") {
    }
    status >> kib;
    return kib;
}

// The contestants' windows lie on each other: the one measured is raised, so that all are shown whole.
void Serve(Display* display, Window window, const Frames& frames, const std::string& font) {
    std::string line;
    while (std::getline(std::cin, line)) {
        XRaiseWindow(display, window);
        XSync(display, False);
        std::istringstream words(line);
        std::string request;
        std::string argument;
        words >> request >> argument;
        if (request == "slice") {
            MeasureSlice(frames, std::strtod(argument.c_str(), nullptr));
        } else if (request == "load") {
            MeasureLoad(font);
        } else if (request == "picture") {
            frames.full();
            frames.full();  // GL has asked the server for the window again, so it has handled the first
            WritePicture(display, window, argument);
        } else {
            Fail("unknown request " + line);
        }
    }
}

}  // namespace

void Fail(const std::string& reason) {
    std::cerr << CONTESTANT_NAME << ": " << reason << std::endl;
    std::_Exit(EXIT_FAILURE);
}

}  // namespace bench

int main(int argc, char** argv) {
    bench::Workload workload;
    std::string font;
    CLI::App app("A contestant of the benchmarks; bench/run.py calls it");
    app.add_option("--kind", workload.kind);
    app.add_option("--count", workload.count);
    app.add_option("--width", workload.width);
    app.add_option("--height", workload.height);
    app.add_option("--length", workload.length);
    app.add_option("--size", workload.size);
    app.add_flag("--bold", workload.bold);
    app.add_option("--layer-width", workload.layerWidth);
    app.add_option("--layer-height", workload.layerHeight);
    app.add_option("--font", font, "Font file; none is loaded without it");
    CLI11_PARSE(app, argc, argv);

    bench::ShiftHeap();
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        bench::Fail("no X display");
    }
    const Window window = bench::Start(bench::OpenWindow(display), workload.layerWidth, workload.layerHeight);
    if (!font.empty()) {
        bench::LoadFont(font);
    }
    const bench::Frames frames = bench::MakeFrames(workload);
    frames.full();
    std::cout << "{\"name\":\"" << bench::CONTESTANT_NAME << "\",\"resident\":" << bench::ResidentKiB() << "}"
              << std::endl;

    bench::Serve(display, window, frames, font);
    std::_Exit(EXIT_SUCCESS);  // nothing to be kept: the contestants leave their tidying to the system
}
