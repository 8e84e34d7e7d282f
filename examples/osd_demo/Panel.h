#ifndef EXAMPLES_OSD_DEMO_PANEL_H
#define EXAMPLES_OSD_DEMO_PANEL_H

#include <vector>

#include "DemoOptions.h"
#include "Layer.h"
#include "PictureCheck.h"

namespace examples::osd_demo {

// A passenger information panel: header, two cards and the journey's progress, put together in one layer.
//
// Wants a surface with a context and a connected window; all three arguments must outlive it. Operations
// throw std::runtime_error.
class Panel {
 public:
    Panel(Surface& panelSurface, const DemoOptions& demoOptions, const Image& logoImage);

    // The logo alone, straight from its bitmap.
    void ShowLogo();

    // Draws all but the progress bar, from two threads.
    void Compose();

    // Draws the progress bar at `permille` of the whole journey, and shows the panel. Returns when the frame
    // has been handed to the window.
    void ShowFrame(unsigned int permille);

    // How far the journey has got when the bar has filled.
    static constexpr unsigned int JOURNEY_DONE = 440;

    // Where the panel is on the window: as large as fits, in its own proportions, centred.
    Rect PlaceOnWindow() const;

    // What the last frame, of JOURNEY_DONE, must look like, in pixels of the panel.
    std::vector<KnownArea> KnownAreas() const;

 private:
    void DrawLogo(const Layer& backdrop);
    void DrawProgress(unsigned int permille);
    void LoadFont(const std::string& path);
    void WriteTexts();
    void WriteUsersTexts(bool cjk);
    void Refresh();

    Surface& surface;
    const DemoOptions& options;
    const Image& logo;
    Layer canvas;  // the panel in its own pixels
    Layer bar;
};

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANEL_H
