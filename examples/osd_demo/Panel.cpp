#include "Panel.h"

#include <algorithm>
#include <future>
#include <string>

#include "Artwork.h"
#include "PanelCards.h"
#include "PanelStyle.h"

namespace examples::osd_demo {

namespace {

constexpr std::uint32_t FINE = 2;  // scale of layers with rounds

// Runs two jobs at the same time and waits for both. Throws what a job throws.
template <typename First, typename Second>
void OnTwoThreads(First first, Second second) {
    auto firstDone = std::async(std::launch::async, first);
    auto secondDone = std::async(std::launch::async, second);
    firstDone.get();
    secondDone.get();
}

// The largest box of an image's proportions inside another, centred.
Rect FitInto(std::uint32_t width, std::uint32_t height, const Rect& box) {
    const double scale =
        std::min(static_cast<double>(box.width) / width, static_cast<double>(box.height) / height);
    const auto fitWidth = std::max(static_cast<std::uint32_t>(width * scale), 1U);
    const auto fitHeight = std::max(static_cast<std::uint32_t>(height * scale), 1U);
    return {box.x + (box.width - fitWidth) / 2, box.y + (box.height - fitHeight) / 2, fitWidth, fitHeight};
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

Panel::Panel(Surface& panelSurface, const DemoOptions& demoOptions, const Image& logoImage)
    : surface(panelSurface),
      options(demoOptions),
      logo(logoImage),
      canvas(surface, PANEL_WIDTH, PANEL_HEIGHT, 1),
      bar(surface, BAR_BOX.width, BAR_BOX.height, FINE) {}

void Panel::ShowLogo() {
    const std::uint32_t width = surface.KivGetWindowWidth();
    const std::uint32_t height = surface.KivGetWindowHeight();
    const Rect middle = {width / 4, height / 4, width / 2, height / 2};
    Check(surface.KivDisplayBitmap(BitmapOf(logo, FitInto(logo.width, logo.height, middle))),
          "displaying a bitmap");
    Refresh();
}

void Panel::Compose() {
    // Everything with round edges is drawn at twice its size, and smoothed when it is copied.
    Layer backdrop(surface, PANEL_WIDTH, PANEL_HEIGHT, FINE);
    backdrop.Draw(MakeBackdrop(), backdrop.Whole());
    backdrop.FillRect(HEADER_RULE, TEAL);
    OnTwoThreads([&] { DrawLeftCard(backdrop, options.lines.size()); },
                 [&] {
                     DrawRightCard(backdrop);
                     DrawCard(backdrop, BOTTOM_CARD);
                 });
    canvas.Copy(backdrop, backdrop.Whole(), canvas.Whole());
    DrawLogo(backdrop);

    // A surface has one font at a time, and layers keep what was written in another.
    const bool cjkWanted =
        NeedsCjkFont(options.title) || std::any_of(options.lines.begin(), options.lines.end(), NeedsCjkFont);
    if (cjkWanted && !options.cjkFont.empty()) {
        LoadFont(options.cjkFont);
        WriteUsersTexts(true);
    }
    LoadFont(options.font);
    OnTwoThreads([this] { WriteUsersTexts(false); }, [this] { WriteTexts(); });
}

// The logo is blended over a copy of what is behind it, which then takes that one's place.
void Panel::DrawLogo(const Layer& backdrop) {
    Layer emblem(surface, LOGO_BOX.width, LOGO_BOX.height, FINE);
    emblem.Copy(backdrop, LOGO_BOX, emblem.Whole());
    emblem.Blend(logo, FitInto(logo.width, logo.height, emblem.Whole()));
    canvas.Copy(emblem, emblem.Whole(), LOGO_BOX);
}

void Panel::LoadFont(const std::string& path) {
    Check(surface.KivLoadFont(path, 40), "loading the font " + path);
}

// Those that are, or are not, for the font with Chinese, Japanese and Korean characters, if there is one.
void Panel::WriteUsersTexts(bool cjk) {
    const auto isWanted = [&](const std::string& text) {
        return (NeedsCjkFont(text) && !options.cjkFont.empty()) == cjk;
    };
    if (isWanted(options.title)) {
        WriteLine(canvas, options.title, Bold(Plain(44, WHITE)), {136, 60, 760});
    }
    for (std::size_t line = 0; line < options.lines.size(); ++line) {
        if (isWanted(options.lines[line])) {
            WriteUsersLine(canvas, line, options.lines[line]);
        }
    }
}

void Panel::WriteTexts() {
    WriteLine(canvas, "Line 7 from Old Lighthouse to Airport", Italic(Plain(24, GREY)), {136, 92, 760});
    WriteLine(canvas, "14:27", Bold(Plain(56, AMBER)), {920, 64, 320, Align::RIGHT});
    WriteLine(canvas, "Tuesday, 24 November", Plain(22, GREY), {920, 92, 320, Align::RIGHT});

    WriteNextStop(canvas);
    WriteRightCard(canvas);

    constexpr std::uint32_t BASELINE = BOTTOM_CARD.y + SECTION_BASELINE;
    WriteLine(canvas, "Journey", SECTION, {BOTTOM_CARD.x + CARD_PADDING, BASELINE, 300});
    WriteLine(canvas, "Arriving in 4 minutes", Italic(Plain(26, GREY)),
              {BOTTOM_CARD.x, BASELINE, BOTTOM_CARD.width, Align::CENTER});
}

void Panel::ShowFrame(unsigned int permille) {
    DrawProgress(permille);
    canvas.Copy(bar, bar.Whole(), BAR_BOX);

    const Rect percentBox = {BOTTOM_CARD.x + BOTTOM_CARD.width - CARD_PADDING - 120, BOTTOM_CARD.y + 12, 120,
                             40};
    canvas.FillRect(percentBox, CARD);
    WriteLine(canvas, std::to_string(permille / 10) + " %", Bold(Plain(30, WHITE)),
              {percentBox.x, BOTTOM_CARD.y + SECTION_BASELINE, percentBox.width, Align::RIGHT});

    // After a refresh the window's content is not defined: what the panel leaves free is cleared.
    Check(surface.KivClearGLFBO(kivgles::FBO_HANDLE_BASE), "clearing the window");
    canvas.CopyToWindow(PlaceOnWindow());
    Refresh();
}

void Panel::DrawProgress(unsigned int permille) {
    constexpr std::uint32_t LENGTH = BAR_BOX.width - 2 * BAR_MARGIN;
    constexpr std::uint32_t MIDDLE = BAR_BOX.height / 2;
    const std::uint32_t done = LENGTH * permille / 1000;

    const auto bars = [this](std::uint32_t length, const Color& color) {
        bar.FillRoundedRect(
            {BAR_MARGIN - BAR_RADIUS, MIDDLE - BAR_RADIUS, length + 2 * BAR_RADIUS, 2 * BAR_RADIUS},
            BAR_RADIUS, color);
    };
    bar.FillRect(bar.Whole(), CARD);
    bars(LENGTH, TRACK);
    bars(done, TEAL);
    for (std::uint32_t stop = 0; stop < STOP_NUM; ++stop) {
        DrawPip(bar, BAR_MARGIN + LENGTH * stop / (STOP_NUM - 1), MIDDLE, stop);
    }
    bar.FillRound(BAR_MARGIN + done, MIDDLE, 14, AMBER);
    bar.FillRound(BAR_MARGIN + done, MIDDLE, 6, WHITE);
}

// The queue takes frames faster than the window shows them: waiting for each one keeps it short.
void Panel::Refresh() {
    Check(surface.KivRefreshOnSrceen(), "refreshing the window");
    Check(surface.Init(0), "waiting for the draw thread");
}

Rect Panel::PlaceOnWindow() const {
    return FitInto(PANEL_WIDTH, PANEL_HEIGHT,
                   {0, 0, surface.KivGetWindowWidth(), surface.KivGetWindowHeight()});
}

std::vector<KnownArea> Panel::KnownAreas() const {
    constexpr std::uint32_t BAR_X = BAR_BOX.x + BAR_MARGIN;
    constexpr std::uint32_t BAR_Y = BAR_BOX.y + BAR_BOX.height / 2 - BAR_RADIUS;
    constexpr std::uint32_t TRAIN = BAR_X + (BAR_BOX.width - 2 * BAR_MARGIN) * JOURNEY_DONE / 1000;
    const std::uint32_t section = LEFT_CARD.x + CARD_PADDING;
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
        areas.push_back(
            {"logo's sun", {LOGO_BOX.x + 28, LOGO_BOX.y + 24, 16, 16}, {255, 244, 214, 255}, false});
    }
    return areas;
}

}  // namespace examples::osd_demo
