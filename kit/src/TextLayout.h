#ifndef KIVGLES_KIT_TEXTLAYOUT_H
#define KIVGLES_KIT_TEXTLAYOUT_H

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "kivgles/kit/Text.h"

// Which characters of a text go where in a box. A pure function of the text, the box, and what a font says of
// its characters, in pixels of GL.

namespace kivgles::kit {

// What a font says of a character.
struct CharacterWidth {
    bool present = false;   // otherwise a box is drawn for it
    int width = 0;          // pixels to the next character
    bool isAdvance = true;  // false: the core's pen may move by less, so the next one is placed anew
};

using FindWidth = std::function<CharacterWidth(char32_t)>;

struct LayoutRules {
    Size box;
    int size = 40;
    int lineHeight = 50;
    bool wrapped = false;
    bool tabular = false;
    Align align = Align::LEFT;
    VerticalAlign verticalAlign = VerticalAlign::TOP;
    // What of the box can be seen, from its left edge. A character that begins before it, which the core
    // cannot do, is a run of its own; what is nowhere near is left out of the runs.
    int visibleBegin = std::numeric_limits<int>::min();
    int visibleEnd = std::numeric_limits<int>::max();
};

// Units that are drawn in one request, at most 127.
struct TextRun {
    int x = 0;  // of the pen, from the left edge of the box
    int width = 0;
    std::u16string units;
};

struct TextLine {
    int x = 0;  // from the left edge of the box
    int width = 0;
    int top = 0;       // from the top edge of the box
    int baseline = 0;  // from the top edge of the box
    std::vector<TextRun> runs;
    std::vector<Rect> boxes;  // for what the font lacks, from the top-left corner of the text's box
};

struct TextLayout {
    std::vector<TextLine> lines;
    bool whole = true;
};

TextLayout LayOut(const std::u32string& text, const LayoutRules& rules, const FindWidth& findWidth);

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_TEXTLAYOUT_H
