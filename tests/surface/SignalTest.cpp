// Signals are the client's: no thread of the library takes one, so all come to whoever waits for them.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
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

bool Takes(std::uint64_t blocked, int signal) { return (blocked >> (signal - 1) & 1) == 0; }

TEST(Signals, AreTakenByNoThreadOfTheLibraryAndTheCallersMaskIsKept) {
    const std::string self = std::to_string(getpid());
    const std::uint64_t before = Blocked("/proc/thread-self");
    KivGLDrawSurface surface;
    recorder::Fail("pthread_create");
    EXPECT_EQ(surface.KivCreateGLContext(), 100);
    EXPECT_EQ(Blocked("/proc/thread-self"), before);
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    EXPECT_EQ(Blocked("/proc/thread-self"), before);

    bool someTakesItsFaults = false;  // the driver's own threads are its affair
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() == self) {
            continue;
        }
        const std::uint64_t blocked = Blocked(thread);
        // An emulator of processes has the first two of the real-time ones for itself.
        for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGCHLD, SIGALRM, SIGUSR1, SIGUSR2,
                                 SIGPIPE, SIGPROF, SIGTSTP, SIGRTMIN + 2, SIGRTMAX}) {
            EXPECT_FALSE(Takes(blocked, signal)) << signal;
        }
        bool takesFaults = true;
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS}) {
            takesFaults = takesFaults && Takes(blocked, fault);
        }
        someTakesItsFaults = someTakesItsFaults || takesFaults;
    }
    EXPECT_TRUE(someTakesItsFaults);
}

}  // namespace
}  // namespace kivgles
