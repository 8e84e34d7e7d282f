// board [TIME]: a departure board. Painted once; what changes is its clock, which stands still at TIME.

#include <ctime>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

struct Departure {
    const char *time, *train, *destination, *via, *platform, *remark;
    Color color;
};

constexpr Color WHITE{240, 244, 250}, GREY{150, 170, 200}, AMBER{255, 190, 84}, NIGHT{14, 22, 38},
    RED{196, 56, 62}, GREEN{30, 128, 88}, BLUE{40, 100, 186};
constexpr Departure DEPARTURES[] = {
    {"14:31", "ICE 71", "Köln-Mülheim", "Göttingen – Düren", "3", "", RED},
    {"14:38", "S 11", "Flughafen Süd", "Grünau – Lärchenweg – Öhringen – Schönefeld", "11", "+5 min", GREEN},
    {"14:44", "EC 218", "Łódź Fabryczna", "Kraków", "7", "", RED},
    {"14:52", "RE 4", "Αθήνα Λαρίσης", "Skopje – Θεσσαλονίκη", "1", "+10 min", BLUE},
    {"15:05", "K 27", "北京西", "Beijing West", "21", "准点", RED},
    {"15:11", "S 2", "חיפה מרכז", "Tel Aviv – Binyamina", "10", "cancelled", GREEN},
    {"15:20", "N 700", "東京", "Tōkyō, のりかえ 名古屋", "14", "", BLUE},
    {"15:34", "KTX 9", "서울", "Seoul", "2", "🚲 free", RED}};
const Text LARGE = Text(34, WHITE).Aligned(VerticalAlign::BASELINE), SMALL = LARGE.Sized(24);

void PaintBoard(Canvas& board) {
    board.Clear(NIGHT);
    LARGE.Sized(54).Bold().Draw(board, "Departures", {44, 20, 400, 64});
    SMALL.Colored(GREY).Draw(board, "Abfahrt · Départs · 出发 · 出発 · 출발", {444, 20, 520, 64});
    int y = 120;
    for (const Departure& departure : DEPARTURES) {
        board.RoundedRectangle({24, y, 1232, 60}, 10, {27, 41, 64});
        board.RoundedRectangle({172, y + 12, 112, 36}, 8, departure.color);
        LARGE.Tabular().Draw(board, departure.time, {44, y, 110, 41});
        SMALL.Bold().Center().Draw(board, departure.train, {172, y, 112, 39});
        const int via = 326 + LARGE.Draw(board, departure.destination, {308, y, 420, 41}).width;
        SMALL.Colored(GREY).Draw(board, departure.via, {via, y, 880 - via, 41});
        LARGE.Tabular().Right().Draw(board, departure.platform, {900, y, 90, 41});
        SMALL.Colored(AMBER).Right().Draw(board, departure.remark, {1010, y, 226, 41});
        y += 72;
    }
}

void PaintClock(Canvas& board, const char* fixed) {
    const std::time_t now = std::time(nullptr);
    char time[16] = "";
    (void)std::strftime(time, sizeof(time), "%H:%M:%S", std::localtime(&now));  // always fits
    board.Clear({980, 20, 256, 80}, NIGHT);
    LARGE.Sized(54).Colored(AMBER).Tabular().Right().Draw(board, fixed ? fixed : time, {980, 20, 256, 64});
}

int main(int argc, char** argv) {
    Window window({"board", {1280, 720}});
    Screen screen(window.Display());
    screen.Connect(window.Native());
    Canvas board({1280, 720});
    PaintBoard(board);
    for (Event event; event.type != Event::CLOSED; event = window.Wait(std::chrono::milliseconds(250))) {
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());
        }
        PaintClock(board, argc > 1 ? argv[1] : nullptr);
        screen.Present(board);
    }
}
