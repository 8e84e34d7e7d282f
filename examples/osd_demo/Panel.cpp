#include "Panel.h"

#include <algorithm>
#include <future>
#include <string>

#include "Artwork.h"
#include "PanelCards.h"
#include "PanelStyle.h"

namespace examples::osd_demo {

using kivgles::kit::Layer;
using kivgles::kit::Size;

namespace {

constexpr int FINE = 2;  // factor of layers with round edges, which are smoothed when they are copied

// Runs two jobs at the same time and waits for both. Throws what a job throws.
template <typename First, typename Second>
void OnTwoThreads(First first, Second second) {
    auto firstDone = std::async(std::launch::async, first);
    auto secondDone = std::async(std::launch::async, second);
    firstDone.get();
    secondDone.get();
}

Rect Whole(const Layer& layer) { return {0, 0, layer.Size().width, layer.Size().height}; }

// The largest box of some proportions inside another, centred.
Rect FitInto(const Size& size, const Rect& box) {
    const double scale =
        std::min(static_cast<double>(box.width) / size.width, static_cast<double>(box.height) / size.height);
    const int width = std::max(static_cast<int>(size.width * scale), 1);
    const int height = std::max(static_cast<int>(size.height * scale), 1);
    return {box.x + (box.width - width) / 2, box.y + (box.height - height) / 2, width, height};
}

// Whether there is a character of Chinese, Japanese or Korean: from U+3000 on, as the first byte of its UTF-8
// tells.
bool NeedsCjkFont(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char byte) {
        const auto first = static_cast<unsigned char>(byte);
        return first >= 0xE3 && first <= 0xED;
    });
}

}  // namespace

Panel::Panel(kivgles::kit::Screen& panelScreen, const DemoOptions& demoOptions, const Image& logoImage)
    : screen(panelScreen),
      options(demoOptions),
      logo(logoImage),
      frame(screen, screen.Size()),
      canvas(screen, PANEL_SIZE),
      bar(screen, {BAR_BOX.width, BAR_BOX.height}, FINE) {}

void Panel::ShowLogo() {
    const auto [width, height] = frame.Size();
    frame.Draw(logo.View(), FitInto(logo.size, {width / 4, height / 4, width / 2, height / 2}));
    screen.Present(frame);
    frame.Clear();
}

void Panel::Compose() {
    Layer backdrop(screen, PANEL_SIZE, FINE);
    backdrop.Draw(MakeBackdrop().View(), Whole(backdrop));
    backdrop.Rectangle(HEADER_RULE, TEAL);
    OnTwoThreads([&] { DrawLeftCard(backdrop, static_cast<int>(options.lines.size())); },
                 [&] {
                     DrawRightCard(backdrop);
                     DrawCard(backdrop, BOTTOM_CARD);
                 });
    canvas.Copy(backdrop, 0, 0);
    DrawLogo(backdrop);

    // The screen has one font at a time: what wants the other one is written first.
    if (!options.cjkFont.empty()) {
        const bool wanted = NeedsCjkFont(options.title) ||
                            std::any_of(options.lines.begin(), options.lines.end(), NeedsCjkFont);
        if (wanted) {
            screen.LoadFont(options.cjkFont);
            WriteUsersTexts(true);
        }
    }
    screen.LoadFont(options.font);
    OnTwoThreads([&] { WriteUsersTexts(false); }, [&] { WriteTexts(); });
}

// The logo is blended over a copy of what is behind it, which then takes that one's place.
void Panel::DrawLogo(const Layer& backdrop) {
    Layer emblem(screen, {LOGO_BOX.width, LOGO_BOX.height}, FINE);
    emblem.Copy(backdrop, LOGO_BOX, Whole(emblem));
    emblem.Blend(logo.View(), FitInto(logo.size, Whole(emblem)));
    canvas.Copy(emblem, LOGO_BOX.x, LOGO_BOX.y);
}

// Those that are, or are not, for the font with Chinese, Japanese and Korean characters, if there is one.
void Panel::WriteUsersTexts(bool cjk) {
    const auto isWanted = [&](const std::string& text) {
        return (NeedsCjkFont(text) && !options.cjkFont.empty()) == cjk;
    };
    if (isWanted(options.title)) {
        Style(44, WHITE).Bold().Draw(canvas, options.title, Line(136, 60, 760));
    }
    for (std::size_t line = 0; line < options.lines.size(); ++line) {
        if (isWanted(options.lines[line])) {
            WriteLine(canvas, static_cast<int>(line), options.lines[line]);
        }
    }
}

void Panel::WriteTexts() {
    Style(24, GREY).Italic().Draw(canvas, "Line 7 from Old Lighthouse to Airport", Line(136, 92, 760));
    Style(56, AMBER).Bold().Tabular().Right().Draw(canvas, "14:27", Line(920, 64, 320));
    Style(22, GREY).Right().Draw(canvas, "Tuesday, 24 November", Line(920, 92, 320));

    WriteNextStop(canvas);
    WriteRightCard(canvas);

    const int baseline = BOTTOM_CARD.y + SECTION_BASELINE;
    SectionStyle().Draw(canvas, "Journey", Line(BOTTOM_CARD.x + CARD_PADDING, baseline, 300));
    Style(26, GREY).Italic().Center().Draw(canvas, "Arriving in 4 minutes",
                                           Line(BOTTOM_CARD.x, baseline, BOTTOM_CARD.width));
}

void Panel::ShowFrame(int permille) {
    DrawProgress(permille);
    canvas.Copy(bar, BAR_BOX.x, BAR_BOX.y);

    const Rect percentBox = {BOTTOM_CARD.x + BOTTOM_CARD.width - CARD_PADDING - 120, BOTTOM_CARD.y + 12, 120,
                             40};
    canvas.Rectangle(percentBox, CARD);
    Style(30, WHITE).Bold().Tabular().Right().Draw(
        canvas, std::to_string(permille / 10) + " %",
        Line(percentBox.x, BOTTOM_CARD.y + SECTION_BASELINE, percentBox.width));

    frame.Copy(canvas, Whole(canvas), PlaceOnWindow());
    screen.Present(frame);
}

void Panel::DrawProgress(int permille) {
    constexpr int LENGTH = BAR_BOX.width - 2 * BAR_MARGIN;
    constexpr int MIDDLE = BAR_BOX.height / 2;
    const int done = LENGTH * permille / 1000;

    const auto bars = [this](int length, const Color& color) {
        bar.RoundedRectangle(
            {BAR_MARGIN - BAR_RADIUS, MIDDLE - BAR_RADIUS, length + 2 * BAR_RADIUS, 2 * BAR_RADIUS},
            BAR_RADIUS, color);
    };
    bar.Clear(CARD);
    bars(LENGTH, TRACK);
    bars(done, TEAL);
    for (int stop = 0; stop < STOP_NUM; ++stop) {
        DrawPip(bar, BAR_MARGIN + LENGTH * stop / (STOP_NUM - 1), MIDDLE, stop);
    }
    bar.Disc({1.0 * BAR_MARGIN + done, MIDDLE}, 14, AMBER);
    bar.Disc({1.0 * BAR_MARGIN + done, MIDDLE}, 6, WHITE);
}

Rect Panel::PlaceOnWindow() const { return FitInto(PANEL_SIZE, Whole(frame)); }

std::vector<KnownArea> Panel::KnownAreas() const {
    constexpr int BAR_X = BAR_BOX.x + BAR_MARGIN;
    constexpr int BAR_Y = BAR_BOX.y + BAR_BOX.height / 2 - BAR_RADIUS;
    constexpr int TRAIN = BAR_X + (BAR_BOX.width - 2 * BAR_MARGIN) * JOURNEY_DONE / 1000;
    const int section = LEFT_CARD.x + CARD_PADDING;
    std::vector<KnownArea> areas = {
        {"left card", {LEFT_CARD.x + 4, LEFT_CARD.y + 60, 24, 300}, CARD, false},
        {"next stop's row", {RIGHT_CARD.x + 380, StopBaseline(NEXT_STOP) - 36, 60, 50}, ROW, false},
        {"journey done", {BAR_X + 100, BAR_Y, 60, 2 * BAR_RADIUS}, TEAL, false},
        {"journey to come", {BAR_X + 700, BAR_Y, 60, 2 * BAR_RADIUS}, TRACK, false},
        {"train", {TRAIN - 4, BAR_Y + BAR_RADIUS - 4, 8, 8}, WHITE, false},
        {"section's title", {section, LEFT_CARD.y + SECTION_BASELINE - 18, 120, 18}, CARD, true},
        {"next stop's name", {section, LEFT_CARD.y + 66, 360, 50}, CARD, true},
    };
    if (options.logo.empty()) {
        areas.push_back({"logo's sun", {LOGO_BOX.x + 28, LOGO_BOX.y + 24, 16, 16}, {255, 244, 214}, false});
    }
    return areas;
}

}  // namespace examples::osd_demo
