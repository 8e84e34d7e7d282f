#include "Frame.h"

#include <utility>

#include "Pixels.h"

namespace kivgles::kit {

namespace {

bool AreLarge(const std::vector<PixelRect>& parts, const Size& whole) {
    std::int64_t area = 0;
    for (const PixelRect& part : parts) {
        area += Area(part);
    }
    return 4 * area > Area(Whole(whole));
}

}  // namespace

void Frame::Show(CanvasState& canvas) {
    CheckSize(canvas.size, device.maxSide, device.operation);
    (void)device.Surface();  // without a window everything stays as it is
    std::vector<PixelRect> changed = Take(canvas);
    showsCopy = true;
    shown = nullptr;
    ShowCopy(std::move(changed));
}

void Frame::Show(const LayerState& layer) {
    device.Blit(layer.handle, Whole(layer.size), FBO_HANDLE_BASE, Whole(device.windowSize));
    device.Check(device.Surface().KivRefreshOnSrceen());
    showsCopy = false;
    shown = &layer;
}

bool Frame::ShowAgain() {
    if (shown != nullptr) {
        Show(*shown);
    } else if (showsCopy) {
        ShowCopy({});
    }
    return shown != nullptr || showsCopy;
}

// Into the copy, only what has changed; tells what that is.
std::vector<PixelRect> Frame::Take(CanvasState& canvas) {
    Resize(copy, canvas.size, device.operation);
    size = canvas.size;
    std::vector<PixelRect> changed = canvas.Take(receiver);
    const PixelView view = ViewOf(canvas);
    for (const PixelRect& part : changed) {
        Convert(view, part, Format::PREMULTIPLIED, copy.data() + Offset(part.x, part.y, size.width),
                size.width);
    }
    return changed;
}

void Frame::ShowCopy(std::vector<PixelRect> changed) {
    if (!changed.empty()) {
        largeInARow = AreLarge(changed, size) ? largeInARow + 1 : 0;
    }
    const Size window = device.windowSize;
    const bool wasCurrent = std::exchange(device.spares[PICTURE].isCurrent, false);
    const bool hasPlace = device.spares[PICTURE].handle != 0 || !device.IsFull();
    const bool changesMuch = changed.empty() ? !wasCurrent : largeInARow >= 2;
    if (!AreEqual(size, window) || !hasPlace || changesMuch) {
        HandOver(FBO_HANDLE_BASE, Whole(size), Whole(window));
    } else {
        SpareLayer& layer = device.Provide(PICTURE, size);
        if (!wasCurrent) {
            changed = {Whole(size)};
        }
        for (const PixelRect& part : changed) {
            HandOver(layer.handle, part, part);
        }
        layer.isCurrent = true;
        device.Blit(layer.handle, Whole(size), FBO_HANDLE_BASE, Whole(window));
    }
    device.Check(device.Surface().KivRefreshOnSrceen());
}

// A part of the copy into a layer of the window's size, or onto the window.
void Frame::HandOver(unsigned int target, const PixelRect& part, const PixelRect& to) {
    const PixelView view = {copy.data(), size, Format::PREMULTIPLIED};
    TagKivBitmapInfo bitmap = BitmapOf(view, part, Format::PREMULTIPLIED, room, device.operation);
    bitmap.dstRect = Unsigned(to);
    device.Check(device.Surface().KivDrawBitmap(target, bitmap));
}

}  // namespace kivgles::kit
