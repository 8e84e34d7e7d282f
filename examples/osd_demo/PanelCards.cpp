#include "PanelCards.h"

#include <array>
#include <cstddef>

#include "PanelStyle.h"

namespace examples::osd_demo {

using kivgles::kit::Layer;

namespace {

struct Stop {
    const char* name;
    const char* time;
};

constexpr std::array<Stop, STOP_NUM> STOPS = {{{"Old Lighthouse", "14:02"},
                                               {"Fish Market", "14:15"},
                                               {"Harbour Bridge", "14:31"},
                                               {"Botanical Garden", "14:44"},
                                               {"Airport", "15:05"}}};

constexpr Rect BADGE = {RIGHT_CARD.x + RIGHT_CARD.width - CARD_PADDING - 112, RIGHT_CARD.y + 20, 112, 32};
constexpr int STOP_BASELINE = 112;  // of the first row, below the card's top edge
constexpr int STOP_PITCH = 64;
constexpr int LINE_BASELINE = 206;
constexpr int LINE_PITCH = 58;

const Stop& StopAt(int index) { return STOPS[static_cast<std::size_t>(index)]; }

}  // namespace

void DrawCard(Layer& layer, const Rect& card) {
    layer.RoundedRectangle(card, CARD_RADIUS, CARD_EDGE);
    layer.RoundedRectangle({card.x + 1, card.y + 1, card.width - 2, card.height - 2}, CARD_RADIUS - 1, CARD);
}

void DrawPip(Layer& layer, int x, int y, int stop) {
    const Color& ring = stop < NEXT_STOP ? TEAL : stop == NEXT_STOP ? AMBER : TRACK;
    const kivgles::kit::Point center = {1.0 * x, 1.0 * y};
    layer.Disc(center, 9, ring);
    layer.Disc(center, 4, stop < NEXT_STOP ? TEAL : CARD);
}

int StopBaseline(int stop) { return RIGHT_CARD.y + STOP_BASELINE + STOP_PITCH * stop; }

void DrawLeftCard(Layer& layer, int lineCount) {
    DrawCard(layer, LEFT_CARD);
    const int x = LEFT_CARD.x + CARD_PADDING;
    layer.Rectangle({x, LEFT_CARD.y + 142, LEFT_CARD.width - 2 * CARD_PADDING, 2}, ROW);
    for (int line = 0; line < lineCount; ++line) {
        layer.Disc({x + 6.0, LEFT_CARD.y + LINE_BASELINE + LINE_PITCH * line - 14.0}, 5, AMBER);
    }
}

void DrawRightCard(Layer& layer) {
    DrawCard(layer, RIGHT_CARD);
    layer.RoundedRectangle(BADGE, 6, TEAL);
    layer.RoundedRectangle({RIGHT_CARD.x + 16, StopBaseline(NEXT_STOP) - 39, RIGHT_CARD.width - 32, 56}, 10,
                           ROW);

    const int x = RIGHT_CARD.x + CARD_PADDING + 10;
    const int first = StopBaseline(0) - 11;
    const int next = StopBaseline(NEXT_STOP) - 11;
    const int last = StopBaseline(STOP_NUM - 1) - 11;
    layer.Rectangle({x - 2, first, 4, next - first}, TEAL);
    layer.Rectangle({x - 2, next, 4, last - next}, TRACK);
    for (int stop = 0; stop < STOP_NUM; ++stop) {
        DrawPip(layer, x, StopBaseline(stop) - 11, stop);
    }
}

void WriteNextStop(Layer& layer) {
    const int x = LEFT_CARD.x + CARD_PADDING;
    const int width = LEFT_CARD.width - 2 * CARD_PADDING;
    SectionStyle().Draw(layer, "Next stop", Line(x, LEFT_CARD.y + SECTION_BASELINE, width));
    Style(64, WHITE).Draw(layer, StopAt(NEXT_STOP).name, Line(x, LEFT_CARD.y + 116, width));
}

void WriteLine(Layer& layer, int line, const std::string& text) {
    const Text plain = Style(40, WHITE);
    const Text style = line == 1 ? plain.Italic() : line == 2 ? plain.Bold() : plain;
    style.Draw(layer, text,
               Line(LEFT_CARD.x + CARD_PADDING + 32, LEFT_CARD.y + LINE_BASELINE + LINE_PITCH * line,
                    LEFT_CARD.width - 2 * CARD_PADDING - 32));
}

void WriteRightCard(Layer& layer) {
    const int x = RIGHT_CARD.x + CARD_PADDING;
    const int width = RIGHT_CARD.width - 2 * CARD_PADDING;
    SectionStyle().Draw(layer, "Timetable", Line(x, RIGHT_CARD.y + SECTION_BASELINE, width));
    Text(20, CARD).Center().Middle().Draw(layer, "On time", BADGE);
    for (int stop = 0; stop < STOP_NUM; ++stop) {
        const Text plain = Style(30, stop < NEXT_STOP ? GREY : WHITE);
        const Text style = stop == NEXT_STOP ? plain.Bold().Colored(AMBER) : plain;
        const int baseline = StopBaseline(stop);
        style.Draw(layer, StopAt(stop).name, Line(x + 40, baseline, width - 160));
        style.Tabular().Right().Draw(layer, StopAt(stop).time, Line(x + width - 110, baseline, 110));
    }
}

}  // namespace examples::osd_demo
