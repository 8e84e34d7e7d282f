#ifndef KIVGLES_BENCH_CONTESTANT_H
#define KIVGLES_BENCH_CONTESTANT_H

#include <functional>
#include <string>

#include "Scene.h"

// What each contestant defines, in a program of its own with Harness.cpp. All is called from the main thread.
// A contestant that cannot go on, or does not draw what it is asked for, calls Fail.

namespace bench {

extern const char* const CONTESTANT_NAME;

// Makes the layer. Returns the X11 window it will be shown on: the given one, or one of its own of that size.
unsigned long Start(unsigned long window, int layerWidth, int layerHeight);

// Makes a font usable at STANDARD_SIZE, in place of any loaded before.
void LoadFont(const std::string& path);

// What is measured, drawn at each call: a frame, and the one whose cost is taken off or compared with. They
// return when the work is done, not only asked for. Scene.cpp makes them of a scene, Picture.cpp of a
// picture.
struct Frames {
    std::function<void()> full, empty;
};
Frames MakeFrames(const Workload& workload);

// For scenes. A frame: the layer is cleared, items are drawn into it, all of it is shown on all of the
// window. EndFrame shows it and waits.
void BeginFrame();
void Draw(const Rect& rect);
void Draw(const Round& round);
void Draw(const Bitmap& bitmap);
void Draw(const Line& line);
void EndFrame();

// Ends the program with a line that says why.
[[noreturn]] void Fail(const std::string& reason);

}  // namespace bench

#endif  // KIVGLES_BENCH_CONTESTANT_H
