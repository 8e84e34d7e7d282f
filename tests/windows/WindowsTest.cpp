// Eight surfaces in one process, each on a window of its own with three threads that paint it: on EGL's
// default display, on connections of the client's to the same X server, and on one to another. Surfaces are
// made and ended at once and in any order while the others go on.

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
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

constexpr std::uint32_t STRIPE = 16;  // pixels a painter has in width
constexpr std::uint32_t HEIGHT = 16;
constexpr unsigned int PAINTERS = 3;
constexpr TagKivRectInfo ALL{0, 0, PAINTERS* STRIPE, HEIGHT};

// An opaque colour that no two windows, pictures or painters of 32 pictures in a row have in common.
TagKivColorRGBA PaintersColor(unsigned int window, unsigned int picture, unsigned int painter) {
    const auto component = [](unsigned int number) {
        return static_cast<std::uint8_t>(number * 7 % 250 + 2);
    };
    return {component(window), component(picture % 32), component(painter), 255};
}

// A window and its surface, whose painters show one picture over and over until they are told of the next.
class Painted {
 public:
    Painted(unsigned int number, const X11Connection& connection, int platform)
        : windowNumber(number), window(ALL.width, ALL.height, connection) {
        EXPECT_EQ(surface.KivCreateGLContextOn({platform, connection.get()}), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
        EXPECT_EQ(surface.KivCreateGLFBO(layer, ALL.width, ALL.height, KIV_COLOR_FORMAT_RGBA8888), 0);
        for (unsigned int painter = 0; painter < PAINTERS; ++painter) {
            painters[painter] = std::thread([this, painter] {
                while (!ends) {
                    Paint(painter);
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

    // Has the next picture painted, and sees it in the window before its painter has shown it so often that a
    // server which is behind has caught up. A window that is painted no longer is waited for.
    void ExpectNextPicture(unsigned int number) {
        constexpr unsigned int ENOUGH = 100;
        picture = number;
        for (unsigned int painter = 0; painter < PAINTERS; ++painter) {
            const TagKivColorRGBA color = PaintersColor(windowNumber, number, painter);
            const auto pixel = static_cast<std::uint32_t>(color.r << 16 | color.g << 8 | color.b);
            const unsigned int before = frames[painter];
            bool shows = false;
            while (!shows && frames[painter] - before < ENOUGH) {
                shows = window.Pixels(static_cast<int>(painter * STRIPE + STRIPE / 2), HEIGHT / 2, 1, 1)
                            .front() == pixel;
            }
            EXPECT_TRUE(shows) << "window " << windowNumber << ", painter " << painter;
        }
    }

 private:
    // Each with another renderer.
    void Paint(unsigned int painter) {
        const TagKivColorRGBA color = PaintersColor(windowNumber, picture, painter);
        const TagKivRectInfo stripe{painter * STRIPE, 0, STRIPE, HEIGHT};
        const std::array<std::uint8_t, 4> pixel{color.r, color.g, color.b, color.a};
        const TagKivBitmapInfo bitmap{pixel.data(), KIV_COLOR_FORMAT_RGBA8888, 0, 0, 1, 1, stripe};
        const TagKivRoundInfo round{stripe.x + STRIPE / 2, HEIGHT / 2, STRIPE / 2, HEIGHT / 2};
        const int result = painter == 0   ? surface.KivDrawRect(layer, stripe, color)
                           : painter == 1 ? surface.KivDrawBitmap(layer, bitmap)
                                          : surface.KivDrawRound(layer, round, color);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(surface.KivBlit({layer, FBO_HANDLE_BASE, ALL, ALL}), 0);
        EXPECT_EQ(surface.KivRefreshOnSrceen(), 0);
        EXPECT_EQ(surface.Init(0), 0);  // no more than one frame ahead
        ++frames[painter];
    }

    unsigned int windowNumber;
    X11Window window;
    KivGLDrawSurface surface;
    unsigned int layer = 0;
    std::atomic<unsigned int> picture{0};
    std::array<std::atomic<unsigned int>, PAINTERS> frames{};  // of each painter so far
    std::atomic<bool> ends{false};
    std::array<std::thread, PAINTERS> painters;
};

class Windows {
 public:
    Windows() {
        Do(DrawnByLot(COUNT), [this](unsigned int number) { Make(number); });
    }

    // Some of the windows go and come again while the others are painted, each of which has to show another
    // picture when they have gone, and when they are there again.
    void Round() {
        const std::vector<unsigned int> changed = DrawnByLot(1 + Lot(COUNT));
        const auto end = [this](unsigned int number) { windows[number].reset(); };
        const auto make = [this](unsigned int number) { Make(number); };
        if (Lot(2) == 0) {
            Do(changed, end);
            ExpectNextPictures();
            Do(changed, make);
        } else {
            Do(changed, [&](unsigned int number) { end(number), make(number); });
        }
        ExpectNextPictures();
    }

    static constexpr unsigned int COUNT = 8;

 private:
    void Make(unsigned int number) {
        // The third to fifth on connections of the client's to the same server, the last two to another one.
        const bool isOnDefault = number < 3;
        const X11Connection& connection = number < 5 ? first : number < 6 ? second : toOtherServer;
        windows[number].emplace(number, connection, isOnDefault ? KIV_PLATFORM_DEFAULT : KIV_PLATFORM_X11);
    }
    void ExpectNextPictures() {
        ++picture;
        for (std::optional<Painted>& window : windows) {
            if (window.has_value()) {
                window->ExpectNextPicture(picture);
            }
        }
    }

    unsigned int Lot(unsigned int count) { return static_cast<unsigned int>(lots() % count); }
    std::vector<unsigned int> DrawnByLot(unsigned int count) {
        std::vector<unsigned int> numbers(COUNT);
        std::iota(numbers.begin(), numbers.end(), 0U);
        std::shuffle(numbers.begin(), numbers.end(), lots);
        numbers.resize(count);
        return numbers;
    }
    // All at once, or one after the other.
    template <typename Something>
    void Do(const std::vector<unsigned int>& numbers, const Something& something) {
        const bool atOnce = Lot(2) == 0;
        std::vector<std::thread> threads;
        for (const unsigned int number : numbers) {
            threads.emplace_back(something, number);
            if (!atOnce) {
                threads.back().join();
                threads.pop_back();
            }
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    std::mt19937 lots;  // the same in every run
    X11Connection first = ConnectToX11();
    X11Connection second = ConnectToX11();
    X11Connection toOtherServer = ConnectToX11(std::getenv("OTHER_DISPLAY"));
    std::array<std::optional<Painted>, COUNT> windows;
    unsigned int picture = 0;
};

TEST(Windows, GoOnWhileOthersOfTheProcessComeAndGo) {
    __android_log_set_logger([](const __android_log_message*) {});
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    UseOneHeap();
    const unsigned int rounds = NumberOf("WINDOW_ROUNDS", "3");
    Windows windows;
    std::size_t descriptors = 0;
    Watch("rounds of windows", rounds, [&] {
        windows.Round();
        const std::size_t now = DescriptorNum();
        descriptors = descriptors == 0 ? now : descriptors;
        EXPECT_EQ(now, descriptors);
    });
    if (!HasFailure()) {
        std::printf("windows: %u rounds of %u windows, every picture right\n", rounds, Windows::COUNT);
    }
}

}  // namespace
}  // namespace kivgles
