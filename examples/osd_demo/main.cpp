// osd_demo: an information panel on a window, as a client of the core draws it: layers, rectangles, rounds,
// bitmaps, texts in two fonts, copies. Reads the window back from the X server, saves the picture and checks
// it.

#include <chrono>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "Artwork.h"
#include "DemoOptions.h"
#include "Panel.h"
#include "PanelStyle.h"
#include "PngFile.h"
#include "WindowPicture.h"
#include "kivgles/window/Window.h"

namespace examples::osd_demo {

namespace {

namespace window = kivgles::window;

void Connect(Surface& surface, const window::Window& window) {
    Check(surface.KivCreateGLContextOn(window.Display()), "creating the GL context");
    Check(surface.KivConnectWindowSurface(window.Native()), "connecting the window");
    Check(surface.Init(kivgles::ENABLE_TEXT | kivgles::ENABLE_BLIT | kivgles::ENABLE_BITMAP |
                       kivgles::ENABLE_RECT | kivgles::ENABLE_ROUND),
          "creating the renderers");
}

// Saves what the window shows, and throws if that is not the panel's last frame.
void SavePicture(const ANativeWindow* window, const Panel& panel, const std::string& path) {
    const auto differs = [&panel](const Image& picture) {
        return FindDifference(picture, panel.PlaceOnWindow(), PANEL_WIDTH, panel.KnownAreas());
    };
    Image picture = ReadWindow(window);
    auto difference = differs(picture);
    // The library's frames reach the X server by another connection, so the last may come a moment later.
    for (int wait = 0; difference && wait < 100; ++wait) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        picture = ReadWindow(window);
        difference = differs(picture);
    }
    WritePng(path, picture);
    if (difference) {
        throw std::runtime_error(*difference);
    }
}

void Run(const DemoOptions& options) {
    const Image logo = options.logo.empty() ? MakeLogo(4 * LOGO_BOX.width) : ReadPng(options.logo);
    window::WindowOptions wanted{options.title, {options.width, options.height}};
    wanted.system = window::System::X11;  // whose server gives the window's picture
    const window::Window window(wanted);

    Surface surface;
    Connect(surface, window);
    Panel panel(surface, options, logo);
    panel.ShowLogo();
    panel.Compose();
    for (unsigned int frame = 1; frame <= options.frames; ++frame) {
        panel.ShowFrame(Panel::JOURNEY_DONE * frame / options.frames);
    }

    SavePicture(window.Native(), panel, options.output);
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
