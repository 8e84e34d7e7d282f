// The handlers of the layer and drawing commands, and the two queries that clients make directly.

#include <android/log.h>

#include "ClearedRecord.h"
#include "StatusCode.h"
#include "drawthread/GLDrawThread.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "GLDrawThread";

}  // namespace

int GLDrawThread::CreateGLFBO(std::shared_ptr<DrawCmd>& cmd) {
    const MutexLock lock(fboMutex);
    const int status = EnsureFBOManager().GLCreateFBO(fboCreateInfo.fboHandleIndex, fboCreateInfo.width,
                                                      fboCreateInfo.height, fboCreateInfo.format, false);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "Create FBO fail %d\n", status);
        return status;
    }
    __android_log_print(ANDROID_LOG_WARN, TAG, "Create fbo fboHandleIndex 0x%x, width %d, height %d\n",
                        fboCreateInfo.fboHandleIndex, fboCreateInfo.width, fboCreateInfo.height);
    cmd->SetFboHandleIndex(fboCreateInfo.fboHandleIndex);
    return STATUS_OK;
}

bool GLDrawThread::CanLookUpFBO(unsigned int handleIndex) const {
    if (handleIndex == FBO_HANDLE_FREE || fboManager == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "FBO manager is nullptr or param is invalid\n");
        return false;
    }
    return true;
}

int GLDrawThread::DestoryGLFBO(unsigned int handleIndex) const {
    const MutexLock lock(fboMutex);
    if (!CanLookUpFBO(handleIndex)) {
        return STATUS_INVALID;
    }
    fboManager->GLDestoryFBO(handleIndex);
    __android_log_print(ANDROID_LOG_WARN, TAG, "Destory FBO fboHandleIndex 0x%x\n", handleIndex);
    return STATUS_OK;
}

int GLDrawThread::ClearGLFBO(unsigned int handleIndex) {
    auto fbo = ClearedRecord<TagFrameBuffObject>();
    const FBOManager* table = nullptr;
    {
        const MutexLock lock(fboMutex);
        if (!CanLookUpFBO(handleIndex)) {
            return STATUS_INVALID;
        }
        const int status = FindFBO(handleIndex, fbo);
        if (status != STATUS_OK) {
            __android_log_print(ANDROID_LOG_ERROR, TAG, "There is not the fbo 0x%x\n", handleIndex);
            return status;
        }
        table = fboManager.get();
    }
    // Without the lock, under which a client would wait for GL. Only the draw thread destroys the table.
    table->ClearFBOTex(fbo, TRANSPARENT_BLACK);
    return STATUS_OK;
}

int GLDrawThread::GetFBOInst(unsigned int handleIndex, TagFrameBuffObject& fbo) {
    const MutexLock lock(fboMutex);
    return FindFBO(handleIndex, fbo);
}

int GLDrawThread::FindFBO(unsigned int handleIndex, TagFrameBuffObject& fbo) {
    // A free slot of the table has the free mark for its handle index, but is no render target.
    const FBOManager& table = EnsureFBOManager();
    if (handleIndex != FBO_HANDLE_FREE && table.GetFBOInst(handleIndex, fbo)) {
        return STATUS_OK;
    }
    __android_log_print(ANDROID_LOG_ERROR, TAG, "There is not the fbo 0x%x\n", handleIndex);
    return STATUS_NOT_FOUND;
}

int GLDrawThread::DrawFBO(const std::unique_ptr<BlitInfo>& blitInfo) {
    if (blitInfo == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "blitInfo is null\n");
        return STATUS_NOT_FOUND;
    }
    const int status = osdFrame != nullptr ? STATUS_OK : OSDFrameInit(ENABLE_FRAME);
    if (status != STATUS_OK) {
        return status;
    }
    osdFrame->DisplayFBO(blitInfo->GetSrcFbo().textureId, blitInfo->GetSrcRect(), blitInfo->GetDstRect(),
                         windowWidth, windowHeight);
    return STATUS_OK;
}

int GLDrawThread::Blit(const std::unique_ptr<BlitInfo>& blitInfo) {
    if (blitInfo == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "blitInfo is null\n");
        return STATUS_NOT_FOUND;
    }
    const int status = osdBlit != nullptr ? STATUS_OK : OSDBlitInit(ENABLE_BLIT);
    if (status != STATUS_OK) {
        return status;
    }
    osdBlit->Blit(
        {blitInfo->GetSrcFbo(), blitInfo->GetDstFbo(), blitInfo->GetSrcRect(), blitInfo->GetDstRect()});
    return STATUS_OK;
}

int GLDrawThread::DrawText(const std::unique_ptr<TextInfo>& textInfo) {
    if (textInfo == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "textInfo is null\n");
        return STATUS_NOT_FOUND;
    }
    if (TextRenderer() == nullptr) {  // a renderer whose font did not load stays: no second attempt here
        const int status = MakeTextRendererWithFont();
        if (status != STATUS_OK) {
            return status;
        }
    }
    return TextRenderer()->DrawText(textInfo->GetDstFbo(), textInfo->GetTextInfo(), textInfo->GetDstRect().x,
                                    textInfo->GetDstRect().y);
}

int GLDrawThread::DisplayBitmap() {
    const int status = osdBitmap != nullptr ? STATUS_OK : OSDBitmapInit(ENABLE_BITMAP);
    if (status != STATUS_OK) {
        return status;
    }
    osdBitmap->DisplayBitmap(bitmapInfo, windowWidth, windowHeight);
    return STATUS_OK;
}

int GLDrawThread::DrawBitmap(unsigned int handleIndex) {
    int status = osdBitmap != nullptr ? STATUS_OK : OSDBitmapInit(ENABLE_BITMAP);
    if (status != STATUS_OK) {
        return status;
    }
    auto fbo = ClearedRecord<TagFrameBuffObject>();
    status = GetFBOInst(handleIndex, fbo);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "There is not the fbo 0x%x\n", handleIndex);
        return status;
    }
    osdBitmap->DrawBitmap(fbo, bitmapInfo);
    return STATUS_OK;
}

int GLDrawThread::DrawRect(const std::unique_ptr<RectInfo>& rectInfo) {
    if (rectInfo == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "rectInfo is null\n");
        return STATUS_NOT_FOUND;
    }
    const int status = osdRect != nullptr ? STATUS_OK : OSDRectInit(ENABLE_RECT);
    if (status != STATUS_OK) {
        return status;
    }
    osdRect->DrawRect(rectInfo->GetDstFbo(), rectInfo->GetDstRect(), rectInfo->GetRectColor());
    return STATUS_OK;
}

int GLDrawThread::DrawRound(const std::unique_ptr<RoundInfo>& roundInfo) {
    if (roundInfo == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "roundInfo is null\n");
        return STATUS_NOT_FOUND;
    }
    const int status = osdRound != nullptr ? STATUS_OK : OSDRoundInit(ENABLE_ROUND);
    if (status != STATUS_OK) {
        return status;
    }
    osdRound->DrawRound(roundInfo->GetDstFbo(), roundInfo->GetDstRound(), roundInfo->GetRoundColor());
    return STATUS_OK;
}

int GLDrawThread::GetTextSize(const TagGLTextInfo& info, unsigned int& width, unsigned int& height) {
    width = MISSING_CHAR_WIDTH;
    height = TEXT_HEIGHT;
    const MutexLock lock(textMutex);
    if (osdText == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "osd text is not init\n");
        return STATUS_NO_TEXT;
    }
    return osdText->GetTextSize(info, width, height);
}

}  // namespace kivgles
