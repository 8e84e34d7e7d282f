// What months in a service come to, on the real EGL: eight surfaces in one process, each on a window of its
// own with eight clients: on EGL's default display, on connections of the client's to the same X server, and
// on one to another. They are made and ended at once and in any order while the others go on, and hold no
// more memory in the end. The sweep of faults looks at what else than memory a life leaves behind.

#include <array>
#include <bitset>
#include <optional>
#include <random>

#include <android/log.h>

#include "races/BusyClient.h"
#include "soak/Watch.h"
#include "support/Process.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

constexpr unsigned int WINDOWS = 8;
using Numbers = std::bitset<WINDOWS>;

// A window and its surface, which ends first.
struct Painted {
    Painted(const X11Connection& connection, int platform)
        : window(CANVAS.width, CANVAS.height, connection),
          busy(window.Native(), {platform, connection.get()}) {}

    // By its clients, and then with one opaque colour.
    void Paint(const TagKivColorRGBA& color) {
        busy.Rounds(1);
        EXPECT_EQ(busy.surface.KivDrawRect(FBO_HANDLE_BASE, CANVAS, color), 0);
        EXPECT_EQ(busy.surface.KivRefreshOnSrceen(), 0);
        EXPECT_TRUE(window.Shows(static_cast<unsigned long>(color.r << 16 | color.g << 8), 32, 32));
    }

    X11Window window;
    BusySurface busy;
};

class Windows {
 public:
    // All at once. Those that change come or, if they are there, go; the others are painted.
    void Change(const Numbers& changed) {
        ++picture;
        std::vector<std::future<void>> changes;  // whose ends are waited for
        for (unsigned int number = 0; number < WINDOWS; ++number) {
            changes.push_back(std::async(std::launch::async, [this, number, isChanged = changed[number]] {
                std::optional<Painted>& window = windows[number];
                if (isChanged && window.has_value()) {
                    window.reset();
                } else if (isChanged) {
                    // The fourth to sixth on connections of the client's, the last two to another server.
                    window.emplace(number < 6 ? connections[number / 5] : toOtherServer,
                                   number < 3 ? KIV_PLATFORM_DEFAULT : KIV_PLATFORM_X11);
                }
                if (window.has_value()) {  // in a colour that no two windows and no 200 pictures share
                    window->Paint({static_cast<std::uint8_t>(number + 2),
                                   static_cast<std::uint8_t>(picture % 200 + 2), 0, 255});
                }
            }));
        }
        there ^= changed;
    }
    // The first one is there all the time, the others at the beginning and at the end.
    void Round() {
        for (int change = 0; change < 2; ++change) {
            Change(Numbers(lots()).reset(0));
        }
        Change(~there);
    }

    Numbers there;

 private:
    std::mt19937 lots;  // the same in every run
    std::array<X11Connection, 2> connections{ConnectToX11(), ConnectToX11()};
    X11Connection toOtherServer = ConnectToX11(std::getenv("OTHER_DISPLAY"));
    std::array<std::optional<Painted>, WINDOWS> windows;
    unsigned int picture = 0;
};

TEST(Windows, GoOnWhileOthersOfTheProcessComeAndGo) {
    __android_log_set_logger([](const __android_log_message*) {});
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    UseOneHeap();
    Windows windows;
    windows.Change(Numbers().set());
    const std::size_t descriptors = DescriptorNum();
    Watch("rounds of windows", NumberOf("WINDOW_ROUNDS", "3"), [&] {
        windows.Round();
        EXPECT_EQ(DescriptorNum(), descriptors);
    });
}

}  // namespace
}  // namespace kivgles
