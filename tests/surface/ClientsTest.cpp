// What is the client's: the display that it has or has not, and its signals, of which no thread of the
// library takes one.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

TEST(Displays, OutliveOneOfTwoSurfacesOnThem) {
    const X11Window window(8, 8);
    KivGLDrawSurface first;
    KivGLDrawSurface second;
    ASSERT_EQ(first.KivCreateGLContext() + second.KivCreateGLContext() + first.KivDestoryGLContext(), 0);
    EXPECT_EQ(second.KivConnectWindowSurface(window.Native()), 0);
}

TEST(Displays, ThatCannotBeAreRefusedAndTheContextStays) {
    const X11Connection connection = ConnectToX11();
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_X11, connection.get()}), 0);
    recorder::Reset();
    EXPECT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_X11, nullptr}), 101);
    EXPECT_EQ(surface.KivCreateGLContextOn({KIV_PLATFORM_WAYLAND, nullptr}), 101);
    EXPECT_EQ(surface.KivCreateGLContextOn({3, connection.get()}), 100);
    EXPECT_THAT(recorder::Log(), testing::ElementsAre("E KivGLDrawSurface: native display is NULL\n",
                                                      "E KivGLDrawSurface: native display is NULL\n",
                                                      "E KivGLDrawSurface: platform is invalid 3\n"));
    EXPECT_EQ(surface.Init(0), 0);
}

constexpr std::uint64_t Bit(int signal) { return std::uint64_t{1} << (signal - 1); }

// What a thread of this process blocks, as the system counts it; all when it has ended.
std::uint64_t Blocked(const std::filesystem::path& thread) {
    std::ifstream status(thread / "status");
    std::uint64_t mask = UINT64_MAX;
    for (std::string word; status >> word && word != "SigBlk:";) {
    }
    return status >> std::hex >> mask ? mask : UINT64_MAX;
}

TEST(Signals, AreTakenByNoThreadOfTheLibraryAndTheCallersMaskIsKept) {
    // An emulator of processes has the first two of the real-time ones for itself.
    const std::uint64_t clients = Bit(SIGHUP) | Bit(SIGINT) | Bit(SIGQUIT) | Bit(SIGTERM) | Bit(SIGCHLD) |
                                  Bit(SIGALRM) | Bit(SIGUSR1) | Bit(SIGPIPE) | Bit(SIGRTMIN + 2) |
                                  Bit(SIGRTMAX);
    const std::uint64_t faults =
        Bit(SIGSEGV) | Bit(SIGBUS) | Bit(SIGFPE) | Bit(SIGILL) | Bit(SIGTRAP) | Bit(SIGABRT) | Bit(SIGSYS);
    const std::uint64_t before = Blocked("/proc/thread-self");
    KivGLDrawSurface surface;
    recorder::Fail("pthread_create");
    EXPECT_EQ(surface.KivCreateGLContext(), 100);
    EXPECT_EQ(Blocked("/proc/thread-self"), before);
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    EXPECT_EQ(Blocked("/proc/thread-self"), before);

    bool someTakesItsFaults = false;  // the driver's own threads are its affair
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() != std::to_string(getpid())) {
            EXPECT_EQ(Blocked(thread) & clients, clients);
            someTakesItsFaults = someTakesItsFaults || (Blocked(thread) & faults) == 0;
        }
    }
    EXPECT_TRUE(someTakesItsFaults);
}

}  // namespace
}  // namespace kivgles
