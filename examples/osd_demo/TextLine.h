#ifndef EXAMPLES_OSD_DEMO_TEXTLINE_H
#define EXAMPLES_OSD_DEMO_TEXTLINE_H

#include <cstdint>
#include <string>

#include "Layer.h"

namespace examples::osd_demo {

// How a text looks: the library's record, of which the text itself is left open.
using TextStyle = kivgles::TagKivTextInfo;

// Upright, regular, on nothing. 40 pixels are the library's quickest style.
constexpr TextStyle Plain(std::uint32_t pixels, const Color& color) {
    TextStyle style{};
    style.fgColor = color;
    style.fontSize = pixels;
    return style;
}

constexpr TextStyle Bold(TextStyle style) {
    style.bold = 1;
    return style;
}

constexpr TextStyle Italic(TextStyle style) {
    style.italic = 1;
    return style;
}

constexpr TextStyle Underlined(TextStyle style) {
    style.underline = 1;
    return style;
}

constexpr TextStyle On(const Color& background, TextStyle style) {
    style.bgColor = background;
    return style;
}

enum class Align { LEFT, CENTER, RIGHT };

// Where a line of text goes, in pixels of its layer.
struct TextPlace {
    std::uint32_t x;
    std::uint32_t baseline;
    std::uint32_t width;  // what is longer is cut off and ends with an ellipsis
    Align align = Align::LEFT;
};

// Writes a line of UTF-8 on a layer of scale 1, in the font that its surface has loaded.
//
// To the library a space is a character without ink, which does not move the pen: so words are measured and
// drawn one by one.
void WriteLine(Layer& layer, const std::string& text, const TextStyle& style, const TextPlace& place);

}  // namespace examples::osd_demo

#endif  // EXAMPLES_OSD_DEMO_TEXTLINE_H
