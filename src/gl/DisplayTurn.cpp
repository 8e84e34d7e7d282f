#include "gl/DisplayTurn.h"

#include <condition_variable>
#include <map>

#include "MutexLock.h"

namespace kivgles {

namespace {

struct DisplayUse {
    unsigned int users = 0;
    unsigned int tickets = 0;  // taken so far, in the order of arrival; both numbers may overflow
    unsigned int served = 0;
};

// The displays that somebody uses or waits for.
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
    DisplayUse& use = displays.uses[display];  // stays while there is a ticket to be served
    const unsigned int ticket = use.tickets++;
    while (use.served != ticket) {
        lock.WaitFor(displays.turnHasEnded);
    }
}

DisplayTurn::~DisplayTurn() {
    UsedDisplays& displays = AllUsed();
    const MutexLock lock(displays.mutex);
    DisplayUse& use = displays.uses[display];
    ++use.served;
    if (use.users == 0 && use.served == use.tickets) {
        displays.uses.erase(display);
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
