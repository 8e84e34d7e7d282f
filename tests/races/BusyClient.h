#ifndef KIVGLES_TESTS_RACES_BUSYCLIENT_H
#define KIVGLES_TESTS_RACES_BUSYCLIENT_H

// Clients that use all there is of a surface at once, each on a thread of its own.

#include <functional>
#include <future>
#include <vector>

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"

namespace kivgles {

constexpr unsigned int CLIENTS = 8;
constexpr TagKivRectInfo CANVAS{0, 0, 64, 64};

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
    unsigned int layer = 0;     // its own
    unsigned int rounds = 0;    // done
    unsigned int coloured = 0;  // commands sent, numbered by CommandColor

    static void Sent(int result) { EXPECT_EQ(result, 0); }
    TagKivColorRGBA NextColor() { return CommandColor(number, coloured++); }
    void LoadFont() { Sent(surface->KivLoadFont(KIVGLES_TEST_FONTS "/bearings.ttf", 40)); }
    void MakeLayer() { Sent(surface->KivCreateGLFBO(layer, 64, 64, KIV_COLOR_FORMAT_RGBA8888)); }
    unsigned int Measure(const TagKivTextInfo& text) {
        unsigned int width = 0;
        unsigned int height = 0;
        (void)surface->KivGetTextSize(text, width, height);
        return width;
    }
    // Measures while the first text makes the text renderer. Four missing characters are 30 pixels each,
    // without a renderer all of them.
    void Start() {
        const TagKivTextInfo text{u"AAAA", 4, {}, {}, 0, 40, false, false, false};
        Sent(surface->KivDrawText(FBO_HANDLE_BASE, text, CANVAS));
        for (int i = 0; i < 30; ++i) {
            const unsigned int width = Measure(text);
            EXPECT_TRUE(width == 4 * 14 || width == 4 * 30 || width == 30);
        }
        LoadFont();
        MakeLayer();
    }
    // Two commands, the first one for the background; measured as well.
    void DrawText(std::uint32_t fontSize, bool styled) {
        const std::vector<char16_t> units(4, u'A');  // gone when this returns
        TagKivTextInfo text{units.data(), 4, {}, NextColor(), 0, fontSize, styled, false, styled};
        text.fgColor = NextColor();
        Sent(surface->KivDrawText(layer, text, CANVAS));
        EXPECT_EQ(Measure(text), 4 * 14 * fontSize / 40);
    }
    void Round() {
        constexpr std::uint8_t WHITE[4] = {255, 255, 255, 255};
        const TagKivBitmapInfo pixel{WHITE, KIV_COLOR_FORMAT_RGBA8888, 0, 0, 1, 1, CANVAS};
        for (int i = 0; i < 18; ++i) {
            Sent(surface->KivDrawRect(canvas, {8 * number, 0, 8, 32}, NextColor()));
            Sent(surface->KivDrawRound(layer, {32, 32, 8, 8}, NextColor()));
        }
        DrawText(40, false);              // from the standard atlas
        DrawText(80, ++rounds % 8 == 0);  // from one made for it, and seldom made anew
        Sent(surface->KivDrawBitmap(layer, pixel));
        Sent(surface->KivDrawBitmapByBlend(layer, pixel));
        Sent(surface->KivDisplayBitmap(pixel));
        Sent(surface->KivBlit({layer, canvas, CANVAS, CANVAS}));
        Sent(surface->KivDisplayFBO(canvas, CANVAS, CANVAS));
        Sent(surface->KivRefreshOnSrceen());
        Sent(surface->KivClearGLFBO(layer));
        rounds % 64 == 0 ? LoadFont() : Sent(surface->Init(0));
        Sent(surface->KivDestoryGLFBO(layer));
        MakeLayer();
    }
};

// A surface on a window with eight clients, who share a layer.
struct BusySurface {
    explicit BusySurface(ANativeWindow* window, const TagKivDisplayInfo& display = {}) {
        unsigned int canvas = 0;
        EXPECT_EQ(surface.KivCreateGLContextOn(display), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(window), 0);
        EXPECT_EQ(surface.KivCreateGLFBO(canvas, CANVAS.width, CANVAS.height, KIV_COLOR_FORMAT_RGBA8888), 0);
        for (unsigned int number = 0; number < CLIENTS; ++number) {
            clients.push_back({&surface, canvas, number});
        }
        AtOnce([](BusyClient& client) { client.Start(); });
    }
    void Rounds(unsigned int rounds) {
        AtOnce([rounds](BusyClient& client) {
            for (unsigned int round = 0; round < rounds; ++round) {
                client.Round();
            }
        });
    }
    // Each client on a thread of its own; returns when all have done it.
    template <typename Do>
    void AtOnce(const Do& something) {
        std::vector<std::future<void>> done;
        for (BusyClient& client : clients) {
            done.push_back(std::async(std::launch::async, something, std::ref(client)));
        }
    }

    KivGLDrawSurface surface;
    std::vector<BusyClient> clients;
};

}  // namespace kivgles

#endif  // KIVGLES_TESTS_RACES_BUSYCLIENT_H
