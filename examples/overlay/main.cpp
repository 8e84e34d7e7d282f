// overlay: a player's overlay on its film. Resize the window, or close it: the overlay is there again.
//
// overlay [rehearse]: with it the window is resized, and then gone, without your doing.

#include <cstdint>
#include <memory>

#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>

#include "common/ExampleWindow.h"

using namespace kivgles::kit;
using examples::ExampleWindow;

constexpr Color WHITE{240, 244, 250}, GREY{160, 160, 170}, AMBER{255, 186, 84};

// Stands in for the film: a sky of three colours, which GL mixes, the sun and hills.
void PaintFilm(Layer& layer, int width, int height) {
    constexpr std::uint8_t SKY[] = {34, 44, 92, 255, 196, 96, 104, 255, 255, 190, 120, 255};
    layer.Draw({SKY, {1, 3}}, {0, 0, width, height});
    layer.Disc({width * 0.64, height * 0.56}, height * 0.11, {255, 238, 204});
    layer.Disc({width * 0.20, height * 2.05}, height * 1.44, {122, 72, 104});
    layer.Disc({width * 0.86, height * 1.98}, height * 1.30, {84, 54, 92});
}

void PaintOverlay(Layer& layer, int width, int height) {
    constexpr std::uint8_t SHADE[] = {0, 0, 0, 0, 0, 0, 0, 200};  // white is read on whatever is below
    layer.Blend({SHADE, {1, 2}}, {0, height - 200, width, 200});
    const int y = height - 40, length = width - 80, watched = length * 724 / 2631;
    const Text text = Text(22, WHITE).Aligned(VerticalAlign::BASELINE);
    text.Sized(40).Bold().Draw(layer, "Sommer in Åsgård", {40, y - 106, length, 50});
    text.Draw(layer, "Folge 3: Über die Hügel zurück nach Süden", {40, y - 56, length - 180, 32});
    text.Tabular().Right().Draw(layer, "12:04 / 43:51", {40, y - 56, length, 32});
    layer.RoundedRectangle({40, y - 4, length, 8}, 4, GREY);
    layer.RoundedRectangle({40, y - 4, watched, 8}, 4, AMBER);
    layer.Disc({40.0 + watched, 1.0 * y}, 11, WHITE);
    layer.Ring({width - 80.0, 80}, 40, 8, GREY);
    layer.Arc({width - 80.0, 80}, 40, 8, -90, 250, AMBER);
    text.Aligned(VerticalAlign::MIDDLE).Center().Draw(layer, "69", {width - 120, 40, 80, 80});
}

int main(int argc, char**) {
    auto window = std::make_unique<ExampleWindow>(800, 450, "overlay");
    Screen screen;
    screen.Connect(window->Native());
    screen.LoadFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    std::unique_ptr<Layer> layer;
    const auto paint = [&] {
        const auto [width, height] = screen.Size();
        const bool fits = width <= Screen::MAX_LAYER_SIDE / 2 && height <= Screen::MAX_LAYER_SIDE / 2;
        layer = std::make_unique<Layer>(screen, Size{width, height}, fits ? 2 : 1);  // 2 for smooth edges
        PaintFilm(*layer, width, height);
        PaintOverlay(*layer, width, height);
        screen.Present(*layer);
    };
    screen.OnReconnect(paint);
    paint();
    if (argc > 1) {
        window->Resize(1280, 720);
    }
    for (auto event = window->Wait(); event != ExampleWindow::Event::ENTER; event = window->Wait()) {
        if (event == ExampleWindow::Event::LOST) {
            window = std::make_unique<ExampleWindow>(960, 540, "overlay");
        }
        screen.Reconnect(window->Native());
        if (argc > 1 && event == ExampleWindow::Event::RESIZED) {
            window->Destroy();
        }
    }
}
