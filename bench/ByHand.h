#ifndef KIVGLES_BENCH_BYHAND_H
#define KIVGLES_BENCH_BYHAND_H

#include <functional>
#include <string>

#include <kivgles/KivGLDrawSurface.h>

#include "Contestant.h"

namespace bench {

inline void Check(int result) {
    if (result != 0) {
        Fail("result " + std::to_string(result));
    }
}

// Paints a picture by the library's own operations as the kit's example of that name does, and as cheaply as
// it goes: where everything is has been worked out before, so that a frame is nothing but requests. The font
// is loaded.
std::function<void()> MakePictureByHand(Picture picture, kivgles::KivGLDrawSurface& surface,
                                        unsigned int canvas);

}  // namespace bench

#endif  // KIVGLES_BENCH_BYHAND_H
