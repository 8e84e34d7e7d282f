#include <GLES2/gl2.h>
#include <gmock/gmock.h>

#include "gl/FBOManager.h"
#include "support/Recorder.h"
#include "support/Target.h"

namespace kivgles {
namespace {

using recorder::Call;
using Lines = std::vector<std::string>;

class FBOTable : public GLTest {
 protected:
    unsigned int Create(int expectedStatus = 0) {
        unsigned int handle = 0x1234;
        EXPECT_EQ(table.GLCreateFBO(handle, 8, 4, GL_RGBA, false), expectedStatus);
        return handle;
    }
    TagFrameBuffObject Record(unsigned int handle) const {
        TagFrameBuffObject fbo = UNSET_FBO;
        EXPECT_TRUE(table.GetFBOInst(handle, fbo));
        return fbo;
    }

    FBOManager table{64, 32};
};

TEST_F(FBOTable, FreedSlotIsTheNextOneHandedOutAndThereAreFifteen) {
    for (unsigned int slot = 1; slot < FBO_MAX_NUM; ++slot) {
        EXPECT_EQ(Create(), FBO_HANDLE_BASE + slot);
    }
    recorder::Reset();
    EXPECT_EQ(Create(15), 0x1234U);
    table.GLDestoryFBO(0x10009);
    table.GLDestoryFBO(0x10003);
    EXPECT_EQ(recorder::Live("texture").size() + recorder::Live("framebuffer").size(), 26U);
    recorder::Fail("glGenTextures");
    EXPECT_EQ(Create(21), 0x1234U);
    EXPECT_EQ(recorder::Log(), (Lines{"E FBOManager: num of the FBO more than max num 16 \n",
                                      "E FBOManager: Create texture fail\n"}));
    EXPECT_EQ(Create(), 0x10003U);
    EXPECT_EQ(Create(), 0x10009U);
}

TEST_F(FBOTable, CreationMakesItsCallsInOrderAndATransparentLayer) {
    recorder::Record();
    const TagFrameBuffObject fbo = Record(Create());
    const auto parameter = [](GLenum what, GLint value) {
        return Call("glTexParameteri", GL_TEXTURE_2D, what, value);
    };
    EXPECT_EQ(
        recorder::Calls(),
        (Lines{Call("glActiveTexture", GL_TEXTURE0), Call("glGenTextures", 1, &fbo),
               Call("glBindTexture", GL_TEXTURE_2D, fbo.textureId),
               Call("glTexImage2D", GL_TEXTURE_2D, 0, GL_RGBA, 8, 4, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr),
               parameter(GL_TEXTURE_MIN_FILTER, GL_LINEAR), parameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR),
               parameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE), parameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE),
               Call("glGenFramebuffers", 1, &fbo), Call("glBindFramebuffer", GL_FRAMEBUFFER, fbo.fboId),
               Call("glFramebufferTexture2D", GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                    fbo.textureId, 0),
               Call("glCheckFramebufferStatus", GL_FRAMEBUFFER), Call("glBindTexture", GL_TEXTURE_2D, 0),
               Call("glBindFramebuffer", GL_FRAMEBUFFER, 0),
               Call("glBindFramebuffer", GL_FRAMEBUFFER, fbo.fboId), Call("glViewport", 0, 0, 8, 4),
               Call("glClearColor", 0, 0, 0, 0), Call("glClear", GL_COLOR_BUFFER_BIT),
               Call("glBindFramebuffer", GL_FRAMEBUFFER, 0)}));
    ExpectPixel(fbo, 7, 3, {0, 0, 0, 0});
    table.ClearFBOTex(fbo, {1, 0.5F, 0, 0.25F});
    ExpectPixel(fbo, 0, 0, {255, 128, 0, 64});
}

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
        {0x8CD8, unknown},
        {0x8CDA, unknown},
        {0x8CDC, unknown},
        {0x8CDE, unknown},
        {0, unknown},
    };
    for (const auto& [status, line] : cases) {
        recorder::Reset();
        recorder::Fail("glCheckFramebufferStatus", 1, false, status);
        EXPECT_EQ(Record(Create()).width, 8);
        EXPECT_EQ(recorder::Log(), Lines{"E FBOManager: " + line});
    }
}

TEST_F(FBOTable, WindowIsFoundAndResizedButNeitherItNorAnUnknownHandleIsDestroyed) {
    const unsigned int layer = Create();
    table.UpdateSurfaceWidthHeight(20, 10);
    for (const unsigned int unknown : {0x10000U, 0x10002U, 0x10010U, 0U}) {
        recorder::Reset();
        table.GLDestoryFBO(unknown);
        char line[64];
        (void)std::snprintf(line, sizeof(line), "E FBOManager: FBO is not exist fboHandleIndex 0x%x\n",
                            unknown);
        EXPECT_EQ(recorder::Log(), Lines{line});
    }
    const TagFrameBuffObject slot0 = Record(FBO_HANDLE_BASE);
    EXPECT_EQ(recorder::Numbers({slot0.width, slot0.height}), recorder::Numbers({20, 10}));
    EXPECT_EQ(slot0.fboId + slot0.textureId, 0U);
    EXPECT_EQ(Record(layer).width, 8);
    TagFrameBuffObject untouched{1, 2, 3, 4, 5};
    EXPECT_FALSE(table.GetFBOInst(0x10002, untouched));
    EXPECT_EQ(untouched.height, 5);
}

}  // namespace
}  // namespace kivgles
