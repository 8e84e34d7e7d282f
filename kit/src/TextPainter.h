#ifndef KIVGLES_KIT_TEXTPAINTER_H
#define KIVGLES_KIT_TEXTPAINTER_H

#include <string>

#include "LayerState.h"
#include "TextLayout.h"
#include "kivgles/kit/Geometry.h"

namespace kivgles::kit {

struct TextLook {
    Color color;
    Color background;
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    int size = 40;
    int lineHeight = 50;
};

// Draws what has been laid out into a layer.
//
// Owner:  a Text that is being drawn. Thread: any, with the device's lock held.
// Units:  pixels of GL.
class TextPainter {
 public:
    // The box's top-left corner is at (boxX, boxY).
    TextPainter(LayerState& targetLayer, const TextLook& textLook, int boxX, int boxY, const char* name)
        : layer(targetLayer), look(textLook), x(boxX), y(boxY), operation(name) {}

    void Draw(const TextLine& line) KIVGLES_REQUIRES(DEVICE_LOCK);

 private:
    void DrawBox(const Rect& box) KIVGLES_REQUIRES(DEVICE_LOCK);
    void DrawRun(const TextRun& run, int baseline) KIVGLES_REQUIRES(DEVICE_LOCK);
    void DrawUnits(unsigned int handle, const std::u16string& units, int penX, int penY)
        KIVGLES_REQUIRES(DEVICE_LOCK);

    LayerState& layer;
    const TextLook& look;
    int x;
    int y;
    const char* operation;
};

}  // namespace kivgles::kit

#endif  // KIVGLES_KIT_TEXTPAINTER_H
