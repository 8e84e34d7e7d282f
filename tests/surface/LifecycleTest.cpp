#include <gmock/gmock.h>

#include "support/Surface.h"

namespace kivgles {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using Lines = std::vector<std::string>;

const std::string NO_CONTEXT = "E KivGLDrawSurface: GLContext isn't created\n";

void ExpectEveryOperationNeedsAContext(KivGLDrawSurface& surface) {
    unsigned int untouched = 7;
    recorder::Reset();
    EXPECT_EQ(surface.KivDestoryGLContext(), 102);
    EXPECT_EQ(surface.KivConnectWindowSurface(reinterpret_cast<ANativeWindow*>(1)), 102);
    EXPECT_EQ(surface.Init(0x7F), 102);
    EXPECT_EQ(surface.KivLoadFont("", 40), 102);
    EXPECT_EQ(surface.KivRefreshOnSrceen(), 102);
    EXPECT_EQ(surface.KivCreateGLFBO(untouched, 1, 1, 9), 102);
    EXPECT_EQ(surface.KivDestoryGLFBO(0x10001), 102);
    EXPECT_EQ(surface.KivGetTextSize({}, untouched, untouched), 102);
    EXPECT_EQ(surface.KivDisplayBitmap(BITMAP), 102);
    for (const LayerOperation& operation : LAYER_OPERATIONS) {
        EXPECT_EQ(operation.run(surface, 0x10001), 102) << operation.name;
    }
    EXPECT_EQ(recorder::Log("E"), Lines(9 + std::size(LAYER_OPERATIONS), NO_CONTEXT));
    EXPECT_EQ(untouched, 7U);
    EXPECT_EQ(surface.KivConnectWindowSurface(nullptr), 101);
    EXPECT_EQ(recorder::Log("E").back(), "E KivGLDrawSurface: native window is NULL\n");
}

TEST(Lifecycle, OperationsAreRefusedBeforeCreationAndAfterDestruction) {
    {
        KivGLDrawSurface surface;
        EXPECT_EQ(surface.KivGetWindowWidth(), 1920U);
        EXPECT_EQ(surface.KivGetWindowHeight(), 1080U);
        ExpectEveryOperationNeedsAContext(surface);
        ASSERT_EQ(surface.KivCreateGLContext(), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(nullptr), 101);
        EXPECT_EQ(surface.KivDestoryGLContext(), 0);
        ExpectEveryOperationNeedsAContext(surface);
        recorder::Reset();
    }
    EXPECT_EQ(recorder::Log("E"), Lines{NO_CONTEXT});
}

TEST(Lifecycle, DrawThreadThatDoesNotStartIsReportedAndLeavesNoContext) {
    recorder::Reset();
    KivGLDrawSurface surface;
    recorder::Fail("pthread_create");
    EXPECT_EQ(surface.KivCreateGLContext(), 100);
    EXPECT_THAT(recorder::Log("E"), ElementsAre(StartsWith("E KivGLDrawSurface: ")));
    ExpectEveryOperationNeedsAContext(surface);
    EXPECT_EQ(surface.KivCreateGLContext(), 0);
}

TEST_F(SurfaceTest, SameWindowIsConnectedOnceAnotherTakesItsPlaceAndLayersStay) {
    const unsigned int layer = MakeLayer(8, 8, {255, 0, 0, 255});
    EXPECT_EQ(surface.Init(0), 0);
    recorder::Record();
    EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    EXPECT_EQ(recorder::Log("W KivGL"), Lines{"W KivGLDrawSurface: NativeWindow has been connected\n"});
    EXPECT_THAT(recorder::Calls(), IsEmpty());

    const X11Window other(20, 10);
    EXPECT_EQ(surface.KivConnectWindowSurface(other.Native()), 0);
    EXPECT_EQ(surface.KivGetWindowHeight(), 10U);
    EXPECT_EQ(surface.KivDrawRect(layer, {0, 0, 4, 8}, {0, 255, 0, 255}), 0);
    EXPECT_EQ(surface.KivDisplayFBO(layer, {0, 0, 8, 8}, {0, 0, 20, 10}), 0);
    Refresh();
    ExpectShown(other, 1, 9, {0, 255, 0, 255});
    ExpectShown(other, 18, 1, {255, 0, 0, 255});
    EXPECT_EQ(recorder::Live("surface").size(), 1U);
}

TEST_F(SurfaceTest, DestructionExecutesWhatWasQueuedAndTheContextCanBeMadeAgain) {
    for (int round = 1; round <= 5; ++round) {
        const unsigned int layer = MakeLayer(8, 8);
        EXPECT_EQ(layer, 0x10001U);
        for (int i = 1; i < 100; ++i) {
            EXPECT_EQ(surface.KivDrawRect(layer, RECT, {1, 1, 1, 1}), 0);
        }
        EXPECT_EQ(surface.KivDestoryGLContext(), 0);
        EXPECT_EQ(recorder::Counts()["glDrawArrays"], 100 * round);
        for (const char* kind : {"context", "surface", "texture", "program"}) {
            EXPECT_THAT(recorder::Live(kind), IsEmpty()) << kind;
        }
        EXPECT_EQ(surface.KivDestoryGLContext(), 102);
        EXPECT_EQ(surface.KivCreateGLContext(), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);  // still known: nothing is connected
        EXPECT_THAT(recorder::Live("surface"), testing::SizeIs(1));
        EXPECT_EQ(surface.KivGetWindowWidth(), 64U);
    }
}

}  // namespace
}  // namespace kivgles
