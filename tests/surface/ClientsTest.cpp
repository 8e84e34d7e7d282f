// What is the client's: the display that it has or has not, its signals, of which no thread of the library
// takes one, and the time after a surface.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <android/log.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

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

// What a logger keeps, without a lock: lines of one life come one after the other. The process destroys it.
std::vector<std::string> lines;
int loggingThreads = 0;
struct LoggingThread {
    LoggingThread() { ++loggingThreads; }
    ~LoggingThread() { --loggingThreads; }
};

TEST(End, HasComeForThreadAndLogWhenTheDestructorReturns) {
    __android_log_set_logger([](const __android_log_message* message) {
        thread_local const LoggingThread counted;
        lines.emplace_back(message->message);
    });
    __android_log_write(ANDROID_LOG_INFO, "T", "This thread may write the last line, and does not end.");
    for (int life = 0; life < 2; ++life) {
        EXPECT_EQ(KivGLDrawSurface().KivCreateGLContext(), 0);
        EXPECT_EQ(loggingThreads, 1);
        EXPECT_EQ(lines.back(), "~GLDrawThread\n");
    }
    __android_log_set_logger(nullptr);
}

}  // namespace
}  // namespace kivgles
