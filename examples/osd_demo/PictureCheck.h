#ifndef EXAMPLES_OSD_DEMO_PICTURECHECK_H
#define EXAMPLES_OSD_DEMO_PICTURECHECK_H

#include <optional>
#include <string>
#include <vector>

#include "common/Image.h"
#include "kivgles/kit/Geometry.h"

namespace examples::osd_demo {

// An area whose look is known: all in one colour, or with letters in a colour other than `color`.
struct KnownArea {
    const char* name;
    kivgles::kit::Rect rect;
    kivgles::kit::Color color;
    bool letters;
};

// Compares the picture of a window with what was drawn: the areas, of a panel of `panelWidth` pixels, are
// looked up where `panel` shows them. Describes the first difference; nothing if there is none.
std::optional<std::string> FindDifference(const Image& picture, const kivgles::kit::Rect& panel,
                                          int panelWidth, const std::vector<KnownArea>& areas);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PICTURECHECK_H
