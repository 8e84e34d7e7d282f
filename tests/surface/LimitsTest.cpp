// What the library cannot repair and one client's scenario does not show.

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

TEST(Limits, QueueTakesEverythingAndAWaitingOperationPacesTheClient) {
    constexpr int COMMANDS = 50000;
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    recorder::Reset();
    for (int i = 0; i < COMMANDS; ++i) {
        ASSERT_EQ(surface.KivDrawRect(FBO_HANDLE_BASE, {0, 0, 1, 1}, {0, 255, 0, 255}), 0);
    }
    EXPECT_EQ(surface.Init(0), 0);
    EXPECT_EQ(recorder::Counts()["glDrawArrays"], COMMANDS);
}

TEST(Limits, ASecondSurfaceOfTheProcessDoesNotSurviveTheFirst) {
    const X11Window window(8, 8);
    KivGLDrawSurface first;
    KivGLDrawSurface second;
    ASSERT_EQ(first.KivCreateGLContext(), 0);
    ASSERT_EQ(second.KivCreateGLContext(), 0);
    ASSERT_EQ(first.KivDestoryGLContext(), 0);
    EXPECT_NE(second.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_FALSE(recorder::Log("E EGLManager: eglCreateWindowSurface error: 0x3001").empty());
}

}  // namespace
}  // namespace kivgles
