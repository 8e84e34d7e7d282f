#include "Picture.h"

#include <cmath>

#include "Contestant.h"

namespace bench {

namespace {

constexpr Color WHITE{240, 244, 250, 255}, GREY{150, 170, 200, 255}, NIGHT{14, 22, 38, 255},
    CARD{27, 41, 64, 255}, AMBER{255, 190, 84, 255}, RED{196, 56, 62, 255}, GREEN{30, 128, 88, 255},
    BLUE{40, 100, 186, 255};
constexpr Box WHOLE{0, 0, WINDOW_WIDTH, WINDOW_HEIGHT}, CLOCK{980, 20, 256, 80};
constexpr double PI = 3.14159265358979323846;

struct Departure {
    const char *time, *train, *destination, *via, *platform, *remark;
    Color color;
};

constexpr Departure DEPARTURES[] = {
    {"14:31", "ICE 71", "Köln-Mülheim", "Göttingen – Düren", "3", "", RED},
    {"14:38", "S 11", "Flughafen Süd", "Grünau – Lärchenweg – Öhringen", "11", "+5 min", GREEN},
    {"14:44", "EC 218", "Łódź Fabryczna", "Kraków", "7", "", RED},
    {"14:52", "RE 4", "Αθήνα Λαρίσης", "Skopje – Θεσσαλονίκη", "1", "+10 min", BLUE},
    {"15:05", "K 27", "北京西", "Beijing West", "21", "准点", RED},
    {"15:11", "S 2", "Besançon-Viotte", "Genève – Neuchâtel", "10", "cancelled", GREEN},
    {"15:20", "N 700", "東京", "Tōkyō, のりかえ 名古屋", "14", "", BLUE},
    {"15:34", "KTX 9", "서울", "Seoul", "2", "", RED}};

std::vector<Mark> Clock(const std::string& time) {
    return {Ground{CLOCK, NIGHT}, Label{{980, 20, 256, 64}, time, 54, false, Side::RIGHT, AMBER}};
}

// A minute of it, a second each.
std::vector<Picture> Clocks() {
    std::vector<Picture> clocks;
    for (int second = 100; second < 160; ++second) {
        clocks.push_back({Clock("14:26:" + std::to_string(second).substr(1)), CLOCK});
    }
    return clocks;
}

std::vector<Mark> Board() {
    std::vector<Mark> marks{
        Ground{WHOLE, NIGHT}, Label{{44, 20, 400, 64}, "Departures", 54, true, Side::LEFT, WHITE},
        Label{{444, 20, 520, 64}, "Abfahrt · Départs · 出发 · 出発 · 출발", 24, false, Side::LEFT, GREY}};
    int y = 120;
    for (const Departure& row : DEPARTURES) {
        const Mark painted[] = {Card{{24, y, 1232, 60}, 10, CARD},
                                Card{{172, y + 12, 112, 36}, 8, row.color},
                                Label{{44, y, 110, 41}, row.time, 34, false, Side::LEFT, WHITE},
                                Label{{172, y, 112, 39}, row.train, 24, true, Side::CENTER, WHITE},
                                Label{{308, y, 290, 41}, row.destination, 34, false, Side::LEFT, WHITE},
                                Label{{600, y, 300, 41}, row.via, 24, false, Side::LEFT, GREY},
                                Label{{900, y, 90, 41}, row.platform, 34, false, Side::RIGHT, WHITE},
                                Label{{1010, y, 226, 41}, row.remark, 24, false, Side::RIGHT, AMBER}};
        marks.insert(marks.end(), std::begin(painted), std::end(painted));
        y += 72;
    }
    for (Mark& mark : Clock("14:26:58")) {
        marks.push_back(std::move(mark));
    }
    return marks;
}

struct Gauge {
    int x, value, greatest;
    const char* name;
    Color color;
};

constexpr Gauge GAUGES[] = {{24, 127, 250, "Speed in km/h", {72, 202, 192, 255}},
                            {432, 62, 150, "Power in kW", {255, 186, 84, 255}},
                            {840, 84, 100, "Battery in %", {112, 204, 108, 255}}};

void AddGauge(std::vector<Mark>& marks, const Gauge& gauge) {
    constexpr double START = 135, SWEEP = 270;  // degrees, of the scale
    const Place center{gauge.x + 192.0, 224};
    const auto on = [&](double share, double radius) {
        const double angle = (START + SWEEP * share) * PI / 180;
        return Place{center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
    };
    const double share = static_cast<double>(gauge.value) / gauge.greatest;
    marks.emplace_back(Card{{gauge.x, 24, 384, 384}, 24, CARD});
    marks.emplace_back(Arc{center, 164, 14, START, SWEEP, {52, 70, 102, 255}});
    marks.emplace_back(Arc{center, 164, 14, START, SWEEP * share, gauge.color});
    for (int part = 0; part <= 10; ++part) {
        const auto [x, y] = on(part / 10.0, 112);
        marks.emplace_back(Stroke{{on(part / 10.0, 134), on(part / 10.0, 141)}, 3, GREY});
        marks.emplace_back(Label{{static_cast<int>(x) - 30, static_cast<int>(y) - 8, 60, 14},
                                 std::to_string(gauge.greatest * part / 10),
                                 18,
                                 false,
                                 Side::CENTER,
                                 GREY});
    }
    marks.emplace_back(Stroke{{center, on(share, 86)}, 8, WHITE});
    const Box number{gauge.x + 92, 292, 200, 51};
    marks.emplace_back(Label{number, std::to_string(gauge.value), 52, false, Side::CENTER, WHITE});
    marks.emplace_back(Label{{gauge.x + 92, 360, 200, 23}, gauge.name, 22, false, Side::CENTER, GREY});
}

std::vector<Mark> Dashboard() {
    std::vector<Mark> marks{Ground{WHOLE, NIGHT}};
    for (const Gauge& gauge : GAUGES) {
        AddGauge(marks, gauge);
    }
    return marks;
}

std::vector<Mark> Chart() {
    constexpr Box AXES{100, 30, 1060, 620};
    constexpr Color LINES[] = {{255, 120, 96, 255}, AMBER, {112, 204, 140, 255}, {104, 170, 255, 255}};
    std::vector<Mark> marks{Ground{WHOLE, NIGHT}};
    for (int part = 0; part <= 5; ++part) {
        const int x = AXES.x + AXES.width * part / 5;
        const int y = AXES.y + AXES.height * (5 - part) / 5;
        marks.emplace_back(Card{{AXES.x, y, AXES.width, 1}, 0, {255, 255, 255, 40}});
        marks.emplace_back(Card{{x, AXES.y, 1, AXES.height}, 0, {255, 255, 255, 40}});
        marks.emplace_back(
            Label{{40, y - 15, 48, 22}, std::to_string(20 * part), 20, false, Side::RIGHT, GREY});
        marks.emplace_back(
            Label{{x - 50, 660, 100, 22}, std::to_string(5 * part), 20, false, Side::CENTER, GREY});
    }
    for (int line = 0; line < 4; ++line) {
        std::vector<Place> points;
        for (int i = 0; i < 500; ++i) {
            const double time = i / (20.0 + 17 * line);
            const double share = 0.2 + 0.2 * line + 0.07 * std::sin(time) + 0.015 * std::sin(7 * time);
            points.push_back({AXES.x + AXES.width * i / 499.0, AXES.y + AXES.height * (1 - share)});
        }
        marks.emplace_back(Stroke{std::move(points), 2.5, LINES[line]});
    }
    return marks;
}

// 60 of 20 characters, in three columns.
std::vector<Mark> Labels() {
    std::vector<Mark> marks{Ground{WHOLE, NIGHT}};
    for (int i = 0; i < 60; ++i) {
        const std::string text = "Sensor " + std::to_string(10 + i) + ": 21.5 degrees";
        marks.emplace_back(Label{
            {20 + i % 3 * 420, 6 + i / 3 * 35, 400, 28}, text.substr(0, 20), 22, false, Side::LEFT, WHITE});
    }
    return marks;
}

}  // namespace

Pictures MakePictures(const std::string& kind) {
    const Picture ground{{Ground{WHOLE, NIGHT}}, WHOLE};
    if (kind == "board") {
        return {{{Board(), WHOLE}}, ground, {}};
    }
    if (kind == "clock") {
        return {Clocks(), {}, {Board(), WHOLE}};
    }
    if (kind == "dashboard") {
        return {{{Dashboard(), WHOLE}}, ground, {}};
    }
    if (kind == "chart") {
        return {{{Chart(), WHOLE}}, ground, {}};
    }
    if (kind == "labels") {
        return {{{Labels(), WHOLE}}, ground, {}};
    }
    Fail("draws no " + kind);
}

Frames MakeFrames(const Workload& workload) {
    Pictures pictures = MakePictures(workload.kind);
    Show(pictures.before);
    return {[full = std::move(pictures.full), next = std::size_t{0}]() mutable {
                Show(full[next++ % full.size()]);
            },
            [empty = std::move(pictures.empty)] { Show(empty); }};
}

void LoadFont(const std::string&) { Fail("takes the system's fonts"); }

}  // namespace bench
