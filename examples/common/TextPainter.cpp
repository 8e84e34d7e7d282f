#include "common/TextPainter.h"

#include <algorithm>

#include <utf8.h>

namespace examples {

namespace {

constexpr std::size_t MAX_UNITS = 127;  // that the library draws of a text
constexpr std::u16string_view SPACES = u" \t\u00A0\u3000";
constexpr char16_t ELLIPSIS = u'\u2026';
constexpr char16_t FIRST_CJK_UNIT = u'\u2E80';
constexpr std::uint32_t BASELINE_ABOVE_BOTTOM = 10;

// Bytes that are not UTF-8 become replacement characters.
std::u16string ToUtf16(const std::string& text) { return utf8::utf8to16(utf8::replace_invalid(text)); }

std::uint32_t SpaceWidth(const TextStyle& style) { return style.size * 3 / 10; }

// The next word of `text` from `position` on, which moves behind it; empty when there is none.
std::u16string NextWord(const std::u16string& text, std::size_t& position) {
    const std::size_t begin = std::min(text.find_first_not_of(SPACES, position), text.size());
    position = std::min(text.find_first_of(SPACES, begin), text.size());
    return text.substr(begin, std::min(position - begin, MAX_UNITS));
}

}  // namespace

bool NeedsCjkFont(const std::string& text) {
    const std::u16string units = ToUtf16(text);
    return std::any_of(units.begin(), units.end(),
                       [](char16_t unit) { return unit >= FIRST_CJK_UNIT && unit < u'\uFE00'; });
}

void TextPainter::Write(const std::string& text, const TextStyle& style, const TextPlace& place) {
    if (NeedsCjkFont(text) != cjk) {
        return;
    }
    const std::vector<Word> words = FitWords(ToUtf16(text), style, place.width);
    if (words.empty()) {
        return;
    }

    const std::uint32_t space = SpaceWidth(style);
    std::uint32_t used = space * static_cast<std::uint32_t>(words.size() - 1);
    for (const Word& word : words) {
        used += word.width;
    }
    const std::uint32_t left = place.width - std::min(used, place.width);
    std::uint32_t x = place.x + (place.align == Align::RIGHT    ? left
                                 : place.align == Align::CENTER ? left / 2
                                                                : 0);

    for (const Word& word : words) {
        // Background and underline go on below the space that follows.
        const bool last = &word == &words.back();
        DrawWord(word, style, x, place.baseline, word.width + (last ? 0 : space));
        x += word.width + space;
    }
}

std::uint32_t TextPainter::Measure(const std::u16string& units, const TextStyle& style) {
    kivgles::TagKivTextInfo info{};
    info.text = units.c_str();
    info.textLength = static_cast<std::uint32_t>(units.size());
    info.fontSize = style.size;
    info.bold = style.bold ? 1 : 0;
    info.italic = style.italic ? 1 : 0;
    unsigned int width = 0;
    unsigned int height = 0;
    Check(surface.KivGetTextSize(info, width, height), "measuring a text");
    return width;
}

std::vector<TextPainter::Word> TextPainter::FitWords(const std::u16string& text, const TextStyle& style,
                                                     std::uint32_t width) {
    std::vector<Word> words;
    std::uint32_t used = 0;
    std::size_t position = 0;
    for (std::u16string units = NextWord(text, position); !units.empty(); units = NextWord(text, position)) {
        const std::uint32_t wordWidth = Measure(units, style);
        if (used + wordWidth > width) {
            words.push_back(Shorten(std::move(units), style, width - std::min(used, width)));
            break;
        }
        words.push_back({std::move(units), wordWidth});
        used += wordWidth + SpaceWidth(style);
    }
    return words;
}

// The beginning of a word with an ellipsis, or the ellipsis alone.
TextPainter::Word TextPainter::Shorten(std::u16string units, const TextStyle& style, std::uint32_t width) {
    units.back() = ELLIPSIS;
    std::uint32_t wordWidth = Measure(units, style);
    while (units.size() > 1 && wordWidth > width) {
        units.pop_back();
        units.back() = ELLIPSIS;
        wordWidth = Measure(units, style);
    }
    return {std::move(units), wordWidth};
}

void TextPainter::DrawWord(const Word& word, const TextStyle& style, std::uint32_t x, std::uint32_t baseline,
                           std::uint32_t width) {
    kivgles::TagKivTextInfo info{};
    info.text = word.units.c_str();
    info.textLength = static_cast<std::uint32_t>(word.units.size());
    info.fgColor = style.color;
    info.bgColor = style.background;
    info.fontSize = style.size;
    info.bold = style.bold ? 1 : 0;
    info.underline = style.underline ? 1 : 0;
    info.italic = style.italic ? 1 : 0;
    const std::uint32_t height = style.size + BASELINE_ABOVE_BOTTOM;
    const Rect box = {x, baseline + BASELINE_ABOVE_BOTTOM - height, width, height};
    Check(surface.KivDrawText(layer.Handle(), info, box), "drawing a text");
}

}  // namespace examples
