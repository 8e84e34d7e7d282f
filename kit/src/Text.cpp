#include "kivgles/kit/Text.h"

#include <cmath>
#include <vector>

#include "Painter.h"
#include "TextLayout.h"
#include "kivgles/kit/Canvas.h"

namespace kivgles::kit {

namespace {

constexpr double SMOOTHING = 1;  // pixels that ink may reach beyond its extents

double Pixels(int pangoUnits) { return static_cast<double>(pangoUnits) / PANGO_SCALE; }

// A line, and where its characters begin on its baseline, in whole pixels.
struct PlacedLine {
    PangoLayoutLine* line;
    double x;
    double baseline;
};

template <typename Paint>
void ForEach(cairo_t* context, const std::vector<PlacedLine>& lines, Paint paint) {
    for (const PlacedLine& placed : lines) {
        cairo_move_to(context, placed.x, placed.baseline);
        paint(context, placed.line);
    }
}

void SetSource(cairo_t* context, const Color& color, double opacity) {
    cairo_set_source_rgba(context, color.r / 255.0, color.g / 255.0, color.b / 255.0, opacity);
}

void PaintOutlines(cairo_t* context, const std::vector<PlacedLine>& lines, const Color& color, double width) {
    ForEach(context, lines, pango_cairo_layout_line_path);
    SetSource(context, color, color.a / 255.0);
    cairo_set_line_width(context, 2 * width);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(context);
}

// Opaque, and then as one: emoji have no other opacity of their own, and characters may overlap.
void PaintText(cairo_t* context, const std::vector<PlacedLine>& lines, const Color& color) {
    const bool isTranslucent = color.a < 255;
    if (isTranslucent) {
        cairo_push_group(context);
    }
    SetSource(context, color, 1);
    ForEach(context, lines, pango_cairo_show_layout_line);
    cairo_new_path(context);
    if (isTranslucent) {
        cairo_pop_group_to_source(context);
        cairo_paint_with_alpha(context, color.a / 255.0);
    }
}

}  // namespace

double Text::LeftOf(int lineWidth, const Rect& box) const {
    const double room = box.width - lineWidth;
    return std::round(box.x + (align == Align::CENTER ? room / 2 : align == Align::RIGHT ? room : 0));
}

TextExtent Text::Draw(Canvas& canvas, std::string_view utf8, const Rect& box) const {
    constexpr char OPERATION[] = "Text::Draw";
    Painter painter(canvas, OPERATION);
    const TextLayout layout(*this, utf8, box.width, box.height, true, OPERATION);
    if (!AreCountable(box.x, box.y, box.width, box.height)) {
        return layout.Extent();
    }
    const FontMetrics& metrics = layout.Metrics();
    const int height = layout.Extent().height;
    const double ascent = Pixels(metrics.ascent);
    // From the top of a line to its baseline.
    const double inLine = std::round((LineHeight() - ascent - Pixels(metrics.descent)) / 2 + ascent);
    const double bottom = std::round(box.y + box.height);
    double top = std::round(box.y);
    switch (verticalAlign) {
        case VerticalAlign::TOP:
            break;
        case VerticalAlign::MIDDLE:
            top = std::round(box.y + (box.height - height + LineHeight() + Pixels(metrics.capHeight)) / 2) -
                  inLine;
            break;
        case VerticalAlign::BOTTOM:
            top = bottom - height;
            break;
        case VerticalAlign::BASELINE:
            top = bottom - height + LineHeight() - inLine;
            break;
    }
    std::vector<PlacedLine> placed;
    const double reach = SMOOTHING + (outline.a > 0 ? outlineWidth : 0);
    for (const TextLine& line : layout.Lines()) {
        const double x = LeftOf(line.width, box);
        const double y = top + static_cast<double>(line.number) * LineHeight();
        if (background.a > 0) {
            canvas.Rectangle({x, y, line.width, LineHeight()}, background);
        }
        placed.push_back({line.line, x + line.indent, y + inLine});
    }
    for (const PlacedLine& line : placed) {
        PangoRectangle ink;
        pango_layout_line_get_pixel_extents(line.line, &ink, nullptr);
        painter.AddRectangle({line.x + ink.x - reach, line.baseline + ink.y - reach, ink.width + 2 * reach,
                              ink.height + 2 * reach});
    }
    painter.Within([&](cairo_t* context) {
        if (outline.a > 0 && outlineWidth > 0) {
            PaintOutlines(context, placed, outline, outlineWidth);
        }
        PaintText(context, placed, color);
    });
    return layout.Extent();
}

TextExtent Text::Measure(std::string_view utf8, const Size& box) const {
    return TextLayout(*this, utf8, box.width, box.height, false, "Text::Measure").Extent();
}

void Text::AddFont(const std::string& path) { Fonts::Add(path, "Text::AddFont"); }

}  // namespace kivgles::kit
