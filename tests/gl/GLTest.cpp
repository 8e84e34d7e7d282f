#include <GLES2/gl2.h>

#include "gl/FBOManager.h"
#include "gl/ShaderProgram.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using FBOTable = GLTest;
using ShaderPrograms = GLTest;

TEST_F(FBOTable, EveryFramebufferStatusHasItsLineAndStopsNothing) {
    const std::string prefix = "Unable to set up render Target: ";
    const std::string unknown = "Framebuffer incomplete: Unknown error.\n";
    const std::pair<unsigned int, std::string> cases[] = {
        {0x8CD5, "Framebuffer complete.\n"},
        {0x8CD6, prefix + "RFRAMEBUFFER_INCOMPLETE_ATTACHMENT\n"},
        {0x8CD7, prefix + "GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT\n"},
        {0x8CD9, prefix + "GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS\n"},
        {0x8CDD, prefix + "GL_FRAMEBUFFER_UNSUPPORTED\n"},
        {0x8CD4, unknown},
        {0x8CDA, unknown},
        {0, unknown},
    };
    FBOManager table(64, 32);
    for (const auto& [status, line] : cases) {
        recorder::Reset();
        recorder::Fail("glCheckFramebufferStatus", 1, false, status);
        unsigned int handle = 0;
        TagFrameBuffObject fbo = UNSET_FBO;
        EXPECT_EQ(table.GLCreateFBO(handle, 8, 4, GL_RGBA, false), 0);
        EXPECT_TRUE(table.GetFBOInst(handle, fbo));
        ExpectPixel(fbo, 7, 3, {0, 0, 0, 0});
        EXPECT_EQ(recorder::Log(), std::vector<std::string>{"E FBOManager: " + line});
    }
}

TEST_F(ShaderPrograms, RefuseWhatIsNoSourceNoShaderAndNoProgram) {
    const ShaderProgram shaders;
    EXPECT_EQ(shaders.LoadShader(GL_VERTEX_SHADER, nullptr), 0U);
    EXPECT_EQ(shaders.CreateProgram("nonsense;\n", "void main() {}\n"), 0U);
    shaders.PrintLog(12345);
    shaders.ReleaseProgram(0);
    const std::vector<std::string> log = recorder::Log();
    ASSERT_EQ(log.size(), 3U);
    EXPECT_EQ(log[0], "E ShaderProgram: Error source is NULL\n");
    EXPECT_NE(log[1].find("E ShaderProgram: Could not compile shader "), std::string::npos);
    EXPECT_NE(log[1].find("error"), std::string::npos);  // GL's own words
    EXPECT_EQ(log[2], "E ShaderProgram: Not a shader or a program\n");
}

}  // namespace
}  // namespace kivgles
