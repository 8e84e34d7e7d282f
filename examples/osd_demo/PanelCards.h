#ifndef EXAMPLES_OSD_DEMO_PANELCARDS_H
#define EXAMPLES_OSD_DEMO_PANELCARDS_H

#include <cstdint>
#include <string>

#include "Layer.h"

// The cards' contents: first the shapes, in a layer of scale 2, then, over a copy of them, the texts.

namespace examples::osd_demo {

constexpr std::uint32_t STOP_NUM = 5;
constexpr std::uint32_t NEXT_STOP = 2;  // the train is between the one before it and this one

void DrawCard(Layer& layer, const Rect& card);

// A mark on the timetable's or the progress bar's line, which tells whether the train has been there.
void DrawPip(Layer& layer, std::uint32_t x, std::uint32_t y, std::uint32_t stop);

// Where a stop's row of the timetable stands, in pixels of the panel.
std::uint32_t StopBaseline(std::uint32_t stop);

// Below the next stop's name there is room for lines of the user's; here only their dots are drawn.
void DrawLeftCard(Layer& layer, std::size_t lineCount);
void DrawRightCard(Layer& layer);

void WriteNextStop(Layer& layer);
void WriteRightCard(Layer& layer);
// `line` counts from 0.
void WriteUsersLine(Layer& layer, std::size_t line, const std::string& text);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANELCARDS_H
