// How clients end, each a child of this process, which starts no thread itself.

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <tuple>
#include <vector>

#include <android/log.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"

static std::atomic<bool> heapIsEmpty{false};

// Nothing here is inlined: g++ would see that memory of `malloc` goes to `delete`, and that of `new` to
// `free`.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = heapIsEmpty ? nullptr : std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kivgles {
namespace {

using testing::ContainsRegex, testing::ExitedWithCode, testing::KilledBySignal;

// Ends the child if an operation returns another code.
void Expect(int code, int returned) {
    if (returned != code) {
        std::fprintf(stderr, "returned %d, not %d\n", returned, code);
        std::exit(1);
    }
}

void LiveTwice(KivGLDrawSurface& surface, int created, int initialised) {
    alarm(KIVGLES_TIME_LIMIT);  // so that none lives for ever
    for (int life = 0; life < 2; ++life) {
        Expect(created, surface.KivCreateGLContext());
        Expect(initialised, surface.Init(0x7F));
        Expect(0, surface.KivDestoryGLContext());
    }
}
void EndDestroyed(int created = 0, int initialised = 0) {
    {
        KivGLDrawSurface surface;
        LiveTwice(surface, created, initialised);
    }
    std::exit(0);
}

// What a logger keeps, without a lock: lines of one life come one after the other. The process destroys it.
std::vector<std::string> lines;
int loggingThreads = 0;
struct LoggingThread {
    LoggingThread() { ++loggingThreads; }
    ~LoggingThread() { --loggingThreads; }
};
void KeepLine(const __android_log_message* message) {
    thread_local const LoggingThread counted;
    lines.emplace_back(message->message);
}
void EndLogged() {
    alarm(KIVGLES_TIME_LIMIT);
    __android_log_set_logger(&KeepLine);
    __android_log_write(ANDROID_LOG_INFO, "T", "This thread may write the last line, and does not end.");
    for (int life = 0; life < 2; ++life) {
        Expect(0, KivGLDrawSurface().KivCreateGLContext());
        Expect(1, loggingThreads);
        Expect(1, lines.back() == "~GLDrawThread\n");
    }
    std::exit(0);
}
void EndIdle() {
    alarm(KIVGLES_TIME_LIMIT);
    static KivGLDrawSurface& surface = *new KivGLDrawSurface;
    Expect(0, surface.KivCreateGLContext());
    Expect(0, surface.Init(0x7F));
    std::exit(0);
}
void EndStarved() {
    alarm(KIVGLES_TIME_LIMIT);
    KivGLDrawSurface surface;
    Expect(0, surface.KivCreateGLContext());
    Expect(0, surface.KivRefreshOnSrceen());  // its memory is there for the next command
    Expect(0, surface.Init(0));
    heapIsEmpty = true;
    (void)surface.Init(0x7F);
}

TEST(Exit, IsCleanRightAfterDestructionAndWithAnIdleDrawThread) {
    for (int i = 0; i < 10; ++i) {
        EXPECT_EXIT(EndDestroyed(), ExitedWithCode(0), "");
        EXPECT_EXIT(EndIdle(), ExitedWithCode(0), "");
    }
}

TEST(End, HasComeForThreadAndLogWhenTheDestructorReturns) { EXPECT_EXIT(EndLogged(), ExitedWithCode(0), ""); }

TEST(Exit, ComesWhenTheHeapIsEmpty) { EXPECT_EXIT(EndStarved(), KilledBySignal(SIGABRT), "std::bad_alloc"); }

TEST(NoDisplay, ContextIsRefusedWithItsCodeAndLineAndCanBeTriedAgain) {
    const std::tuple<const char*, const char*, int, std::string> cases[] = {
        {"DISPLAY", "", 2, "E EGLManager: eglInitialize failed: 0x3001\n"},
        {"EGL_PLATFORM", "surfaceless", 5, "E EGLManager: eglCreatePbufferSurface error: 0x3005\n"},
    };
    for (const auto& [variable, value, code, line] : cases) {
        EXPECT_EXIT((setenv(variable, value, 1), EndDestroyed(code, 6)), ExitedWithCode(0),
                    ContainsRegex(line + "(.*\n)*" + line));
    }
}

}  // namespace
}  // namespace kivgles
