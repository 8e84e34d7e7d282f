// What months in a service come to, on the real EGL: as many lives of a surface as SOAK_LIVES says, then as
// many commands in one life as SOAK_COMMANDS says, of eight clients at once. The sweep of faults looks at
// what else than memory a life leaves behind.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <android/log.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include "races/BusyClient.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

// KiB that may be added: the rasteriser has now more, now less, and heaps have gaps.
constexpr std::size_t HEAP_GROWTH = 2048;
constexpr std::size_t RESIDENT_GROWTH = 6144;

std::size_t ResidentKiB() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;  // the second number
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024;
}

// Does something so many times, and looks at the process's memory after each tenth of them. The driver may
// take its time to reach its most; in the second half nothing may be added.
template <typename Do>
void Watch(const char* name, unsigned int times, const Do& something) {
    std::size_t mostHeap = 0;
    std::size_t mostResident = 0;
    const unsigned int tenth = std::max(times / 10, 1U);
    for (unsigned int done = 1; done <= times; ++done) {
        something();
        if (done % tenth == 0) {
            const std::size_t heap = mallinfo2().uordblks / 1024;
            const std::size_t resident = ResidentKiB();
            std::printf("soak: %8u %s, %zu KiB of heap, %zu KiB resident\n", done, name, heap, resident);
            if (done <= times / 2) {
                mostHeap = std::max(mostHeap, heap + HEAP_GROWTH);
                mostResident = std::max(mostResident, resident + RESIDENT_GROWTH);
            }
            EXPECT_LE(heap, mostHeap);
            EXPECT_LE(resident, mostResident);
        }
    }
}

TEST(Soak, HoldsNoMoreMemoryAfterManyLivesAndCommands) {
    __android_log_set_logger([](const __android_log_message*) {});
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    mallopt(M_ARENA_MAX, 1);  // one heap, of which mallinfo2 tells
    mallopt(M_MMAP_MAX, 0);
    const auto number = [](const char* variable, const char* otherwise) {
        const char* const set = std::getenv(variable);
        return static_cast<unsigned int>(std::atoi(set != nullptr ? set : otherwise));
    };
    const X11Window window(CANVAS.width, CANVAS.height);
    Watch("lives", number("SOAK_LIVES", "60"), [&] { BusySurface(window.Native()).Rounds(1); });
    BusySurface busy(window.Native());
    const unsigned int rounds = number("SOAK_COMMANDS", "40000") / (CLIENTS * BusyClient::ROUND);
    Watch("rounds of 400 commands", rounds, [&] { busy.Rounds(1); });
}

}  // namespace
}  // namespace kivgles
