#include "races/Clients.h"
#include "support/Surface.h"

namespace kivgles {
namespace {

TEST_F(SurfaceTest, LastRectangleOfEachOfEightClientsAtOnceIsTheOneShown) {
    unsigned int canvas = 0;
    const auto clients = RunClients(surface, RACE_FONT, canvas, 50);  // 20,000 commands
    Show(canvas, 64, 32);
    for (const Client& client : clients) {
        EXPECT_EQ(client.failures, 0U);
        ExpectShown(window, static_cast<int>(8 * client.number + 4), 16,
                    {client.lastRect.r, client.lastRect.g, client.lastRect.b, 255});
    }
    EXPECT_EQ(surface.KivDestoryGLContext(), 0);
    for (const char* kind : {"context", "surface", "texture", "program", "face"}) {
        EXPECT_TRUE(recorder::Live(kind).empty()) << kind;
    }
}

}  // namespace
}  // namespace kivgles
