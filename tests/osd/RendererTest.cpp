#include <cmath>
#include <cstdio>

#include <GLES2/gl2.h>
#include <gmock/gmock.h>

#include "gl/FBOManager.h"
#include "osd/OSDBitmap.h"
#include "osd/OSDBlit.h"
#include "osd/OSDFrame.h"
#include "osd/OSDRect.h"
#include "osd/OSDRound.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using recorder::Call;
using recorder::Floats;
using recorder::Numbers;
using Calls = std::vector<std::string>;

constexpr TagGLRectInfo WHOLE{-1, 1, 2, 2};
constexpr TagGLRectInfo WHOLE_SOURCE{0, 1, 1, 1};

Calls operator+(Calls calls, const Calls& more) {
    calls.insert(calls.end(), more.begin(), more.end());
    return calls;
}

class Renderers : public GLTest {
 protected:
    TagFrameBuffObject MakeLayer(int width, int height, const TagColorRGBA& content = {0, 0, 0, 0}) {
        unsigned int handle = 0;
        TagFrameBuffObject fbo = UNSET_FBO;
        EXPECT_EQ(table.GLCreateFBO(handle, width, height, GL_RGBA, false), 0);
        EXPECT_TRUE(table.GetFBOInst(handle, fbo));
        table.ClearFBOTex(fbo, content);
        return fbo;
    }

    // The calls of one draw by a renderer that is made here; its names are the newest.
    template <typename Renderer, typename Draw>
    Calls CallsOf(const Draw& draw) {
        Renderer renderer;
        EXPECT_EQ(renderer.Init(), 0);
        program = static_cast<GLuint>(recorder::Live("program").back());
        vbo = static_cast<GLuint>(recorder::Live("buffer").back());
        attribute =
            std::max(glGetAttribLocation(program, "vPosition"), glGetAttribLocation(program, "coord"));
        uniform = std::max(glGetUniformLocation(program, "color"), glGetUniformLocation(program, "tex"));
        recorder::Record();
        draw(renderer);
        return recorder::Calls();
    }

    static Calls Target(const TagFrameBuffObject& fbo) {
        return {Call("glBindFramebuffer", GL_FRAMEBUFFER, fbo.fboId),
                Call("glViewport", 0, 0, fbo.width, fbo.height)};
    }
    Calls ClearedWindow() const {
        return Target(windowTarget) + Calls{Call("glClearColor", 0, 0, 0, 0),
                                            Call("glClear", GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)};
    }
    Calls Program() const { return {Call("glUseProgram", program)}; }
    Calls Texture(GLuint name) const {
        return {Call("glActiveTexture", GL_TEXTURE0), Call("glBindTexture", GL_TEXTURE_2D, name),
                Call("glUniform1i", uniform, 0)};
    }
    Calls Vertices(const Floats& vertices) const {
        return {Call("glEnableVertexAttribArray", attribute), Call("glBindBuffer", GL_ARRAY_BUFFER, vbo),
                Call("glVertexAttribPointer", attribute, 4, GL_FLOAT, GL_FALSE, 0, nullptr),
                Call("glBufferData", GL_ARRAY_BUFFER, vertices.size() * 4, vertices, GL_DYNAMIC_DRAW)};
    }
    Calls Quad(const Floats& vertices) const {
        return Vertices(vertices) +
               Calls{Call("glDrawElements", GL_TRIANGLES, 6, GL_UNSIGNED_SHORT, Numbers{0, 1, 2, 3, 2, 1})};
    }
    Calls NoVertices() const {
        return {Call("glBindBuffer", GL_ARRAY_BUFFER, 0), Call("glDisableVertexAttribArray", attribute)};
    }
    Calls FlatShape(const TagFrameBuffObject& fbo, const Floats& vertices, GLenum mode) const {
        return Target(fbo) + Program() +
               Calls{Call("glUniform4fv", uniform, 1, Floats{1, 0.5F, 0.25F, 0.125F})} + Vertices(vertices) +
               Calls{Call("glDrawArrays", mode, 0, vertices.size() / 4)} + NoVertices() + noTarget;
    }

    const Calls premultiplying = {Call("glEnable", GL_BLEND),
                                  Call("glBlendFunc", GL_SRC_ALPHA_SATURATE, GL_ZERO)};
    const Calls blending = {Call("glEnable", GL_BLEND),
                            Call("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)};
    const Calls noBlending = {Call("glDisable", GL_BLEND)};
    const Calls noTexture = {Call("glBindTexture", GL_TEXTURE_2D, 0)};
    const Calls noTarget = {Call("glBindFramebuffer", GL_FRAMEBUFFER, 0)};

    FBOManager table{64, 32};
    GLuint program = 0;
    GLuint vbo = 0;
    GLint attribute = 0;
    GLint uniform = 0;
};

TEST_F(Renderers, ShapesMakeTheirCallsInOrder) {
    const auto fbo = MakeLayer(40, 20);
    const TagColorRGBA color{1, 0.5F, 0.25F, 0.125F};
    const Calls rectangle = CallsOf<OSDRect>([&](auto& rect) {
        rect.DrawRect(fbo, {-0.5F, 0.75F, 1, 0.5F}, color);
    });
    EXPECT_EQ(rectangle, FlatShape(fbo, {-0.5F, 0.75F, 0, 1, 0.5F,  0.75F, 0, 1, -0.5F, 0.25F, 0, 1,
                                         0.5F,  0.25F, 0, 1, -0.5F, 0.25F, 0, 1, 0.5F,  0.75F, 0, 1},
                                   GL_TRIANGLES));
    Floats fan = {0.5F, -0.25F, 0, 1};
    for (int i = 0; i <= 72; i += 2) {
        const auto angle = static_cast<float>(i * 3.141592653589793 / 36);
        fan.insert(fan.end(), {0.5F + std::cos(angle) * 0.25F, -0.25F + std::sin(angle) * 0.5F, 0, 1});
    }
    const Calls ellipse = CallsOf<OSDRound>([&](auto& round) {
        round.DrawRound(fbo, {0.5F, -0.25F, 0.25F, 0.5F}, color);
    });
    EXPECT_EQ(ellipse, FlatShape(fbo, fan, GL_TRIANGLE_FAN));
}

TEST_F(Renderers, CopiesMakeTheirCallsInOrder) {
    const auto src = MakeLayer(40, 20);
    const auto dst = MakeLayer(30, 10);
    const Calls copy = CallsOf<OSDBlit>([&](auto& blit) {
        blit.Blit({src, dst, {0.25F, 0.75F, 0.5F, 0.25F}, {-0.5F, 1, 1, 1.5F}});
    });
    EXPECT_EQ(copy, Target(dst) + Program() + Texture(src.textureId) +
                        Quad({-0.5F, -0.5F, 0.25F, 0.5F, 0.5F, -0.5F, 0.75F, 0.5F, -0.5F, 1, 0.25F, 0.75F,
                              0.5F, 1, 0.75F, 0.75F}) +
                        NoVertices() + noTexture + noTarget);
    const Calls display =
        CallsOf<OSDFrame>([&](auto& frame) { frame.DisplayFBO(src.textureId, WHOLE_SOURCE, WHOLE, 64, 32); });
    EXPECT_EQ(display, ClearedWindow() + Program() + premultiplying + Texture(src.textureId) +
                           Quad({-1, -1, 0, 0, 1, -1, 1, 0, -1, 1, 0, 1, 1, 1, 1, 1}) + noBlending +
                           NoVertices() + noTexture);
}

TEST_F(Renderers, BitmapsMakeTheirCallsInOrder) {
    const auto fbo = MakeLayer(40, 20);
    const Floats vertices = {-0.5F, 1, 0, 0, 0.5F, 1, 1, 0, -0.5F, -0.5F, 0, 1, 0.5F, -0.5F, 1, 1};
    const std::uint8_t pixels[8] = {};
    TagGLBitmapInfo info{pixels, {-0.5F, 1, 1, 1.5F}, 2, 1, GL_RGBA, 0};
    unsigned int texture = 0;
    const auto parameter = [](GLenum what, GLint value) {
        return Call("glTexParameteri", GL_TEXTURE_2D, what, value);
    };
    const auto expectCalls = [&](const auto& draw, const auto& inBetween) {
        const Calls calls = CallsOf<OSDBitmap>(draw);
        ASSERT_EQ(std::sscanf(calls.at(2).c_str(), "glBindTexture(0xde1, %u)", &texture),
                  1);  // a new name each time
        const Calls upload = {
            Call("glActiveTexture", GL_TEXTURE0),
            Call("glGenTextures", 1, &texture),
            Call("glBindTexture", GL_TEXTURE_2D, texture),
            Call("glTexImage2D", GL_TEXTURE_2D, 0, GL_RGBA, 2, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, &pixels),
            Call("glPixelStorei", GL_UNPACK_ALIGNMENT, 4),
            parameter(GL_TEXTURE_MIN_FILTER, GL_LINEAR),
            parameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR),
            parameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
            parameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)};
        EXPECT_EQ(calls, upload + noTexture + inBetween() + noTexture +
                             Calls{Call("glDeleteTextures", 1, std::vector<GLuint>{texture})});
    };
    const auto drawBitmap = [&](auto& bitmap) { bitmap.DrawBitmap(fbo, info); };
    expectCalls(drawBitmap,
                [&] { return Target(fbo) + Program() + Texture(texture) + Quad(vertices) + NoVertices(); });
    info.blend = 1;
    expectCalls(drawBitmap, [&] {
        return Target(fbo) + blending + Program() + Texture(texture) + Quad(vertices) + NoVertices() +
               noBlending;
    });
    expectCalls([&](auto& bitmap) { bitmap.DisplayBitmap(info, 64, 32); },
                [&] {
                    return ClearedWindow() + Program() + premultiplying + Texture(texture) + Quad(vertices) +
                           NoVertices() + noBlending;
                });
}

template <typename Renderer>
void ExpectInitNeedsAProgram(const std::string& tag) {
    SCOPED_TRACE(tag);
    recorder::Reset();
    recorder::Fail("glLinkProgram");
    for (const int expectedStatus : {20, 0}) {
        Renderer renderer;
        EXPECT_EQ(renderer.Init(), expectedStatus);
        EXPECT_EQ(recorder::Live("buffer").size(), expectedStatus == 0 ? 1U : 0U);
    }
    EXPECT_EQ(recorder::Log(), Calls{"E " + tag + ": create shader program fail"});
    EXPECT_EQ(recorder::Counts()["glDeleteBuffers"], 1);
    EXPECT_EQ(recorder::Live("shader").size() + recorder::Live("program").size(), 0U);
}

TEST_F(Renderers, InitReportsAProgramThatCannotBeBuiltAndWhatItMakesIsDeleted) {
    ExpectInitNeedsAProgram<OSDRect>("OSDRect");
    ExpectInitNeedsAProgram<OSDRound>("OSDRound");
    ExpectInitNeedsAProgram<OSDBitmap>("OSDBitmap");
    ExpectInitNeedsAProgram<OSDBlit>("OSDBlit");
    ExpectInitNeedsAProgram<OSDFrame>("OSDFrame");
}

TEST_F(Renderers, AlphaIsReplacedBlendedOrMultipliedIntoTheWindow) {
    const auto fbo = MakeLayer(8, 8, {1, 1, 1, 1});
    const std::uint8_t green[] = {0, 255, 0, 128};
    OSDRect rect;
    OSDBitmap bitmap;
    OSDBlit blit;
    OSDFrame frame;
    ASSERT_EQ(rect.Init() + bitmap.Init() + blit.Init() + frame.Init(), 0);
    rect.DrawRect(fbo, {-1, 1, 1, 1}, {1, 0, 0, 0.5F});
    bitmap.DrawBitmap(fbo, {green, {0, 1, 1, 1}, 1, 1, GL_RGBA, 0});
    bitmap.DrawBitmap(fbo, {green, {-1, 0, 1, 1}, 1, 1, GL_RGBA, 1});
    const auto copy = MakeLayer(8, 8, {0, 0, 1, 1});
    blit.Blit({fbo, copy, WHOLE_SOURCE, WHOLE});
    for (const auto& target : {fbo, copy}) {
        ExpectPixel(target, 1, 1, {255, 0, 0, 128});
        ExpectPixel(target, 6, 1, {0, 255, 0, 128});
        ExpectPixel(target, 1, 6, {127, 255, 127, 191});
        ExpectPixel(target, 6, 6, {255, 255, 255, 255});
    }
    rect.DrawRect(windowTarget, WHOLE, {1, 1, 1, 1});
    frame.DisplayFBO(fbo.textureId, WHOLE_SOURCE, {-1, 1, 1, 1}, 64, 32);
    ExpectPixel(windowTarget, 1, 1, {128, 0, 0, 128});
    ExpectPixel(windowTarget, 63, 31, {0, 0, 0, 0});
    bitmap.DisplayBitmap({green, {0, 1, 1, 1}, 1, 1, GL_RGBA, 1}, 64, 32);
    ExpectPixel(windowTarget, 63, 1, {0, 128, 0, 128});
    ExpectPixel(windowTarget, 1, 1, {0, 0, 0, 0});
}

TEST_F(Renderers, RoundIsAnEllipseOf36EdgesWithACornerAtItsRight) {
    const auto fbo = MakeLayer(1200, 2200);
    OSDRound round;
    ASSERT_EQ(round.Init(), 0);
    round.DrawRound(fbo, {0, 0, 1000 / 1200.0F, 2000 / 2200.0F}, {1, 1, 1, 1});
    const auto expectAt = [&](double degrees, double distance, int expected) {
        const double angle = degrees * 3.141592653589793 / 180;
        ExpectPixel(fbo, static_cast<int>(600 + 500 * distance * std::cos(angle)),
                    static_cast<int>(1100 - 1000 * distance * std::sin(angle)),
                    {expected, expected, expected, expected});
    };
    for (int degrees = 0; degrees < 360; degrees += 10) {
        expectAt(degrees, 0.997, 255);
        expectAt(degrees, 1.003, 0);
        expectAt(degrees + 5, 0.9935, 255);
        expectAt(degrees + 5, 0.9995, 0);  // between the straight edge and the true ellipse
    }
}

}  // namespace
}  // namespace kivgles
