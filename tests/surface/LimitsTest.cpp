// What the library cannot repair and one client's scenario does not show.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"
#include "support/X11Window.h"

namespace kivgles {
namespace {

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

TEST(Limits, AResizedWindowIsConnectedAnewByWayOfAnotherOne) {
    X11Window window(20, 20);
    const X11Window other(1, 1);
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    unsigned int layer = 0;
    ASSERT_EQ(surface.KivCreateGLFBO(layer, 4, 4, KIV_COLOR_FORMAT_RGBA8888), 0);
    surface.KivDrawRect(layer, {0, 0, 4, 4}, {0, 255, 0, 255});
    window.Resize(120, 80);  // more than the 16 KiB that a driver may hold back among its requests

    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(surface.KivGetWindowWidth(), 20U) << "connecting the same window again reads nothing";

    EXPECT_EQ(surface.KivConnectWindowSurface(other.Native()), 0);
    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(surface.KivGetWindowWidth(), 120U);
    EXPECT_EQ(surface.KivGetWindowHeight(), 80U);
    surface.KivBlit({layer, FBO_HANDLE_BASE, {0, 0, 4, 4}, {0, 0, 120, 80}});
    surface.KivRefreshOnSrceen();
    EXPECT_EQ(surface.Init(0), 0);
    EXPECT_TRUE(window.Shows(0x00FF00, 118, 78));
}

TEST(Limits, AnotherFileInPlaceOfTheFontDoesNotTouchTheLoadedOne) {
    namespace fs = std::filesystem;
    const fs::path fonts = "/usr/share/fonts/truetype/dejavu";
    const fs::path font = fs::temp_directory_path() / ("font." + std::to_string(getpid()));
    fs::copy_file(fonts / "DejaVuSansMono.ttf", font);
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivLoadFont(font.string(), 40), 0);
    TagKivTextInfo text{};
    text.text = u"il";
    text.textLength = 2;
    text.fontSize = 60;
    unsigned int before = 0;
    unsigned int after = 0;
    unsigned int height = 0;
    EXPECT_EQ(surface.KivGetTextSize(text, before, height), 0);

    fs::copy_file(fonts / "DejaVuSans.ttf", font.string() + ".new");
    fs::rename(font.string() + ".new", font);
    EXPECT_EQ(surface.KivGetTextSize(text, after, height), 0);
    EXPECT_EQ(after, before);
    fs::remove(font);
}

TEST(Limits, AChildThatExecutesAnotherProgramLeavesTheSurfaceToItsParent) {
    KivGLDrawSurface surface;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    const pid_t child = fork();
    if (child == 0) {
        execlp("true", "true", nullptr);
        _exit(1);
    }
    int status = 1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(surface.Init(0), 0);
}

}  // namespace
}  // namespace kivgles
