// What a canvas does beside Cairo: changes, cut shapes, fills, bytes, a client's contexts, errors.

#include <cmath>

#include "Pixels.h"
#include "Stage.h"
#include "kivgles/kit/Text.h"
#include "support/Recorder.h"

static bool noMemory = false;

extern "C" cairo_t* cairo_create(cairo_surface_t* target) {
    return recorder::Next<decltype(cairo_create)>("cairo_create")(noMemory ? nullptr : target);
}
extern "C" void cairo_stroke(cairo_t* context) {
    if (noMemory) {
        cairo_surface_finish(cairo_get_target(context));  // of no use either, from then on
    }
    recorder::Next<decltype(cairo_stroke)>("cairo_stroke")(context);
}

namespace kivgles::kit {

constexpr std::uint8_t PIXELS[] = {1, 1, 254, 128, 0, 0, 255, 255};

TEST(Canvas, TellsEachReceiverWhatItLacksAndNoMore) {
    Canvas canvas({60, 200});
    CanvasState& state = CanvasState::Of(canvas, "");
    CanvasState::Receiver one, another;
    state.Take(one);
    // Below each other, with edges between pixels and beyond the canvas
    canvas.Disc({50.5, 9}, 12.3, Fill::Gradient({40, 0}, RED, {60, 0}, WHITE));
    canvas.Rectangle({3, 24.5, 10, 7.3F}, RED);
    canvas.Polyline({{-5, 70}, {14, 45.5}, {18, 70}}, 5, WHITE);
    canvas.Draw({PIXELS, {2, 1}}, {20.5, 81, 8, 4}, 0.5);
    Text(12, RED).Italic().Underlined().Outlined(WHITE, 2).Draw(canvas, "fjÅg", {4, 99, 50, 9});
    Text(9, WHITE).On(RED).Right().Draw(canvas, "a\nb", {0, 120, 60, 30});
    cairo_paint(canvas.Cairo({30.5, 155, 7, 7}));
    for (const PixelRect& part : state.Take(one)) {
        canvas.Clear(part, TRANSPARENT);
    }
    EXPECT_EQ(PixelsOf(canvas), PixelsOf(Canvas({60, 200}))) << "changes that it was not told of are left";
    state.Take(one), state.Take(another);
    canvas.Disc({20, 20}, 2, WHITE);
    EXPECT_EQ(Area(state.Take(one).at(0)), 16);
    canvas.Disc({20, 20}, 2, RED);
    EXPECT_EQ(Area(state.Take(another).at(0)), 16) << "for one that lags behind, too";
    CanvasState({60, 40}, "").Take(another);
    EXPECT_EQ(Area(state.Take(another).at(0)), 60 * 200) << "it took over another picture meanwhile";
    for (int i = 0; i < 20; ++i) {
        canvas.Rectangle({3 * i, 2 * i, 1, 1}, RED);
    }
    EXPECT_LE(state.Take(another).size(), 16U);
}

TEST(Canvas, PaintsAsItsArgumentsSayAndCutsWhatReachesFar) {
    const double FAR = 3e9, NONE = std::nan("");
    Canvas canvas({60, 120}), red({3, 3});
    red.Clear({999, -5, 0});
    canvas.Disc({0, 0}, 30001, RED);
    canvas.Line({0, 0}, {9, 9}, HUGE_VAL, RED);
    canvas.Rectangle({5, 5, 5, 5}, Fill::Gradient({5, 7}, RED, {5, NONE}, WHITE));
    canvas.Polygon({{1, 1}, {20, HUGE_VAL}, {30, 30}}, RED);
    canvas.Arc({20, 20}, 9, 3, 0, HUGE_VAL, RED);
    canvas.Arc({10, 10}, 8, 9, -270, -90, RED);
    canvas.Ring({30, 10}, 8, 3, RED);
    canvas.RoundedRectangle({40, 22, 20, 4}, 99, RED);
    canvas.RoundedRectangle({40, 34, 5, 5}, -1, RED);
    canvas.Polyline({{52, 36}}, 6, RED);
    canvas.Clear({10, 40, 10, 10}, {0, 0, 0, 128});
    canvas.Clear({20, 40, 20, 10}, Fill::Gradient({20, 0}, TRANSPARENT, {36, 0}, WHITE));  // never grey
    canvas.Bar({0.5, 50, 40, 5}, 0.51, {255, 0, 0, 100}, {255, 255, 255, 100});
    canvas.Bar({0, 56, 20, 2}, NONE, WHITE, RED);
    canvas.Draw({PIXELS, {2, 1}}, {20, 60, 8, 4});
    canvas.Draw({PIXELS + 4, {1, 1}, true}, {40, 60, 8, 4}, 0.5);
    canvas.Draw(red, Point(-1, 68), 7);
    canvas.Rectangle({-FAR, 75, 2 * FAR, 5}, RED);
    canvas.RoundedRectangle({-FAR, 90, 2 * FAR, FAR}, FAR, WHITE);
    canvas.Line({-FAR, 95 - FAR}, {FAR, 95 + FAR}, 3, BLUE);
    const std::pair<std::uint32_t, Places> rows[] = {
        {0, {{6, 6}, {7, 13}, {10, 25}, {20, 27}, {33, 10}, {41, 28}, {28, 63}, {48, 63}, {2, 68}}},
        {0xFFFF0000, {{13, 13}, {24, 10}, {36, 10}, {43, 24}, {56, 24}, {40, 34}, {44, 38}, {51, 34}}},
        {0xFFFF0000, {{0, 56}, {0, 68}, {1, 69}, {0, 75}, {59, 79}}},
        {0x80000000, {{15, 45}}},
        {0x64640000, {{20, 52}}},
        {0x64646464, {{21, 52}}},
        {0x8001017F, {{20, 60}, {20, 63}}},  // to the nearest; an image's edges do not fade
        {0x80000080, {{47, 63}}},
        {0xFFFFFFFF, {{37, 45}, {0, 90}, {59, 119}}},
        {0xFF0000FF, {{20, 115}}}};
    for (const auto& [color, places] : rows) {
        for (const auto& [x, y] : places) {
            EXPECT_EQ(PixelsOf(canvas).at(std::size_t(y * 60 + x)), color) << x << "," << y;
        }
    }
    EXPECT_EQ(PixelsOf(canvas)[45 * 60 + 30] & 0xFF, PixelsOf(canvas)[45 * 60 + 30] >> 24);
    std::uint8_t above[] = {1, 0, 3, 2};  // its alpha
    Convert({above, {1, 1}, Format::PREMULTIPLIED}, {0, 0, 1, 1}, Format::STRAIGHT, above, 1);
    EXPECT_EQ(std::vector(above, above + 4), (std::vector<std::uint8_t>{128, 0, 255, 2}));
}

TEST(Canvas, OutlivesWhatAClientDoesToItsContextsAndSaysWhatIsWrong) {
    Canvas canvas({5, 5}), other({5, 5});
    cairo_push_group(canvas.Cairo());
    cairo_surface_finish(cairo_get_target(canvas.Cairo()));
    canvas.Clear();
    cairo_paint(canvas.Cairo());
    canvas.Clear({0, 0, 2, 5}, TRANSPARENT);
    other.Draw(canvas, Point());
    EXPECT_TRUE(PixelsOf(other)[1] == 0 && PixelsOf(other)[2] == 0xFF000000);
    canvas.Clear({200, 100, 0, 128});
    cairo_paint(canvas.Cairo({0, 0, 3.5, 4}));
    EXPECT_TRUE(PixelsOf(canvas)[3] == 0xFF000000 && PixelsOf(canvas)[4] == 0x80643200);
    const std::string path = testing::TempDir() + "canvas.png";
    canvas.WritePng(path);
    Canvas own(std::move(canvas));
    EXPECT_EQ(PixelsOf(Canvas::FromPng(path)), PixelsOf(own));
    const auto make = [](Size size) { return ErrorOf([size] { Canvas{size}; }); };
    EXPECT_EQ(ErrorOf([&] { canvas.Clear(RED); }), "-1 Canvas::Clear: the canvas was moved away");
    EXPECT_EQ(make({40, 0}), "-1 Canvas: 40 by 0 pixels hold nothing");
    EXPECT_EQ(make({1, 32768}), "-2 Canvas: 1 by 32768 pixels are more than 32767 on a side");
    EXPECT_EQ(ErrorOf([&] { own.Draw(Image(), Rect()); }), "-1 Canvas::Draw: the image has no pixels");
    const Image none = {PIXELS, {0, 1}};
    EXPECT_EQ(ErrorOf([&] { own.Draw(none, Rect()); }),
              "-1 Canvas::Draw: the image: 0 by 1 pixels hold nothing");
    EXPECT_EQ(ErrorOf([&] { own.Draw(own, Point()); }),
              "-1 Canvas::Draw: a canvas cannot be drawn into itself");
    EXPECT_EQ(ErrorOf([&] { own.WritePng("/"); }).find("-5 Canvas::WritePng: /: "), 0U);
    EXPECT_EQ(ErrorOf([] { Canvas::FromPng("/dev/zero"); }), "-5 Canvas::FromPng: /dev/zero cannot be read");
    EXPECT_EQ(ErrorOf([] { Canvas::FromPng("/bin/sh"); }).find("-5 Canvas::FromPng: /bin/sh is no PNG"), 0U);
    noMemory = true;
    EXPECT_EQ(make({60, 40}), "-6 Canvas: no memory for 60 by 40 pixels");
    EXPECT_EQ(ErrorOf([&] { own.Cairo(); }), "-6 Canvas::Cairo: out of memory");
    EXPECT_EQ(ErrorOf([&] { own.Line({}, {4, 4}, 2, {0, 0, 0, 9}); }), "-6 Canvas::Line: out of memory");
    noMemory = false;
    EXPECT_EQ(ErrorOf([&] { own.Clear(RED); }), "") << "when there is memory again";
}

}  // namespace kivgles::kit
