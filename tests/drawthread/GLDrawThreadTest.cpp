#include <thread>

#include <gmock/gmock.h>

#include "drawthread/GLDrawThread.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using testing::IsEmpty;
using Lines = std::vector<std::string>;

std::shared_ptr<DrawCmd> Command(std::uint32_t kind, unsigned int handle = FBO_HANDLE_FREE) {
    auto cmd = std::make_shared<DrawCmd>(static_cast<TagCmd>(kind));
    cmd->SetFboHandleIndex(handle);
    return cmd;
}

// --- On a thread of its own ---

class RunningDrawThread : public testing::Test {
 protected:
    void SetUp() override {
        recorder::Reset();
        drawThread->Init();
        runner = std::thread(&GLDrawThread::DrawThread, drawThread);
    }
    void TearDown() override {
        EXPECT_EQ(Send(CMD_DESTROY_GL_CONTEXT), 0);
        drawThread->DeInit();
        runner.join();
        EXPECT_EQ(recorder::Log("W GLDrawThread: exit draw thread\n").size(), 1U);
    }
    int Send(std::uint32_t kind) {
        auto cmd = Command(kind);
        return drawThread->SendCmdAndWaitResponse(cmd);
    }

    const std::shared_ptr<GLDrawThread> drawThread = std::make_shared<GLDrawThread>();
    std::thread runner;
};

TEST_F(RunningDrawThread, WakesUpForEveryCommandAndRefusesWithoutAContextAllButTheContextCommands) {
    for (int i = 0; i < 100; ++i) {
        recorder::Reset();
        for (std::uint32_t kind = CMD_INIT; kind <= CMD_REFRESH_ON_SCREEN + 1; ++kind) {
            EXPECT_EQ(Send(kind), 6) << kind;
        }
        EXPECT_EQ(recorder::Log(), Lines(15, "E GLDrawThread: GLES context is not created\n"));
        EXPECT_THAT(recorder::Counts(), IsEmpty());
    }
    EXPECT_EQ(Send(CMD_CREATE_GL_CONTEXT), 0);
    EXPECT_EQ(Send(CMD_CREATE_GL_CONTEXT), 0);  // sets the same manager up again
    EXPECT_EQ(Send(CMD_INIT), 0);
    recorder::Fail("eglMakeCurrent", 2);  // the first one takes the former surface off the thread
    EXPECT_EQ(Send(CMD_CREATE_GL_CONTEXT), 100);
    EXPECT_EQ(Send(CMD_INIT), 6);
    EXPECT_EQ(Send(CMD_CREATE_GL_CONTEXT), 0);
    EXPECT_EQ(Send(CMD_DESTROY_GL_CONTEXT), 0);
    EXPECT_EQ(Send(CMD_INIT), 6);
}

// --- On the test's thread ---

TEST(DrawThreadQueue, StopWakesTheLoopAndReleasesQueuedCommandsUnexecuted) {
    recorder::Reset();
    std::weak_ptr<DrawCmd> queued;
    {
        GLDrawThread drawThread;
        drawThread.Init();
        drawThread.DeInit();
        EXPECT_EQ(drawThread.ReadCmdFromQueue(), nullptr);
        auto cmd = Command(CMD_CREATE_GL_CONTEXT);
        queued = cmd;
        drawThread.SendCmdToQueue(cmd);
        cmd.reset();
        drawThread.DrawThread();
        EXPECT_FALSE(queued.expired());
    }
    EXPECT_TRUE(queued.expired());
    EXPECT_EQ(recorder::Log(),
              (Lines{"W GLDrawThread: DrawCmd is empty\n", "W GLDrawThread: exit draw thread\n",
                     "W GLDrawThread: ~GLDrawThread\n"}));
    EXPECT_EQ(recorder::Counts()["eglGetDisplay"], 0);
}

class Handlers : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_EQ(Execute(CMD_CREATE_GL_CONTEXT), 0);
        recorder::Reset();
    }
    int Execute(std::uint32_t kind, unsigned int handle = FBO_HANDLE_FREE) {
        auto cmd = Command(kind, handle);
        return drawThread.DrawCmdProc(cmd);
    }
    int Init(unsigned int mask) {
        drawThread.SetEnable(mask);
        return Execute(CMD_INIT);
    }

    GLDrawThread drawThread;
};

TEST_F(Handlers, RefuseWhatTheyCannotExecuteAndSayWhy) {
    struct Case {
        std::uint32_t kind;
        unsigned int handle;
        int status;
        Lines lines;
    };
    const std::string invalid = "E GLDrawThread: FBO manager is nullptr or param is invalid\n";
    const std::string unknown = "E GLDrawThread: There is not the fbo 0x10005\n";
    const std::string absent = "E FBOManager: FBO is not exist fboHandleIndex 0x10005\n";
    const Case cases[] = {
        {CMD_DESTROY_FBO, 0x10001, 100, {invalid}},  // there is no table yet
        {CMD_CLEAR_FBO, 0x10001, 100, {invalid}},
        {CMD_DRAW_BITMAP, 0x10005, 102, {unknown, unknown}},  // makes the table
        {CMD_DESTROY_FBO, FBO_HANDLE_FREE, 100, {invalid}},
        {CMD_CLEAR_FBO, FBO_HANDLE_FREE, 100, {invalid}},
        {CMD_CLEAR_FBO, 0x10005, 102, {unknown, unknown}},
        {CMD_DESTROY_FBO, 0x10005, 0, {absent, "W GLDrawThread: Destory FBO fboHandleIndex 0x10005\n"}},
        {CMD_DISPLAY_FBO, 0, 102, {"E GLDrawThread: blitInfo is null\n"}},
        {CMD_BLIT, 0, 102, {"E GLDrawThread: blitInfo is null\n"}},
        {CMD_DRAW_TEXT, 0, 102, {"E GLDrawThread: textInfo is null\n"}},
        {CMD_DRAW_RECT, 0, 102, {"E GLDrawThread: rectInfo is null\n"}},
        {CMD_DRAW_ROUND, 0, 102, {"E GLDrawThread: roundInfo is null\n"}},
        {CMD_CONNECT_WINDOW_SURFACE, 0, 102, {"E GLDrawThread: native window is NULL\n"}},
        {16, 0, 100, {"E GLDrawThread: unknown cmd is 16\n"}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.kind);
        recorder::Reset();
        EXPECT_EQ(Execute(test.kind, test.handle), test.status);
        EXPECT_EQ(recorder::Log(), test.lines);
    }
}

TEST_F(Handlers, InitStopsAtARendererThatCannotBeMadeAndKeepsThoseBefore) {
    EXPECT_EQ(Init(0), 0);
    EXPECT_THAT(recorder::Counts(), IsEmpty());
    std::size_t made = 0;
    for (const char* failure :
         {"OSD text init fail 20\n", "OSD blit init fail 20\n", "OSD bitmap fail 20\n",
          "OSD frame init fail 20\n", "OSD Rect init fail 20\n", "OSD Round init fail 20\n"}) {
        recorder::Reset();
        recorder::Fail("glCreateProgram");
        EXPECT_EQ(Init(0x7F), 20);
        EXPECT_EQ(recorder::Log("E GLDrawThread"), Lines{std::string("E GLDrawThread: ") + failure});
        recorder::Fail("glCreateProgram", 2);  // the failed one is tried again, then the next fails
        (void)Init(0x7F);
        EXPECT_EQ(recorder::Live("program").size(), ++made);
    }
    recorder::Reset();
    EXPECT_EQ(Init(0x7F), 0);
    EXPECT_THAT(recorder::Counts(), IsEmpty());  // those that exist stay
}

TEST_F(Handlers, MissingRendererIsMadeByTheFirstDrawWhateverTheMask) {
    ASSERT_EQ(Init(ENABLE_FBO_MANAGER), 0);
    recorder::Fail("glCreateShader");
    auto info = std::make_unique<RectInfo>();
    auto cmd = Command(CMD_DRAW_RECT);
    cmd->SetRectInfo(info);
    EXPECT_EQ(drawThread.DrawCmdProc(cmd), 20);
    EXPECT_EQ(drawThread.DrawCmdProc(cmd), 0);
    EXPECT_EQ(drawThread.DrawCmdProc(cmd), 0);
    EXPECT_EQ(recorder::Live("program").size(), 1U);
}

}  // namespace
}  // namespace kivgles
