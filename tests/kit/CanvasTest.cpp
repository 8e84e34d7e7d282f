// What a canvas does beside Cairo: changes, cut shapes, fills, bytes, a client's contexts, errors.

#include <cmath>

#include <dlfcn.h>

#include "Pixels.h"
#include "Stage.h"
#include "kivgles/kit/Text.h"

static bool noMemory = false;

extern "C" cairo_t* cairo_create(cairo_surface_t* target) {
    static const auto next = reinterpret_cast<decltype(&cairo_create)>(dlsym(RTLD_NEXT, "cairo_create"));
    return next(noMemory ? nullptr : target);
}

namespace kivgles::kit {
namespace {

constexpr Size SIZE = {60, 40};
constexpr double FAR = 3e9;
constexpr std::uint32_t R = 0xFFFF0000;
constexpr std::uint8_t PIXELS[] = {255, 0, 0, 128, 0, 0, 255, 255};

// One of the operations, with edges between pixels and beyond the canvas; the others have no extent.
void Paint(Canvas& canvas, std::size_t which) {
    auto on = [which, i = std::size_t{0}]() mutable { return which == i++ ? 1 : 0; };
    canvas.Rectangle({3, 4.5, 10 * on(), 7.3F}, {3, 200, 10, 128});
    canvas.Clear({40, 30, 30 * on(), 30}, WHITE);
    canvas.RoundedRectangle({5.2, 20, 30 * on(), 14}, 5, RED);
    canvas.Disc({50.5, 9}, 12.3 * on(), Fill::Gradient({40, 0}, RED, {60, 0}, WHITE));
    canvas.Arc({30, 20}, 19 * on(), 3, 200, -100, RED);
    canvas.Polyline({{-5, 30}, {14, 5.5}, {18, 30}}, 5 * on(), WHITE);
    canvas.Draw({PIXELS, {2, 1}}, {20.5, 1, 8, 4}, 0.5 * on());
    Text(12, RED).Italic().Underlined().Outlined(WHITE, 2).Draw(canvas, "fjÅg", {4, 9, 50 * on(), 9});
    Text(9, WHITE).On(RED).Right().Draw(canvas, "a\nb", {0, 20, 60 * on(), 30});
    cairo_paint(canvas.Cairo({30.5, 5, 7 * on(), 7}));
}

// Whoever took it over at some time, and takes over what has changed since, has it as it is.
TEST(Canvas, TellsEachReceiverWhatItLacksAndNoMore) {
    Canvas canvas(SIZE);
    CanvasState& state = CanvasState::Of(canvas, "");
    std::vector<std::pair<CanvasState::Receiver, std::vector<std::uint32_t>>> receivers;
    for (std::size_t step = 0, random = 1; step < 120; ++step) {
        receivers.emplace_back(nullptr, PixelsOf(Canvas(SIZE)));
        random = random * 1103515245 + 12345;
        Paint(canvas, (step < 20 ? step : random >> 16) % 10);
        const auto now = PixelsOf(canvas);
        for (auto* const receiver : {&receivers.back(), &receivers[(random >> 8) % receivers.size()]}) {
            for (const PixelRect& part : state.Take(receiver->first)) {
                for (int i = 0; i < part.width * part.height; ++i) {
                    const int at = (part.y + i / part.width) * SIZE.width + part.x + i % part.width;
                    receiver->second.at(std::size_t(at)) = now[std::size_t(at)];
                }
            }
            ASSERT_EQ(receiver->second, now) << "step " << step;
        }
    }
    auto one = receivers.back().first, two = one;
    EXPECT_TRUE(state.Take(one).empty());
    CanvasState(SIZE, "").Take(one);
    ASSERT_EQ(state.Take(one).size(), 1U) << "it took over another picture meanwhile";
    for (int frame = 0; frame < 40; ++frame) {
        canvas.Disc({20, 20}, 2, WHITE);
        for (auto* const receiver : {&one, frame == 39 ? &two : &one}) {
            for (const PixelRect& part : state.Take(*receiver)) {
                EXPECT_EQ(Area(part), 16) << "for one that lags behind, too";
            }
        }
    }
    for (int i = 0; i < 20; ++i) {
        canvas.Rectangle({3 * i, 2 * i, 1, 1}, RED);
    }
    EXPECT_LE(state.Take(one).size(), 16U);
}

TEST(Canvas, PaintsAsItsArgumentsSayAndCutsWhatReachesFar) {
    Canvas far(SIZE), round(SIZE), blended(SIZE), red({3, 3});
    far.Rectangle({-FAR, -FAR, 2 * FAR, FAR + 5}, RED);
    far.RoundedRectangle({-FAR, 5, 2 * FAR, 5}, 1000, RED);
    far.Polygon({{-FAR, 10}, {FAR, 10}, {FAR, 15}, {-FAR, 15}}, RED);
    far.Polyline({{-FAR, 9 * FAR}, {-FAR, 17.5}, {FAR, 17.5}}, 5, RED);
    far.RoundedRectangle({-FAR, 20, 2 * FAR, FAR}, FAR, WHITE);
    far.Disc({30, 30030}, 30000, RED);
    far.Line({-FAR, 5 - FAR}, {FAR, 5 + FAR}, 3, BLUE);
    EXPECT_TRUE(Shows(far, R, {{40, 0}, {59, 4}, {40, 5}, {59, 14}, {40, 19}, {40, 31}, {59, 39}}));
    EXPECT_TRUE(Shows(far, ~0U, {{40, 20}, {59, 29}}) && Shows(far, 0xFF0000FF, {{20, 25}}));

    round.Disc({10, 10}, 8, RED);
    round.Ring({30, 10}, 8, 3, RED);
    round.Arc({50, 10}, 8, 3, 360, 90, RED);
    round.Arc({10, 30}, 8, 9, -270, -90, RED);
    round.Arc({30, 30}, 8, 3, 45, -1000, RED);
    round.Disc({0, 0}, 30001, RED);
    round.RoundedRectangle({40, 20, 20, 12}, 99, RED);
    round.RoundedRectangle({40, 34, 5, 5}, -1, RED);
    round.Polyline({{52, 36}}, 6, RED);
    EXPECT_TRUE(Shows(round, R, {{10, 10}, {24, 10}, {36, 10}, {53, 15}, {13, 33}, {30, 36}, {36, 30}}));
    EXPECT_TRUE(Shows(round, R, {{43, 25}, {56, 26}, {40, 34}, {44, 38}, {51, 34}, {53, 37}}));
    EXPECT_TRUE(
        Shows(round, 0, {{30, 10}, {46, 4}, {54, 4}, {13, 27}, {7, 33}, {30, 30}, {40, 20}, {59, 31}}));

    red.Clear({999, -5, 0});
    blended.Rectangle({0, 0, 60, 20}, WHITE);
    blended.Rectangle({0, 0, 10, 10}, {0, 0, 0, 128});
    blended.Clear({10, 0, 10, 10}, {0, 0, 0, 128});
    blended.Clear({20, 0, 20, 10}, Fill::Gradient({20, 0}, TRANSPARENT, {40, 0}, WHITE));
    blended.Bar({0.5, 20, 40, 5}, 0.51, {255, 0, 0, 100}, {255, 255, 255, 100});
    blended.Bar({0, 26, 20, 2}, std::nan(""), WHITE, RED);
    blended.Bar({30, 26, 20.4, 2}, 2, RED, WHITE);
    blended.Draw({PIXELS, {2, 1}}, {20, 30, 8, 4});
    blended.Draw({PIXELS, {2, 1}, true}, {40, 30, 8, 4}, 0.5);
    blended.Draw(red, Point(-1, 38), 7);
    EXPECT_TRUE(Shows(blended, 0xFF7F7F7F, {{5, 5}}) && Shows(blended, 0x80000000, {{15, 5}}));
    const std::uint32_t half = PixelsOf(blended)[330];
    EXPECT_EQ(half & 0xFF, half >> 24) << "white, and not grey, though half transparent";
    EXPECT_TRUE(Shows(blended, 0x64640000, {{1, 22}, {20, 22}}) && Shows(blended, 0x64646464, {{21, 22}}));
    EXPECT_TRUE(Shows(blended, 0x80800000, {{20, 30}, {20, 33}})) << "an image's edges do not fade";
    EXPECT_TRUE(Shows(blended, R, {{0, 26}, {49, 27}, {0, 38}, {1, 39}}) &&
                Shows(blended, 0x66660000, {{50, 26}}));
    EXPECT_TRUE(Shows(blended, 0x80000080, {{47, 33}}) && Shows(blended, 0, {{28, 33}, {48, 33}, {2, 39}}));
}

TEST(Canvas, DrawsNothingOfShapesWithoutExtentOrNumber) {
    Canvas canvas(SIZE);
    for (const double bad : {std::nan(""), HUGE_VAL, -1e300, -1.0, 0.0}) {
        canvas.Rectangle({5, 5, bad, 9}, RED);
        canvas.RoundedRectangle({5, 5, 9, bad}, 2, RED);
        canvas.Disc({20, 20}, bad, RED);
        canvas.Line({5, 5}, {20, bad}, std::min(bad, 0.0), RED);
        canvas.Draw(Canvas({2, 2}), {1, 1}, bad);
        canvas.Rectangle({5, 5, 5, 5}, Fill::Gradient({bad, 7}, RED, {bad, 7}, WHITE));
        const double worse = std::abs(bad) < 2 ? std::nan("") : bad;
        canvas.Polygon({{1, 1}, {20, worse}, {30, 30}}, RED);
        canvas.Polyline({{1, 1}, {worse, 9}}, 4, RED);
        canvas.Arc({20, 20}, 9, 3, worse, worse, RED);
        EXPECT_EQ(PixelsOf(canvas), PixelsOf(Canvas(SIZE))) << bad;
    }
}

// The rule: component by 255 times alpha, to the nearest, and back.
TEST(Pixels, OfAllColorsAreConverted) {
    for (unsigned int i = 0; i < 65536; ++i) {
        const unsigned int value = i & 0xFF, alpha = i >> 8, product = (value * alpha + 127) / 255;
        const std::uint8_t rgba[] = {std::uint8_t(value), 7, 255, std::uint8_t(alpha)};
        std::uint8_t result[4], cairo[4];
        Convert({rgba, {1, 1}, Format::STRAIGHT}, {0, 0, 1, 1}, Format::PREMULTIPLIED, result, 1);
        Convert({rgba, {1, 1}, Format::STRAIGHT}, {0, 0, 1, 1}, Format::CAIRO, cairo, 1);
        ASSERT_EQ(product | alpha << 8, result[0] | result[2] << 8U) << i;
        ASSERT_EQ(alpha | product << 16 | alpha << 24, cairo[0] | cairo[2] << 16U | unsigned{cairo[3]} << 24)
            << i;
        Convert({rgba, {1, 1}, Format::PREMULTIPLIED}, {0, 0, 1, 1}, Format::STRAIGHT, result, 1);
        ASSERT_EQ(result[0], alpha == 0 ? 0 : std::min((value * 255 + alpha / 2) / alpha, 255U)) << i;
    }
}

TEST(Canvas, OutlivesWhatAClientDoesToItsContextsAndSaysWhatIsWrong) {
    Canvas canvas(SIZE);
    cairo_push_group(canvas.Cairo());
    cairo_scale(canvas.Cairo(), 0, 0);
    cairo_surface_finish(cairo_get_target(canvas.Cairo()));
    canvas.Clear({200, 100, 0, 128});
    cairo_paint(canvas.Cairo({0, 0, 3.5, 4}));
    const std::string path = testing::TempDir() + "canvas.png";
    canvas.WritePng(path);
    const Canvas moved(std::move(canvas));
    EXPECT_TRUE(Shows(moved, 0xFF000000, {{3, 3}}) && Shows(moved, 0x80643200, {{4, 3}}));
    EXPECT_EQ(ErrorOf([&] { canvas.Clear(RED); }), "-1 Canvas::Clear: the canvas was moved away");
    canvas = Canvas::FromPng(path);
    EXPECT_EQ(PixelsOf(canvas), PixelsOf(moved));

    const auto make = [](Size size) { return ErrorOf([size] { Canvas{size}; }); };
    const auto read = [](const char* file) { return ErrorOf([file] { Canvas::FromPng(file); }); };
    const auto draw = [&](const auto& what) { return ErrorOf([&] { canvas.Draw(what, Rect(0, 0, 9, 9)); }); };
    EXPECT_EQ(make({0, 40}), "-1 Canvas: 0 by 40 pixels hold nothing");
    EXPECT_EQ(make({1, 32768}), "-2 Canvas: 1 by 32768 pixels are more than 32767 on a side");
    EXPECT_EQ(draw(Image{}), "-1 Canvas::Draw: the image has no pixels");
    EXPECT_EQ(draw(canvas), "-1 Canvas::Draw: a canvas cannot be drawn into itself");
    EXPECT_EQ(ErrorOf([&] { canvas.WritePng("/"); }).find("-5 Canvas::WritePng: /: "), 0U);
    EXPECT_EQ(read("/nowhere.png"), "-5 Canvas::FromPng: /nowhere.png: file not found");
    EXPECT_NE(read("/proc/self/exe").find("-5 Canvas::FromPng: /proc/self/exe is no PNG file"),
              std::string::npos);
    noMemory = true;
    EXPECT_EQ(make(SIZE), "-6 Canvas: no memory for 60 by 40 pixels");
    EXPECT_EQ(ErrorOf([&] { canvas.Cairo(); }), "-6 Canvas::Cairo: out of memory");
    noMemory = false;
    EXPECT_NE(canvas.Cairo(), nullptr);
}

}  // namespace
}  // namespace kivgles::kit
