// The making of the renderers and of the table of render targets, and font loading.

#include <android/log.h>

#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "GLDrawThread";

// Puts a new renderer in the place of any held before; one whose GL objects cannot be made is not kept.
template <typename Renderer>
int MakeRenderer(std::unique_ptr<Renderer>& renderer) {
    renderer = std::make_unique<Renderer>();
    const int status = renderer->Init();
    if (status != STATUS_OK) {
        renderer.reset();
    }
    return status;
}

}  // namespace

int GLDrawThread::GLInit(unsigned int mask) {
    int status = EnsureRenderer(osdText, &GLDrawThread::OSDTextInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    status = EnsureRenderer(osdBlit, &GLDrawThread::OSDBlitInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    status = EnsureRenderer(osdBitmap, &GLDrawThread::OSDBitmapInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    status = EnsureRenderer(osdFrame, &GLDrawThread::OSDFrameInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    status = EnsureRenderer(osdRect, &GLDrawThread::OSDRectInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    status = EnsureRenderer(osdRound, &GLDrawThread::OSDRoundInit, mask);
    if (status != STATUS_OK) {
        return status;
    }
    if ((mask & ENABLE_FBO_MANAGER) != 0) {
        const std::lock_guard<std::mutex> lock(componentMutex);
        (void)EnsureFBOManager();  // wanted here only for being made
    }
    return STATUS_OK;
}

int GLDrawThread::OSDTextInit(unsigned int mask) {
    if ((mask & ENABLE_TEXT) == 0) {
        return STATUS_OK;
    }
    const std::lock_guard<std::mutex> lock(componentMutex);
    const int status = MakeRenderer(osdText);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD text init fail %d\n", status);
    }
    return status;
}

int GLDrawThread::OSDBlitInit(unsigned int mask) {
    if ((mask & ENABLE_BLIT) == 0) {
        return STATUS_OK;
    }
    const int status = MakeRenderer(osdBlit);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD blit init fail %d\n", status);
    }
    return status;
}

int GLDrawThread::OSDBitmapInit(unsigned int mask) {
    if ((mask & ENABLE_BITMAP) == 0) {
        return STATUS_OK;
    }
    const int status = MakeRenderer(osdBitmap);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD bitmap fail %d\n", status);
    }
    return status;
}

int GLDrawThread::OSDFrameInit(unsigned int mask) {
    if ((mask & ENABLE_FRAME) == 0) {
        return STATUS_OK;
    }
    const int status = MakeRenderer(osdFrame);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD frame init fail %d\n", status);
    }
    return status;
}

int GLDrawThread::OSDRectInit(unsigned int mask) {
    if ((mask & ENABLE_RECT) == 0) {
        return STATUS_OK;
    }
    const int status = MakeRenderer(osdRect);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD Rect init fail %d\n", status);
    }
    return status;
}

int GLDrawThread::OSDRoundInit(unsigned int mask) {
    if ((mask & ENABLE_ROUND) == 0) {
        return STATUS_OK;
    }
    const int status = MakeRenderer(osdRound);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "OSD Round init fail %d\n", status);
    }
    return status;
}

void GLDrawThread::FBOManagerInit(unsigned int mask) {
    if ((mask & ENABLE_FBO_MANAGER) != 0) {
        const std::lock_guard<std::mutex> lock(componentMutex);
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
    const int status = EnsureRenderer(osdText, &GLDrawThread::OSDTextInit, ENABLE_TEXT);
    if (status != STATUS_OK) {
        return status;
    }
    const std::lock_guard<std::mutex> lock(componentMutex);
    return osdText->LoadFont(fontLibPath, fontLibSize);
}

}  // namespace kivgles
