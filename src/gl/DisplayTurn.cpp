#include "gl/DisplayTurn.h"

#include <condition_variable>
#include <map>

#include "MutexLock.h"

namespace kivgles {

namespace {

struct DisplayUse {
    unsigned int users = 0;
    bool isSomebodysTurn = false;
};

// The displays that have users, or whose turn it is.
struct UsedDisplays {
    KivMutex mutex;  // a leaf, never held while EGL works
    std::condition_variable turnHasEnded;
    std::map<EGLDisplay, DisplayUse> uses KIVGLES_GUARDED_BY(mutex);
};

UsedDisplays& AllUsed() {
    static UsedDisplays& displays = *new UsedDisplays;
    return displays;
}

}  // namespace

DisplayTurn::DisplayTurn(EGLDisplay usedDisplay) : display(usedDisplay) {
    UsedDisplays& displays = AllUsed();
    MutexLock lock(displays.mutex);
    // Looked up again after each wait: the last user's turn takes the entry away.
    while (displays.uses[display].isSomebodysTurn) {
        lock.WaitFor(displays.turnHasEnded);
    }
    displays.uses[display].isSomebodysTurn = true;
}

DisplayTurn::~DisplayTurn() {
    UsedDisplays& displays = AllUsed();
    const MutexLock lock(displays.mutex);
    const auto use = displays.uses.find(display);
    use->second.isSomebodysTurn = false;
    if (use->second.users == 0) {
        displays.uses.erase(use);
    }
    displays.turnHasEnded.notify_all();
}

void DisplayTurn::AddUser() const {
    UsedDisplays& displays = AllUsed();
    const MutexLock lock(displays.mutex);
    ++displays.uses[display].users;
}

bool DisplayTurn::RemoveUser() const {
    UsedDisplays& displays = AllUsed();
    const MutexLock lock(displays.mutex);
    return --displays.uses[display].users == 0;
}

}  // namespace kivgles
