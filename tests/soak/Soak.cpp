// Soak CYCLES COMMANDS: what months in a service come to. So many lives of a surface, then so many
// commands in one life. Prints what the process holds along the way; fails when that does not stay flat.

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <android/log.h>
#include <malloc.h>
#include <unistd.h>

#include "bounds_checked.h"
#include "races/BusyClient.h"
#include "support/Process.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

// What is looked at, and how much may be added. Of the heap the rasteriser has now more, now less.
enum { RESIDENT, HEAP, DESCRIPTORS, THREADS, OBJECTS, HELD_NUM };
using Holdings = std::array<std::size_t, HELD_NUM>;
constexpr const char* NAMES[HELD_NUM] = {"KiB resident", "KiB of heap", "descriptors", "threads", "objects"};
constexpr Holdings ALLOWED_GROWTH{1024, 2048, 0, 0, 0};

void Expect(bool holds, const char* failure) {
    if (!holds) {
        std::printf("soak: FAILED, %s\n", failure);
        std::exit(EXIT_FAILURE);
    }
}

// One heap, in memory from the start, so that what the process holds of it is not a matter of where its gaps
// are: the driver's libraries lose a few bytes in every life, and each may keep a page. What is in use of it
// is looked at by itself.
void SteadyHeap() {
    constexpr int RESERVE = 32 * 1024 * 1024;
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
    mallopt(M_MMAP_MAX, 0);
    void* const reserve = std::malloc(RESERVE);
    (void)memset_s(reserve, RESERVE, 1, RESERVE);  // not left out by the compiler
    std::free(reserve);
}

Holdings Look() {
    Holdings now{0, mallinfo2().uordblks / 1024, DescriptorNum(), ThreadNum(), recorder::LiveNum()};
    std::ifstream("/proc/self/statm") >> now[RESIDENT] >> now[RESIDENT];  // the second number, of pages
    now[RESIDENT] *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024;
    return now;
}

// Does so many steps, and looks at the process after each tenth. After the first nothing may be added.
template <typename Step>
void Watch(const char* steps, unsigned int total, const Step& step) {
    Holdings reference = Look();
    for (unsigned int tenth = 1, done = 0; tenth <= 10; ++tenth) {
        while (done < total * std::uint64_t{tenth} / 10) {
            step(++done);
            recorder::Reset();  // it collects the log
        }
        AwaitThreadNum(reference[THREADS]);
        const Holdings now = Look();
        std::printf("soak: %8u %s:", done, steps);
        for (std::size_t i = 0; i < HELD_NUM; ++i) {
            std::printf(" %zu %s%s", now[i], NAMES[i], i == OBJECTS ? "\n" : ",");
        }
        for (std::size_t i = 0; tenth > 1 && i < HELD_NUM; ++i) {
            Expect(now[i] <= reference[i] + ALLOWED_GROWTH[i], NAMES[i]);
        }
        reference = tenth == 1 ? now : reference;
    }
}

// A surface on a window, and its client.
struct Life {
    explicit Life(const X11Window& window) : client{&surface, FBO_HANDLE_BASE} {
        client.Sent(surface.KivCreateGLContext());
        client.Sent(surface.KivConnectWindowSurface(window.Native()));
        client.Start();
    }
    void Round(unsigned int round) {
        client.Round(round);
        Expect(client.failures == 0, "an operation has failed");
    }

    KivGLDrawSurface surface;
    BusyClient client;
};

void Run(unsigned int cycles, unsigned int commands) {
    const X11Window window(CANVAS.width, CANVAS.height);
    Watch("lives", cycles, [&](unsigned int cycle) { Life(window).Round(cycle); });

    Life life(window);
    const unsigned int rounds = (commands + BusyClient::ROUND - 1) / BusyClient::ROUND;
    Watch("rounds of 50 commands", rounds, [&](unsigned int round) { life.Round(round); });
    std::printf("soak: passed, %u lives and %u commands\n", cycles, commands);
}

}  // namespace
}  // namespace kivgles

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s CYCLES COMMANDS\n", argv[0]);
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    kivgles::SteadyHeap();
    __android_log_set_logger([](const __android_log_message*) {});
    const auto number = [](const char* text) {
        return static_cast<unsigned int>(std::strtoul(text, nullptr, 10));
    };
    kivgles::Run(number(argv[1]), number(argv[2]));
    return EXIT_SUCCESS;
}
