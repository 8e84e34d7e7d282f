#include <atomic>
#include <functional>
#include <future>
#include <thread>
#include <utility>

#include <ft2build.h>
#include FT_OUTLINE_H
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "drawthread/GLDrawThread.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Interception.h"
#include "support/Recorder.h"

// What runs whenever a load looks at an outline.
static std::function<void()> onOutline;

extern "C" void FT_Outline_Get_CBox(const FT_Outline* outline, FT_BBox* box) {
    if (onOutline) {
        onOutline();
    }
    static const auto next = recorder::Next<decltype(FT_Outline_Get_CBox)>("FT_Outline_Get_CBox");
    next(outline, box);
}

// How often this process has given its turn away.
static std::atomic<int> yields{0};

extern "C" int sched_yield() noexcept {
    ++yields;
    return static_cast<int>(syscall(SYS_sched_yield));
}

namespace kivgles {
namespace {

constexpr char FONT[] = KIVGLES_TEST_FONTS "/bearings.ttf";

int DrawEmptyText(GLDrawThread& drawThread) {
    auto info = std::make_unique<TextInfo>();
    auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_TEXT);
    cmd->SetTextInfo(info);
    return drawThread.DrawCmdProc(cmd);
}

TEST(Handlers, RefuseWhatTheyCannotExecuteAndSayWhy) {
    struct Case {
        std::uint32_t kind;
        unsigned int handle;
        int status;
        std::vector<std::string> lines;
    };
    const std::string invalid = "E GLDrawThread: FBO manager is nullptr or param is invalid\n";
    const std::string unknown = "E GLDrawThread: There is not the fbo 0x10005\n";
    const Case cases[] = {
        {CMD_DESTROY_FBO, 0x10001, 100, {invalid}},  // there is no table yet
        {CMD_CLEAR_FBO, 0x10001, 100, {invalid}},
        {CMD_DRAW_BITMAP, 0x10005, 102, {unknown, unknown}},  // makes the table
        {CMD_DESTROY_FBO, FBO_HANDLE_FREE, 100, {invalid}},
        {CMD_CLEAR_FBO, FBO_HANDLE_FREE, 100, {invalid}},
        {CMD_CLEAR_FBO, 0x10005, 102, {unknown, unknown}},
        {CMD_DISPLAY_FBO, 0, 102, {"E GLDrawThread: blitInfo is null\n"}},
        {CMD_BLIT, 0, 102, {"E GLDrawThread: blitInfo is null\n"}},
        {CMD_DRAW_TEXT, 0, 102, {"E GLDrawThread: textInfo is null\n"}},
        {CMD_DRAW_RECT, 0, 102, {"E GLDrawThread: rectInfo is null\n"}},
        {CMD_DRAW_ROUND, 0, 102, {"E GLDrawThread: roundInfo is null\n"}},
        {CMD_CONNECT_WINDOW_SURFACE, 0, 102, {"E GLDrawThread: native window is NULL\n"}},
        {INT32_MAX, 0, 100, {"E GLDrawThread: unknown cmd is 2147483647\n"}},
    };
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.SetupGLESConext(), 0);
    for (const Case& test : cases) {
        SCOPED_TRACE(test.kind);
        recorder::Reset();
        auto cmd = std::make_shared<DrawCmd>(static_cast<TagCmd>(test.kind));  // without a payload
        cmd->SetFboHandleIndex(test.handle);
        EXPECT_EQ(drawThread.DrawCmdProc(cmd), test.status);
        EXPECT_EQ(recorder::Log(), test.lines);
    }
}

TEST(FirstText, LoadsWhatTheLastLoadExecutedNamedNotOneThatIsStillQueued) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.SetupGLESConext(), 0);
    drawThread.SetFontLibInfo(FONT, 20);       // as the client has done whose load comes after the text
    EXPECT_EQ(DrawEmptyText(drawThread), 31);  // the default font is on no desktop
    recorder::Reset();
    EXPECT_EQ(drawThread.LoadFont(), 0);
    EXPECT_EQ(recorder::Log("E FontAtlas: Error loading font face"), std::vector<std::string>{});
}

// Calls that waited for the font would wait for ever here.
TEST(FirstText, KeepsNoQueuedCallNoLookUpAndNoMeasurementWaitingForItsFontAndShowsNoneOfItBefore) {
    KivGLDrawSurface surface;
    unsigned int layer = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivCreateGLFBO(layer, 8, 8, KIV_COLOR_FORMAT_RGBA8888), 0);
    recorder::Fail("glCreateProgram");
    ASSERT_EQ(surface.KivLoadFont(FONT, 40), 20);  // named, and not yet loaded

    std::promise<void> loads;
    std::promise<void> goesOn;
    onOutline = [&, meets = true]() mutable {
        if (std::exchange(meets, false)) {
            loads.set_value();
            goesOn.get_future().wait();
        }
    };
    const TagKivTextInfo text{};
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(surface.KivDrawText(layer, text, {0, 0, 8, 8}), 0);
    loads.get_future().wait();
    EXPECT_EQ(surface.KivDrawRect(layer, {0, 0, 8, 8}, {0, 0, 0, 255}), 0);
    EXPECT_EQ(surface.KivDrawText(layer, text, {0, 0, 8, 8}), 0);
    EXPECT_EQ(surface.KivBlit({layer, FBO_HANDLE_BASE, {0, 0, 8, 8}, {0, 0, 8, 8}}), 0);
    EXPECT_EQ(surface.KivClearGLFBO(layer), 0);
    EXPECT_EQ(surface.KivRefreshOnSrceen(), 0);
    EXPECT_EQ(surface.KivGetTextSize(text, width, height), 103);
    goesOn.set_value();
    EXPECT_EQ(surface.Init(0), 0);
    EXPECT_EQ(surface.KivGetTextSize(text, width, height), 0);
    onOutline = nullptr;
}

// A thread that yields is not woken ahead of those that are busy.
TEST(Semaphore, SleepsUntilItIsSignalledAndDoesNotYield) {
    constexpr int ROUNDS = 1000;
    KivGLSemaphore there(0);
    KivGLSemaphore back(0);
    yields = 0;
    std::thread answering([&] {
        for (int round = 0; round < ROUNDS; ++round) {
            there.Wait();
            back.Signal();
        }
    });
    for (int round = 0; round < ROUNDS; ++round) {
        there.Signal();
        back.Wait();
    }
    answering.join();
    EXPECT_EQ(yields, 0);
}

TEST(Queue, GivesNothingWhenAStopComesInsteadOfACommand) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.Init(), 0);
    ASSERT_EQ(drawThread.DeInit(), 0);
    recorder::Reset();
    EXPECT_EQ(drawThread.ReadCmdFromQueue(), nullptr);
    EXPECT_EQ(recorder::Log(), std::vector<std::string>{"W GLDrawThread: DrawCmd is empty\n"});
}

}  // namespace
}  // namespace kivgles
