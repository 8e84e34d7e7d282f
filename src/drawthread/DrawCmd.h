#ifndef KIVGLES_DRAWTHREAD_DRAWCMD_H
#define KIVGLES_DRAWTHREAD_DRAWCMD_H

#include <cstdint>
#include <memory>
#include <utility>

#include "drawthread/CmdPayloads.h"
#include "drawthread/KivGLSemaphore.h"

namespace kivgles {

// The kinds of commands. "waits": the sender blocks until the command has been executed, and what it left in
// the draw thread beforehand (second column) stays untouched until then.
enum TagCmd : std::uint32_t {
    // kind                             mode    carries
    CMD_CREATE_GL_CONTEXT = 0,       // waits   nothing
    CMD_DESTROY_GL_CONTEXT = 1,      // waits   nothing
    CMD_INIT = 2,                    // waits   mask, by GLDrawThread::SetEnable
    CMD_CONNECT_WINDOW_SURFACE = 3,  // waits   window, by SetNativeWindow
    CMD_CREATE_FBO = 4,              // waits   size and format, by SetFboInfo; fboHandleIndex comes back
    CMD_DESTROY_FBO = 5,             // waits   fboHandleIndex
    CMD_CLEAR_FBO = 6,               // queued  fboHandleIndex
    CMD_DISPLAY_FBO = 7,             // queued  blitInfo: source, both rectangles
    CMD_BLIT = 8,                    // queued  blitInfo
    CMD_DRAW_TEXT = 9,               // queued  textInfo
    CMD_DISPLAY_BITMAP = 10,         // waits   bitmap, by SetBitmapInfo
    CMD_DRAW_BITMAP = 11,            // waits   fboHandleIndex; bitmap, by SetBitmapInfo
    CMD_DRAW_RECT = 12,              // queued  rectInfo
    CMD_DRAW_ROUND = 13,             // queued  roundInfo
    CMD_LOAD_FONT = 14,              // waits   path and size, by SetFontLibInfo
    CMD_REFRESH_ON_SCREEN = 15,      // queued  nothing
};

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
