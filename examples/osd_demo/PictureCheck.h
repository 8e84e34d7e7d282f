#ifndef EXAMPLES_OSD_DEMO_PICTURECHECK_H
#define EXAMPLES_OSD_DEMO_PICTURECHECK_H

#include <optional>
#include <string>
#include <vector>

#include "Image.h"

namespace examples::osd_demo {

// An area whose look is known: all in one colour, or with letters in a colour other than `color`.
struct KnownArea {
    const char* name;
    Rect rect;
    Color color;
    bool letters;
};

// Compares the picture of a window with what was drawn: the areas, of a panel of `panelWidth` pixels, are
// looked up where `panel` shows them. Describes the first difference; nothing if there is none.
std::optional<std::string> FindDifference(const Image& picture, const Rect& panel, std::uint32_t panelWidth,
                                          const std::vector<KnownArea>& areas);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PICTURECHECK_H
