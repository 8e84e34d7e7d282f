// The kit: it finds out by itself what has changed, and how to show it.

#include <kivgles/kit/Screen.h>

#include "Contestant.h"
#include "KitPainter.h"

namespace bench {

const char* const CONTESTANT_NAME = "kit";

namespace {

kivgles::kit::Screen screen;
kivgles::kit::Canvas canvas({WINDOW_WIDTH, WINDOW_HEIGHT});

}  // namespace

unsigned long Start(unsigned long window, int, int) {
    screen.Connect(reinterpret_cast<ANativeWindow*>(window));
    return window;
}

void Show(const Picture& picture) {
    Paint(canvas, picture);
    screen.Present(canvas);
    screen.Finish();
}

}  // namespace bench
