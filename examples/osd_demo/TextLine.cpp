#include "TextLine.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <utf8.h>

namespace examples::osd_demo {

namespace {

constexpr std::size_t MAX_UNITS = 127;  // that the library draws of a text; no line has room for them
constexpr std::u16string_view SPACES = u" \t\u00A0\u3000";
constexpr char16_t ELLIPSIS = u'\u2026';
constexpr std::uint32_t BASELINE_ABOVE_BOTTOM = 10;

struct Word {
    std::u16string units;
    std::uint32_t width;  // pixels
};

// Bytes that are not UTF-8 become replacement characters.
std::u16string ToUtf16(const std::string& text) { return utf8::utf8to16(utf8::replace_invalid(text)); }

// The next word of `text` from `position` on, which moves behind it; empty when there is none.
std::u16string NextWord(const std::u16string& text, std::size_t& position) {
    const std::size_t begin = std::min(text.find_first_not_of(SPACES, position), text.size());
    position = std::min(text.find_first_of(SPACES, begin), text.size());
    return text.substr(begin, std::min(position - begin, MAX_UNITS));
}

TextStyle WithUnits(TextStyle style, const std::u16string& units) {
    style.text = units.c_str();
    style.textLength = static_cast<std::uint32_t>(units.size());
    return style;
}

std::uint32_t SpaceWidth(const TextStyle& style) { return style.fontSize * 3 / 10; }

std::uint32_t LineWidth(const std::vector<Word>& words, const TextStyle& style) {
    std::uint32_t width = 0;
    for (const Word& word : words) {
        width += word.width + (&word == &words.back() ? 0 : SpaceWidth(style));
    }
    return width;
}

// Puts an ellipsis in place of the end of a line that is too long, of as little as makes it fit.
void Shorten(std::vector<Word>& words, const Layer& layer, const TextStyle& style, std::uint32_t width) {
    for (;;) {
        Word& last = words.back();
        last.units.back() = ELLIPSIS;
        last.width = layer.Measure(WithUnits(style, last.units));
        if (LineWidth(words, style) <= width) {
            return;
        }
        if (last.units.size() > 1) {
            last.units.pop_back();
        } else if (words.size() > 1) {
            words.pop_back();
        } else {
            return;  // not even the ellipsis fits
        }
    }
}

std::vector<Word> FitWords(const std::u16string& text, const Layer& layer, const TextStyle& style,
                           std::uint32_t width) {
    std::vector<Word> words;
    std::size_t position = 0;
    for (std::u16string units = NextWord(text, position); !units.empty(); units = NextWord(text, position)) {
        const std::uint32_t wordWidth = layer.Measure(WithUnits(style, units));
        words.push_back({std::move(units), wordWidth});
        if (LineWidth(words, style) > width) {
            Shorten(words, layer, style, width);
            break;
        }
    }
    return words;
}

}  // namespace

void WriteLine(Layer& layer, const std::string& text, const TextStyle& style, const TextPlace& place) {
    const std::vector<Word> words = FitWords(ToUtf16(text), layer, style, place.width);
    const std::uint32_t left = place.width - std::min(LineWidth(words, style), place.width);
    std::uint32_t x = place.x + (place.align == Align::RIGHT    ? left
                                 : place.align == Align::CENTER ? left / 2
                                                                : 0);

    const std::uint32_t height = style.fontSize + BASELINE_ABOVE_BOTTOM;
    const std::uint32_t y = place.baseline + BASELINE_ABOVE_BOTTOM - height;
    for (const Word& word : words) {
        // Background and underline go on below the space that follows.
        const std::uint32_t advance = word.width + (&word == &words.back() ? 0 : SpaceWidth(style));
        layer.Write(WithUnits(style, word.units), {x, y, advance, height});
        x += advance;
    }
}

}  // namespace examples::osd_demo
