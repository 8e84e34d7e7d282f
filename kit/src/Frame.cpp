// What a device shows.

#include <algorithm>
#include <utility>

#include "Device.h"
#include "Pixels.h"

namespace kivgles::kit {

void Device::Show(CanvasState& canvas) {
    CheckLayerSize(canvas.size, maxSide, operation);
    (void)Surface();  // without a window everything stays as it is
    CanvasState::Receiver taking = std::move(receiver);
    std::vector<PixelRect> changed = canvas.Take(taking);  // an error leaves none, and the copy as it was
    Resize(copy, canvas.size, operation);
    receiver = std::move(taking);
    copySize = canvas.size;
    const PixelView view = ViewOf(canvas);
    std::int64_t area = 0;
    for (PixelRect& part : changed) {
        area += Area(part);
        part = spares[PICTURE].isCurrent ? Different(view, part, copy.data()) : part;  // or all is needed
        Convert(view, part, Format::PREMULTIPLIED, copy.data() + Offset(part.x, part.y, copySize.width),
                copySize.width);
    }
    changed.erase(std::remove_if(changed.begin(), changed.end(), IsEmpty), changed.end());
    if (area > 0) {
        largeInARow = 4 * area > Area(Whole(copySize)) ? largeInARow + 1 : 0;
    }
    showsCopy = true;
    shown = nullptr;
    ShowCopy(std::move(changed));
}

void Device::Show(const LayerState& layer) {
    Blit(layer.handle, Whole(layer.size), FBO_HANDLE_BASE, Whole(windowSize));
    Check(Surface().KivRefreshOnSrceen());
    showsCopy = false;
    shown = &layer;
}

bool Device::ShowAgain() {
    if (shown != nullptr) {
        Show(*shown);
    } else if (showsCopy) {
        ShowCopy({});
    }
    return shown != nullptr || showsCopy;
}

void Device::ShowCopy(std::vector<PixelRect> changed) {
    const bool wasCurrent =
        std::exchange(spares[PICTURE].isCurrent, false) && AreEqual(spares[PICTURE].size, copySize);
    const bool changesMuch = changed.empty() ? !wasCurrent : largeInARow >= 2;
    if (!AreEqual(copySize, windowSize) || (spares[PICTURE].handle == 0 && IsFull()) || changesMuch) {
        HandOver(FBO_HANDLE_BASE, Whole(copySize), Whole(windowSize));
    } else {
        SpareLayer& layer = Provide(PICTURE, copySize);
        if (!wasCurrent) {
            changed = {Whole(copySize)};
        }
        for (const PixelRect& part : changed) {
            HandOver(layer.handle, part, part);
        }
        layer.isCurrent = true;
        Blit(layer.handle, Whole(copySize), FBO_HANDLE_BASE, Whole(windowSize));
    }
    Check(Surface().KivRefreshOnSrceen());
}

// A part of the copy into a layer of the window's size, or onto the window.
void Device::HandOver(unsigned int target, const PixelRect& part, const PixelRect& to) {
    const PixelView view = {copy.data(), copySize, Format::PREMULTIPLIED};
    TagKivBitmapInfo bitmap = BitmapOf(view, part, Format::PREMULTIPLIED, room, operation);
    bitmap.dstRect = Unsigned(to);
    Check(Surface().KivDrawBitmap(target, bitmap));
}

}  // namespace kivgles::kit
