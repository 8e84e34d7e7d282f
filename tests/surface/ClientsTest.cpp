// What is the client's: the display that it has or has not, its signals, of which no thread of the library
// takes one, and the time after a surface.

#include <csignal>
#include <string>
#include <vector>

#include <android/log.h>
#include <gmock/gmock.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {

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

TEST(Signals, AreTakenByNoThreadOfTheLibraryAndTheCallersMaskIsKept) {
    static sigset_t blocked;  // by the thread that logs last: the caller, or the draw thread
    __android_log_set_logger(
        [](const __android_log_message*) { pthread_sigmask(SIG_BLOCK, nullptr, &blocked); });
    KivGLDrawSurface surface;
    recorder::Fail("pthread_create");
    EXPECT_EQ(surface.KivCreateGLContext(), 100);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    for (const int ofTheClients :  // an emulator of processes has no SIGRTMAX
         {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGCHLD, SIGALRM, SIGUSR1, SIGPIPE, SIGRTMIN}) {
        EXPECT_EQ(sigismember(&blocked, ofTheClients), 1) << ofTheClients;
    }
    for (const int ofAFault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS}) {
        EXPECT_EQ(sigismember(&blocked, ofAFault), 0) << ofAFault;
    }
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
    __android_log_set_logger(nullptr);
}

// What a logger keeps, without a lock: lines of one life come one after the other. The process destroys it.
static std::vector<std::string> lines;
static int loggingThreads = 0;
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

}  // namespace kivgles
