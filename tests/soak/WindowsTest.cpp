// What months in a service come to, on the real EGL: eight surfaces in one process, each on a window of its
// own with eight clients: on EGL's default display, on connections of the client's to the same X server, and
// on one to another. They are made and ended at once and in any order while the others go on, and hold no
// more memory in the end. The sweep of faults looks at what else than memory a life leaves behind.

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdio>
#include <fstream>
#include <optional>
#include <random>

#include <android/log.h>
#include <malloc.h>
#include <unistd.h>

#include "races/BusyClient.h"
#include "support/Process.h"
#include "support/X11Window.h"

namespace kivgles {

constexpr unsigned int WINDOWS = 8;
using Numbers = std::bitset<WINDOWS>;

// A window, of whose size a driver sends a picture at once, and its surface, which ends first.
struct Painted {
    Painted(unsigned int windowNumber, const X11Connection& connection)
        : number(windowNumber),
          window(CANVAS.width, CANVAS.height, connection),
          busy(window.Native(), {number < 3 ? KIV_PLATFORM_DEFAULT : KIV_PLATFORM_X11, connection.get()}) {}

    // By its clients, and then in an opaque colour that no two windows and no 200 pictures in a row share.
    void Paint(unsigned int picture) {
        const auto red = static_cast<std::uint8_t>(number + 2);
        const auto green = static_cast<std::uint8_t>(picture % 200 + 2);
        busy.Rounds(1);
        EXPECT_EQ(busy.surface.KivDrawRect(FBO_HANDLE_BASE, CANVAS, {red, green, 0, 255}), 0);
        EXPECT_EQ(busy.surface.KivRefreshOnSrceen(), 0);
        EXPECT_TRUE(window.Shows(static_cast<unsigned long>(red << 16 | green << 8), 32, 32));
    }

    unsigned int number;
    X11Window window;
    BusySurface busy;
};

// KiB that may be added: the rasteriser has now more, now less, heaps have gaps, and with each life Mesa and
// libxcb lose some hundred bytes (suppressions/lsan.txt).
constexpr std::size_t HEAP_GROWTH = 1024;
constexpr std::size_t RESIDENT_GROWTH = 16384;

// Does something so many times, and looks at the process's memory after each tenth of them. The driver may
// take its time to reach its most; in the second half nothing may be added. A few times say nothing, nor does
// the heap of a sanitizer, which keeps what is freed, and of which mallinfo2 knows nothing.
template <typename Do>
static void Watch(unsigned int times, const Do& something) {
    std::size_t mostHeap = 0;
    std::size_t mostResident = 0;
    for (unsigned int done = 1; done <= times; ++done) {
        something();
        if (done % std::max(times / 10, 1U) == 0) {
            const std::size_t heap = mallinfo2().uordblks / 1024;
            std::size_t resident = 0;
            std::ifstream("/proc/self/statm") >> resident >> resident;  // the second number, of pages
            resident *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024;
            std::fprintf(stderr, "soak: %8u rounds, %zu KiB of heap, %zu KiB resident\n", done, heap,
                         resident);
            if (done <= times / 2) {
                mostHeap = std::max(mostHeap, heap + HEAP_GROWTH);
                mostResident = std::max(mostResident, resident + RESIDENT_GROWTH);
            }
            EXPECT_TRUE(times < 20 || heap == 0 || (heap <= mostHeap && resident <= mostResident));
        }
    }
}

TEST(Windows, GoOnWhileOthersOfTheProcessComeAndGo) {
    __android_log_set_logger([](const __android_log_message*) {});
    mallopt(M_ARENA_MAX, 1);  // mallinfo2 tells of one heap
    mallopt(M_MMAP_MAX, 0);
    const std::array connections{ConnectToX11(), ConnectToX11(), ConnectToX11(std::getenv("OTHER_DISPLAY"))};
    std::array<std::optional<Painted>, WINDOWS> windows;
    unsigned int picture = 0;
    // All at once: those that change go or, if they are not there, come; those that are there are painted.
    const auto change = [&](const Numbers& changed) {
        ++picture;
        std::vector<std::future<void>> ends;  // waited for
        for (unsigned int number = 0; number < WINDOWS; ++number) {
            ends.push_back(std::async(std::launch::async, [&, number] {
                std::optional<Painted>& window = windows[number];
                if (changed[number] && window.has_value()) {
                    window.reset();
                } else if (changed[number]) {  // the sixth on a connection of its own, the last two elsewhere
                    window.emplace(number, connections[number < 5 ? 0 : number < 6 ? 1 : 2]);
                }
                if (window.has_value()) {
                    window->Paint(picture);
                }
            }));
        }
    };
    const Numbers first(1);
    change(first);
    const std::size_t descriptors = DescriptorNum();
    std::mt19937 lots;  // the same in every run
    Watch(NumberOf("WINDOW_ROUNDS", "3"), [&] {
        // The first one stays. All others come, some go, of whom some come again while more go, and all go.
        const Numbers some = Numbers(lots()) & ~first;
        const Numbers others = Numbers(lots()) & ~first;
        change(~first);
        change(some);
        change(others);
        change(~first ^ some ^ others);
        EXPECT_EQ(DescriptorNum(), descriptors);
    });
}

}  // namespace kivgles
