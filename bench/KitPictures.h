#ifndef KIVGLES_BENCH_KITPICTURES_H
#define KIVGLES_BENCH_KITPICTURES_H

#include <functional>

#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>

namespace bench {

// What paints a frame of the example into a layer of 1280 by 720 pixels. What stays is painted at once. The
// font is loaded.
std::function<void(kivgles::kit::Layer&)> MakeBoard(kivgles::kit::Screen& screen);
std::function<void(kivgles::kit::Layer&)> MakeDashboard(kivgles::kit::Screen& screen);

}  // namespace bench

#endif  // KIVGLES_BENCH_KITPICTURES_H
