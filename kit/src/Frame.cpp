#include "Frame.h"

#include <utility>

#include "Bitmap.h"
#include "LayerState.h"
#include "Words.h"

namespace kivgles::kit {

namespace {

bool IsLarge(const std::vector<PixelRect>& parts, const Size& whole) {
    std::int64_t area = 0;
    for (const PixelRect& part : parts) {
        area += std::int64_t{part.width} * part.height;
    }
    return 4 * area > std::int64_t{whole.width} * whole.height;
}

}  // namespace

void Frame::Show(CanvasState& canvas) {
    CheckSize(canvas.Size(), device.maxSide, device.operation);
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

void Frame::Forget(const LayerState& layer) {
    if (shown == &layer) {
        shown = nullptr;
    }
}

// Into the copy, only what has changed; tells what that is.
std::vector<PixelRect> Frame::Take(CanvasState& canvas) {
    if (identity != canvas.Identity()) {
        identity = 0;
        revision = 0;  // which has nothing of it yet
        Resize(copy, canvas.Size(), device.operation);
        size = canvas.Size();
    }
    std::vector<PixelRect> changed = canvas.ChangesSince(revision);
    const PixelSource source = SourceOf(canvas);
    for (const PixelRect& part : changed) {
        ConvertPart(source, part, copy.data() + Offset(part.x, part.y, size.width), size.width);
    }
    identity = canvas.Identity();
    revision = canvas.Revision();
    return changed;
}

void Frame::ShowCopy(std::vector<PixelRect> changed) {
    if (!changed.empty()) {
        largeInARow = IsLarge(changed, size) ? largeInARow + 1 : 0;
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
    const PixelSource source = {copy.data(), size, nullptr};
    TagKivBitmapInfo bitmap = BitmapOf(source, part, room, device.operation);
    bitmap.dstRect = Unsigned(to);
    device.Check(device.Surface().KivDrawBitmap(target, bitmap));
}

}  // namespace kivgles::kit
