// Clients, the draw thread and their ends on several threads at once. GL is a stub without locks, which sees
// the order in which commands are executed.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <utility>

#include <android/log.h>
#include <gmock/gmock.h>

#include "drawthread/GLDrawThread.h"
#include "races/BusyClient.h"
#include "support/StubGL.h"

namespace kivgles {
namespace {

constexpr unsigned int QUEUED = 2000;  // by each client

// What the draws tell, on the draw thread.
struct Drawn {
    unsigned int executed[CLIENTS] = {};
    unsigned int misplaced = 0;
    KivGLSemaphore* holdsFirst = nullptr;  // the first draw waits for it
};
Drawn drawn;

void SeeDraw(const GLfloat*, std::size_t, const GLfloat* color) {
    if (drawn.holdsFirst != nullptr) {
        std::exchange(drawn.holdsFirst, nullptr)->Wait();
    }
    if (color != nullptr && color[3] == 1.0F) {
        unsigned int number = 0;
        for (int i = 0; i < 3; ++i) {
            number = number * 128 + static_cast<unsigned int>(std::lround(color[i] * 255)) - 2;
        }
        unsigned int& executed = drawn.executed[number >> 18 & (CLIENTS - 1)];
        drawn.misplaced += (number & 0x3FFFF) == executed++ ? 0 : 1;
    }
}

void Reset() {
    __android_log_set_logger([](const __android_log_message*) {});
    stubgl::Reset(2048, UINT_MAX, SeeDraw);
    drawn = Drawn();
}

// 40,000 commands, or with RACE_ROUNDS=2500 a million.
TEST(Races, CommandsOfEightClientsAreExecutedInTheOrderOfEach) {
    const char* const set = std::getenv("RACE_ROUNDS");
    const auto rounds = static_cast<unsigned int>(std::atoi(set != nullptr ? set : "100"));
    Reset();
    KivGLDrawSurface surface;
    unsigned int canvas = 0;
    unsigned int commands = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(1)), 0);
    const auto clients = RunClients(surface, canvas, rounds);
    EXPECT_EQ(surface.KivDestoryGLContext(), 0);
    for (const BusyClient& client : clients) {
        EXPECT_EQ(client.failures, 0U);
        EXPECT_EQ(drawn.executed[client.number], client.coloured);
        commands += client.commands;
    }
    EXPECT_EQ(drawn.misplaced, 0U);
    EXPECT_EQ(stubgl::LiveNum(), 0U);
    EXPECT_GE(commands, CLIENTS * BusyClient::ROUND * rounds);
    if (!HasFailure()) {
        std::printf("races: %u commands from %u threads, order kept\n", commands, CLIENTS);
    }
}

// It makes the text renderer and loads its font, which is replaced at once in every other life.
TEST(Races, FirstTextOfALifeIsDrawnWhileOthersMeasure) {
    const TagKivTextInfo text{u"AAAA", 4, {}, {}, 0, 40, false, false, false};
    for (int life = 0; life < 100; ++life) {
        Reset();
        KivGLDrawSurface surface;
        ASSERT_EQ(surface.KivCreateGLContext(), 0);
        OnClientThreads([&surface, &text, life](unsigned int number) {
            BusyClient client{&surface, FBO_HANDLE_BASE, number};
            if (number == CLIENTS - 1) {
                client.Sent(surface.KivDrawText(FBO_HANDLE_BASE, text, CANVAS));
                life % 2 != 0 ? client.LoadFont() : void();
            }
            for (int i = 0; i < 30; ++i) {
                client.MeasureText(text, false);
            }
            EXPECT_EQ(client.failures, 0U);
        });
    }
}

TEST(Teardown, StopAmongTheLastCommandsExecutesTheFirstOfEachClientAndReleasesTheRest) {
    constexpr unsigned int LAST = 500;  // of each client
    unsigned int executed = 0;
    for (int life = 0; life < 20; ++life) {
        Reset();
        auto drawThread = std::make_shared<GLDrawThread>();
        ASSERT_EQ(drawThread->Init(), 0);
        std::thread runner(&GLDrawThread::DrawThread, drawThread);
        auto create = std::make_shared<DrawCmd>(CMD_CREATE_GL_CONTEXT);
        ASSERT_EQ(drawThread->SendCmdAndWaitResponse(create), 0);

        std::vector<std::weak_ptr<DrawCmd>> sent(CLIENTS * LAST);
        OnClientThreads([&](unsigned int client) {
            for (unsigned int nth = 0; nth < LAST; ++nth) {
                const TagKivColorRGBA color = CommandColor(client, nth);
                auto info = std::make_unique<RectInfo>();
                info->SetRectColor({color.r / 255.0F, color.g / 255.0F, color.b / 255.0F, 1});
                auto cmd = std::make_shared<DrawCmd>(CMD_DRAW_RECT);
                cmd->SetRectInfo(info);
                sent[client * LAST + nth] = cmd;
                drawThread->SendCmdToQueue(cmd);
                EXPECT_TRUE(client != 0 || nth != LAST / 2 || drawThread->DeInit() == 0);
            }
        });
        runner.join();
        drawThread.reset();
        EXPECT_EQ(drawn.misplaced, 0U);              // so what was executed has no gap
        EXPECT_LE(drawn.executed[0], LAST / 2 + 2);  // the stop came then, during one more command
        executed = std::accumulate(std::begin(drawn.executed), std::end(drawn.executed), executed);
        for (const std::weak_ptr<DrawCmd>& cmd : sent) {
            EXPECT_TRUE(cmd.expired());
        }
        EXPECT_EQ(stubgl::LiveNum(), 0U);
    }
    EXPECT_GT(executed, 0U);
}

// A life whose draw thread waits in the first command until the queue is full. When it destroys its surface,
// everything has been executed.
void LiveWithAFullQueue(bool destroys) {
    static KivGLSemaphore& queueIsFull = *new KivGLSemaphore(0);  // these stay: the draw thread
    static KivGLDrawSurface* surface = nullptr;                   // may outlive main
    surface = new KivGLDrawSurface;
    Reset();
    drawn.holdsFirst = &queueIsFull;
    ASSERT_EQ(surface->KivCreateGLContext(), 0);
    OnClientThreads([](unsigned int client) {
        for (unsigned int nth = 0; nth < QUEUED; ++nth) {
            ASSERT_EQ(surface->KivDrawRect(FBO_HANDLE_BASE, CANVAS, CommandColor(client, nth)), 0);
        }
    });
    queueIsFull.Signal();
    if (destroys) {
        delete surface;
        EXPECT_THAT(drawn.executed, testing::Each(QUEUED));
        EXPECT_EQ(drawn.misplaced + stubgl::LiveNum(), 0U);
    }
}

TEST(Teardown, ExecutesAFullQueueAndLeavesNothingLifeAfterLife) {
    for (int life = 0; life < 6; ++life) {
        LiveWithAFullQueue(true);
    }
}

TEST(Exit, IsCleanWhileTheDrawThreadWorksAndStraightAfterItsLastCommands) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const bool destroys : {false, true, false, true}) {
        EXPECT_EXIT((LiveWithAFullQueue(destroys), std::exit(HasFailure())), testing::ExitedWithCode(0), "");
    }
}

}  // namespace
}  // namespace kivgles
