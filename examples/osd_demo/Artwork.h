#ifndef EXAMPLES_OSD_DEMO_ARTWORK_H
#define EXAMPLES_OSD_DEMO_ARTWORK_H

#include "Image.h"

namespace examples::osd_demo {

// The panel's background: a dark gradient with a glow. Opaque, smooth enough to be enlarged.
Image MakeBackdrop();

// A sun above the sea in a disc, transparent around it. `side` is its width and height in pixels.
Image MakeLogo(std::uint32_t side);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_ARTWORK_H
