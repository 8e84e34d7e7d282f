// languages: greetings in 16 scripts, and emoji.
//
// Debian has the fonts in fonts-noto-core, fonts-noto-color-emoji and fonts-wqy-microhei or fonts-noto-cjk.

#include <cstdio>

#include <kivgles/kit/Canvas.h>
#include <kivgles/kit/Screen.h>
#include <kivgles/kit/Text.h>
#include <kivgles/window/Window.h>

using namespace kivgles::kit;
using namespace kivgles::window;

struct Greeting {
    const char *tag, *language, *text;
};

constexpr Greeting GREETINGS[] = {{"vi", "Tiếng Việt", "Xin chào bạn"},
                                  {"el", "Ελληνικά", "Γειά σας"},
                                  {"uk", "Українська", "Добрий день"},
                                  {"hy", "Հայերեն", "Բարև ձեզ"},
                                  {"ka", "ქართული", "გამარჯობა"},
                                  {"he", "עברית", "שלום עולם"},
                                  {"ar", "العربية", "السلام عليكم"},
                                  {"am", "አማርኛ", "ሰላም ለዓለም"},
                                  {"hi", "हिन्दी", "नमस्ते दुनिया"},
                                  {"bn", "বাংলা", "নমস্কার"},
                                  {"ta", "தமிழ்", "வணக்கம்"},
                                  {"th", "ไทย", "สวัสดีชาวโลก"},
                                  {"km", "ខ្មែរ", "សួស្តី"},
                                  {"zh", "中文", "大家好"},
                                  {"ja", "日本語", "こんにちは"},
                                  {"ko", "한국어", "안녕하세요"}};

// Returns how many characters no font has.
int Paint(Canvas& page) {
    const Text title = Text(44, {240, 244, 250}).Bold().Middle(), name = Text(20, {140, 164, 200});
    page.Clear({30, 30, 58});
    int missing = title.Draw(page, "Hello, world", {40, 16, 500, 90}).missing;
    missing += title.Right().Draw(page, "👋🏽👩🏾‍🚀🇨🇭🎉", {640, 16, 600, 90}).missing;
    int place = 0;
    for (const auto& [tag, language, greeting] : GREETINGS) {
        const int x = 40 + place % 4 * 304, y = 116 + place / 4 * 148;
        page.RoundedRectangle({x, y, 288, 132}, 14, {255, 255, 255, 22});
        missing += name.Draw(page, language, {x + 20, y + 16, 256, 28}).missing;
        const Text text = Text(34, {255, 206, 120}).Language(tag).Middle();
        missing += text.Draw(page, greeting, {x + 20, y + 48, 256, 68}).missing;
        ++place;
    }
    return missing;
}

int main() {
    Window window({"languages", {1280, 720}});
    Screen screen(window.Display());
    screen.Connect(window.Native());
    Canvas page({1280, 720});
    if (const int missing = Paint(page); missing > 0) {
        std::fprintf(stderr, "languages: no installed font has %d of the characters\n", missing);
    }
    screen.Present(page);
    for (Event event; event.type != Event::CLOSED; event = window.Wait()) {
        if (event.type == Event::RESIZED) {
            screen.Reconnect(window.Native());
        } else if (event.type == Event::EXPOSED) {
            screen.Refresh();
        }
    }
}
