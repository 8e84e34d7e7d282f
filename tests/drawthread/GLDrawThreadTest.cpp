#include <atomic>
#include <future>
#include <string>

#include <android/log.h>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/syscall.h>

#include "drawthread/GLDrawThread.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Process.h"
#include "support/Recorder.h"

// How often this process has given its turn away.
static std::atomic<int> yields{0};

extern "C" int sched_yield() noexcept {
    ++yields;
    return static_cast<int>(syscall(SYS_sched_yield));
}

namespace kivgles {

using testing::ElementsAre, testing::IsEmpty;

constexpr char FONT[] = KIVGLES_TEST_FONTS "/bearings.ttf";
constexpr TagKivTextInfo LETTER{u"A", 1, {}, {}, 0, 40, 0, 0, 0};

// What no client brings about: each part is safe by itself all the same.
TEST(Handlers, RefuseCommandsWithoutTheirPayloadAndOfNoKindAndSayWhy) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.SetupGLESConext(), 0);
    const auto refusal = [&](int kind) {
        recorder::Reset();
        auto cmd = std::make_shared<DrawCmd>(static_cast<TagCmd>(kind));
        const int status = drawThread.DrawCmdProc(cmd);
        const auto lines = recorder::Log("E GLDrawThread: ");
        return std::to_string(status) + (lines.size() == 1 ? lines[0].substr(15) : ", and not one line");
    };
    EXPECT_EQ(refusal(CMD_DISPLAY_FBO), "102 blitInfo is null\n");
    EXPECT_EQ(refusal(CMD_BLIT), "102 blitInfo is null\n");
    EXPECT_EQ(refusal(CMD_DRAW_TEXT), "102 textInfo is null\n");
    EXPECT_EQ(refusal(CMD_DRAW_RECT), "102 rectInfo is null\n");
    EXPECT_EQ(refusal(CMD_DRAW_ROUND), "102 roundInfo is null\n");
    EXPECT_EQ(refusal(CMD_CONNECT_WINDOW_SURFACE), "102 native window is NULL\n");
    EXPECT_EQ(refusal(INT32_MAX), "100 unknown cmd is 2147483647\n");
}

// Before those whose draw threads may still be saying that they end.
TEST(Queue, GivesNothingWhenAStopComesInsteadOfACommand) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.Init() + drawThread.DeInit(), 0);
    recorder::Reset();
    EXPECT_EQ(drawThread.ReadCmdFromQueue(), nullptr);
    EXPECT_THAT(recorder::Log(), ElementsAre("W GLDrawThread: DrawCmd is empty\n"));
}

// A thread that yields is not woken ahead of those that are busy.
TEST(Semaphore, LetsOneWaitThroughForEachSignalAndTheNextOneSleepAndNotYield) {
    KivGLSemaphore semaphore(0);
    yields = 0;
    semaphore.Signal();
    semaphore.Signal();
    semaphore.Wait();
    semaphore.Wait();
    const std::future<void> third = AsleepIn([&] { semaphore.Wait(); });
    EXPECT_EQ(third.wait_for(NO_TIME), std::future_status::timeout);
    semaphore.Signal();
    third.wait();
    EXPECT_EQ(yields, 0);
}

TEST(FirstText, LoadsWhatTheLastLoadExecutedNamedNotOneThatIsStillQueued) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.SetupGLESConext(), 0);
    drawThread.SetFontLibInfo(FONT, 20);  // as the client has done whose load comes after the text
    auto text = std::make_shared<DrawCmd>(CMD_DRAW_TEXT);
    auto info = std::make_unique<TextInfo>();
    text->SetTextInfo(info);
    EXPECT_EQ(drawThread.DrawCmdProc(text), 31);  // the default font is on no desktop
    recorder::Reset();
    EXPECT_EQ(drawThread.LoadFont(), 0);
    EXPECT_THAT(recorder::Log("E FontAtlas: Error loading font face"), IsEmpty());
}

// Calls that waited for the font would wait for ever here.
TEST(FirstText, KeepsMeasurementsWaitingForItsFontButNoQueuedCallAndNoLookUp) {
    KivGLDrawSurface surface;
    unsigned int layer = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivCreateGLFBO(layer, 8, 8, KIV_COLOR_FORMAT_RGBA8888), 0);
    recorder::Fail("glCreateProgram");
    ASSERT_EQ(surface.KivLoadFont(FONT, 40), 20);  // named, and not yet loaded

    static std::promise<void> loads, goesOn;
    loads = std::promise<void>();  // also when the test is repeated
    goesOn = std::promise<void>();
    __android_log_set_logger([](const __android_log_message* line) {
        if (line->message == std::string("Generated a 74 x 20 (1 kb) texture atlas\n")) {
            loads.set_value();
            goesOn.get_future().wait();
        }
    });
    EXPECT_EQ(surface.KivDrawText(layer, LETTER, {0, 0, 8, 8}), 0);
    loads.get_future().wait();
    EXPECT_EQ(surface.KivDrawText(layer, LETTER, {0, 0, 8, 8}), 0);
    EXPECT_EQ(surface.KivBlit({layer, FBO_HANDLE_BASE, {0, 0, 8, 8}, {0, 0, 8, 8}}), 0);
    unsigned int width = 0;
    unsigned int height = 0;
    std::future<int> measurement = AsleepIn([&] { return surface.KivGetTextSize(LETTER, width, height); });
    EXPECT_EQ(measurement.wait_for(NO_TIME), std::future_status::timeout);
    goesOn.set_value();
    EXPECT_EQ(measurement.get(), 0);
    EXPECT_EQ(width, 14U);
    EXPECT_EQ(surface.Init(0), 0);  // waits
    __android_log_set_logger(nullptr);
}

}  // namespace kivgles
