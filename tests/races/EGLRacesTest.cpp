#include <gtest/gtest.h>

#include "races/BusyClient.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

TEST(EGLRaces, LastRectangleOfEachOfEightClientsAtOnceIsTheOneShown) {
    const X11Window window(CANVAS.width, CANVAS.height);
    KivGLDrawSurface surface;
    unsigned int canvas = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    const auto clients = RunClients(surface, canvas, 50);  // 20,000 commands
    EXPECT_EQ(surface.KivDisplayFBO(canvas, CANVAS, CANVAS), 0);
    EXPECT_EQ(surface.KivRefreshOnSrceen(), 0);
    EXPECT_EQ(surface.KivDestoryGLContext(), 0);
    for (const BusyClient& client : clients) {
        const TagKivColorRGBA& color = client.lastRect;
        EXPECT_EQ(client.failures, 0U);
        EXPECT_TRUE(window.Shows(0x10000UL * color.r + 0x100UL * color.g + color.b,
                                 static_cast<int>(8 * client.number + 4), 16));
    }
    EXPECT_EQ(recorder::LiveNum(), 0U);
}

}  // namespace
}  // namespace kivgles
