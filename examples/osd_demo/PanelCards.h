#ifndef EXAMPLES_OSD_DEMO_PANELCARDS_H
#define EXAMPLES_OSD_DEMO_PANELCARDS_H

#include <string>

#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Layer.h"

// The cards' contents: first the shapes, in a layer of factor 2, then, over a copy of them, the texts.

namespace examples::osd_demo {

constexpr int STOP_NUM = 5;
constexpr int NEXT_STOP = 2;  // the train is between the one before it and this one

void DrawCard(kivgles::kit::Layer& layer, const kivgles::kit::Rect& card);

// A mark on the timetable's or the progress bar's line, which tells whether the train has been there.
void DrawPip(kivgles::kit::Layer& layer, int x, int y, int stop);

// Where a stop's row of the timetable stands, in pixels of the panel.
int StopBaseline(int stop);

// Below the next stop's name there is room for lines of the user's; here only their dots are drawn.
void DrawLeftCard(kivgles::kit::Layer& layer, int lineCount);
void DrawRightCard(kivgles::kit::Layer& layer);

void WriteNextStop(kivgles::kit::Layer& layer);
void WriteRightCard(kivgles::kit::Layer& layer);
// `line` counts from 0.
void WriteLine(kivgles::kit::Layer& layer, int line, const std::string& text);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANELCARDS_H
