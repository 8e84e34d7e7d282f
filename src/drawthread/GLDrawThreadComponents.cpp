// The making of the renderers and of the table of render targets, and font loading.

#include <android/log.h>

#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "GLDrawThread";

// Puts a new renderer in the place of any held before. One whose GL objects cannot be made is not kept;
// `failure` is then logged with the status.
template <typename Renderer>
int MakeRenderer(std::unique_ptr<Renderer>& renderer, const char* failure) {
    renderer = std::make_unique<Renderer>();
    const int status = renderer->Init();
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "%s %d\n", failure, status);
        renderer.reset();
    }
    return status;
}

constexpr char TEXT_FAILURE[] = "OSD text init fail";

}  // namespace

int GLDrawThread::GLInit(unsigned int mask) {
    int status = TextRenderer() != nullptr ? STATUS_OK : OSDTextInit(mask);
    if (status == STATUS_OK && osdBlit == nullptr) {
        status = OSDBlitInit(mask);
    }
    if (status == STATUS_OK && osdBitmap == nullptr) {
        status = OSDBitmapInit(mask);
    }
    if (status == STATUS_OK && osdFrame == nullptr) {
        status = OSDFrameInit(mask);
    }
    if (status == STATUS_OK && osdRect == nullptr) {
        status = OSDRectInit(mask);
    }
    if (status == STATUS_OK && osdRound == nullptr) {
        status = OSDRoundInit(mask);
    }
    if (status == STATUS_OK && (mask & ENABLE_FBO_MANAGER) != 0) {
        const MutexLock lock(fboMutex);
        (void)EnsureFBOManager();  // nothing is looked up yet
    }
    return status;
}

int GLDrawThread::OSDTextInit(unsigned int mask) {
    const MutexLock lock(textMutex);
    return (mask & ENABLE_TEXT) == 0 ? STATUS_OK : MakeRenderer(osdText, TEXT_FAILURE);
}

int GLDrawThread::OSDBlitInit(unsigned int mask) {
    return (mask & ENABLE_BLIT) == 0 ? STATUS_OK : MakeRenderer(osdBlit, "OSD blit init fail");
}

int GLDrawThread::OSDBitmapInit(unsigned int mask) {
    return (mask & ENABLE_BITMAP) == 0 ? STATUS_OK : MakeRenderer(osdBitmap, "OSD bitmap fail");
}

int GLDrawThread::OSDFrameInit(unsigned int mask) {
    return (mask & ENABLE_FRAME) == 0 ? STATUS_OK : MakeRenderer(osdFrame, "OSD frame init fail");
}

int GLDrawThread::OSDRectInit(unsigned int mask) {
    return (mask & ENABLE_RECT) == 0 ? STATUS_OK : MakeRenderer(osdRect, "OSD Rect init fail");
}

int GLDrawThread::OSDRoundInit(unsigned int mask) {
    return (mask & ENABLE_ROUND) == 0 ? STATUS_OK : MakeRenderer(osdRound, "OSD Round init fail");
}

void GLDrawThread::FBOManagerInit(unsigned int mask) {
    if ((mask & ENABLE_FBO_MANAGER) != 0) {
        const MutexLock lock(fboMutex);
        fboManager = std::make_unique<FBOManager>(windowWidth, windowHeight);
    }
}

FBOManager& GLDrawThread::EnsureFBOManager() {
    if (fboManager == nullptr) {
        fboManager = std::make_unique<FBOManager>(windowWidth, windowHeight);
    }
    return *fboManager;
}

int GLDrawThread::LoadFont() {
    textFont = {fontLibPath, fontLibSize};
    if (TextRenderer() == nullptr) {
        return MakeTextRendererWithFont();
    }
    const MutexLock lock(textMutex);
    return osdText->LoadFont(textFont.path, textFont.size);
}

int GLDrawThread::MakeTextRendererWithFont() {
    const MutexLock lock(textMutex);
    const int status = MakeRenderer(osdText, TEXT_FAILURE);
    return status != STATUS_OK ? status : osdText->LoadFont(textFont.path, textFont.size);
}

}  // namespace kivgles
