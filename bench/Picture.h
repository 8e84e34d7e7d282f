#ifndef KIVGLES_BENCH_PICTURE_H
#define KIVGLES_BENCH_PICTURE_H

#include <string>
#include <variant>
#include <vector>

#include "Scene.h"

// What the kit is measured with, as plain numbers that it, and Cairo by hand, paint each in its own way.

namespace bench {

struct Place {
    double x, y;
};

// Replaces what it covers.
struct Ground {
    Box box;
    Color color;
};

// Everything else blends.
struct Card {
    Box box;
    int radius;  // of the corners; 0: a rectangle
    Color color;
};

// Clockwise, in degrees from the right.
struct Arc {
    Place center;
    double radius, thickness, start, sweep;
    Color color;
};

// With round ends and corners.
struct Stroke {
    std::vector<Place> points;
    double thickness;
    Color color;
};

enum class Side { LEFT, CENTER, RIGHT };

// One line, its baseline at the box's lower edge.
struct Label {
    Box box;
    std::string utf8;
    int size;
    bool bold;
    Side side;
    Color color;
};

using Mark = std::variant<Ground, Card, Arc, Stroke, Label>;

struct Picture {
    std::vector<Mark> marks;
    Box changed;  // nothing is painted beside it
};

// Defined by the contestant: paints over what was painted before, and shows the whole on the window. Returns
// when the work is done. A picture without marks is only shown again.
void Show(const Picture& picture);

// What frames paint in turn, what the one that they are compared with does, and what is there before.
struct Pictures {
    std::vector<Picture> full;
    Picture empty, before;
};
Pictures MakePictures(const std::string& kind);  // board, clock, dashboard, chart or labels

}  // namespace bench

#endif  // KIVGLES_BENCH_PICTURE_H
