#ifndef KIVGLES_DRAWTHREAD_DRAWCMD_H
#define KIVGLES_DRAWTHREAD_DRAWCMD_H

#include <cstdint>
#include <memory>
#include <utility>

#include "drawthread/CmdPayloads.h"
#include "drawthread/KivGLSemaphore.h"

namespace kivgles {

// The kinds of commands, and what each carries.
enum TagCmd : std::uint32_t {
    CMD_CREATE_GL_CONTEXT = 0,       // nothing
    CMD_DESTROY_GL_CONTEXT = 1,      // nothing
    CMD_INIT = 2,                    // mask, by GLDrawThread::SetEnable
    CMD_CONNECT_WINDOW_SURFACE = 3,  // window, by SetNativeWindow
    CMD_CREATE_FBO = 4,              // size and format, by SetFboInfo; fboHandleIndex comes back
    CMD_DESTROY_FBO = 5,             // fboHandleIndex
    CMD_CLEAR_FBO = 6,               // fboHandleIndex
    CMD_DISPLAY_FBO = 7,             // blitInfo: source, both rectangles
    CMD_BLIT = 8,                    // blitInfo
    CMD_DRAW_TEXT = 9,               // textInfo
    CMD_DISPLAY_BITMAP = 10,         // bitmap, by SetBitmapInfo
    CMD_DRAW_BITMAP = 11,            // fboHandleIndex; bitmap, by SetBitmapInfo
    CMD_DRAW_RECT = 12,              // rectInfo
    CMD_DRAW_ROUND = 13,             // roundInfo
    CMD_LOAD_FONT = 14,              // path and size, by SetFontLibInfo
    CMD_REFRESH_ON_SCREEN = 15,      // nothing
};

// Whether the sender blocks until the command has been executed; what it left in the draw thread beforehand
// stays untouched until then. The other kinds are queued, and everything that they need is in the command.
constexpr bool SenderWaits(TagCmd kind) {
    switch (kind) {
        case CMD_CREATE_GL_CONTEXT:
        case CMD_DESTROY_GL_CONTEXT:
        case CMD_INIT:
        case CMD_CONNECT_WINDOW_SURFACE:
        case CMD_CREATE_FBO:
        case CMD_DESTROY_FBO:
        case CMD_DISPLAY_BITMAP:
        case CMD_DRAW_BITMAP:
        case CMD_LOAD_FONT:
            return true;
        case CMD_CLEAR_FBO:
        case CMD_DISPLAY_FBO:
        case CMD_BLIT:
        case CMD_DRAW_TEXT:
        case CMD_DRAW_RECT:
        case CMD_DRAW_ROUND:
        case CMD_REFRESH_ON_SCREEN:
            return false;
    }
    return false;
}

// One request on its way to the draw thread.
//
// Owner:  shared by its sender and the queue; dies with the last of them. Owns its payload.
// Thread: filled by the sender before it is queued, read by the draw thread afterwards. The one field written
//         there, fboHandleIndex of CMD_CREATE_FBO, is read by the sender after SemaphoreWait.
class DrawCmd {
 public:
    explicit DrawCmd(TagCmd kind);

    DrawCmd(const DrawCmd&) = delete;
    DrawCmd& operator=(const DrawCmd&) = delete;

    TagCmd GetCmd() const { return cmd; }

    bool IsSyncProc() const { return syncProc; }
    void SetSyncProc() { syncProc = true; }
    void SemaphoreWait() { semaphore->Wait(); }
    void SemaphoreSignal() { semaphore->Signal(); }

    void SetFboHandleIndex(unsigned int handleIndex) { fboHandleIndex = handleIndex; }
    unsigned int GetFboHandleIndex() const { return fboHandleIndex; }

    // Take the caller's payload, leaving its pointer null; one held before is destroyed.
    void SetRoundInfo(std::unique_ptr<RoundInfo>& info) { roundInfo = std::move(info); }
    void SetRectInfo(std::unique_ptr<RectInfo>& info) { rectInfo = std::move(info); }
    void SetTextInfo(std::unique_ptr<TextInfo>& info) { textInfo = std::move(info); }
    void SetBlitInfo(std::unique_ptr<BlitInfo>& info) { blitInfo = std::move(info); }

    // Null when the command carries none.
    const std::unique_ptr<RoundInfo>& GetRoundInfo() const { return roundInfo; }
    const std::unique_ptr<RectInfo>& GetRectInfo() const { return rectInfo; }
    const std::unique_ptr<TextInfo>& GetTextInfo() const { return textInfo; }
    const std::unique_ptr<BlitInfo>& GetBlitInfo() const { return blitInfo; }

 private:
    TagCmd cmd;
    std::uint32_t fboHandleIndex;
    std::unique_ptr<RoundInfo> roundInfo;
    std::unique_ptr<RectInfo> rectInfo;
    std::unique_ptr<TextInfo> textInfo;
    std::unique_ptr<BlitInfo> blitInfo;
    std::unique_ptr<KivGLSemaphore> semaphore;  // wakes the sender; unused by a queued command
    bool syncProc = false;                      // the sender waits
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_DRAWCMD_H
