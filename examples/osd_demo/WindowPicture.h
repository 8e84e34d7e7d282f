#ifndef EXAMPLES_OSD_DEMO_WINDOWPICTURE_H
#define EXAMPLES_OSD_DEMO_WINDOWPICTURE_H

#include "Image.h"

namespace examples::osd_demo {

// What the X server holds of a window, asked for over a connection of its own. The draw thread must have done
// its work before. Throws std::runtime_error when the server does not give it.
Image ReadWindow(const ANativeWindow* window);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_WINDOWPICTURE_H
