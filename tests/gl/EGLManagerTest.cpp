#include <GLES2/gl2.h>
#include <gmock/gmock.h>

#include "gl/EGLManager.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using recorder::Call;
using recorder::Numbers;
using testing::ElementsAre;
using testing::StartsWith;

TEST(EGLManager, GoesFromPbufferToWindowToAnotherWindowAndReleasesInOrder) {
    const X11Window window(64, 32);
    const X11Window other(20, 10);
    const void* const some = "";  // shown as every pointer is
    const auto queries = {Call("eglQuerySurface", some, some, EGL_WIDTH, some),
                          Call("eglQuerySurface", some, some, EGL_HEIGHT, some),
                          Call("glGetString", GL_VERSION), Call("glGetString", GL_VENDOR),
                          Call("glGetString", GL_RENDERER)};
    std::vector<std::string> expected = {
        Call("eglGetDisplay", nullptr),
        Call("eglInitialize", some, some, some),
        Call("eglChooseConfig", some,
             Numbers{0x3033, 4, 0x3040, 4, 0x3024, 8, 0x3023, 8, 0x3022, 8, 0x3021, 8}, some, 1, some),
        Call("eglCreateContext", some, some, nullptr, Numbers{0x3098, 2}),
        Call("eglCreatePbufferSurface", some, some, nullptr),
        Call("eglMakeCurrent", some, some, some, some)};
    expected.insert(expected.end(), queries);
    for (const X11Window* connected : {&window, &other}) {
        expected.insert(
            expected.end(),
            {Call("eglMakeCurrent", some, nullptr, nullptr, some), Call("eglDestroySurface", some, some),
             Call("eglCreateWindowSurface", some, some,
                  reinterpret_cast<EGLNativeWindowType>(connected->Native()), nullptr),
             Call("eglMakeCurrent", some, some, some, some)});
        expected.insert(expected.end(), queries);
    }
    expected.insert(expected.end(),
                    {Call("eglDestroyContext", some, some), Call("eglDestroySurface", some, some),
                     Call("eglMakeCurrent", some, nullptr, nullptr, nullptr), Call("eglTerminate", some),
                     Call("eglReleaseThread")});

    recorder::Reset();
    recorder::Record();
    {
        EGLManager egl;
        EXPECT_EQ(egl.EGLSetupContext() + egl.CreatePBufferSurface() + egl.MakeCurrent(), 0);
        EXPECT_THAT(recorder::Log(), ElementsAre(StartsWith("E EGLManager: GL Version = "),
                                                 StartsWith("E EGLManager: GL Vendor = "),
                                                 StartsWith("E EGLManager: GL Renderer = ")));
        EXPECT_EQ(egl.GetWindowWidth(), 0);
        EXPECT_EQ(egl.CreateWindowSurface(window.Native()) + egl.MakeCurrent(), 0);
        EXPECT_EQ(std::pair(egl.GetWindowWidth(), egl.GetWindowHeight()), std::pair(64, 32));
        EXPECT_EQ(egl.CreateWindowSurface(other.Native()) + egl.MakeCurrent(), 0);
        egl.Release();
        EXPECT_EQ(recorder::Calls(), expected);
        EXPECT_EQ(recorder::Log("W").size(), 0U);
        EXPECT_EQ(std::pair(egl.GetWindowWidth(), egl.GetWindowHeight()), std::pair(20, 10));
    }
    EXPECT_EQ(recorder::Log("W"), std::vector<std::string>{"W EGLManager: EGL Context has been released\n"});
    EXPECT_EQ(recorder::Live("surface").size(), 0U);
}

}  // namespace
}  // namespace kivgles
