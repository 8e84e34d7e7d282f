#include "ByHand.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

namespace {

using kivgles::KivGLDrawSurface;
using LibraryColor = kivgles::TagKivColorRGBA;
using LibraryRect = kivgles::TagKivRectInfo;

constexpr LibraryColor WHITE{240, 244, 250, 255}, GREY{150, 170, 200, 255}, CARD{27, 41, 64, 255};
constexpr double PI = 3.14159265358979323846;

std::uint32_t Unsigned(double number) { return static_cast<std::uint32_t>(number); }

struct Style {
    std::uint32_t size;
    LibraryColor color;
    bool bold = false;
};

enum class At { LEFT, CENTER, RIGHT };

// A layer, and the requests that paint it.
class Sheet {
 public:
    Sheet(KivGLDrawSurface& sheetSurface, unsigned int sheetHandle)
        : surface(sheetSurface), handle(sheetHandle) {}

    Sheet(KivGLDrawSurface& sheetSurface, std::uint32_t width, std::uint32_t height) : surface(sheetSurface) {
        Check(surface.KivCreateGLFBO(handle, width, height, kivgles::KIV_COLOR_FORMAT_RGBA8888));
    }

    void Paint() const {
        for (const auto& request : requests) {
            Check(request(surface, handle));
        }
    }

    void Rectangle(const LibraryRect& box, const LibraryColor& color) {
        requests.emplace_back([box, color](KivGLDrawSurface& to, unsigned int layer) {
            return to.KivDrawRect(layer, box, color);
        });
    }

    void RoundedRectangle(const LibraryRect& box, std::uint32_t radius, const LibraryColor& color) {
        Rectangle({box.x, box.y + radius, box.width, box.height - 2 * radius}, color);
        Rectangle({box.x + radius, box.y, box.width - 2 * radius, radius}, color);
        Rectangle({box.x + radius, box.y + box.height - radius, box.width - 2 * radius, radius}, color);
        for (const std::uint32_t x : {box.x + radius, box.x + box.width - radius}) {
            for (const std::uint32_t y : {box.y + radius, box.y + box.height - radius}) {
                requests.emplace_back([x, y, radius, color](KivGLDrawSurface& to, unsigned int layer) {
                    return to.KivDrawRound(layer, {x, y, radius, radius}, color);
                });
            }
        }
    }

    // All pixels of a square sheet whose middles are inside, as rectangles of rows or of columns: whichever
    // are fewer.
    template <typename Inside>
    void Shape(std::uint32_t side, const LibraryColor& color, Inside inside) {
        const std::vector<LibraryRect> rows = Runs(side, inside);
        std::vector<LibraryRect> columns = Runs(side, [&](double x, double y) { return inside(y, x); });
        for (LibraryRect& box : columns) {
            box = {box.y, box.x, box.height, box.width};
        }
        for (const LibraryRect& box : rows.size() <= columns.size() ? rows : columns) {
            Rectangle(box, color);
        }
    }

    // Word by word. Returns the width.
    std::uint32_t Line(std::u16string_view line, const Style& style, At at, const LibraryRect& box) {
        const std::uint32_t space = (style.size * 3 + 5) / 10;
        std::vector<std::u16string> words;
        std::uint32_t width = 0;
        while (!line.empty()) {
            words.emplace_back(line.substr(0, line.find(u' ')));
            line.remove_prefix(std::min(words.back().size() + 1, line.size()));
            width += Measure(words.back(), style.size) + (line.empty() ? 0 : space);
        }
        const std::uint32_t room = box.width - width;
        std::uint32_t x = box.x + (at == At::LEFT ? 0 : at == At::CENTER ? room / 2 : room);
        for (const std::u16string& word : words) {
            Word(word, style, x, box.y + box.height);
            x += Measure(word, style.size) + space;
        }
        return width;
    }

    void CopyFrom(const Sheet& source, const LibraryRect& from, const LibraryRect& place) {
        requests.emplace_back([other = source.handle, from, place](KivGLDrawSurface& to, unsigned int layer) {
            return to.KivBlit({other, layer, from, place});
        });
    }

 private:
    template <typename Inside>
    static std::vector<LibraryRect> Runs(std::uint32_t side, Inside inside) {
        std::vector<LibraryRect> runs;
        for (std::uint32_t y = 0; y < side; ++y) {
            for (std::uint32_t x = 0; x < side;) {
                const std::uint32_t begin = x;
                while (x < side && inside(x + 0.5, y + 0.5)) {
                    ++x;
                }
                if (x > begin) {
                    AddRun(runs, {begin, y, x - begin, 1});
                } else {
                    ++x;
                }
            }
        }
        return runs;
    }

    // Rows that are alike become one rectangle.
    static void AddRun(std::vector<LibraryRect>& runs, const LibraryRect& run) {
        const auto above = std::find_if(runs.begin(), runs.end(), [&run](const LibraryRect& box) {
            return box.x == run.x && box.width == run.width && box.y + box.height == run.y;
        });
        if (above != runs.end()) {
            ++above->height;
        } else {
            runs.push_back(run);
        }
    }

    std::uint32_t Measure(const std::u16string& word, std::uint32_t size) {
        kivgles::TagKivTextInfo info{};
        info.text = word.c_str();
        info.textLength = static_cast<std::uint32_t>(word.size());
        info.fontSize = size;
        unsigned int width = 0;
        unsigned int height = 0;
        Check(surface.KivGetTextSize(info, width, height));
        return width;
    }

    void Word(const std::u16string& word, const Style& style, std::uint32_t x, std::uint32_t baseline) {
        requests.emplace_back([word, style, x, baseline](KivGLDrawSurface& to, unsigned int layer) {
            kivgles::TagKivTextInfo info{};
            info.text = word.c_str();
            info.textLength = static_cast<std::uint32_t>(word.size());
            info.fgColor = style.color;
            info.fontSize = style.size;
            info.bold = style.bold ? 1 : 0;
            return to.KivDrawText(layer, info, {x, baseline, 1, BASELINE_ABOVE_BOTTOM});
        });
    }

    KivGLDrawSurface& surface;
    unsigned int handle = 0;
    std::vector<std::function<int(KivGLDrawSurface&, unsigned int)>> requests;
};

struct Departure {
    const char16_t *time, *train, *destination, *via, *platform, *remark;
    LibraryColor color;
};

constexpr LibraryColor AMBER{255, 190, 84, 255};
constexpr LibraryColor RED{196, 56, 62, 255}, GREEN{30, 128, 88, 255}, BLUE{40, 100, 186, 255};
constexpr Departure DEPARTURES[] = {
    {u"14:31", u"ICE 71", u"Köln-Mülheim", u"Göttingen – Düren", u"3", u"", RED},
    {u"14:38", u"S 11", u"Flughafen Süd", u"Grünau – Lärchenweg – Ö…", u"11", u"+5 min", GREEN},
    {u"14:44", u"EC 218", u"Łódź Fabryczna", u"Kraków", u"7", u"", RED},
    {u"14:52", u"RE 4", u"Århus H", u"Malmö – København", u"1", u"+10 min", BLUE},
    {u"15:05", u"K 27", u"北京西", u"Beijing West", u"21", u"准点", RED},
    {u"15:11", u"S 2", u"Besançon-Viotte", u"Genève – Neuchâtel", u"10", u"cancelled", GREEN},
    {u"15:20", u"N 700", u"東京", u"Tōkyō, のりかえ 名古屋", u"14", u"", BLUE},
    {u"15:34", u"KTX 9", u"서울", u"Seoul", u"2", u"", RED}};

void AddRow(Sheet& sheet, std::uint32_t y, const Departure& row, const Style& large, const Style& small) {
    sheet.Line(row.time, large, At::LEFT, {44, y, 110, 40});
    sheet.Line(row.train, {small.size, small.color, true}, At::CENTER, {172, y, 112, 40});
    const std::uint32_t via = 326 + sheet.Line(row.destination, large, At::LEFT, {308, y, 420, 40});
    sheet.Line(row.via, {small.size, GREY}, At::LEFT, {via, y, 860 - via, 40});
    sheet.Line(row.platform, large, At::RIGHT, {880, y, 110, 40});
    sheet.Line(row.remark, {small.size, AMBER}, At::RIGHT, {1010, y, 226, 40});
}

// Where the font has no character.
void AddMissingBox(Sheet& sheet, const LibraryRect& box) {
    sheet.Rectangle({box.x, box.y, box.width, 1}, AMBER);
    sheet.Rectangle({box.x, box.y + box.height - 1, box.width, 1}, AMBER);
    sheet.Rectangle({box.x, box.y, 1, box.height}, AMBER);
    sheet.Rectangle({box.x + box.width - 1, box.y, 1, box.height}, AMBER);
}

std::function<void()> MakeBoard(KivGLDrawSurface& surface, unsigned int canvas) {
    Sheet shapes(surface, 2560, 1440);
    shapes.Rectangle({0, 0, 2560, 1440}, {14, 22, 38, 255});
    shapes.RoundedRectangle({48, 1300, 2464, 100}, 20, {58, 44, 20, 255});
    std::uint32_t y = 304;
    for (const Departure& departure : DEPARTURES) {
        shapes.RoundedRectangle({48, y, 2464, 112}, 20, CARD);
        shapes.RoundedRectangle({344, y + 24, 224, 72}, 16, departure.color);
        y += 120;
    }
    shapes.Paint();

    Sheet board(surface, canvas);
    board.CopyFrom(shapes, {0, 0, 2560, 1440}, {0, 0, 1280, 720});
    board.Line(u"Departures", {54, WHITE, true}, At::LEFT, {44, 20, 320, 64});
    board.Line(u"Abfahrt · Départs · 出发 · 出発 · 출발", {24, GREY}, At::LEFT, {346, 20, 560, 64});
    board.Line(u"14:26:58", {54, AMBER}, At::RIGHT, {936, 20, 300, 64});
    AddRow(board, 98, {u"Time", u"Train", u"To", u"", u"Platform", u"Remarks", GREY}, {24, GREY}, {24, GREY});
    y = 151;
    for (const Departure& departure : DEPARTURES) {
        AddRow(board, y, departure, {34, WHITE}, {24, WHITE});
        y += 60;
    }
    AddMissingBox(board, {45, 668, 12, 16});
    board.Line(u"Fahrräder fahren heute kostenlos mit", {24, AMBER}, At::LEFT, {65, 652, 1171, 32});
    return [board] { board.Paint(); };
}

// Of a dial, in pixels of a layer that is twice as large as it is shown.
constexpr std::uint32_t DIAL = 768;
constexpr double CENTER_X = 384, CENTER_Y = 400, START = 135, SWEEP = 270;

double AngleAt(double share) { return (START + SWEEP * share) * PI / 180; }

void AddArc(Sheet& sheet, double radius, double thickness, double sweep, const LibraryColor& color) {
    sheet.Shape(DIAL, color, [=](double x, double y) {
        const double distance = std::hypot(x - CENTER_X, y - CENTER_Y);
        const double degrees = std::atan2(y - CENTER_Y, x - CENTER_X) * 180 / PI - START;
        return distance >= radius - thickness && distance <= radius &&
               degrees - 360 * std::floor(degrees / 360) <= sweep;
    });
}

// With round ends, on the ray at a share of the scale.
void AddRay(Sheet& sheet, double share, double from, double to, double thickness, const LibraryColor& color) {
    const double ux = std::cos(AngleAt(share));
    const double uy = std::sin(AngleAt(share));
    sheet.Shape(DIAL, color, [=](double x, double y) {
        const double along = std::clamp((x - CENTER_X) * ux + (y - CENTER_Y) * uy, from, to);
        return std::hypot(x - CENTER_X - along * ux, y - CENTER_Y - along * uy) <= thickness / 2;
    });
}

struct Gauge {
    std::uint32_t x;
    int value, greatest;
    const char16_t* name;
    LibraryColor color;
};

constexpr Gauge GAUGES[] = {{24, 127, 250, u"Speed in km/h", {72, 202, 192, 255}},
                            {432, 62, 150, u"Power in kW", {255, 186, 84, 255}},
                            {840, 84, 100, u"Battery in %", {112, 204, 108, 255}}};

std::u16string Number(int number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

void PaintFace(Sheet face, const Gauge& gauge) {
    face.RoundedRectangle({0, 0, DIAL, DIAL}, 48, CARD);
    AddArc(face, 328, 28, SWEEP, {52, 70, 102, 255});
    for (int part = 0; part <= 10; ++part) {
        const double angle = AngleAt(part / 10.0);
        const std::uint32_t x = Unsigned(192 + 112 * std::cos(angle));
        const std::uint32_t y = Unsigned(200 + 112 * std::sin(angle));
        AddRay(face, part / 10.0, 268, 282, 6, GREY);
        face.Line(Number(gauge.greatest * part / 10), {36, GREY}, At::CENTER, {2 * x - 60, 2 * y, 120, 13});
    }
    face.Line(gauge.name, {44, GREY}, At::CENTER, {184, 672, 400, 46});
    face.Paint();
}

std::function<void()> MakeDashboard(KivGLDrawSurface& surface, unsigned int canvas) {
    constexpr LibraryRect WHOLE = {0, 0, DIAL, DIAL};
    std::vector<Sheet> sheets;
    for (const Gauge& gauge : GAUGES) {
        const Sheet face(surface, DIAL, DIAL);
        PaintFace(face, gauge);
        const double share = static_cast<double>(gauge.value) / gauge.greatest;
        Sheet dial(surface, DIAL, DIAL);
        dial.CopyFrom(face, WHOLE, WHOLE);
        AddArc(dial, 328, 28, SWEEP * share, gauge.color);
        AddRay(dial, share, 24, 172, 12, WHITE);
        AddArc(dial, 32, 16, 360, WHITE);
        dial.Line(Number(gauge.value), {104, WHITE}, At::CENTER, {184, 536, 400, 102});
        Sheet dashboard(surface, canvas);
        dashboard.CopyFrom(dial, WHOLE, {gauge.x, 24, 384, 384});
        sheets.push_back(dial);
        sheets.push_back(dashboard);
    }
    return [sheets] {
        for (const Sheet& sheet : sheets) {
            sheet.Paint();
        }
    };
}

}  // namespace

std::function<void()> MakePictureByHand(Picture picture, KivGLDrawSurface& surface, unsigned int canvas) {
    return picture == Picture::BOARD ? MakeBoard(surface, canvas) : MakeDashboard(surface, canvas);
}

}  // namespace bench
