// overlay [SECOND]: a player's overlay on its film, which stands still at SECOND. Resize the window, or close
// it: the overlay is there again. q ends.

#include <optional>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

constexpr Color WHITE{240, 244, 250}, AMBER{255, 186, 84};

Canvas PaintFilm(int width, int height, int second) {
    Canvas film({width, height});
    film.Clear(Fill::Gradient({0, 0}, {34, 44, 92}, {0, height}, {255, 190, 120}));
    film.Disc({width * 0.64, height * (0.35 + second % 2631 / 3500.0)}, height * 0.11, {255, 238, 204});
    film.Disc({width * 0.20, height * 2.05}, height * 1.44, {122, 72, 104});
    film.Disc({width * 0.86, height * 1.98}, height * 1.30, {84, 54, 92});
    return film;
}

Canvas PaintOverlay(int width, int height, int second) {
    const int y = height - 40, length = width - 80, watched = length * (second % 2631) / 2631;
    const Text text = Text(22, WHITE).Aligned(VerticalAlign::BASELINE);
    const Fill shade = Fill::Gradient({0, height - 200}, {0, 0, 0, 0}, {0, height}, {0, 0, 0, 200});
    Canvas overlay({width, height});
    overlay.Clear({0, height - 200, width, 200}, shade);
    text.Sized(40).Bold().Draw(overlay, "Sommer in Åsgård", {40, y - 106, length, 50});
    text.Draw(overlay, "Folge 3: Über die Hügel zurück nach Süden", {40, y - 56, length - 180, 32});
    text.Tabular().Right().Draw(overlay, std::to_string(second / 60) + " / 44 min", {40, y - 56, length, 32});
    overlay.RoundedRectangle({40, y - 4, length, 8}, 4, {255, 255, 255, 90});
    overlay.RoundedRectangle({40, y - 4, watched, 8}, 4, AMBER);
    overlay.Disc({40 + watched, y}, 11, WHITE);
    return overlay;
}

struct Player {
    Player() : window({"overlay", {800, 450}}), screen(window.Display()) {
        screen.Connect(window.Native());
        screen.OnReconnect([this] { picture.emplace(screen, screen.Size()); });
        picture.emplace(screen, screen.Size());
    }
    void Show(int second) {
        const auto [width, height] = screen.Size();
        picture->Draw(PaintFilm(width, height, second), 0, 0);
        picture->Blend(PaintOverlay(width, height, second), 0, 0);
        screen.Present(*picture);
    }
    Window window;
    Screen screen;                 // ends before its window
    std::optional<Layer> picture;  // as large as the window is now
};

int main(int argc, char** argv) {
    std::optional<Player> player(std::in_place);
    Event event;
    for (int second = argc > 1 ? std::stoi(argv[1]) : 0; event.key != "q"; second += 2 - argc) {
        player->Show(second);
        event = player->window.Wait(std::chrono::seconds(1));
        if (event.type == Event::CLOSED) {
            player.emplace();
        } else if (event.type == Event::RESIZED) {
            player->screen.Reconnect(player->window.Native());
        }
    }
}
