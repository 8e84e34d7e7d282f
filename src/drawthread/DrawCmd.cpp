#include "drawthread/DrawCmd.h"

#include "drawthread/CmdMemory.h"
#include "gl/FBOManager.h"

namespace kivgles {

DrawCmd::DrawCmd(TagCmd kind)
    : cmd(kind), fboHandleIndex(FBO_HANDLE_FREE), semaphore(std::make_unique<KivGLSemaphore>(0)) {}

std::shared_ptr<DrawCmd> MakeDrawCmd(TagCmd kind) {
    return std::allocate_shared<DrawCmd>(CmdAllocator<DrawCmd>(), kind);
}

}  // namespace kivgles
