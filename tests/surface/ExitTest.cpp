// How clients end and begin again, on the real EGL, without what other tests put between.

#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include <android/log.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {
namespace {

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

// Tries twice, where an environment variable has a value, which EGL reads once in a process: in one that is
// forked, as an emulated one cannot be begun anew.
[[noreturn]] void EndWithoutDisplay(const char* variable, const char* value, int created) {
    alarm(KIVGLES_TIME_LIMIT);
    setenv(variable, value, 1);
    {
        KivGLDrawSurface surface;
        for (int life = 0; life < 2; ++life) {
            EXPECT_EQ(surface.KivCreateGLContext(), created);
            EXPECT_EQ(surface.Init(0x7F), 6);
            EXPECT_EQ(surface.KivDestoryGLContext(), 0);
        }
    }
    std::exit(testing::Test::HasFailure());
}

TEST(NoDisplay, ContextIsRefusedWithItsCodeAndLineAndCanBeTriedAgain) {
    const std::tuple<const char*, const char*, int, std::string> cases[] = {
        {"DISPLAY", "", 2, "E EGLManager: eglInitialize failed: 0x3001\n"},
        {"EGL_PLATFORM", "surfaceless", 5, "E EGLManager: eglCreatePbufferSurface error: 0x3005\n"},
    };
    for (const auto& [variable, value, code, line] : cases) {
        EXPECT_EXIT(EndWithoutDisplay(variable, value, code), testing::ExitedWithCode(0),
                    testing::ContainsRegex(line + "(.*\n)*" + line));
    }
}

}  // namespace
}  // namespace kivgles
