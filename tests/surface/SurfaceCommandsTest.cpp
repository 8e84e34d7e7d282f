#include <gtest/gtest.h>

#include "surface/SurfaceCommands.h"

namespace kivgles {
namespace {

#ifndef NDEBUG
TEST(SendersDeathTest, EndADebugBuildThatSendsAKindTheOtherWay) {
    GLDrawThread drawThread;
    ASSERT_EQ(drawThread.Init(), 0);
    auto queued = std::make_shared<DrawCmd>(CMD_DRAW_RECT);
    auto waiting = std::make_shared<DrawCmd>(CMD_INIT);
    EXPECT_DEATH(SendAndWait(drawThread, queued), "SenderWaits");
    EXPECT_DEATH(SendToQueue(drawThread, waiting), "SenderWaits");
}
#endif

}  // namespace
}  // namespace kivgles
