// osd_demo: an information panel on a window, as a client of the library would draw it. Reads the window back
// from the X server, saves the picture and checks it.

#include <chrono>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "Artwork.h"
#include "DemoOptions.h"
#include "Panel.h"
#include "PanelStyle.h"
#include "common/ExampleWindow.h"
#include "common/PngFile.h"

namespace examples::osd_demo {

namespace {

// Saves what the window shows, and throws if that is not the panel's last frame.
void SavePicture(const ExampleWindow& window, const Panel& panel, const std::string& path) {
    const auto differs = [&panel](const Image& picture) {
        return FindDifference(picture, panel.PlaceOnWindow(), PANEL_SIZE.width, panel.KnownAreas());
    };
    Image picture = window.Read();
    auto difference = differs(picture);
    // The screen's frames reach the X server by another connection, so the last may come a moment later.
    for (int wait = 0; difference && wait < 100; ++wait) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        picture = window.Read();
        difference = differs(picture);
    }
    WritePng(path, picture);
    if (difference) {
        throw std::runtime_error(*difference);
    }
}

void Run(const DemoOptions& options) {
    const Image logo = options.logo.empty() ? MakeLogo(4 * LOGO_BOX.width) : ReadPng(options.logo);
    const ExampleWindow window({options.width, options.height}, options.title);

    kivgles::kit::Screen screen;
    screen.Connect(window.Native());
    Panel panel(screen, options, logo);
    panel.ShowLogo();
    panel.Compose();
    for (int frame = 1; frame <= options.frames; ++frame) {
        panel.ShowFrame(Panel::JOURNEY_DONE * frame / options.frames);
    }
    screen.Finish();

    SavePicture(window, panel, options.output);
    std::cout << "osd_demo: " << options.frames << " frames shown, the window's picture is in "
              << options.output << '\n';
    std::this_thread::sleep_for(std::chrono::seconds(options.hold));
}

}  // namespace

}  // namespace examples::osd_demo

int main(int argc, char** argv) {
    int exitCode = 0;
    const auto options = examples::osd_demo::ParseOptions(argc, argv, exitCode);
    if (!options) {
        return exitCode;
    }
    try {
        examples::osd_demo::Run(*options);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "osd_demo: " << error.what() << '\n';
        return 1;
    }
}
