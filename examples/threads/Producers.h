#ifndef EXAMPLES_THREADS_PRODUCERS_H
#define EXAMPLES_THREADS_PRODUCERS_H

#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"

// The display's three producers. Each runs on a thread of its own, at a pace of its own, and returns when it
// has drawn `frames` times; what it drew last depends on that number alone. They throw kivgles::kit::Error.
//
// A producer draws on a sheet that nobody else knows, and puts it on the canvas by one copy. So whoever
// displays the canvas never finds a half-drawn sheet there, and no thread needs a lock.

namespace examples::threads {

constexpr kivgles::kit::Size CANVAS_SIZE = {960, 240};

// The time of day, a second later with each frame.
void RunClock(kivgles::kit::Screen& screen, kivgles::kit::Layer& canvas, int frames);

// A line of news that moves to the left.
void RunTicker(kivgles::kit::Screen& screen, kivgles::kit::Layer& canvas, int frames);

// The level of a sound that swells and fades.
void RunLevelMeter(kivgles::kit::Screen& screen, kivgles::kit::Layer& canvas, int frames);

}  // namespace examples::threads

#endif  // EXAMPLES_THREADS_PRODUCERS_H
