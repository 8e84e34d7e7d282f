#include "CharacterClass.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kivgles::kit {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 9> INVISIBLE = {{
    {0x00, 0x1F},        // controls
    {0x7F, 0x9F},        // more of them
    {0xAD, 0xAD},        // soft hyphen
    {0x200B, 0x200F},    // space without width, joiners, marks of direction
    {0x2028, 0x202E},    // separators, embedding
    {0x2060, 0x206F},    // word joiner, isolates
    {0xFE00, 0xFE0F},    // variation selectors
    {0xFEFF, 0xFEFF},    // byte order mark
    {0xE0000, 0xE01EF},  // tags, more selectors
}};

// Chinese, Japanese and Korean: a line may end between any two of them.
constexpr std::array<Range, 9> CJK = {{
    {0x1100, 0x11FF},    // Hangul letters
    {0x2E80, 0x2FFF},    // radicals
    {0x3001, 0x33FF},    // punctuation, kana, Bopomofo, Hangul letters, enclosed
    {0x3400, 0x4DBF},    // ideographs, extension A
    {0x4E00, 0x9FFF},    // ideographs
    {0xAC00, 0xD7FF},    // Hangul
    {0xF900, 0xFAFF},    // compatibility ideographs
    {0xFF00, 0xFFEF},    // full width and half width
    {0x20000, 0x3FFFF},  // rare ideographs
}};

constexpr std::u32string_view SPACES =
    U" \t\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
    U"\u2009\u200A\u202F\u205F\u3000";
constexpr std::u32string_view SPACES_THAT_KEEP_TOGETHER = U"\u00A0\u2007\u202F";

// Closing marks, small kana and marks of repetition do not begin a line; opening ones do not end it.
constexpr std::u32string_view NOT_AT_BEGINNING =
    U"!%),.:;?]}"
    U"\u00B0\u00BB\u2019\u201D\u2026\u3001\u3002\u3005\u3009\u300B\u300D\u300F\u3011\u3015\u3017\u3019"
    U"\u301B\u3041\u3043\u3045\u3047\u3049\u3063\u3083\u3085\u3087\u308E\u309D\u309E\u30A1\u30A3\u30A5\u30A7"
    U"\u30A9"
    U"\u30C3\u30E3\u30E5\u30E7\u30EE\u30FB\u30FC\u30FD\u30FE\uFF01\uFF05\uFF09\uFF0C\uFF0E\uFF1A\uFF1B\uFF1F"
    U"\uFF3D"
    U"\uFF5D\uFF60\uFF61\uFF63\uFF64";
constexpr std::u32string_view NOT_AT_END =
    U"([{\u00AB\u2018\u201C\u3008\u300A\u300C\u300E\u3010\u3014\u3016\u3018"
    U"\u301A\uFF08\uFF3B\uFF5B\uFF5F\uFF62";

bool Contains(std::u32string_view set, char32_t character) {
    return set.find(character) != std::u32string_view::npos;
}

template <typename Ranges>
bool IsIn(const Ranges& ranges, char32_t character) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

}  // namespace

bool IsLineFeed(char32_t character) {
    return character == U'\n' || character == U'\u2028' || character == U'\u2029';
}

bool IsInvisible(char32_t character) { return character != U'\t' && IsIn(INVISIBLE, character); }

int SpaceWidth(char32_t character, int size) {
    if (!Contains(SPACES, character)) {
        return 0;
    }
    const bool full = character == U'\u3000' || character == U'\u2001' || character == U'\u2003';
    const bool half = character == U'\u2000' || character == U'\u2002';
    const bool thin = character == U'\u2009' || character == U'\u200A' || character == U'\u202F';
    const int tenths = full ? 10 : half ? 5 : thin ? 2 : 3;
    return (size * tenths + 5) / 10;
}

bool MayBreakBetween(char32_t before, char32_t after) {
    const bool spaceBefore = Contains(SPACES, before);
    const bool spaceAfter = Contains(SPACES, after);
    if (spaceBefore || spaceAfter) {
        // Spaces belong to the line that they end.
        return spaceBefore && !spaceAfter && !Contains(SPACES_THAT_KEEP_TOGETHER, before);
    }
    return (IsIn(CJK, before) || IsIn(CJK, after)) && !Contains(NOT_AT_END, before) &&
           !Contains(NOT_AT_BEGINNING, after);
}

}  // namespace kivgles::kit
