// What a canvas does beside Cairo: changes, cut shapes, fills, bytes, a client's contexts, errors.

#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "Pixels.h"
#include "Snapshot.h"
#include "kivgles/kit/Text.h"

namespace {

bool noMemory = false;

}  // namespace

extern "C" cairo_t* cairo_create(cairo_surface_t* target) {
    static const auto next = reinterpret_cast<decltype(&cairo_create)>(dlsym(RTLD_NEXT, "cairo_create"));
    return next(noMemory ? nullptr : target);
}

namespace kivgles::kit {
namespace {

constexpr Color WHITE = {255, 255, 255};
constexpr Color RED = {255, 0, 0};
constexpr Size SIZE = {60, 40};
constexpr double FAR = 3e9;

// One of each operation, with edges between pixels and beyond the canvas; numbers of all kinds.
constexpr std::size_t PAINT_NUM = 10;
void Paint(Canvas& canvas, std::size_t which, int x = 3, double y = 4.5) {
    switch (which) {
        case 0:
            return canvas.Rectangle({x, y, 10, 7.3F}, {x, 200, 10, 128});
        case 1:
            return canvas.Clear({40, 30, 30, 30}, WHITE);
        case 2:
            return canvas.RoundedRectangle({5.2, 20, 30, 14}, 5, RED);
        case 3:
            return canvas.Disc({50.5, 9}, 12.3, Fill::Gradient({40, 0}, RED, {60, 0}, WHITE));
        case 4:
            return canvas.Arc({30, 20}, 19, 3, 200, -100, RED);
        case 5:
            return canvas.Polyline({{-5, 30}, {14, 5.5}, {18, 30}}, 5, WHITE);
        case 6:
            return canvas.Polygon({{40, 35}, {58, 22.2}, {55, 39}}, {9, 9, 9});
        case 7:
            return cairo_paint(canvas.Cairo({30.5, 5, 7, 7}));
        case 8:
            Text(12, RED).Italic().Underlined().Outlined(WHITE, 2).Draw(canvas, "fjÅg", {4, 9, 50, 9});
            return;
        default:
            Text(9, WHITE).On(RED).Right().Draw(canvas, "a\nb", {0, 20, 60, 30});
    }
}

int AreaOf(const std::vector<PixelRect>& parts) {
    return std::accumulate(parts.begin(), parts.end(), 0,
                           [](int sum, const PixelRect& part) { return sum + part.width * part.height; });
}

// Whoever took it over at some time, and takes over what has changed since, has it as it is.
TEST(Canvas, TellsEachReceiverWhatItLacks) {
    Canvas canvas(SIZE);
    CanvasState& changes = CanvasState::Of(canvas, "");
    std::vector<std::pair<CanvasState::Receiver, Snapshot>> receivers;
    for (std::size_t step = 0, random = 1; step < 120; ++step) {
        receivers.emplace_back(nullptr, Painted(SIZE, [](Canvas&) {}));
        random = random * 1103515245 + 12345;
        Paint(canvas, (step < 20 ? step : random >> 16) % PAINT_NUM);
        const Snapshot now(canvas);
        for (auto* const receiver : {&receivers.back(), &receivers[(random >> 8) % receivers.size()]}) {
            for (const PixelRect& part : changes.Take(receiver->first)) {
                for (int i = 0; i < part.width * part.height; ++i) {
                    const auto at = static_cast<std::size_t>((part.y + i / part.width) * SIZE.width + part.x +
                                                             i % part.width);
                    receiver->second.pixels.at(at) = now.pixels[at];
                }
            }
            ASSERT_EQ(receiver->second, now) << "step " << step;
        }
    }
    EXPECT_TRUE(changes.Take(receivers.back().first).empty());
    CanvasState::Receiver elsewhere = receivers.back().first;
    EXPECT_EQ(AreaOf(CanvasState(SIZE, "").Take(elsewhere)), 2400);
    receivers.back().first = elsewhere;
    EXPECT_EQ(AreaOf(changes.Take(elsewhere)), 2400) << "it took over another picture meanwhile";
}

TEST(Canvas, ChangesNoMoreThanItsShapesTake) {
    constexpr Size LARGE = {1000, 1000};
    Canvas canvas(LARGE);
    CanvasState& changes = CanvasState::Of(canvas, "");
    CanvasState::Receiver one, two;
    EXPECT_EQ(AreaOf(changes.Take(one)), 1000000) << "at first everything";
    for (int i = 0; i < 40; ++i) {
        canvas.Rectangle({25 * i, 25 * i, 20, 20}, RED);
    }
    EXPECT_LT(AreaOf(changes.Take(one)), 990025);
    changes.Take(two);
    for (int frame = 0; frame < 40; ++frame) {
        canvas.Rectangle({10, 900, 30, 20}, RED);
        canvas.Disc({20, 910}, 5, WHITE);
        canvas.Rectangle({900, 10, 2, 2}, RED);
        EXPECT_EQ(AreaOf(changes.Take(one)), 604);
    }
    EXPECT_EQ(AreaOf(changes.Take(two)), 604) << "for one that lags behind, too";
}

TEST(Canvas, CutsWhatReachesFar) {
    const Snapshot shown = Painted(SIZE, [](Canvas& canvas) {
        canvas.Rectangle({-FAR, -FAR, 2 * FAR, FAR + 5}, RED);
        canvas.RoundedRectangle({-FAR, 5, 2 * FAR, 5}, 1000, RED);
        canvas.Polygon({{-FAR, 10}, {FAR, 10}, {FAR, 15}, {-FAR, 15}}, RED);
        canvas.Polyline({{-FAR, 9 * FAR}, {-FAR, 17.5}, {FAR, 17.5}}, 5, RED);
        canvas.RoundedRectangle({-FAR, 20, 2 * FAR, FAR}, FAR, WHITE);
        canvas.Disc({30, 30030}, 30000, RED);
        canvas.Line({-FAR, 5 - FAR}, {FAR, 5 + FAR}, 3, {0, 0, 255});
    });
    for (const int x : {40, 59}) {
        for (int y = 0; y < 40; ++y) {
            ASSERT_EQ(shown.At(x, y), y < 20 || y > 30 ? 0xFFFF0000 : y < 30 ? 0xFFFFFFFF : shown.At(x, 30));
        }
    }
    EXPECT_EQ(shown.At(20, 25), 0xFF0000FF);
}

TEST(Canvas, HasRoundShapesWhereTheirAnglesAre) {
    const Snapshot shown = Painted(SIZE, [](Canvas& canvas) {
        canvas.Disc({10, 10}, 8, RED);
        canvas.Ring({30, 10}, 8, 3, RED);
        canvas.Arc({50, 10}, 8, 3, 360, 90, RED);
        canvas.Arc({10, 30}, 8, 9, -270, -90, RED);
        canvas.Arc({30, 30}, 8, 3, 45, -1000, RED);
        canvas.Disc({0, 0}, 30001, RED);
    });
    for (const auto& [x, y, is] : {std::tuple{10, 10, true},
                                   {30, 10, false},
                                   {24, 10, true},
                                   {36, 10, true},
                                   {53, 15, true},
                                   {46, 4, false},
                                   {54, 4, false},
                                   {13, 33, true},
                                   {13, 27, false},
                                   {7, 33, false},
                                   {30, 36, true},
                                   {36, 30, true}}) {
        EXPECT_EQ(shown.At(x, y), is ? 0xFFFF0000 : 0) << x << "," << y;
    }
}

TEST(Canvas, DrawsNothingOfShapesWithoutExtentOrNumber) {
    for (const double bad : {std::nan(""), HUGE_VAL, -1e300, -1.0, 0.0}) {
        const auto paint = [bad](Canvas& canvas) {
            canvas.Rectangle({5, 5, bad, 9}, RED);
            canvas.RoundedRectangle({5, 5, 9, bad}, 2, RED);
            canvas.Disc({20, 20}, bad, RED);
            canvas.Line({5, 5}, {20, bad}, std::min(bad, 0.0), RED);
            canvas.Draw(Canvas({2, 2}), {1, 1}, bad);
            canvas.Rectangle({5, 5, 5, 5}, Fill::Gradient({bad, 7}, RED, {bad, 7}, WHITE));
            if (!(std::abs(bad) < 2)) {
                canvas.Polygon({{1, 1}, {20, bad}, {30, 30}}, RED);
                canvas.Polyline({{1, 1}, {bad, 9}}, 4, RED);
                canvas.Arc({20, 20}, 9, 3, bad, bad, RED);
            }
        };
        EXPECT_EQ(Painted(SIZE, paint), Painted(SIZE, [](Canvas&) {})) << bad;
    }
}

TEST(Canvas, BlendsAndClearReplaces) {
    constexpr std::uint8_t PIXELS[] = {255, 0, 0, 128, 0, 0, 255, 255};
    const Snapshot shown = Painted(SIZE, [&](Canvas& canvas) {
        canvas.Rectangle({0, 0, 60, 20}, WHITE);
        canvas.Rectangle({0, 0, 10, 10}, {0, 0, 0, 128});
        canvas.Clear({10, 0, 10, 10}, {0, 0, 0, 128});
        canvas.Clear({20, 0, 21, 10}, Fill::Gradient({20, 0}, TRANSPARENT, {41, 0}, WHITE));
        canvas.Bar({0.5, 20, 40, 5}, 0.51, {255, 0, 0, 100}, {255, 0, 0, 100});
        canvas.Bar({0, 30, 20, 5}, std::nan(""), WHITE, RED);
        canvas.Draw({PIXELS, {2, 1}}, {20, 30, 8, 4});
        canvas.Draw({PIXELS, {2, 1}, true}, {40, 30, 8, 4}, 0.5);
    });
    EXPECT_EQ(shown.At(5, 5), 0xFF7F7F7F);
    EXPECT_EQ(shown.At(15, 5), 0x80000000);
    EXPECT_EQ(shown.At(30, 5) & 0xFF, shown.At(30, 5) >> 24)
        << "white, and not grey, though half transparent";
    for (int x = 1; x < 40; ++x) {
        ASSERT_EQ(shown.At(x, 22), 0x64640000) << "no seam at " << x;
    }
    EXPECT_EQ(shown.At(0, 32), 0xFFFF0000);
    EXPECT_EQ(shown.At(20, 30), 0x80800000) << "its edges do not fade";
    EXPECT_EQ(shown.At(47, 33), 0x80000080);
}

// The rule: component by 255 times alpha, to the nearest, and back.
TEST(Pixels, OfAllColorsAreConverted) {
    for (unsigned int i = 0; i < 65536; ++i) {
        const unsigned int value = i & 0xFF;
        const unsigned int alpha = i >> 8;
        const std::uint8_t rgba[] = {static_cast<std::uint8_t>(value), 7, 255,
                                     static_cast<std::uint8_t>(alpha)};
        std::uint8_t result[4];
        std::uint32_t cairo = 0;
        const auto convert = [&](Format from, Format to, std::uint8_t* r) {
            Convert({rgba, {1, 1}, from}, {0, 0, 1, 1}, to, r, 1);
        };
        convert(Format::STRAIGHT, Format::PREMULTIPLIED, result);
        convert(Format::STRAIGHT, Format::CAIRO, reinterpret_cast<std::uint8_t*>(&cairo));
        ASSERT_EQ(result[0], (value * alpha + 127) / 255) << i;
        ASSERT_EQ(cairo, alpha << 24 | unsigned{result[0]} << 16 | unsigned{result[1]} << 8 | alpha) << i;
        convert(Format::PREMULTIPLIED, Format::STRAIGHT, result);
        ASSERT_EQ(result[0], alpha == 0 ? 0 : std::min((value * 255 + alpha / 2) / alpha, 255U)) << i;
    }
}

TEST(Canvas, OutlivesWhatAClientDoesToItsContexts) {
    Canvas canvas(SIZE);
    cairo_push_group(canvas.Cairo());
    cairo_scale(canvas.Cairo(), 0, 0);
    cairo_surface_finish(cairo_get_target(canvas.Cairo()));
    canvas.Clear(WHITE);
    cairo_paint(canvas.Cairo({0, 0, 3.5, 4}));
    EXPECT_EQ(Snapshot(canvas).At(3, 3), 0xFF000000);
    EXPECT_EQ(Snapshot(canvas).At(4, 3), 0xFFFFFFFF);
}

TEST(Canvas, IsTheSameWhenMovedOrFromAFile) {
    const std::string path = testing::TempDir() + "canvas.png";
    Canvas first(SIZE);
    Paint(first, 0);
    first.WritePng(path);
    const Snapshot before(first);
    const Canvas second(std::move(first));
    EXPECT_EQ(ErrorOf([&] { first.Clear(RED); }), "-1 Canvas::Clear: the canvas was moved away");
    first = Canvas::FromPng(path);
    EXPECT_EQ(Snapshot(first), before);
}

TEST(Canvas, SaysWhatIsWrong) {
    Canvas canvas(SIZE);
    const auto make = [](Size size) { return ErrorOf([size] { Canvas{size}; }); };
    const auto read = [](const char* path) { return ErrorOf([path] { Canvas::FromPng(path); }); };
    const auto draw = [&](const auto& what) { return ErrorOf([&] { canvas.Draw(what, Rect(0, 0, 9, 9)); }); };
    EXPECT_EQ(make({0, 40}), "-1 Canvas: 0 by 40 pixels hold nothing");
    EXPECT_EQ(make({1, 32768}), "-2 Canvas: 1 by 32768 pixels are more than 32767 on a side");
    EXPECT_EQ(draw(Image{}), "-1 Canvas::Draw: the image has no pixels");
    EXPECT_EQ(draw(canvas), "-1 Canvas::Draw: a canvas cannot be drawn into itself");
    EXPECT_EQ(read("/nowhere.png"), "-5 Canvas::FromPng: /nowhere.png: file not found");
    EXPECT_EQ(read("/proc/self/exe"),
              "-5 Canvas::FromPng: /proc/self/exe is no PNG file, or there is no memory for it");
    noMemory = true;
    EXPECT_EQ(make(SIZE), "-6 Canvas: no memory for 60 by 40 pixels");
    EXPECT_EQ(ErrorOf([&] { canvas.Cairo(); }), "-6 Canvas::Cairo: out of memory");
    noMemory = false;
    EXPECT_NE(canvas.Cairo(), nullptr);
}

}  // namespace
}  // namespace kivgles::kit
