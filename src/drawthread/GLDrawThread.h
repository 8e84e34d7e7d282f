#ifndef KIVGLES_DRAWTHREAD_GLDRAWTHREAD_H
#define KIVGLES_DRAWTHREAD_GLDRAWTHREAD_H

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "MutexLock.h"
#include "drawthread/DrawCmd.h"
#include "drawthread/KivGLSemaphore.h"
#include "gl/EGLManager.h"
#include "gl/FBOManager.h"
#include "kivgles/KivComponents.h"
#include "kivgles/KivDisplay.h"
#include "osd/OSDBitmap.h"
#include "osd/OSDBlit.h"
#include "osd/OSDFrame.h"
#include "osd/OSDRect.h"
#include "osd/OSDRound.h"
#include "text/OSDText.h"

struct ANativeWindow;

namespace kivgles {

// The size in pixels that a window is taken for until one is connected.
constexpr int UNCONNECTED_WINDOW_WIDTH = 1920;
constexpr int UNCONNECTED_WINDOW_HEIGHT = 1080;

// The one object that owns the library's GL state, with the queue that leads to it.
//
// Owner:  shared by the surface and by the thread that runs DrawThread; dies with the last of them.
// Thread: as each group below says. "Caller's lock" is the surface's apiMutex, which lets one client in at a
//         time and is held while a synchronous command is waited for.
// Units:  window and layer sizes in pixels; what the payloads hold is in GL's coordinates already.
//
// Operations return 0 or a status of StatusCode.h; whoever finds a failure has logged it.
class GLDrawThread {
 public:
    GLDrawThread() = default;
    // Whichever thread drops the last reference. Commands still queued are released, not executed.
    ~GLDrawThread();

    GLDrawThread(const GLDrawThread&) = delete;
    GLDrawThread& operator=(const GLDrawThread&) = delete;

    // --- Client thread: starting and stopping ---

    // Makes the object ready for its thread; called once, before that starts.
    int Init();
    // The display to set the context up on; EGL's default one otherwise. Before the thread starts.
    void SetDisplay(const TagKivDisplayInfo& info) { displayInfo = info; }
    // Asks the loop to stop after the command in hand.
    int DeInit();
    // Signalled once, when the thread that ran DrawThread has ended: after the last line of its log, its
    // reference to this object and its thread-local objects. Whoever stops the thread waits for that with a
    // copy of this and no other reference to the object.
    const std::shared_ptr<KivGLSemaphore>& Ended() const { return ended; }

    // --- Client thread: commands ---

    // Returns at once; the command's status is dropped.
    void SendCmdToQueue(std::shared_ptr<DrawCmd>& cmd);
    // Returns the command's status once it has been executed. One such command at a time (caller's lock).
    int SendCmdAndWaitResponse(std::shared_ptr<DrawCmd>& cmd);

    // --- Client thread, under the caller's lock: what the next synchronous command reads ---

    void SetEnable(unsigned int mask) { enableMask = mask; }
    void SetNativeWindow(ANativeWindow* window) { nativeWindow = window; }
    void SetFboInfo(int width, int height, int format);
    void SetFontLibInfo(const std::string& path, unsigned int size);
    void SetBitmapInfo(const TagGLBitmapInfo& info) { bitmapInfo = info; }

    // --- Client thread, under the caller's lock: queries that do not wait for the queue ---

    // As of the last window connected.
    int GetWindowWidth() const { return windowWidth; }
    int GetWindowHeight() const { return windowHeight; }
    // Copies the record of a render target, making the table first if there is none; also used by the draw
    // thread. STATUS_NOT_FOUND leaves `fbo` as it was.
    int GetFBOInst(unsigned int handleIndex, TagFrameBuffObject& fbo);
    // Measures a text in pixels without GL. Before there is a text renderer it answers STATUS_NO_TEXT, with
    // the size of one missing character.
    int GetTextSize(const TagGLTextInfo& info, unsigned int& width, unsigned int& height);

    // --- Draw thread: the loop (GLDrawThread.cpp) ---

    // The thread's body: executes commands in the order they were queued until DeInit.
    void DrawThread();
    // Blocks for a command or a stop request; null for the latter.
    std::shared_ptr<DrawCmd> ReadCmdFromQueue();
    int CheckGLContext(std::shared_ptr<DrawCmd>& cmd);
    // Executes a command, where GL needs it in turn with other draw threads of the display.
    int DrawCmdInTurn(std::shared_ptr<DrawCmd>& cmd);
    void ResultProc(std::shared_ptr<DrawCmd>& cmd, int result);

    // --- Draw thread: dispatch and context (GLDrawThreadContext.cpp) ---

    int DrawCmdProc(std::shared_ptr<DrawCmd>& cmd);
    int SetupGLESConext();
    int ResetGLESConext();
    int ConnectWindowSurface();
    int RefreshOnSrceen() const;

    // --- Draw thread: components (GLDrawThreadComponents.cpp) ---

    // Makes the renderers and the table that the mask names and that do not exist yet; stops at a failure.
    int GLInit(unsigned int mask);
    // Each replaces its renderer if the mask has its bit; null after a failure.
    int OSDTextInit(unsigned int mask);
    int OSDBlitInit(unsigned int mask);
    int OSDBitmapInit(unsigned int mask);
    int OSDFrameInit(unsigned int mask);
    int OSDRectInit(unsigned int mask);
    int OSDRoundInit(unsigned int mask);
    // Replaces the table, with all its layers, if the mask has its bit.
    void FBOManagerInit(unsigned int mask);
    int LoadFont();

    // --- Draw thread: handlers (GLDrawThreadHandlers.cpp) ---

    int CreateGLFBO(std::shared_ptr<DrawCmd>& cmd);
    int DestoryGLFBO(unsigned int handleIndex) const;
    int ClearGLFBO(unsigned int handleIndex);
    int DrawFBO(const std::unique_ptr<BlitInfo>& blitInfo);
    int Blit(const std::unique_ptr<BlitInfo>& blitInfo);
    int DrawText(const std::unique_ptr<TextInfo>& textInfo);
    int DisplayBitmap();
    int DrawBitmap(unsigned int handleIndex);
    int DrawRect(const std::unique_ptr<RectInfo>& rectInfo);
    int DrawRound(const std::unique_ptr<RoundInfo>& roundInfo);

 private:
    // Size and format of the next layer, and the handle index of the last one.
    struct FboCreateInfo {
        std::uint32_t fboHandleIndex;
        std::int32_t width;
        std::int32_t height;
        std::int32_t format;
    };

    // A font file and its glyph size in pixels.
    struct Font {
        std::string path;
        unsigned int size;
    };

    // For the draw thread, which needs no lock to use the renderer: nobody else makes or destroys it.
    OSDText* TextRenderer() const KIVGLES_UNCHECKED { return osdText.get(); }
    // Makes the text renderer with its font. A measurement waits until the load has ended, well or badly.
    int MakeTextRendererWithFont();
    // Whether there is a table to look a layer up in, by a handle index that is not the free mark; logs if
    // not.
    bool CanLookUpFBO(unsigned int handleIndex) const KIVGLES_REQUIRES(fboMutex);
    // Copies the record of a render target; logs if there is none.
    int FindFBO(unsigned int handleIndex, TagFrameBuffObject& fbo) KIVGLES_REQUIRES(fboMutex);
    // The table, made if there is none.
    FBOManager& EnsureFBOManager() KIVGLES_REQUIRES(fboMutex);

    std::unique_ptr<EGLManager> eglManager;  // draw thread
    std::unique_ptr<FBOManager> fboManager KIVGLES_GUARDED_BY(fboMutex);
    std::unique_ptr<OSDText> osdText KIVGLES_GUARDED_BY(textMutex);
    std::unique_ptr<OSDBlit> osdBlit;  // this and the renderers below: draw thread
    std::unique_ptr<OSDBitmap> osdBitmap;
    std::unique_ptr<OSDFrame> osdFrame;
    std::unique_ptr<OSDRect> osdRect;
    std::unique_ptr<OSDRound> osdRound;
    std::unique_ptr<KivGLSemaphore> cmdSemaphore;  // counts queued commands and stop requests
    std::atomic<bool> exitFlag{false};             // set by DeInit, read by the loop
    bool contextCreated = false;                   // draw thread
    int cmdResult = 0;  // written by the draw thread before it signals, read by the sender after its wait
    // Written while a window is connected, read when that command has returned.
    int windowWidth = UNCONNECTED_WINDOW_WIDTH;
    int windowHeight = UNCONNECTED_WINDOW_HEIGHT;
    std::deque<std::shared_ptr<DrawCmd>> cmdQueue KIVGLES_GUARDED_BY(queueMutex);

    // Written by the client before it sends the command that reads them, untouched until that has returned.
    ANativeWindow* nativeWindow = nullptr;  // the client's
    unsigned int enableMask = 0;
    FboCreateInfo fboCreateInfo{FBO_HANDLE_FREE, 0, 0, 0};
    std::string fontLibPath = "/system/fonts/CC3.ttf";  // adopted as textFont by CMD_LOAD_FONT
    unsigned int fontLibSize = STANDARD_FONT_SIZE;      // the same
    TagGLBitmapInfo bitmapInfo{};

    KivMutex queueMutex;  // a leaf, held for one append or removal

    // The two below keep the draw thread apart from the queries on client threads. They are never held
    // together, nor while a command is waited for, and fboMutex never for long: look-ups wait for no load.

    // Making, using and destroying the table, against GetFBOInst.
    mutable KivMutex fboMutex;
    // Making the text renderer, loading its fonts and destroying it, against GetTextSize.
    KivMutex textMutex;

    TagKivDisplayInfo displayInfo;  // set before the thread starts; the native display is the client's
    std::shared_ptr<KivGLSemaphore> ended;  // made by Init

    // What the last CMD_LOAD_FONT executed has named: the first text loads it. Draw thread.
    Font textFont{fontLibPath, fontLibSize};
};

}  // namespace kivgles

#endif  // KIVGLES_DRAWTHREAD_GLDRAWTHREAD_H
