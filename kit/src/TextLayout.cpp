#include "TextLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "CharacterClass.h"

namespace kivgles::kit {

namespace {

constexpr std::size_t MAX_UNITS = 127;  // that the core draws of a text
constexpr char32_t ELLIPSIS = U'\u2026';

// A character with its place in the row.
struct Cell {
    enum Kind { CHARACTER, SPACE, MISSING };

    char32_t character;
    Kind kind;
    int width;
    int inset = 0;          // of the character in a cell that is wider
    bool isAdvance = true;  // the core's pen moves by `width`
    bool mayBreak = false;  // a line may end before it
};

using Cells = std::vector<Cell>;

bool IsDigit(char32_t character) { return character >= U'0' && character <= U'9'; }

class CellMaker {
 public:
    CellMaker(const LayoutRules& layoutRules, const FindWidth& widthFinder)
        : rules(layoutRules), findWidth(widthFinder) {}

    Cell Make(char32_t character) {
        const int space = SpaceWidth(character, rules.size);
        if (space > 0) {
            return {character, Cell::SPACE, space};
        }
        const CharacterWidth found = findWidth(character);
        if (!found.present) {
            return {character, Cell::MISSING, std::max(rules.size * 6 / 10, 1)};
        }
        Cell cell = {character, Cell::CHARACTER, found.width, 0, found.isAdvance};
        if (rules.tabular && IsDigit(character)) {
            const int wide = DigitWidth();
            if (wide != cell.width) {
                cell.inset = (wide - cell.width) / 2;
                cell.width = wide;
                cell.isAdvance = false;
            }
        }
        return cell;
    }

    // One where the font has it, otherwise three full stops.
    Cells MakeEllipsis() {
        return findWidth(ELLIPSIS).present ? Cells{Make(ELLIPSIS)} : Cells(3, Make(U'.'));
    }

 private:
    int DigitWidth() {
        if (digitWidth < 0) {
            for (char32_t digit = U'0'; digit <= U'9'; ++digit) {
                digitWidth = std::max(digitWidth, findWidth(digit).width);
            }
        }
        return digitWidth;
    }

    const LayoutRules& rules;
    const FindWidth& findWidth;
    int digitWidth = -1;  // not looked up yet
};

// The text up to each line feed, without what is invisible.
std::vector<Cells> MakeParagraphs(const std::u32string& text, CellMaker& maker) {
    std::vector<Cells> paragraphs(1);
    for (const char32_t character : text) {
        Cells& cells = paragraphs.back();
        if (IsLineFeed(character)) {
            paragraphs.emplace_back();
        } else if (!IsInvisible(character)) {
            cells.push_back(maker.Make(character));
            cells.back().mayBreak =
                cells.size() > 1 && MayBreakBetween(cells[cells.size() - 2].character, character);
        }
    }
    return paragraphs;
}

std::int64_t Width(Cells::const_iterator begin, Cells::const_iterator end) {
    std::int64_t width = 0;
    for (; begin != end; ++begin) {
        width += begin->width;
    }
    return width;
}

// Where a line that begins at `begin` ends; the spaces at its end may reach beyond the box.
Cells::const_iterator FindLineEnd(Cells::const_iterator begin, Cells::const_iterator end, int boxWidth) {
    std::int64_t width = 0;
    Cells::const_iterator lastBreak = begin;
    for (auto cell = begin; cell != end; ++cell) {
        if (cell->mayBreak) {
            lastBreak = cell;
        }
        width += cell->width;
        if (width > boxWidth && cell->kind != Cell::SPACE) {
            return lastBreak != begin ? lastBreak : cell;
        }
    }
    return end;
}

Cells::const_iterator WithoutSpacesAtEnd(Cells::const_iterator begin, Cells::const_iterator end) {
    while (end != begin && (end - 1)->kind == Cell::SPACE) {
        --end;
    }
    return end;
}

// The beginning of the cells that leaves room for an ellipsis, with it; nothing if there is not even room for
// that.
Cells Shorten(Cells::const_iterator begin, Cells::const_iterator end, int boxWidth, const Cells& ellipsis) {
    const std::int64_t room = boxWidth - Width(ellipsis.begin(), ellipsis.end());
    if (room < 0) {
        return {};
    }
    std::int64_t width = 0;
    auto cell = begin;
    while (cell != end && width + cell->width <= room) {
        width += cell->width;
        ++cell;
    }
    Cells shortened(begin, WithoutSpacesAtEnd(begin, cell));
    shortened.insert(shortened.end(), ellipsis.begin(), ellipsis.end());
    return shortened;
}

// Lines of cells, as many as fit the box.
class LineBreaker {
 public:
    LineBreaker(const LayoutRules& layoutRules, CellMaker& cellMaker)
        : rules(layoutRules),
          maker(cellMaker),
          maxLines(static_cast<std::size_t>(std::max(rules.box.height / rules.lineHeight, 1))) {}

    // False if something was left out.
    bool Break(const std::vector<Cells>& paragraphs) {
        for (const Cells& paragraph : paragraphs) {
            const bool last = &paragraph == &paragraphs.back();
            if (!BreakParagraph(paragraph, last)) {
                return false;
            }
        }
        return whole;
    }

    std::vector<Cells> Take() { return std::move(lines); }

 private:
    // False if there is no room for what comes after it.
    bool BreakParagraph(const Cells& cells, bool last) {
        auto begin = cells.begin();
        do {
            const bool lastLine = lines.size() + 1 == maxLines;
            const auto end = FindLineEnd(begin, cells.end(), rules.box.width);
            const bool all = end == cells.end();
            if (end == begin && !all) {
                return AddShortened(begin, cells.end());  // not even one character fits
            }
            if ((!all && !rules.wrapped) || (lastLine && !(all && last))) {
                (void)AddShortened(begin, cells.end());
                return !lastLine;
            }
            lines.emplace_back(begin, WithoutSpacesAtEnd(begin, end));
            begin = end;
        } while (begin != cells.end());
        return true;
    }

    bool AddShortened(Cells::const_iterator begin, Cells::const_iterator end) {
        lines.push_back(Shorten(begin, end, rules.box.width, maker.MakeEllipsis()));
        whole = false;
        return lines.size() < maxLines;
    }

    const LayoutRules& rules;
    CellMaker& maker;
    const std::size_t maxLines;
    std::vector<Cells> lines;
    bool whole = true;
};

// Three lines of pixels wide and seven tenths of the size high, standing on the baseline.
Rect MissingBox(int x, int baseline, int width, int size) {
    const int margin = std::max(size / 20, 0);
    const int height = std::max(size * 7 / 10, 1);
    return {x + margin, baseline - height, std::max(width - 2 * margin, 1), height};
}

// Splits a line where the pen has to be placed anew.
void PlaceCells(const Cells& cells, const LayoutRules& rules, TextLine& line) {
    std::int64_t pen = line.x;
    bool goesOn = false;  // the core's pen is where the next character goes
    for (const Cell& cell : cells) {
        const bool begun = pen >= rules.visibleBegin;
        // The ink of a character reaches beyond its advance, but not by more than the text is high.
        const bool visible =
            pen + cell.width + rules.size > rules.visibleBegin && pen - rules.size < rules.visibleEnd;
        const int x = static_cast<int>(pen) + cell.inset;
        if (visible && cell.kind == Cell::MISSING) {
            line.boxes.push_back(MissingBox(x, line.baseline, cell.width, rules.size));
        } else if (visible && cell.kind == Cell::CHARACTER) {
            if (!goesOn || cell.inset != 0 || line.runs.back().units.size() == MAX_UNITS) {
                line.runs.push_back({x, 0, {}});
            }
            line.runs.back().units += static_cast<char16_t>(cell.character);
            line.runs.back().width += cell.width - cell.inset;
        }
        goesOn = visible && begun && cell.kind == Cell::CHARACTER && cell.isAdvance;
        pen += cell.width;
    }
}

int Aligned(Align align, int room) {
    return align == Align::RIGHT ? room : align == Align::CENTER ? room / 2 : 0;
}

// Of the first line, from the top edge of the box.
int TopOfLines(const LayoutRules& rules, int height, int baselineInLine) {
    const int room = rules.box.height - height;
    switch (rules.verticalAlign) {
        case VerticalAlign::TOP:
            return 0;
        case VerticalAlign::MIDDLE:
            return room >= 0 ? room / 2 : -(-room / 2);
        case VerticalAlign::BOTTOM:
            return room;
        case VerticalAlign::BASELINE:
            return room + rules.lineHeight - baselineInLine;
    }
    return 0;
}

}  // namespace

TextLayout LayOut(const std::u32string& text, const LayoutRules& rules, const FindWidth& findWidth) {
    if (rules.box.width <= 0 || rules.box.height <= 0) {
        return {{}, text.empty()};
    }
    if (text.empty()) {
        return {};
    }
    CellMaker maker(rules, findWidth);
    LineBreaker breaker(rules, maker);
    TextLayout layout;
    layout.whole = breaker.Break(MakeParagraphs(text, maker));
    const std::vector<Cells> lines = breaker.Take();

    // Capitals, 72 hundredths of the size high, stand in the middle of a line.
    const int baselineInLine = (rules.lineHeight + rules.size * 72 / 100 + 1) / 2;
    int top = TopOfLines(rules, rules.lineHeight * static_cast<int>(lines.size()), baselineInLine);
    for (const Cells& cells : lines) {
        TextLine line;
        line.width = static_cast<int>(Width(cells.begin(), cells.end()));
        line.x = Aligned(rules.align, rules.box.width - line.width);
        line.top = top;
        line.baseline = top + baselineInLine;
        PlaceCells(cells, rules, line);
        layout.lines.push_back(std::move(line));
        top += rules.lineHeight;
    }
    return layout;
}

}  // namespace kivgles::kit
