#include "TextPainter.h"

#include <algorithm>
#include <cstdint>

#include "Pixels.h"

namespace kivgles::kit {

namespace {

constexpr std::uint32_t BASELINE_ABOVE_BOTTOM = 10;  // in the box of a text of the core

// Of an underline, its distance from the baseline, and the sides of the box for a missing character: as the
// core has it at 40 pixels.
int Thickness(int size) { return std::max(size / 20, 1); }

}  // namespace

void TextPainter::Draw(const TextLine& line) {
    const int baseline = y + line.baseline;
    if (baseline < -look.size || baseline > layer.height + 2 * look.size) {
        return;
    }
    if (look.background.a != 0) {
        layer.Fill({x + line.x, y + line.top, line.width, look.lineHeight}, look.background, operation);
    }
    for (const Rect& box : line.boxes) {
        DrawBox({x + box.x, y + box.y, box.width, box.height});
    }
    for (const TextRun& run : line.runs) {
        DrawRun(run, baseline);
    }
    if (look.underlined) {
        const int thickness = Thickness(look.size);
        layer.Fill({x + line.x, baseline + thickness, line.width, thickness}, look.color, operation);
    }
}

void TextPainter::DrawBox(const Rect& box) {
    const int thickness = std::min({Thickness(look.size), box.width, box.height});
    const int right = box.x + box.width - thickness;
    const int bottom = box.y + box.height - thickness;
    layer.Fill({box.x, box.y, box.width, thickness}, look.color, operation);
    layer.Fill({box.x, bottom, box.width, thickness}, look.color, operation);
    layer.Fill({box.x, box.y, thickness, box.height}, look.color, operation);
    layer.Fill({right, box.y, thickness, box.height}, look.color, operation);
}

void TextPainter::DrawRun(const TextRun& run, int baseline) {
    const int pen = x + run.x;
    if (pen >= 0 && baseline >= 0) {
        DrawUnits(layer.handle, run.units, pen, baseline);
        return;
    }
    // The core's numbers are unsigned. From the pen, or the layer's corner, to where the ink ends at most.
    const int left = std::min(pen, 0);
    const int top = baseline < 0 ? baseline : std::max(baseline - 2 * look.size, 0);
    const int right = std::min(pen + run.width + look.size, layer.width);
    const int bottom = std::min(baseline + look.size, layer.height);
    const auto draw = [&](unsigned int handle, const Size&) KIVGLES_REQUIRES(DEVICE_LOCK) {
        DrawUnits(handle, run.units, pen - left, baseline - top);
    };
    layer.DrawBeyondEdges({left, top, right - left, bottom - top}, true, draw, operation);
}

void TextPainter::DrawUnits(unsigned int handle, const std::u16string& units, int penX, int penY) {
    TagKivTextInfo info{};
    info.text = units.c_str();
    info.textLength = static_cast<std::uint32_t>(units.size());
    info.fgColor = Straight(look.color);
    info.fontSize = static_cast<std::uint32_t>(look.size);
    info.bold = look.bold ? 1 : 0;
    info.italic = look.italic ? 1 : 0;
    const TagKivRectInfo box = {static_cast<std::uint32_t>(penX), static_cast<std::uint32_t>(penY), 1,
                                BASELINE_ABOVE_BOTTOM};
    Check(layer.device->Surface(operation).KivDrawText(handle, info, box), operation);
}

}  // namespace kivgles::kit
