#ifndef KIVGLES_KIT_TEXTLAYOUT_H
#define KIVGLES_KIT_TEXTLAYOUT_H

#include <string>
#include <string_view>
#include <vector>

#include "Fonts.h"
#include "kivgles/kit/Text.h"

namespace kivgles::kit {

struct TextLine {
    PangoLayoutLine* line;
    int number;  // from the top
    int indent;  // where its characters begin in its width, in pixels
    int width;   // pixels
};

// A text in lines that fit a box.
//
// Owner, thread: of the call that draws or measures.
class TextLayout {
 public:
    // Lines are only there if they are to be drawn. Throws NO_FONT for `operation`.
    TextLayout(const Text& text, std::string_view utf8, double boxWidth, double boxHeight, bool isDrawn,
               const char* operation);

    // From the top; those are left out that have no room for as much as an ellipsis.
    const std::vector<TextLine>& Lines() const { return lines; }
    const TextExtent& Extent() const { return extent; }
    const FontMetrics& Metrics() const { return metrics; }

 private:
    void AddParagraph(std::string_view paragraph, bool isLast);
    Handle<PangoLayout> LayOut(const std::string& text, int lineNum) const;
    void AddLines(PangoLayout* layout);

    const Text& style;
    const double width;  // of the box
    const int maxLines;
    const bool drawn;
    const Handle<PangoFontDescription> font;
    Fonts& fonts;
    FontMetrics metrics;
    std::vector<Handle<PangoLayout>> paragraphs;  // what the lines are of
    std::vector<TextLine> lines;
    TextExtent extent;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_TEXTLAYOUT_H
