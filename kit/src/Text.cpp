#include "kivgles/kit/Text.h"

#include <algorithm>

#include "Device.h"
#include "LayerState.h"
#include "TextLayout.h"
#include "TextPainter.h"
#include "Utf8.h"
#include "kivgles/kit/Layer.h"
#include "kivgles/kit/Screen.h"

namespace kivgles::kit {

namespace {

constexpr int MAX_SIZE = 1000;          // pixels of what is shown
constexpr int MAX_LINE_HEIGHT = 10000;  // the same

constexpr char MEASURE[] = "Text::Measure";

TextLayout LayOutFor(Device& device, std::string_view utf8, const LayoutRules& rules, const char* operation)
    KIVGLES_REQUIRES(DEVICE_LOCK) {
    KivGLDrawSurface& surface = device.Surface(operation);
    CharacterWidths& widths = device.Widths(operation);
    const auto find = [&](char32_t character) KIVGLES_REQUIRES(DEVICE_LOCK) {
        return widths.Find(surface, character, rules.size, operation);
    };
    return LayOut(DecodeUtf8(utf8), rules, find);
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

// A copy with another value of one property.
template <typename Value>
Text With(Text text, Value Text::*property, const Value& value) {
    text.*property = value;
    return text;
}

}  // namespace

Text Text::Sized(int pixels) const { return With(*this, &Text::size, pixels); }

Text Text::Colored(const Color& foreground) const { return With(*this, &Text::color, foreground); }

Text Text::On(const Color& backdrop) const { return With(*this, &Text::background, backdrop); }

Text Text::Bold() const { return With(*this, &Text::bold, true); }

Text Text::Italic() const { return With(*this, &Text::italic, true); }

Text Text::Underlined() const { return With(*this, &Text::underlined, true); }

Text Text::Tabular() const { return With(*this, &Text::tabular, true); }

Text Text::Aligned(Align horizontal) const { return With(*this, &Text::align, horizontal); }

Text Text::Aligned(VerticalAlign vertical) const { return With(*this, &Text::verticalAlign, vertical); }

Text Text::Wrapped() const { return With(*this, &Text::wrapped, true); }

Text Text::Spaced(int pixels) const { return With(*this, &Text::lineHeight, pixels); }

int Text::LineHeight() const {
    return lineHeight > 0 ? std::min(lineHeight, MAX_LINE_HEIGHT) : (PixelSize() * 5 + 2) / 4;
}

int Text::PixelSize() const { return std::clamp(size, 1, MAX_SIZE); }

LayoutRules Text::Rules(const Rect& box, int factor, int layerWidth) const {
    LayoutRules rules;
    rules.box = {box.width, box.height};
    rules.size = PixelSize() * factor;
    rules.lineHeight = LineHeight() * factor;
    rules.wrapped = wrapped;
    rules.tabular = tabular;
    rules.align = align;
    rules.verticalAlign = verticalAlign;
    rules.visibleBegin = -box.x;
    rules.visibleEnd = layerWidth - box.x;
    return rules;
}

TextExtent Text::Draw(Layer& layer, std::string_view utf8, const Rect& box) const {
    constexpr char OPERATION[] = "Text::Draw";
    LayerState& target = StateOf(layer.state, OPERATION);
    const DeviceLock lock(*target.device);
    const Rect scaled = target.Scaled(box);
    const LayoutRules rules = Rules(scaled, target.factor, target.width);
    const TextLayout layout = LayOutFor(*target.device, utf8, rules, OPERATION);
    const TextLook look = {color, background, bold, italic, underlined, rules.size, rules.lineHeight};
    TextPainter painter(target, look, scaled.x, scaled.y, OPERATION);
    for (const TextLine& line : layout.lines) {
        painter.Draw(line);
    }
    return Extent(layout, LineHeight(), target.factor);
}

TextExtent Text::Measure(const Layer& layer, std::string_view utf8, const Size& box) const {
    const LayerState& target = StateOf(layer.state, MEASURE);
    return MeasureFor(*target.device, utf8, box, target.factor);
}

TextExtent Text::Measure(const Screen& screen, std::string_view utf8, const Size& box) const {
    return MeasureFor(*screen.device, utf8, box, 1);
}

TextExtent Text::MeasureFor(Device& device, std::string_view utf8, const Size& box, int factor) const {
    const DeviceLock lock(device);
    const LayoutRules rules = Rules(Scaled({0, 0, box.width, box.height}, factor), factor, 0);
    return Extent(LayOutFor(device, utf8, rules, MEASURE), LineHeight(), factor);
}

}  // namespace kivgles::kit
