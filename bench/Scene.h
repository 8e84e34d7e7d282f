#ifndef KIVGLES_BENCH_SCENE_H
#define KIVGLES_BENCH_SCENE_H

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// What all contestants draw. Pixels of the layer, y downwards; colours are not premultiplied.

namespace bench {

constexpr int WINDOW_WIDTH = 1280;
constexpr int WINDOW_HEIGHT = 720;
constexpr unsigned int STANDARD_SIZE = 40;  // the glyph size that the font is loaded with
constexpr int BASELINE_ABOVE_BOTTOM = 10;   // of a line's box

struct Color {
    std::uint8_t r, g, b, a;
};

struct Box {
    int x, y, width, height;
};

// Replaces what it covers.
struct Rect {
    Box box;
    Color color;
};

// The ellipse that fits into the box; replaces what it covers.
struct Round {
    Box box;
    Color color;
};

// Replaces what it covers. `rgba` has box.width * box.height opaque pixels of 4 bytes.
struct Bitmap {
    Box box;
    const std::uint8_t* rgba;
};

// One line, blended over what is there, its pen starting at the box's left edge.
struct Line {
    Box box;
    Color color;
    std::u16string text;  // ASCII
    unsigned int size;    // glyph size in pixels
    bool bold;
};

using Item = std::variant<Rect, Round, Bitmap, Line>;

// What a frame holds.
struct Workload {
    std::string kind = "scene";  // scene, text, rect, round, bitmap or nothing; or one of MakePictures
    int count = 1;               // items of that kind, spread over the layer; a scene is always one
    int width = 200;             // of a rect, round or bitmap
    int height = 24;
    int length = 30;  // characters of a line
    unsigned int size = STANDARD_SIZE;
    bool bold = false;
    int layerWidth = WINDOW_WIDTH;
    int layerHeight = WINDOW_HEIGHT;
};

}  // namespace bench

#endif  // KIVGLES_BENCH_SCENE_H
