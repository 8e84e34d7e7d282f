#include "kivgles/kit/Text.h"

#include <algorithm>
#include <cstdint>

#include "Device.h"
#include "LayerState.h"
#include "Pixels.h"
#include "Spans.h"
#include "TextLayout.h"
#include "Utf8.h"
#include "kivgles/kit/Error.h"
#include "kivgles/kit/Layer.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_SIZE = 1000;                       // pixels of what is shown
constexpr int MAX_LINE_HEIGHT = 10000;               // the same
constexpr std::uint32_t BASELINE_ABOVE_BOTTOM = 10;  // in the box of a text of the core, pixels of GL

LayerState& StateOf(const std::unique_ptr<LayerState>& state, const char* operation) {
    if (state == nullptr) {
        throw Error(operation, Error::INVALID_ARGUMENT);
    }
    return *state;
}

// The lock is held.
TextLayout LayOutFor(const LayerState& layer, std::string_view utf8, const LayoutRules& rules,
                     const char* operation) {
    KivGLDrawSurface& surface = layer.device->Surface(operation);
    CharacterWidths& widths = layer.device->Widths(operation);
    return LayOut(DecodeUtf8(utf8), rules,
                  [&](char32_t character) { return widths.Find(surface, character, rules.size, operation); });
}

TextExtent Extent(const TextLayout& layout, int lineHeight, int factor) {
    TextExtent extent;
    for (const TextLine& line : layout.lines) {
        extent.width = std::max(extent.width, (line.width + factor - 1) / factor);
    }
    extent.lines = static_cast<int>(layout.lines.size());
    extent.height = extent.lines * lineHeight;
    extent.whole = layout.whole;
    return extent;
}

Rect Moved(const Rect& rect, int x, int y) { return {rect.x + x, rect.y + y, rect.width, rect.height}; }

// An outline, drawn inwards.
void DrawOutline(LayerState& layer, const Rect& box, int thickness, const Color& color,
                 const char* operation) {
    const int bottom = box.y + box.height - thickness;
    const int right = box.x + box.width - thickness;
    for (const Rect& side :
         {Rect{box.x, box.y, box.width, thickness}, Rect{box.x, bottom, box.width, thickness},
          Rect{box.x, box.y, thickness, box.height}, Rect{right, box.y, thickness, box.height}}) {
        layer.Fill(side, color, operation);
    }
}

}  // namespace

Text Text::Sized(int pixels) const {
    Text changed = *this;
    changed.size = pixels;
    return changed;
}

Text Text::Colored(const Color& foreground) const {
    Text changed = *this;
    changed.color = foreground;
    return changed;
}

Text Text::On(const Color& backdrop) const {
    Text changed = *this;
    changed.background = backdrop;
    return changed;
}

Text Text::Bold() const {
    Text changed = *this;
    changed.bold = true;
    return changed;
}

Text Text::Italic() const {
    Text changed = *this;
    changed.italic = true;
    return changed;
}

Text Text::Underlined() const {
    Text changed = *this;
    changed.underlined = true;
    return changed;
}

Text Text::Tabular() const {
    Text changed = *this;
    changed.tabular = true;
    return changed;
}

Text Text::Aligned(Align horizontal) const {
    Text changed = *this;
    changed.align = horizontal;
    return changed;
}

Text Text::Aligned(VerticalAlign vertical) const {
    Text changed = *this;
    changed.verticalAlign = vertical;
    return changed;
}

Text Text::Wrapped() const {
    Text changed = *this;
    changed.wrapped = true;
    return changed;
}

Text Text::Spaced(int pixels) const {
    Text changed = *this;
    changed.lineHeight = pixels;
    return changed;
}

int Text::LineHeight() const {
    return lineHeight > 0 ? std::min(lineHeight, MAX_LINE_HEIGHT) : (PixelSize() * 5 + 2) / 4;
}

int Text::PixelSize() const { return std::clamp(size, 1, MAX_SIZE); }

LayoutRules Text::Rules(const Size& box, int factor) const {
    LayoutRules rules;
    rules.box = box;
    rules.size = PixelSize() * factor;
    rules.lineHeight = LineHeight() * factor;
    rules.wrapped = wrapped;
    rules.tabular = tabular;
    rules.align = align;
    rules.verticalAlign = verticalAlign;
    return rules;
}

TextExtent Text::Draw(Layer& layer, std::string_view utf8, const Rect& box) const {
    constexpr char OPERATION[] = "Text::Draw";
    LayerState& target = StateOf(layer.state, OPERATION);
    const auto lock = target.device->Lock();
    const Rect scaled = target.Scaled(box);
    const LayoutRules rules = Rules({scaled.width, scaled.height}, target.factor);
    const TextLayout layout = LayOutFor(target, utf8, rules, OPERATION);
    for (const TextLine& line : layout.lines) {
        DrawLine(target, line, rules, scaled.x, scaled.y);
    }
    return Extent(layout, LineHeight(), target.factor);
}

void Text::DrawLine(LayerState& target, const TextLine& line, const LayoutRules& rules, int x, int y) const {
    constexpr char OPERATION[] = "Text::Draw";
    if (background.a != 0) {
        target.Fill({x + line.x, y + line.top, line.width, rules.lineHeight}, background, OPERATION);
    }
    const int thickness = std::max(rules.size / 20, 1);
    for (const Rect& missing : line.boxes) {
        DrawOutline(target, Moved(missing, x, y), thickness, color, OPERATION);
    }
    for (const TextRun& run : line.runs) {
        DrawRun(target, run, rules.size, x, y + line.baseline);
    }
    if (underlined) {
        target.Fill({x + line.x, y + line.baseline + thickness, line.width, thickness}, color, OPERATION);
    }
}

void Text::DrawRun(LayerState& target, const TextRun& run, int pixels, int x, int baseline) const {
    const int pen = x + run.x;
    if (pen < 0 || pen >= target.width || baseline < 0 || baseline > target.height + pixels) {
        return;
    }
    TagKivTextInfo info{};
    info.text = run.units.c_str();
    info.textLength = static_cast<std::uint32_t>(run.units.size());
    info.fgColor = Straight(color);
    info.fontSize = static_cast<std::uint32_t>(pixels);
    info.bold = bold ? 1 : 0;
    info.italic = italic ? 1 : 0;
    Check(target.device->Surface("Text::Draw")
              .KivDrawText(target.handle, info,
                           {static_cast<std::uint32_t>(pen), static_cast<std::uint32_t>(baseline), 1,
                            BASELINE_ABOVE_BOTTOM}),
          "Text::Draw");
}

TextExtent Text::Measure(const Layer& layer, std::string_view utf8, const Size& box) const {
    constexpr char OPERATION[] = "Text::Measure";
    const LayerState& target = StateOf(layer.state, OPERATION);
    const auto lock = target.device->Lock();
    const Rect scaled = target.Scaled(Rect{0, 0, box.width, box.height});
    const LayoutRules rules = Rules({scaled.width, scaled.height}, target.factor);
    return Extent(LayOutFor(target, utf8, rules, OPERATION), LineHeight(), target.factor);
}

}  // namespace kivgles::kit
