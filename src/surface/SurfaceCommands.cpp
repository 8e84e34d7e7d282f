#include "surface/SurfaceCommands.h"

#include <cassert>

#include <android/log.h>

#include "ClearedRecord.h"
#include "StatusCode.h"
#include "surface/ResultCode.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "KivGLDrawSurface";

}  // namespace

bool HasContext(const std::shared_ptr<GLDrawThread>& drawThread) {
    if (drawThread == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "GLContext isn't created\n");
        return false;
    }
    return true;
}

int FindFBO(GLDrawThread& drawThread, unsigned int handle, TagFrameBuffObject& fbo) {
    fbo = ClearedRecord<TagFrameBuffObject>();
    const int status = drawThread.GetFBOInst(handle, fbo);
    if (status != STATUS_OK) {
        __android_log_print(ANDROID_LOG_ERROR, TAG, "There is not the fbo 0x%x\n", handle);
    }
    return status;
}

void SendToQueue(GLDrawThread& drawThread, std::shared_ptr<DrawCmd>& cmd) {
    assert(!SenderWaits(cmd->GetCmd()));
    drawThread.SendCmdToQueue(cmd);
}

int SendAndWait(GLDrawThread& drawThread, std::shared_ptr<DrawCmd>& cmd) {
    assert(SenderWaits(cmd->GetCmd()));
    return TranslateResult(drawThread.SendCmdAndWaitResponse(cmd));
}

int SendAndWait(GLDrawThread& drawThread, TagCmd kind) {
    auto cmd = std::make_shared<DrawCmd>(kind);
    return SendAndWait(drawThread, cmd);
}

}  // namespace kivgles
