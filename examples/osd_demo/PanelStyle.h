#ifndef EXAMPLES_OSD_DEMO_PANELSTYLE_H
#define EXAMPLES_OSD_DEMO_PANELSTYLE_H

#include "kivgles/kit/Geometry.h"
#include "kivgles/kit/Text.h"

// Colours and places of the panel, in its own pixels. The window shows it scaled.

namespace examples::osd_demo {

using kivgles::kit::Color;
using kivgles::kit::Rect;
using kivgles::kit::Text;

constexpr kivgles::kit::Size PANEL_SIZE = {1280, 720};

constexpr Color CARD = {27, 41, 64};
constexpr Color CARD_EDGE = {48, 68, 100};
constexpr Color ROW = {38, 58, 88};
constexpr Color TRACK = {58, 78, 110};
constexpr Color WHITE = {240, 244, 250};
constexpr Color GREY = {158, 176, 202};
constexpr Color AMBER = {255, 186, 84};
constexpr Color TEAL = {72, 202, 192};

constexpr Rect LOGO_BOX = {40, 22, 72, 72};
constexpr Rect HEADER_RULE = {40, 110, 1200, 2};
constexpr Rect LEFT_CARD = {40, 132, 588, 412};
constexpr Rect RIGHT_CARD = {652, 132, 588, 412};
constexpr Rect BOTTOM_CARD = {40, 564, 1200, 124};
constexpr int CARD_RADIUS = 14;
constexpr int CARD_PADDING = 32;

// The progress bar's layer lies in the bottom card; bar and pips are drawn in its middle.
constexpr Rect BAR_BOX = {60, 626, 1160, 48};
constexpr int BAR_MARGIN = 20;  // left and right of the bar, for the pips
constexpr int BAR_RADIUS = 6;

constexpr int SECTION_BASELINE = 44;  // of a card's title, below the card's top edge

// Texts stand with their baseline on the lower edge of their box.
inline Text Style(int pixels, const Color& color) {
    return Text(pixels, color).Aligned(kivgles::kit::VerticalAlign::BASELINE);
}

// The box of a line with its baseline at a height of the panel.
constexpr Rect Line(int x, int baseline, int width) { return {x, baseline - 80, width, 80}; }

inline Text SectionStyle() { return Style(22, TEAL).Underlined(); }

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_PANELSTYLE_H
