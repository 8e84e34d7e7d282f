#ifndef EXAMPLES_OSD_DEMO_DEMOOPTIONS_H
#define EXAMPLES_OSD_DEMO_DEMOOPTIONS_H

#include <optional>
#include <string>
#include <vector>

namespace examples::osd_demo {

struct DemoOptions {
    int width = 1280;  // of the window, in pixels
    int height = 720;
    std::string output = "osd.png";
    unsigned int frames = 44;
    unsigned int hold = 0;  // seconds
    std::string font = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    std::string cjkFont;  // empty: none
    std::string logo;     // empty: a logo of the demo's own
    std::string title = "Northern Coast Line";
    std::vector<std::string> lines;  // UTF-8
};

// Nothing when the program is to end with `exitCode`: after --help, and after an error (then on stderr).
std::optional<DemoOptions> ParseOptions(int argc, char** argv, int& exitCode);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_DEMOOPTIONS_H
