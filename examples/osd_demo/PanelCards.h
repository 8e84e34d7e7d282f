#ifndef EXAMPLES_OSD_DEMO_PANELCARDS_H
#define EXAMPLES_OSD_DEMO_PANELCARDS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "common/Layer.h"
#include "common/TextPainter.h"

// The panel's cards: the next stop with lines of text, and the timetable. Their shapes and their texts go
// into layers of different scales.

namespace examples::osd_demo {

constexpr std::uint32_t STOP_NUM = 5;
constexpr std::uint32_t NEXT_STOP = 2;

// An empty card.
void DrawCard(Layer& layer, const Rect& card);

// The mark of a stop that is passed, next or to come, at its centre.
void DrawPip(Layer& layer, std::uint32_t x, std::uint32_t y, std::uint32_t stop);

void DrawLeftCard(Layer& layer, std::size_t lineCount);
void WriteLeftCard(TextPainter& painter, const std::vector<std::string>& lines);

void DrawRightCard(Layer& layer);
void WriteRightCard(TextPainter& painter);

// Of a stop's row in the right card, in pixels of the panel.
std::uint32_t StopBaseline(std::uint32_t stop);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANELCARDS_H
