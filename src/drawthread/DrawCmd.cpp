#include "drawthread/DrawCmd.h"

#include "gl/FBOManager.h"

namespace kivgles {

DrawCmd::DrawCmd(TagCmd kind)
    : cmd(kind), fboHandleIndex(FBO_HANDLE_FREE), semaphore(std::make_unique<KivGLSemaphore>(0)) {}

}  // namespace kivgles
