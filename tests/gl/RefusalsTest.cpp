#include <cstdint>
#include <utility>

#include <gmock/gmock.h>

#include "gl/EGLManager.h"
#include "gl/ShaderProgram.h"
#include "gl/TextureSide.h"
#include "kivgles/KivGLDrawSurface.h"
#include "support/Recorder.h"

namespace kivgles {
namespace {

TEST(ShaderPrograms, RefuseWhatIsNoSourceNoShaderAndNoProgram) {
    EGLManager egl;
    ASSERT_EQ(egl.EGLSetupContext() + egl.CreatePBufferSurface() + egl.MakeCurrent(), 0);
    recorder::Reset();
    const ShaderProgram shaders;
    EXPECT_EQ(shaders.LoadShader(GL_VERTEX_SHADER, nullptr), 0U);
    EXPECT_EQ(shaders.CreateProgram("nonsense;\n", "void main() {}\n"), 0U);
    shaders.PrintLog(12345);
    shaders.ReleaseProgram(0);
    EXPECT_THAT(recorder::Log(),
                testing::ElementsAre("E ShaderProgram: Error source is NULL\n",
                                     testing::ContainsRegex("Could not compile shader .*\n.GL's words"),
                                     "E ShaderProgram: Not a shader or a program\n"));
}

TEST(TextureSides, BeyondEveryGLAreRefusedByGLAsOthersBeyondItsLimitAre) {
    EXPECT_EQ(TextureSide(0x20000), 0x20000);
    EXPECT_EQ(TextureSide(0x20001), -1);  // which this GL may refuse by itself, but not every one
    KivGLDrawSurface surface;
    unsigned int target = 0;
    ASSERT_EQ(surface.KivCreateGLContext(), 0);
    ASSERT_EQ(surface.KivCreateGLFBO(target, 8, 8, KIV_COLOR_FORMAT_RGBA8888), 0);
    recorder::Reset();
    for (const std::uint32_t side : {0x10000U, 0x20001U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        for (const auto& [width, height] :
             {std::pair(side, 1U), std::pair(1U, side), std::pair(side, side)}) {
            unsigned int layer = 0;
            EXPECT_EQ(surface.KivCreateGLFBO(layer, width, height, KIV_COLOR_FORMAT_RGBA8888), 0);
            EXPECT_EQ(surface.KivDestoryGLFBO(layer), 0);
            const std::uint8_t pixel[4] = {};  // a bitmap that is refused is not read
            EXPECT_EQ(
                surface.KivDrawBitmap(target, {pixel, KIV_COLOR_FORMAT_RGBA8888, 0, 0, width, height, {}}),
                0);
        }
    }
    EXPECT_THAT(recorder::Log("E FBOManager: Unable to set up render Target: "), testing::SizeIs(15));
    EXPECT_THAT(
        recorder::Log("W GLDrawThread: Create fbo fboHandleIndex 0x10002, width 2147483647, height 1\n"),
        testing::SizeIs(1));
}

}  // namespace
}  // namespace kivgles
