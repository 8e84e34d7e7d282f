#include "PanelCards.h"

#include <array>

#include "PanelStyle.h"

namespace examples::osd_demo {

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
constexpr std::uint32_t STOP_BASELINE = 112;  // of the first row, below the card's top edge
constexpr std::uint32_t STOP_PITCH = 64;
constexpr std::uint32_t LINE_PITCH = 58;

std::uint32_t LineBaseline(std::size_t line) {
    return LEFT_CARD.y + 206 + LINE_PITCH * static_cast<std::uint32_t>(line);
}

}  // namespace

void DrawCard(Layer& layer, const Rect& card) {
    layer.FillRoundedRect(card, CARD_RADIUS, CARD_EDGE);
    layer.FillRoundedRect({card.x + 1, card.y + 1, card.width - 2, card.height - 2}, CARD_RADIUS - 1, CARD);
}

void DrawPip(Layer& layer, std::uint32_t x, std::uint32_t y, std::uint32_t stop) {
    const Color& ring = stop < NEXT_STOP ? TEAL : stop == NEXT_STOP ? AMBER : TRACK;
    layer.FillRound(x, y, 9, ring);
    layer.FillRound(x, y, 4, stop < NEXT_STOP ? TEAL : CARD);
}

std::uint32_t StopBaseline(std::uint32_t stop) { return RIGHT_CARD.y + STOP_BASELINE + STOP_PITCH * stop; }

void DrawLeftCard(Layer& layer, std::size_t lineCount) {
    DrawCard(layer, LEFT_CARD);
    const std::uint32_t x = LEFT_CARD.x + CARD_PADDING;
    layer.FillRect({x, LEFT_CARD.y + 142, LEFT_CARD.width - 2 * CARD_PADDING, 2}, ROW);
    for (std::size_t line = 0; line < lineCount; ++line) {
        layer.FillRound(x + 6, LineBaseline(line) - 14, 5, AMBER);
    }
}

void DrawRightCard(Layer& layer) {
    DrawCard(layer, RIGHT_CARD);
    layer.FillRoundedRect(BADGE, 6, TEAL);
    layer.FillRoundedRect({RIGHT_CARD.x + 16, StopBaseline(NEXT_STOP) - 39, RIGHT_CARD.width - 32, 56}, 10,
                          ROW);

    const std::uint32_t x = RIGHT_CARD.x + CARD_PADDING + 10;
    const std::uint32_t first = StopBaseline(0) - 11;
    const std::uint32_t next = StopBaseline(NEXT_STOP) - 11;
    const std::uint32_t last = StopBaseline(STOP_NUM - 1) - 11;
    layer.FillRect({x - 2, first, 4, next - first}, TEAL);
    layer.FillRect({x - 2, next, 4, last - next}, TRACK);
    for (std::uint32_t stop = 0; stop < STOP_NUM; ++stop) {
        DrawPip(layer, x, StopBaseline(stop) - 11, stop);
    }
}

void WriteNextStop(Layer& layer) {
    const std::uint32_t x = LEFT_CARD.x + CARD_PADDING;
    const std::uint32_t width = LEFT_CARD.width - 2 * CARD_PADDING;
    WriteLine(layer, "Next stop", SECTION, {x, LEFT_CARD.y + SECTION_BASELINE, width});
    WriteLine(layer, STOPS[NEXT_STOP].name, Plain(64, WHITE), {x, LEFT_CARD.y + 116, width});
}

void WriteUsersLine(Layer& layer, std::size_t line, const std::string& text) {
    constexpr TextStyle STANDARD = Plain(40, WHITE);
    const TextStyle style = line == 1 ? Italic(STANDARD) : line == 2 ? Bold(STANDARD) : STANDARD;
    WriteLine(layer, text, style,
              {LEFT_CARD.x + CARD_PADDING + 32, LineBaseline(line), LEFT_CARD.width - 2 * CARD_PADDING - 32});
}

void WriteRightCard(Layer& layer) {
    const std::uint32_t x = RIGHT_CARD.x + CARD_PADDING;
    const std::uint32_t width = RIGHT_CARD.width - 2 * CARD_PADDING;
    WriteLine(layer, "Timetable", SECTION, {x, RIGHT_CARD.y + SECTION_BASELINE, width});
    WriteLine(layer, "On time", On(TEAL, Plain(20, CARD)),
              {BADGE.x, BADGE.y + 22, BADGE.width, Align::CENTER});
    for (std::uint32_t stop = 0; stop < STOP_NUM; ++stop) {
        const TextStyle style =
            stop == NEXT_STOP ? Bold(Plain(30, AMBER)) : Plain(30, stop < NEXT_STOP ? GREY : WHITE);
        const std::uint32_t baseline = StopBaseline(stop);
        WriteLine(layer, STOPS[stop].name, style, {x + 40, baseline, width - 160});
        WriteLine(layer, STOPS[stop].time, style, {x + width - 110, baseline, 110, Align::RIGHT});
    }
}

}  // namespace examples::osd_demo
