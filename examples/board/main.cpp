// board: a departure board, painted anew with each second of its clock.

#include <chrono>
#include <cstdio>
#include <thread>

#include <kivgles/kit/Layer.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>

#include "common/ExampleWindow.h"

using namespace kivgles::kit;

struct Departure {
    const char *time, *train, *destination, *via, *platform, *remark;
    Color color;
};

constexpr Color WHITE{240, 244, 250}, GREY{150, 170, 200}, AMBER{255, 190, 84};
constexpr Color RED{196, 56, 62}, GREEN{30, 128, 88}, BLUE{40, 100, 186};
constexpr Departure HEADINGS{"Time", "Train", "To", "", "Platform", "Remarks", GREY};
constexpr Departure DEPARTURES[] = {
    {"14:31", "ICE 71", "Köln-Mülheim", "Göttingen – Düren", "3", "", RED},
    {"14:38", "S 11", "Flughafen Süd", "Grünau – Lärchenweg – Öhringen – Schönefeld", "11", "+5 min", GREEN},
    {"14:44", "EC 218", "Łódź Fabryczna", "Kraków", "7", "", RED},
    {"14:52", "RE 4", "Århus H", "Malmö – København", "1", "+10 min", BLUE},
    {"15:05", "K 27", "北京西", "Beijing West", "21", "准点", RED},
    {"15:11", "S 2", "Besançon-Viotte", "Genève – Neuchâtel", "10", "cancelled", GREEN},
    {"15:20", "N 700", "東京", "Tōkyō, のりかえ 名古屋", "14", "", BLUE},
    {"15:34", "KTX 9", "서울", "Seoul", "2", "", RED}};
constexpr int TOP = 152, PITCH = 60;  // of the rows

// What stays, for a layer of factor 2: edges are smooth when it is copied.
void PaintShapes(Layer& layer) {
    layer.Clear({14, 22, 38});
    layer.RoundedRectangle({24, 650, 1232, 50}, 10, {58, 44, 20});
    for (int row = 0; row < 8; ++row) {
        layer.RoundedRectangle({24, TOP + PITCH * row, 1232, 56}, 10, {27, 41, 64});
        layer.RoundedRectangle({172, TOP + PITCH * row + 12, 112, 36}, 8, DEPARTURES[row].color);
    }
}

// Large and small texts stand on one baseline, 40 pixels below `y`.
void WriteRow(Layer& layer, int y, const Departure& departure, const Text& large, const Text& small) {
    large.Tabular().Draw(layer, departure.time, {44, y, 110, 40});
    small.Bold().Center().Draw(layer, departure.train, {172, y, 112, 40});
    const int via = 326 + large.Draw(layer, departure.destination, {308, y, 420, 40}).width;
    small.Colored(GREY).Draw(layer, departure.via, {via, y, 860 - via, 40});
    large.Tabular().Right().Draw(layer, departure.platform, {880, y, 110, 40});
    small.Colored(AMBER).Right().Draw(layer, departure.remark, {1010, y, 226, 40});
}

// Over a copy of the shapes. `time` is in seconds since midnight.
void WriteTexts(Layer& layer, int time) {
    char clock[16];
    (void)std::snprintf(clock, sizeof(clock), "%02d:%02d:%02d", time / 3600, time / 60 % 60, time % 60);
    const Text text = Text(34, WHITE).Aligned(VerticalAlign::BASELINE), small = text.Sized(24);
    text.Sized(54).Bold().Draw(layer, "Departures", {44, 20, 320, 64});
    small.Colored(GREY).Draw(layer, "Abfahrt · Départs · 出发 · 出発 · 출발", {346, 20, 560, 64});
    text.Sized(54).Colored(AMBER).Tabular().Right().Draw(layer, clock, {936, 20, 300, 64});
    WriteRow(layer, 98, HEADINGS, small.Colored(GREY), small.Colored(GREY));
    for (int row = 0; row < 8; ++row) {
        WriteRow(layer, TOP + PITCH * row - 1, DEPARTURES[row], text, small);
    }
    small.Colored(AMBER).Draw(layer, "🚲 Fahrräder fahren heute kostenlos mit", {44, 652, 1192, 32});
}

int main() {
    examples::ExampleWindow window(1280, 720, "board");
    Screen screen;
    screen.Connect(window.Native());
    screen.LoadFont("/usr/share/fonts/truetype/wqy/wqy-microhei.ttc");
    Layer shapes(screen, {1280, 720}, 2), board(screen, {1280, 720});
    PaintShapes(shapes);
    for (int second = 0; second < 3; ++second) {
        board.Copy(shapes, 0, 0);
        WriteTexts(board, 14 * 3600 + 26 * 60 + 56 + second);
        screen.Present(board);
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
    window.WaitForEnd();
}
