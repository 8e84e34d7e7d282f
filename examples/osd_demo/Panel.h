#ifndef EXAMPLES_OSD_DEMO_PANEL_H
#define EXAMPLES_OSD_DEMO_PANEL_H

#include <vector>

#include "DemoOptions.h"
#include "PictureCheck.h"
#include "common/Image.h"
#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"

namespace examples::osd_demo {

// A passenger information panel: header, two cards and the journey's progress.
//
// Wants a screen with a window; all three arguments must outlive it. Operations throw kivgles::kit::Error.
class Panel {
 public:
    Panel(kivgles::kit::Screen& panelScreen, const DemoOptions& demoOptions, const Image& logoImage);

    // The logo alone.
    void ShowLogo();

    // Draws all but the progress bar, from two threads.
    void Compose();

    // Draws the progress bar at `permille` of the whole journey, and shows the panel.
    void ShowFrame(int permille);

    // How far the journey has got when the bar has filled.
    static constexpr int JOURNEY_DONE = 440;

    // Where the panel is on the window: as large as fits, in its own proportions, centred.
    kivgles::kit::Rect PlaceOnWindow() const;

    // What the last frame, of JOURNEY_DONE, must look like, in pixels of the panel.
    std::vector<KnownArea> KnownAreas() const;

 private:
    void DrawLogo(const kivgles::kit::Layer& backdrop);
    void DrawProgress(int permille);
    void WriteTexts();
    void WriteUsersTexts(bool cjk);

    kivgles::kit::Screen& screen;
    const DemoOptions& options;
    const Image& logo;
    kivgles::kit::Layer frame;   // of the window's size: what is presented
    kivgles::kit::Layer canvas;  // the panel in its own pixels
    kivgles::kit::Layer bar;
};

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANEL_H
