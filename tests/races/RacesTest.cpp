// Clients, the draw thread and their ends on several threads at once. GL is a stub without locks, which sees
// the order in which commands are executed.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <utility>

#include <android/log.h>
#include <gtest/gtest.h>

#include "drawthread/GLDrawThread.h"
#include "fuzz/StubGL.h"
#include "races/Clients.h"

namespace kivgles {
namespace {

constexpr unsigned int QUEUED = 2000;  // by each client

// What the draws tell, on the draw thread.
struct Seen {
    unsigned int executed[CLIENTS] = {};
    unsigned int misplaced = 0;
    KivGLSemaphore* holdsFirst = nullptr;  // the first draw waits for it
};
Seen seen;

void SeeDraw(const GLfloat*, std::size_t, const GLfloat* color) {
    if (seen.holdsFirst != nullptr) {
        std::exchange(seen.holdsFirst, nullptr)->Wait();
    }
    if (color != nullptr && color[3] == 1.0F) {
        const auto digit = [color](int i) {
            return static_cast<unsigned int>(std::lround(color[i] * 255)) - 2;
        };
        const unsigned int nth = (digit(0) % 31 * 250 + digit(1)) * 250 + digit(2);
        seen.misplaced += nth == seen.executed[digit(0) / 31 % CLIENTS]++ ? 0 : 1;
    }
}

void Reset() {
    __android_log_set_logger([](const __android_log_message*) {});
    stubgl::Reset(2048, UINT_MAX, SeeDraw);
    seen = Seen();
}

// Makes the context and queues the clients' rectangles, while the first draw waits for the last of them.
void FillQueue(KivGLDrawSurface& surface) {
    static KivGLSemaphore& queueIsFull = *new KivGLSemaphore(0);  // the draw thread may outlive main
    Reset();
    seen.holdsFirst = &queueIsFull;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    OnClientThreads([&surface](unsigned int client) {
        for (unsigned int nth = 0; nth < QUEUED; ++nth) {
            ASSERT_EQ(surface.KivDrawRect(FBO_HANDLE_BASE, CANVAS, CommandColor(client, nth)), 0);
        }
    });
    queueIsFull.Signal();
}

TEST(Races, AMillionCommandsOfEightClientsAreExecutedInTheOrderOfEach) {
    Reset();
    KivGLDrawSurface surface;
    unsigned int canvas = 0;
    unsigned int commands = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(1)), 0);
    const auto clients = RunClients(surface, RACE_FONT, canvas, 2500);
    EXPECT_EQ(surface.KivDestoryGLContext(), 0);
    for (const Client& client : clients) {
        EXPECT_EQ(client.failures, 0U);
        EXPECT_EQ(seen.executed[client.number], client.coloured);
        commands += client.commands;
    }
    EXPECT_EQ(seen.misplaced, 0U);
    EXPECT_EQ(stubgl::CountLive(), 0U);
    EXPECT_GE(commands, 1'000'000U);
    if (!HasFailure()) {
        std::printf("races: %u commands from %u threads, order kept\n", commands, CLIENTS);
    }
}

// It makes the text renderer and loads its font, which is replaced at once in every other life.
TEST(Races, FirstTextOfALifeIsDrawnWhileOthersMeasure) {
    TagKivTextInfo text{};
    text.text = u"AAAA";
    text.textLength = 4;
    text.fontSize = 40;
    for (int life = 0; life < 100; ++life) {
        Reset();
        KivGLDrawSurface surface;
        ASSERT_EQ(surface.KivCreateGLContext(), 0);
        OnClientThreads([&surface, &text, life](unsigned int number) {
            Client client{&surface, RACE_FONT, FBO_HANDLE_BASE, number};
            if (number == CLIENTS - 1) {
                client.Sent(surface.KivDrawText(FBO_HANDLE_BASE, text, CANVAS));
            }
            if (number == CLIENTS - 1 && life % 2 != 0) {
                client.LoadFont();
            }
            for (int i = 0; i < 30; ++i) {
                client.MeasureText(text, false);
            }
            EXPECT_EQ(client.failures, 0U);
        });
    }
}

TEST(Teardown, ExecutesAFullQueueAndLeavesNothingLifeAfterLife) {
    for (int life = 0; life < 6; ++life) {
        {
            KivGLDrawSurface surface;
            FillQueue(surface);
            EXPECT_TRUE(life % 2 == 0 || surface.KivDestoryGLContext() == 0);
        }
        for (const unsigned int count : seen.executed) {
            EXPECT_EQ(count, QUEUED);
        }
        EXPECT_EQ(seen.misplaced, 0U);
        EXPECT_EQ(stubgl::CountLive(), 0U);
    }
}

TEST(Teardown, StopAmongTheLastCommandsExecutesTheFirstOfEachClientAndReleasesTheRest) {
    const KivGLDrawSurface conversions;
    unsigned int executed = 0;
    for (int life = 0; life < 20; ++life) {
        Reset();
        auto drawThread = std::make_shared<GLDrawThread>();
        ASSERT_EQ(drawThread->Init(), 0);
        std::thread runner(&GLDrawThread::DrawThread, drawThread);
        auto create = std::make_shared<DrawCmd>(CMD_CREATE_GL_CONTEXT);
        ASSERT_EQ(drawThread->SendCmdAndWaitResponse(create), 0);

        std::vector<std::weak_ptr<DrawCmd>> sent[CLIENTS];
        OnClientThreads([&](unsigned int client) {
            for (unsigned int nth = 0; nth < QUEUED / 4; ++nth) {
                TagColorRGBA color{};
                conversions.ConvertGLColor(CommandColor(client, nth), color);
                auto info = std::make_unique<RectInfo>();
                info->SetRectColor(color);
                auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_RECT);
                cmd->SetRectInfo(info);
                sent[client].emplace_back(cmd);
                drawThread->SendCmdToQueue(cmd);
                EXPECT_TRUE(client != 0 || nth != QUEUED / 8 || drawThread->DeInit() == 0);
            }
        });
        runner.join();
        drawThread.reset();
        EXPECT_EQ(seen.misplaced, 0U);  // so what was executed has no gap
        executed = std::accumulate(std::begin(seen.executed), std::end(seen.executed), executed);
        for (const auto& commands : sent) {
            for (const std::weak_ptr<DrawCmd>& cmd : commands) {
                EXPECT_TRUE(cmd.expired());
            }
        }
        EXPECT_EQ(stubgl::CountLive(), 0U);
    }
    EXPECT_GT(executed, 0U);
}

[[noreturn]] void ExitWithAFullQueue(bool destroy) {
    // Static: reached, so no leak, while the draw thread works.
    static KivGLDrawSurface* surface = new KivGLDrawSurface;
    FillQueue(*surface);
    if (destroy) {
        delete std::exchange(surface, nullptr);
    }
    std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

TEST(Exit, IsCleanWhileTheDrawThreadWorksAndStraightAfterItsLastCommands) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EXIT(ExitWithAFullQueue(false), testing::ExitedWithCode(0), "");
        EXPECT_EXIT(ExitWithAFullQueue(true), testing::ExitedWithCode(0), "");
    }
}

}  // namespace
}  // namespace kivgles
