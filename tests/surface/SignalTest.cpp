// Signals are the client's: no thread of the library takes one.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/signalfd.h>
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

// One that came to another thread would end this process.
TEST(Signals, ComeToAClientThatWaitsForThemInEitherWay) {
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    sigset_t awaited;
    sigset_t before;
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &awaited, &before);

    int signal = 0;
    kill(getpid(), SIGTERM);
    EXPECT_EQ(sigwait(&awaited, &signal), 0);
    EXPECT_EQ(signal, SIGTERM);

    const int descriptor = signalfd(-1, &awaited, SFD_CLOEXEC);
    signalfd_siginfo info{};
    kill(getpid(), SIGTERM);
    EXPECT_EQ(read(descriptor, &info, sizeof(info)), static_cast<ssize_t>(sizeof(info)));
    EXPECT_EQ(info.ssi_signo, static_cast<std::uint32_t>(SIGTERM));
    close(descriptor);

    EXPECT_EQ(surface.Init(0), 0);  // the draw thread is as it was
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace
}  // namespace kivgles
