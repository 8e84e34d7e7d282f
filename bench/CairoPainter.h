#ifndef KIVGLES_BENCH_CAIROPAINTER_H
#define KIVGLES_BENCH_CAIROPAINTER_H

#include <cstdint>
#include <vector>

#include <pango/pangocairo.h>

#include "Picture.h"

namespace bench {

// A picture of the window's size in memory that Cairo and Pango paint, as cheaply as it goes by hand: one
// context, and one layout for all texts. One thread, to the end of the program.
class CairoPainter {
 public:
    CairoPainter();

    void Paint(const Picture& picture);

    // Numbers 0xAARRGGBB, premultiplied, rows without anything between them.
    std::uint32_t* Pixels();

 private:
    void Draw(const Ground& ground);
    void Draw(const Card& card);
    void Draw(const Arc& arc);
    void Draw(const Stroke& stroke);
    void Draw(const Label& label);

    std::vector<std::uint32_t> pixels;
    cairo_surface_t* surface;
    cairo_t* context;
    PangoLayout* layout;
    PangoFontDescription* font;
};

}  // namespace bench

#endif  // KIVGLES_BENCH_CAIROPAINTER_H
