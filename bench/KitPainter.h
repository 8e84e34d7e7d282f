#ifndef KIVGLES_BENCH_KITPAINTER_H
#define KIVGLES_BENCH_KITPAINTER_H

#include <kivgles/kit/Canvas.h>

#include "Picture.h"

namespace bench {

// Paints a picture with the kit.
void Paint(kivgles::kit::Canvas& canvas, const Picture& picture);

}  // namespace bench

#endif  // KIVGLES_BENCH_KITPAINTER_H
