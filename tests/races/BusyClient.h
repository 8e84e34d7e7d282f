#ifndef KIVGLES_TESTS_RACES_BUSYCLIENT_H
#define KIVGLES_TESTS_RACES_BUSYCLIENT_H

// Clients that use all there is of a surface: one, or eight at once, each on a thread of its own.

#include <thread>
#include <vector>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {

constexpr unsigned int CLIENTS = 8;
constexpr char RACE_FONT[] = KIVGLES_TEST_FONTS "/bearings.ttf";
constexpr TagKivRectInfo CANVAS{0, 0, 64, 64};
constexpr TagKivRectInfo LOWER_HALF{0, 32, 64, 32};
constexpr std::uint8_t WHITE[4] = {255, 255, 255, 255};
constexpr TagKivBitmapInfo WHITE_PIXEL{WHITE, KIV_COLOR_FORMAT_RGBA8888, 0, 0, 1, 1, LOWER_HALF};

// The opaque colour of a client's nth coloured command; of 262,144 no two have the same. No component is 1,
// which would mean full intensity.
inline TagKivColorRGBA CommandColor(unsigned int client, unsigned int nth) {
    const auto component = [number = (client << 18) + nth](unsigned int shift) {
        return static_cast<std::uint8_t>((number >> shift) % 128 + 2);
    };
    return {component(14), component(7), component(0), 255};
}

// Draws shapes, texts and bitmaps, measures texts, loads a font, makes and destroys layers.
struct BusyClient {
    static constexpr unsigned int ROUND = 50;  // commands

    KivGLDrawSurface* surface;
    unsigned int canvas;  // a layer shared by all
    unsigned int number = 0;
    unsigned int layer = 0;      // its own
    unsigned int commands = 0;   // sent
    unsigned int coloured = 0;   // of these, numbered by CommandColor
    unsigned int failures = 0;   // results and sizes other than expected
    TagKivColorRGBA lastRect{};  // in the column of 8 pixels at 8 * number, in the canvas's upper half

    void Sent(int result, unsigned int count = 1) {
        commands += count;
        failures += result == 0 ? 0 : 1;
    }
    TagKivColorRGBA NextColor() { return CommandColor(number, coloured++); }
    void LoadFont() { Sent(surface->KivLoadFont(RACE_FONT, 40)); }
    void MakeLayer() { Sent(surface->KivCreateGLFBO(layer, 64, 64, KIV_COLOR_FORMAT_RGBA8888)); }
    void Start() {
        MakeLayer();
        LoadFont();
    }

    // Before there is a font, 30 pixels a character are right as well; before the first text, 30.
    void MeasureText(const TagKivTextInfo& text, bool hasFont) {
        unsigned int width = 0;
        unsigned int height = 0;
        const int result = surface->KivGetTextSize(text, width, height);
        const bool measured = result == 0 && width == 14 * text.textLength * text.fontSize / 40;
        const bool absent = !hasFont && width == (result == 0 ? 30 * text.textLength : 30);
        failures += measured || absent ? 0 : 1;
    }
    // Two commands, the first one for the background.
    void DrawText(std::uint32_t fontSize, bool styled) {
        const std::vector<char16_t> units(4, u'A');  // gone when this returns
        TagKivTextInfo text{units.data(), 4, {}, NextColor(), 0, fontSize, styled, false, styled};
        text.fgColor = NextColor();
        Sent(surface->KivDrawText(layer, text, CANVAS), 2);
        MeasureText(text, true);
    }
    void Round(unsigned int round) {
        for (int i = 0; i < 18; ++i) {
            lastRect = NextColor();
            Sent(surface->KivDrawRect(canvas, {8 * number, 0, 8, 32}, lastRect));
            Sent(surface->KivDrawRound(layer, {32, 32, 8, 8}, NextColor()));
        }
        DrawText(40, false);           // from the standard atlas
        DrawText(80, round % 8 == 0);  // from one made for it, and seldom made anew
        Sent(surface->KivDrawBitmap(layer, WHITE_PIXEL));
        Sent(surface->KivDrawBitmapByBlend(layer, WHITE_PIXEL));
        Sent(surface->KivDisplayBitmap(WHITE_PIXEL));
        Sent(surface->KivBlit({layer, canvas, CANVAS, LOWER_HALF}));
        Sent(surface->KivDisplayFBO(canvas, CANVAS, CANVAS));
        Sent(surface->KivRefreshOnSrceen());
        Sent(surface->KivClearGLFBO(layer));
        round % 64 == 0 ? LoadFont() : Sent(surface->Init(0));
        Sent(surface->KivDestoryGLFBO(layer));
        MakeLayer();
    }
};

// Calls `run(client)` on a thread for each, and returns when all have ended.
template <typename Run>
void OnClientThreads(Run run) {
    std::vector<std::thread> threads;
    for (unsigned int client = 0; client < CLIENTS; ++client) {
        threads.emplace_back(run, client);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Lets all clients do so many rounds at once, and returns what has become of them. `canvas` is set to a layer
// that they share.
inline std::vector<BusyClient> RunClients(KivGLDrawSurface& surface, unsigned int& canvas,
                                          unsigned int rounds) {
    (void)surface.KivCreateGLFBO(canvas, CANVAS.width, CANVAS.height, KIV_COLOR_FORMAT_RGBA8888);
    std::vector<BusyClient> clients(CLIENTS, BusyClient{&surface, canvas});
    OnClientThreads([&clients, rounds](unsigned int number) {
        BusyClient& client = clients[number];
        client.number = number;
        client.Start();
        for (unsigned int round = 0; round < rounds; ++round) {
            client.Round(round);
        }
    });
    return clients;
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_RACES_BUSYCLIENT_H
