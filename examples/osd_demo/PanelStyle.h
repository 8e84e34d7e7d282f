#ifndef EXAMPLES_OSD_DEMO_PANELSTYLE_H
#define EXAMPLES_OSD_DEMO_PANELSTYLE_H

#include "TextLine.h"

// Colours and places of the panel, in its own pixels. The window shows it scaled.

namespace examples::osd_demo {

constexpr std::uint32_t PANEL_WIDTH = 1280;
constexpr std::uint32_t PANEL_HEIGHT = 720;

constexpr Color CARD = {27, 41, 64, 255};
constexpr Color CARD_EDGE = {48, 68, 100, 255};
constexpr Color ROW = {38, 58, 88, 255};
constexpr Color TRACK = {58, 78, 110, 255};
constexpr Color WHITE = {240, 244, 250, 255};
constexpr Color GREY = {158, 176, 202, 255};
constexpr Color AMBER = {255, 186, 84, 255};
constexpr Color TEAL = {72, 202, 192, 255};

// Titles of the cards.
constexpr TextStyle SECTION = Underlined(Plain(22, TEAL));
constexpr std::uint32_t SECTION_BASELINE = 44;  // below the card's top edge

constexpr Rect LOGO_BOX = {40, 22, 72, 72};
constexpr Rect HEADER_RULE = {40, 110, 1200, 2};
constexpr Rect LEFT_CARD = {40, 132, 588, 412};
constexpr Rect RIGHT_CARD = {652, 132, 588, 412};
constexpr Rect BOTTOM_CARD = {40, 564, 1200, 124};
constexpr std::uint32_t CARD_RADIUS = 14;
constexpr std::uint32_t CARD_PADDING = 32;

// The progress bar's layer lies in the bottom card; bar and pips are drawn in its middle.
constexpr Rect BAR_BOX = {60, 626, 1160, 48};
constexpr std::uint32_t BAR_MARGIN = 20;  // left and right of the bar, for the pips
constexpr std::uint32_t BAR_RADIUS = 6;

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANELSTYLE_H
