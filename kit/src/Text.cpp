#include "kivgles/kit/Text.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "CanvasState.h"
#include "Fonts.h"

namespace kivgles::kit {

namespace {

constexpr char ELLIPSIS[] = "…";
constexpr double SMOOTHING = 1;  // pixels that ink may reach beyond its extents

// Pango counts in ints: no line may be longer than some two million pixels. What has more bytes than this
// many pixels by the text's size is cut before.
constexpr double MAX_WIDTH = 2000000;
constexpr double MAX_ADVANCES = 1600000;
// So many bytes have room where a character of the text's size has, at most: of narrow ones, and marks.
constexpr double NARROW = 24;
constexpr double AT_LEAST = 64;

void Insert(PangoAttrList* attributes, PangoAttribute* attribute, std::size_t begin, std::size_t end) {
    attribute->start_index = static_cast<guint>(begin);
    attribute->end_index = static_cast<guint>(end);
    pango_attr_list_insert(attributes, attribute);
}

// Digits get the space that they lack, half on each side, and keep their distance from what is beside them.
void MakeTabular(PangoAttrList* attributes, const std::string& text, const FontMetrics& metrics) {
    constexpr int NO_DIGIT = -1;  // or one of a keycap, which is an emoji
    const auto lacks = [&](std::size_t i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9' && text.compare(i + 1, 3, "\uFE0F") != 0;
        return isDigit ? metrics.digitSpace[static_cast<std::size_t>(text[i] - '0')] : NO_DIGIT;
    };
    for (std::size_t i = 0, end = 0; i < text.size(); i = end) {
        for (end = i + 1; end < text.size() && lacks(end) == lacks(i); ++end) {
        }
        if (lacks(i) != NO_DIGIT) {
            Insert(attributes, pango_attr_font_features_new("kern=0"), i, end);
            Insert(attributes, pango_attr_letter_spacing_new(lacks(i)), i, end);
        }
    }
}

// The letter spacing of a run, in pixels.
int Spacing(const GSList* run) {
    const auto* const glyphs = static_cast<const PangoLayoutRun*>(run->data);
    for (const GSList* i = glyphs->item->analysis.extra_attrs; i != nullptr; i = i->next) {
        const auto* const attribute = static_cast<const PangoAttribute*>(i->data);
        if (attribute->klass->type == PANGO_ATTR_LETTER_SPACING) {
            return reinterpret_cast<const PangoAttrInt*>(attribute)->value / PANGO_SCALE;
        }
    }
    return 0;
}

// Where its characters begin, on its baseline, is at whole pixels.
struct Line {
    PangoLayoutLine* line;
    int number;           // from the top
    int indent;           // where its characters begin in its width, in pixels
    int width;            // pixels
    double x = 0;         // of its first character in the canvas
    double baseline = 0;  // in the canvas
};

template <typename Paint>
void ForEach(cairo_t* context, const std::vector<Line>& lines, const Color& color, double opacity,
             Paint paint) {
    cairo_set_source_rgba(context, color.r / 255.0, color.g / 255.0, color.b / 255.0, opacity);
    for (const Line& line : lines) {
        cairo_move_to(context, line.x, line.baseline);
        paint(context, line.line);
    }
}

// Opaque, and then as one: emoji have no other opacity of their own, and characters may overlap.
void PaintText(cairo_t* context, const std::vector<Line>& lines, const Color& color) {
    if (color.a < 255) {
        cairo_push_group(context);
    }
    ForEach(context, lines, color, 1, pango_cairo_show_layout_line);
    cairo_new_path(context);
    if (color.a < 255) {
        cairo_pop_group_to_source(context);
        cairo_paint_with_alpha(context, color.a / 255.0);
    }
}

}  // namespace

// A text in lines that fit a box, to be drawn; those without room for as much as an ellipsis are left out.
//
// Owner, thread: of the call that draws or measures.
class TextLayout {
 public:
    TextLayout(const Text& text, std::string_view utf8, double boxWidth, double boxHeight, bool isDrawn,
               const char* operation);

    TextExtent extent;
    FontMetrics metrics;
    std::vector<Line> lines;

 private:
    void AddParagraph(std::string_view paragraph, bool isLast);
    Handle<PangoLayout> LayOut(const std::string& text, int lineNum) const;
    void AddLines(PangoLayout* layout);

    const Text& style;
    const double width;  // of the box
    int maxLines = 0;
    const bool drawn;
    const Handle<PangoFontDescription> font;
    Fonts& fonts;
    std::vector<Handle<PangoLayout>> paragraphs;  // what the lines are of
};

TextLayout::TextLayout(const Text& text, std::string_view utf8, double boxWidth, double boxHeight,
                       bool isDrawn, const char* operation)
    : style(text),
      width(boxWidth),
      drawn(isDrawn),
      font(pango_font_description_new()),
      fonts(Fonts::OfThread(operation)) {
    pango_font_description_set_family(font.get(), style.family.c_str());
    pango_font_description_set_absolute_size(font.get(), std::round(style.size * PANGO_SCALE));
    pango_font_description_set_weight(font.get(), style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(font.get(), style.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    metrics = fonts.Metrics(font.get(), style.language);
    if (width > 0 && boxHeight > 0) {
        const double seen = std::min<double>(boxHeight, Text::UNLIMITED.height);
        maxLines = std::max(1, static_cast<int>(seen / style.LineHeight()));
    }
    while (!utf8.empty() && extent.lines < maxLines) {
        const std::size_t end = std::min(utf8.find('\n'), utf8.size());
        std::string_view paragraph = utf8.substr(0, end);
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
        if (!paragraph.empty() && paragraph.back() == '\r') {
            paragraph.remove_suffix(1);
        }
        AddParagraph(paragraph, utf8.empty());
    }
    extent.whole = extent.whole && utf8.empty();
    extent.height = extent.lines * style.LineHeight();
}

void TextLayout::AddParagraph(std::string_view paragraph, bool isLast) {
    const int lineNum = style.wrapped ? maxLines - extent.lines : 1;
    const double room = lineNum * (std::min(width, MAX_WIDTH) / style.size * NARROW + AT_LEAST);
    auto length = static_cast<std::size_t>(
        std::min({room, MAX_ADVANCES / style.size, static_cast<double>(paragraph.size())}));
    for (int i = 0; i < 3 && length < paragraph.size() && (paragraph[length] & 0xC0) == 0x80; ++i) {
        --length;  // to where a character begins
    }
    const bool isCut = length < paragraph.size();
    const Handle<char> valid(g_utf8_make_valid(paragraph.data(), static_cast<gssize>(length)));
    std::string text = valid.get();
    if (isCut) {
        text += ELLIPSIS;
    }
    Handle<PangoLayout> layout = LayOut(text, lineNum);
    if (!isLast && !isCut && extent.lines + pango_layout_get_line_count(layout.get()) >= maxLines) {
        layout = LayOut(text + ELLIPSIS, lineNum);  // for the next paragraphs
    }
    AddLines(layout.get());
    extent.whole = extent.whole && !isCut && pango_layout_is_ellipsized(layout.get()) == FALSE;
    extent.missing += pango_layout_get_unknown_glyphs_count(layout.get());
    if (drawn) {
        paragraphs.push_back(std::move(layout));
    }
}

Handle<PangoLayout> TextLayout::LayOut(const std::string& text, int lineNum) const {
    Handle<PangoLayout> layout = fonts.NewLayout(font.get(), style.language);
    if (width < MAX_WIDTH) {
        pango_layout_set_width(layout.get(), static_cast<int>(width * PANGO_SCALE));
    }
    pango_layout_set_height(layout.get(), -lineNum);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    const Handle<PangoAttrList> attributes(pango_attr_list_new());
    if (style.underlined) {
        Insert(attributes.get(), pango_attr_underline_new(PANGO_UNDERLINE_SINGLE), 0, text.size());
    }
    if (style.tabular) {
        MakeTabular(attributes.get(), text, metrics);
    }
    pango_layout_set_attributes(layout.get(), attributes.get());
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    return layout;
}

void TextLayout::AddLines(PangoLayout* layout) {
    for (GSList* i = pango_layout_get_lines_readonly(layout); i != nullptr; i = i->next) {
        auto* const line = static_cast<PangoLayoutLine*>(i->data);
        PangoRectangle logical;
        pango_layout_line_get_extents(line, nullptr, &logical);
        const int inked = PANGO_PIXELS_CEIL(logical.width);
        ++extent.lines;
        if (inked > std::ceil(width)) {
            extent.whole = false;  // not even an ellipsis has room
            continue;
        }
        // Pango leaves letter spacing out where a line begins and ends; with it digits stay where they are.
        const int first = line->runs == nullptr ? 0 : Spacing(line->runs);
        const int last = line->runs == nullptr ? 0 : Spacing(g_slist_last(line->runs));
        const int total = first / 2 + inked + last - last / 2;
        extent.width = std::max(extent.width, total);
        if (drawn) {
            lines.push_back({line, extent.lines - 1, first / 2, total});
        }
    }
}

TextExtent Text::Draw(Canvas& canvas, std::string_view utf8, const Rect& box) const {
    constexpr char OPERATION[] = "Text::Draw";
    CanvasState& painted = CanvasState::Begin(canvas, OPERATION);
    TextLayout layout(*this, utf8, box.width, box.height, true, OPERATION);
    if (!AreCountable(box.x, box.y, box.width, box.height)) {
        return layout.extent;
    }
    const int height = layout.extent.height;
    const auto& [ascent, descent, capHeight, unused] = layout.metrics;
    // From the top of a line to its baseline.
    const double inLine = std::round((LineHeight() - ascent - descent) / 2 + ascent);
    const double bottom = std::round(box.y + box.height) - height;
    const double top =
        verticalAlign == VerticalAlign::TOP      ? std::round(box.y)
        : verticalAlign == VerticalAlign::BOTTOM ? bottom
        : verticalAlign == VerticalAlign::BASELINE
            ? bottom + LineHeight() - inLine
            : std::round(box.y + (box.height - height + LineHeight() + capHeight) / 2) - inLine;
    const double share = align == Align::CENTER ? 0.5 : align == Align::RIGHT ? 1 : 0;
    const double reach = SMOOTHING + (outline.a > 0 ? outlineWidth : 0);
    for (Line& line : layout.lines) {
        line.x = std::round(box.x + (box.width - line.width) * share);
        line.baseline = top + static_cast<double>(line.number) * LineHeight() + inLine;
        if (background.a > 0) {
            painted.AddRectangle({line.x, line.baseline - inLine, line.width, LineHeight()}).Fill(background);
        }
        line.x += line.indent;
    }
    for (const Line& line : layout.lines) {
        PangoRectangle ink;
        pango_layout_line_get_pixel_extents(line.line, &ink, nullptr);
        painted.AddRectangle({line.x + ink.x - reach, line.baseline + ink.y - reach, ink.width + 2 * reach,
                              ink.height + 2 * reach});
    }
    painted.Within([&](cairo_t* context) {
        if (outline.a > 0 && outlineWidth > 0) {
            ForEach(context, layout.lines, outline, outline.a / 255.0, pango_cairo_layout_line_path);
            cairo_set_line_width(context, 2 * outlineWidth);
            cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
            cairo_stroke(context);
        }
        PaintText(context, layout.lines, color);
    });
    return layout.extent;
}

TextExtent Text::Measure(std::string_view utf8, const Size& box) const {
    return TextLayout(*this, utf8, box.width, box.height, false, "Text::Measure").extent;
}

void Text::AddFont(const std::string& path) { Fonts::Add(path, "Text::AddFont"); }

}  // namespace kivgles::kit
