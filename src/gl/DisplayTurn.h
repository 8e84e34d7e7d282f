#ifndef KIVGLES_GL_DISPLAYTURN_H
#define KIVGLES_GL_DISPLAYTURN_H

#include <EGL/egl.h>

namespace kivgles {

// A turn at an EGL display, for what its users in the process must not do at once: start and end its use, and
// draw, where the driver of GL needs it.
//
// EGL does not count who has initialised a display: one eglTerminate ends it for all. So its users are
// counted here, and the last one terminates.
//
// While a turn lives, others of the same display wait for theirs, first come, first served. Those of other
// displays do not: no lock is held during a turn, in which EGL may take its time, or for ever (an X server
// that was stopped).
//
// Owner:  the function that makes it. No two turns at one display on one thread.
// Thread: any; a turn ends on the thread that took it. The count is never destroyed: draw threads may outlive
//         main.
class DisplayTurn {
 public:
    // Waits for the turn.
    explicit DisplayTurn(EGLDisplay display);
    // Hands it on.
    ~DisplayTurn();

    DisplayTurn(const DisplayTurn&) = delete;
    DisplayTurn& operator=(const DisplayTurn&) = delete;

    // One more uses the display, from before EGL initialises it, well or badly.
    void AddUser() const;
    // One of them does no more. Returns whether it was the last one.
    bool RemoveUser() const;

 private:
    EGLDisplay display;
};

}  // namespace kivgles

#endif  // KIVGLES_GL_DISPLAYTURN_H
