#ifndef EXAMPLES_COMMON_TEXTPAINTER_H
#define EXAMPLES_COMMON_TEXTPAINTER_H

#include <cstdint>
#include <string>
#include <vector>

#include "common/Layer.h"

namespace examples {

struct TextStyle {
    Color color;
    std::uint32_t size = 40;  // pixels; 40, neither bold nor italic, is the library's quickest style
    bool bold = false;
    bool italic = false;
    bool underline = false;
    Color background = {0, 0, 0, 0};
};

enum class Align { LEFT, CENTER, RIGHT };

// Where a line of text goes, in pixels of its layer.
struct TextPlace {
    std::uint32_t x;
    std::uint32_t baseline;
    std::uint32_t width;  // what is longer is cut off and ends with an ellipsis
    Align align = Align::LEFT;
};

// Whether a font for Chinese, Japanese and Korean is wanted for the text (UTF-8).
bool NeedsCjkFont(const std::string& text);

// Writes lines of UTF-8 on a layer of scale 1, in the font that the surface has loaded.
//
// To the library a space is a character without ink, which does not move the pen: so words are measured and
// drawn one by one. As the surface has one font at a time, a panel in two fonts is written twice; each time
// the lines of the other font are left out.
class TextPainter {
 public:
    TextPainter(Surface& textSurface, const Layer& textLayer, bool cjkFontLoaded)
        : surface(textSurface), layer(textLayer), cjk(cjkFontLoaded) {}

    void Write(const std::string& text, const TextStyle& style, const TextPlace& place);

 private:
    struct Word {
        std::u16string units;
        std::uint32_t width;  // pixels
    };

    std::uint32_t Measure(const std::u16string& units, const TextStyle& style);
    std::vector<Word> FitWords(const std::u16string& text, const TextStyle& style, std::uint32_t width);
    Word Shorten(std::u16string units, const TextStyle& style, std::uint32_t width);
    void DrawWord(const Word& word, const TextStyle& style, std::uint32_t x, std::uint32_t baseline,
                  std::uint32_t width);

    Surface& surface;
    const Layer& layer;
    bool cjk;
};

}  // namespace examples

#endif  // EXAMPLES_COMMON_TEXTPAINTER_H
