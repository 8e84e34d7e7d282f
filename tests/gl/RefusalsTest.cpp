#include <gmock/gmock.h>

#include "gl/EGLManager.h"
#include "gl/ShaderProgram.h"
#include "support/Recorder.h"

namespace kivgles {

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

}  // namespace kivgles
