#include "gl/FBOManager.h"

#include <algorithm>

#include <GLES2/gl2.h>
#include <android/log.h>

#include "StatusCode.h"
#include "gl/TextureSide.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "FBOManager";

// The line for a status of glCheckFramebufferStatus.
const char* FramebufferStatusLine(GLenum status) {
    switch (status) {
        case GL_FRAMEBUFFER_COMPLETE:
            return "Framebuffer complete.\n";
        case GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT:
            return "Unable to set up render Target: RFRAMEBUFFER_INCOMPLETE_ATTACHMENT\n";
        case GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT:
            return "Unable to set up render Target: GL_FRAMEBUFFER_INCOMPLETE_MISSING_ATTACHMENT\n";
        case GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS:
            return "Unable to set up render Target: GL_FRAMEBUFFER_INCOMPLETE_DIMENSIONS\n";
        case GL_FRAMEBUFFER_UNSUPPORTED:
            return "Unable to set up render Target: GL_FRAMEBUFFER_UNSUPPORTED\n";
        default:
            return "Framebuffer incomplete: Unknown error.\n";
    }
}

// Gives the bound texture its storage, undefined inside, and how it is sampled.
void SetUpColorTexture(int width, int height, int format) {
    glTexImage2D(GL_TEXTURE_2D, 0, format, TextureSide(width), TextureSide(height), 0,
                 static_cast<GLenum>(format), GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

void DeleteGLObjects(const TagFrameBuffObject& fbo) {
    if (fbo.textureId != 0) {
        glDeleteTextures(1, &fbo.textureId);
    }
    if (fbo.fboId != 0) {
        glDeleteFramebuffers(1, &fbo.fboId);
    }
}

}  // namespace

FBOManager::FBOManager(int width, int height) {
    fbos.fill(UNSET_FBO);
    fbos[0] = {FBO_HANDLE_BASE, 0, 0, width, height};
}

FBOManager::~FBOManager() { std::for_each(fbos.begin() + 1, fbos.end(), DeleteGLObjects); }

int FBOManager::GLCreateFBO(unsigned int& handleIndex, int width, int height, int format,
                            bool useGivenHandle) {
    TagFrameBuffObject* const slot = FindLayer(FBO_HANDLE_FREE);
    if (slot == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "num of the FBO more than max num %d \n",
                            static_cast<int>(FBO_MAX_NUM));
        return STATUS_FBO_TABLE_FULL;
    }

    // Texture.
    glActiveTexture(GL_TEXTURE0);
    glGenTextures(1, &slot->textureId);
    if (slot->textureId == 0) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Create texture fail\n");
        return STATUS_NO_TEXTURE;
    }
    glBindTexture(GL_TEXTURE_2D, slot->textureId);
    SetUpColorTexture(width, height, format);

    // Framebuffer; an incomplete one is a layer all the same, on which drawing has no effect.
    glGenFramebuffers(1, &slot->fboId);
    glBindFramebuffer(GL_FRAMEBUFFER, slot->fboId);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, slot->textureId, 0);
    const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    __android_log_print(ANDROID_LOG_ERROR, TAG, "%s", FramebufferStatusLine(status));
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);

    // Record.
    if (!useGivenHandle) {
        handleIndex = FBO_HANDLE_BASE + static_cast<unsigned int>(slot - fbos.data());
    }
    slot->fboHandleIndex = handleIndex;
    slot->width = width;
    slot->height = height;

    ClearFBOTex(*slot, TRANSPARENT_BLACK);
    return STATUS_OK;
}

void FBOManager::ClearFBOTex(const TagFrameBuffObject& fbo, const TagColorRGBA& color) const {
    glBindFramebuffer(GL_FRAMEBUFFER, fbo.fboId);
    glViewport(0, 0, fbo.width, fbo.height);
    glClearColor(color.r, color.g, color.b, color.a);
    glClear(GL_COLOR_BUFFER_BIT);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

bool FBOManager::GetFBOInst(unsigned int handleIndex, TagFrameBuffObject& fbo) const {
    const auto found = std::find_if(fbos.begin(), fbos.end(), [handleIndex](const TagFrameBuffObject& slot) {
        return slot.fboHandleIndex == handleIndex;
    });
    if (found == fbos.end()) {
        return false;
    }
    fbo = *found;
    return true;
}

void FBOManager::GLDestoryFBO(unsigned int handleIndex) {
    TagFrameBuffObject* const slot = FindLayer(handleIndex);
    if (slot == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "FBO is not exist fboHandleIndex 0x%x\n", handleIndex);
        return;
    }
    DeleteGLObjects(*slot);
    InitFBO(*slot);
}

void FBOManager::InitFBO(TagFrameBuffObject& fbo) const { fbo = UNSET_FBO; }

void FBOManager::UpdateSurfaceWidthHeight(int width, int height) {
    fbos[0].width = width;
    fbos[0].height = height;
}

TagFrameBuffObject* FBOManager::FindLayer(unsigned int handleIndex) {
    const auto found = std::find_if(
        fbos.begin() + 1, fbos.end(),
        [handleIndex](const TagFrameBuffObject& slot) { return slot.fboHandleIndex == handleIndex; });
    return found == fbos.end() ? nullptr : &*found;
}

}  // namespace kivgles
