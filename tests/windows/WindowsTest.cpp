// Eight surfaces in one process, each on a window of its own that three threads paint: on EGL's default
// display, on connections of the client's to the same X server, and on one to another. Surfaces are made and
// ended at once and in any order while the others go on.

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <future>
#include <numeric>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include <android/log.h>
#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "soak/Watch.h"
#include "support/Process.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

constexpr unsigned int WINDOWS = 8;
constexpr TagKivRectInfo ALL{0, 0, 48, 16};

// An opaque colour that no two windows and no 200 pictures in a row have in common.
TagKivColorRGBA ColorOf(unsigned int window, unsigned int picture) {
    return {static_cast<std::uint8_t>(window + 2), static_cast<std::uint8_t>(picture % 200 + 2), 0, 255};
}

// A window and its surface, which shows one picture over and over until it is told of the next.
class Painted {
 public:
    Painted(unsigned int windowNumber, const X11Connection& connection, int platform)
        : number(windowNumber), window(ALL.width, ALL.height, connection) {
        EXPECT_EQ(surface.KivCreateGLContextOn({platform, connection.get()}), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
        EXPECT_EQ(surface.KivCreateGLFBO(layer, ALL.width, ALL.height, KIV_COLOR_FORMAT_RGBA8888), 0);
        for (unsigned int kind = 0; kind < painters.size(); ++kind) {
            painters[kind] = std::thread([this, kind] {
                while (!ends) {
                    Paint(kind, ColorOf(number, picture));
                }
            });
        }
    }
    ~Painted() {
        ends = true;
        for (std::thread& painter : painters) {
            painter.join();
        }
        EXPECT_EQ(surface.KivDestoryGLContext(), 0);
    }
    Painted(const Painted&) = delete;
    Painted& operator=(const Painted&) = delete;

    void AwaitPicture(unsigned int next) {
        picture = next;
        const TagKivColorRGBA color = ColorOf(number, next);
        for (const int x : {8, 24, 40}) {
            EXPECT_TRUE(window.Shows(static_cast<unsigned long>(color.r << 16 | color.g << 8), x, 8));
        }
    }

 private:
    // A rectangle, a bitmap or a round, side by side.
    void Paint(unsigned int kind, const TagKivColorRGBA& color) {
        const std::uint8_t pixel[] = {color.r, color.g, color.b, color.a};
        const TagKivBitmapInfo bitmap{pixel, KIV_COLOR_FORMAT_RGBA8888, 0, 0, 1, 1, {16, 0, 16, 16}};
        const int result = kind == 0   ? surface.KivDrawRect(layer, {0, 0, 16, 16}, color)
                           : kind == 1 ? surface.KivDrawBitmap(layer, bitmap)
                                       : surface.KivDrawRound(layer, {40, 8, 8, 8}, color);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(surface.KivBlit({layer, FBO_HANDLE_BASE, ALL, ALL}), 0);
        EXPECT_EQ(surface.KivRefreshOnSrceen(), 0);
        EXPECT_EQ(surface.Init(0), 0);  // no more than one frame ahead
    }

    unsigned int number;
    X11Window window;
    KivGLDrawSurface surface;
    unsigned int layer = 0;
    std::atomic<unsigned int> picture{0};
    std::atomic<bool> ends{false};
    std::array<std::thread, 3> painters;
};

class Windows {
 public:
    Windows() { Change(ByLot(WINDOWS), true); }

    // Some of the windows go and come again while the others are painted, each of which has to show another
    // picture when they have gone, and when they are there again.
    void Round() {
        const std::vector<unsigned int> changed = ByLot(1 + static_cast<unsigned int>(lots() % WINDOWS));
        if (lots() % 2 == 0) {
            Change(changed, false);
            AwaitNextPictures();
        }
        Change(changed, true);
        AwaitNextPictures();
    }

 private:
    // All at once. A window that is there when it is made goes first.
    void Change(const std::vector<unsigned int>& numbers, bool make) {
        std::vector<std::future<void>> changes;  // whose ends are waited for
        for (const unsigned int number : numbers) {
            changes.push_back(std::async(std::launch::async, [this, number, make] {
                // The fourth to sixth on connections of the client's to the same server, the last two to
                // another one.
                const X11Connection& connection = number < 5 ? first : number < 6 ? second : toOtherServer;
                windows[number].reset();
                if (make) {
                    windows[number].emplace(number, connection,
                                            number < 3 ? KIV_PLATFORM_DEFAULT : KIV_PLATFORM_X11);
                }
            }));
        }
    }
    void AwaitNextPictures() {
        ++picture;
        for (std::optional<Painted>& window : windows) {
            if (window.has_value()) {
                window->AwaitPicture(picture);
            }
        }
    }
    std::vector<unsigned int> ByLot(unsigned int count) {
        std::vector<unsigned int> numbers(WINDOWS);
        std::iota(numbers.begin(), numbers.end(), 0U);
        std::shuffle(numbers.begin(), numbers.end(), lots);
        numbers.resize(count);
        return numbers;
    }

    std::mt19937 lots;  // the same in every run
    X11Connection first = ConnectToX11();
    X11Connection second = ConnectToX11();
    X11Connection toOtherServer = ConnectToX11(std::getenv("OTHER_DISPLAY"));
    std::array<std::optional<Painted>, WINDOWS> windows;
    unsigned int picture = 0;
};

TEST(Windows, GoOnWhileOthersOfTheProcessComeAndGo) {
    __android_log_set_logger([](const __android_log_message*) {});
    UseOneHeap();
    Windows windows;
    std::size_t descriptors = 0;
    Watch("rounds of windows", NumberOf("WINDOW_ROUNDS", "3"), [&] {
        windows.Round();
        descriptors = descriptors == 0 ? DescriptorNum() : descriptors;
        EXPECT_EQ(DescriptorNum(), descriptors);
    });
}

}  // namespace
}  // namespace kivgles
