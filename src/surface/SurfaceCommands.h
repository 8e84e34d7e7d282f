#ifndef KIVGLES_SURFACE_SURFACECOMMANDS_H
#define KIVGLES_SURFACE_SURFACECOMMANDS_H

#include <memory>

#include "drawthread/GLDrawThread.h"
#include "kivgles/KivGLRecords.h"

// What the surface's operations share. Client thread, under the surface's lock if the operation takes it.

namespace kivgles {

// False, logged, when there is no draw thread.
bool HasContext(const std::shared_ptr<GLDrawThread>& drawThread);

// Fills `fbo` with the record of a layer or the window. Returns the draw thread's status; if that is not 0 it
// is logged and `fbo` is all zero.
int FindFBO(GLDrawThread& drawThread, unsigned int handle, TagFrameBuffObject& fbo);

// A render target's size in pixels, as the conversions take it.
inline unsigned int PixelWidth(const TagFrameBuffObject& fbo) { return static_cast<unsigned int>(fbo.width); }
inline unsigned int PixelHeight(const TagFrameBuffObject& fbo) {
    return static_cast<unsigned int>(fbo.height);
}

// Queues a command, of a kind whose sender does not wait.
void SendToQueue(GLDrawThread& drawThread, std::shared_ptr<DrawCmd>& cmd);

// Send a command, of a kind whose sender waits, wait until it has been executed and return its public result
// code.
int SendAndWait(GLDrawThread& drawThread, std::shared_ptr<DrawCmd>& cmd);
int SendAndWait(GLDrawThread& drawThread, TagCmd kind);

}  // namespace kivgles

#endif  // KIVGLES_SURFACE_SURFACECOMMANDS_H
