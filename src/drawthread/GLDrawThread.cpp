#include "drawthread/GLDrawThread.h"

#include <optional>

#include <android/log.h>

#include "StatusCode.h"
#include "gl/DisplayTurn.h"

namespace kivgles {

namespace {

constexpr char TAG[] = "GLDrawThread";

// The context commands are the only ones that make sense without a context.
bool NeedsContext(TagCmd kind) { return kind != CMD_CREATE_GL_CONTEXT && kind != CMD_DESTROY_GL_CONTEXT; }

// Signals when the calling thread ends. To be called before anything else there makes a thread-local object:
// those are destroyed in the reverse order, and this is the thread's last act.
void SignalAtThreadEnd(KivGLSemaphore& ended) {
    struct LastAct {
        KivGLSemaphore& semaphore;  // its owner waits for it, so it is there until it is signalled
        ~LastAct() { semaphore.Signal(); }
    };
    thread_local const LastAct lastAct{ended};
}

}  // namespace

GLDrawThread::~GLDrawThread() {
    exitFlag = true;
    (void)ResetGLESConext();  // always 0
    __android_log_print(ANDROID_LOG_WARN, TAG, "~GLDrawThread\n");
}

int GLDrawThread::Init() {
    cmdSemaphore = std::make_unique<KivGLSemaphore>(0);
    ended = std::make_shared<KivGLSemaphore>(0);
    exitFlag = false;

    // The queue has its first block before there is a thread: not every library's has one when it is made.
    const MutexLock lock(queueMutex);
    cmdQueue.emplace_back();
    cmdQueue.pop_front();
    return STATUS_OK;
}

int GLDrawThread::DeInit() {
    exitFlag = true;
    cmdSemaphore->Signal();
    return STATUS_OK;
}

void GLDrawThread::SetFboInfo(int width, int height, int format) {
    fboCreateInfo.width = width;
    fboCreateInfo.height = height;
    fboCreateInfo.format = format;
}

void GLDrawThread::SetFontLibInfo(const std::string& path, unsigned int size) {
    fontLibPath = path;
    fontLibSize = size;
}

void GLDrawThread::SendCmdToQueue(std::shared_ptr<DrawCmd>& cmd) {
    {
        const MutexLock lock(queueMutex);
        cmdQueue.push_back(cmd);
    }
    cmdSemaphore->Signal();
}

int GLDrawThread::SendCmdAndWaitResponse(std::shared_ptr<DrawCmd>& cmd) {
    cmd->SetSyncProc();  // before the draw thread can see the command
    SendCmdToQueue(cmd);
    cmd->SemaphoreWait();
    return cmdResult;
}

void GLDrawThread::DrawThread() {
    SignalAtThreadEnd(*ended);
    std::shared_ptr<DrawCmd> cmd;
    while (!exitFlag) {
        cmd = ReadCmdFromQueue();
        if (cmd != nullptr) {
            int status = CheckGLContext(cmd);
            if (status == STATUS_OK) {
                status = DrawCmdInTurn(cmd);
            }
            ResultProc(cmd, status);
        }
    }
    __android_log_print(ANDROID_LOG_WARN, TAG, "exit draw thread\n");
}

int GLDrawThread::DrawCmdInTurn(std::shared_ptr<DrawCmd>& cmd) {
    std::optional<DisplayTurn> turn;
    // Setting the context up and ending it have turns of their own.
    if (NeedsContext(cmd->GetCmd()) && eglManager != nullptr && eglManager->DrawsInTurn()) {
        turn.emplace(eglManager->Display());
    }
    return DrawCmdProc(cmd);
}

std::shared_ptr<DrawCmd> GLDrawThread::ReadCmdFromQueue() {
    cmdSemaphore->Wait();
    {
        const MutexLock lock(queueMutex);
        if (!cmdQueue.empty()) {
            std::shared_ptr<DrawCmd> cmd = std::move(cmdQueue.front());
            cmdQueue.pop_front();
            return cmd;
        }
    }
    __android_log_print(ANDROID_LOG_WARN, TAG, "DrawCmd is empty\n");
    return nullptr;
}

int GLDrawThread::CheckGLContext(std::shared_ptr<DrawCmd>& cmd) {
    if (!NeedsContext(cmd->GetCmd()) || contextCreated) {
        return STATUS_OK;
    }
    __android_log_print(ANDROID_LOG_ERROR, TAG, "GLES context is not created\n");
    return STATUS_CONTEXT_NOT_CREATED;
}

void GLDrawThread::ResultProc(std::shared_ptr<DrawCmd>& cmd, int result) {
    if (cmd != nullptr && cmd->IsSyncProc()) {
        cmdResult = result;
        cmd->SemaphoreSignal();
    }
}

}  // namespace kivgles
