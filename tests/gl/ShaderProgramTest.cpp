#include <GLES2/gl2.h>
#include <gmock/gmock.h>

#include "gl/ShaderProgram.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr char VERTEX[] = "attribute vec4 p;\nvoid main() { gl_Position = p; }\n";
constexpr char FRAGMENT[] = "uniform vec4 c;\nvoid main() { gl_FragColor = c; }\n";
constexpr char UNLINKABLE[] = "varying vec4 v;\nvoid main() { gl_FragColor = v; }\n";  // v comes from nowhere

class ShaderPrograms : public GLTest {
 protected:
    void TearDown() override {
        EXPECT_THAT(recorder::Live("shader"), IsEmpty());
        EXPECT_THAT(recorder::Live("program"), IsEmpty());
    }

    const ShaderProgram shaders{};
};

TEST_F(ShaderPrograms, SourcesFollowTheVersionLineAndTheFragmentPrelude) {
    const std::string prelude =
        "#ifdef GL_FRAGMENT_PRECISION_HIGH\nprecision highp float;           \n"
        "#else                            \nprecision mediump float;         \n"
        "#endif                           \n";
    recorder::Record();
    const GLuint program = shaders.CreateProgram(VERTEX, FRAGMENT);
    ASSERT_NE(program, 0U);
    EXPECT_THAT(recorder::Calls(),
                AllOf(Contains(HasSubstr(", 3, #version 100\n||" + std::string(VERTEX) + "|, null")),
                      Contains(HasSubstr(", 3, #version 100\n|" + prelude + "|" + FRAGMENT))));
    EXPECT_GE(shaders.GetAttribLocation(program, "p"), 0);
    EXPECT_GE(shaders.GetUniformLocation(program, "c"), 0);
    EXPECT_EQ(shaders.GetAttribLocation(program, "q"), -1);
    EXPECT_EQ(shaders.GetUniformLocation(program, "d"), -1);
    EXPECT_THAT(recorder::Log(), ElementsAre("E ShaderProgram: Could not bind attribute q\n",
                                             "E ShaderProgram: Could not bind uniform d\n"));
    shaders.ReleaseProgram(program);
    shaders.ReleaseProgram(0);
    EXPECT_EQ(recorder::Counts()["glDeleteProgram"], 1);
}

TEST_F(ShaderPrograms, WhatGLRejectsIsLoggedWithItsReasonAndDeleted) {
    EXPECT_EQ(shaders.CreateProgram("nonsense;\n", FRAGMENT), 0U);
    EXPECT_EQ(shaders.CreateProgram(VERTEX, "nonsense;\n"), 0U);
    EXPECT_EQ(shaders.CreateProgram(VERTEX, UNLINKABLE), 0U);
    for (const auto& [function, nth] :
         {std::pair("glCreateShader", 2), {"glCreateProgram", 1}, {"glGetShaderiv", 2}}) {
        recorder::Fail(function, nth);
        EXPECT_EQ(shaders.CreateProgram(VERTEX, FRAGMENT), 0U);
    }
    shaders.PrintLog(12345);
    EXPECT_EQ(shaders.LoadShader(GL_VERTEX_SHADER, nullptr), 0U);
    const auto error = [](const char* line) { return AllOf(StartsWith(line), HasSubstr("error")); };
    EXPECT_THAT(recorder::Log(),
                ElementsAre(error("E ShaderProgram: Could not compile shader "),
                            error("E ShaderProgram: Could not compile shader "),
                            error("E ShaderProgram: Could not link program:\n"),
                            "E ShaderProgram: Create shader fail\n", "E ShaderProgram: create program fail\n",
                            "E ShaderProgram: Not a shader or a program\n",
                            "E ShaderProgram: Error source is NULL\n"));
}

}  // namespace
}  // namespace kivgles
