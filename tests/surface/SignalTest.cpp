// Signals are the client's: no thread of the library takes one.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

// What a thread of this process blocks, as the system counts it: signal n is bit n - 1.
std::uint64_t Blocked(const std::filesystem::path& thread) {
    std::ifstream status(thread / "status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("SigBlk:", 0) == 0) {
            return std::stoull(line.substr(7), nullptr, 16);
        }
    }
    return UINT64_MAX;  // it has ended
}

constexpr std::uint64_t Mask(std::initializer_list<int> signals) {
    std::uint64_t mask = 0;
    for (const int signal : signals) {
        mask |= std::uint64_t{1} << (signal - 1);
    }
    return mask;
}

TEST(Signals, AreTakenByNoThreadOfTheLibraryAndTheCallersMaskIsKept) {
    // An emulator of processes has the first two of the real-time ones for itself.
    const std::uint64_t clients = Mask({SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGCHLD, SIGALRM, SIGUSR1, SIGUSR2,
                                        SIGPIPE, SIGPROF, SIGTSTP, SIGRTMIN + 2, SIGRTMAX});
    const std::uint64_t faults = Mask({SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS});
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
