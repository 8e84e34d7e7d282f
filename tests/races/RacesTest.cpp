// Clients, the draw thread and their ends on several threads at once. GL is a stub without locks, which sees
// the order in which commands are executed.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <GLES2/gl2.h>
#include <android/log.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "races/BusyClient.h"
#include "support/Process.h"
#include "support/Recorder.h"

namespace kivgles {

// What the draw thread has seen.
struct Drawn {
    unsigned int executed[CLIENTS] = {};
    unsigned int misplaced = 0;
};
static Drawn drawn;

static void Reset() {
    __android_log_set_logger([](const __android_log_message*) {});
    recorder::StandAlone(2048);
    drawn = Drawn();
}

// Each coloured command sets its colour once; the texts that clients start with have none.
extern "C" void glUniform4fv(GLint, GLsizei, const GLfloat* color) {
    if (color[3] != 1.0F) {
        return;
    }
    unsigned int number = 0;
    for (int i = 0; i < 3; ++i) {
        number = number * 128 + static_cast<unsigned int>(std::lround(color[i] * 255)) - 2;
    }
    unsigned int& executed = drawn.executed[number >> 18 & (CLIENTS - 1)];
    drawn.misplaced += (number & 0x3FFFF) == executed++ ? 0 : 1;
}

namespace {

// 40,000 commands, or with RACE_LIVES=250 a million.
TEST(Races, CommandsOfEightClientsAreExecutedInTheOrderOfEachLifeAfterLife) {
    constexpr unsigned int ROUNDS = 10;
    const unsigned int lives = NumberOf("RACE_LIVES", "10");
    pid_t first = 0;
    std::thread([&] { first = gettid(); }).join();  // with it begins a thread of the thread sanitizer's own
    while (std::filesystem::exists("/proc/self/task/" + std::to_string(first))) {
    }
    const std::size_t threads = ThreadNum();
    for (unsigned int life = 0; life < lives; ++life) {
        Reset();
        BusySurface busy(reinterpret_cast<ANativeWindow*>(1));
        busy.Rounds(ROUNDS);
        EXPECT_EQ(busy.surface.KivDestoryGLContext(), 0);
        for (const BusyClient& client : busy.clients) {
            EXPECT_EQ(drawn.executed[client.number], client.coloured);
        }
        EXPECT_EQ(drawn.misplaced, 0U);
        EXPECT_EQ(recorder::Live().size(), 0U);
    }
    AwaitThreadNum(threads);  // a draw thread that is still ending holds memory
    if (!HasFailure()) {
        std::printf("races: %u commands from %u threads, order kept\n",
                    CLIENTS * BusyClient::ROUND * ROUNDS * lives, CLIENTS);
    }
}

// Ends the process while its draw thread works on what is queued.
[[noreturn]] void EndWithAFullQueue() {
    alarm(KIVGLES_TIME_LIMIT);
    Reset();
    auto* const surface = new KivGLDrawSurface;  // stays: the draw thread may outlive main
    EXPECT_EQ(surface->KivCreateGLContext(), 0);
    for (unsigned int nth = 0; nth < 50000; ++nth) {
        EXPECT_EQ(surface->KivDrawRect(FBO_HANDLE_BASE, CANVAS, CommandColor(0, nth)), 0);
    }
    std::exit(testing::Test::HasFailure());
}

TEST(Exit, IsCleanWhileTheDrawThreadWorks) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(EndWithAFullQueue(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace kivgles
