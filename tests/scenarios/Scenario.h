#ifndef KIVGLES_TESTS_SCENARIOS_SCENARIO_H
#define KIVGLES_TESTS_SCENARIOS_SCENARIO_H

// What a client does, and what has to come of it: an operation, then its answer if it is not just 0 and the
// calls of EGL, GL and FreeType with the log lines, in their order:
//
//   SCENARIO(Rectangles, SWEPT) {
//       Begin();
//       Connect(1).Answers("0, 80 x 40", ConnectWindow("window surface"));
//       Rect(A, {4, 2, 16, 12}).Makes(MakeFlatRenderer("OSDRect"), FillRectangle(A, RED, "4 2 20 14"));
//   }
//
// is the test Scenario.Rectangles, which ends at the first operation that is not as it should be. The sweep
// of faults (faults/FaultsTest.cpp) plays it too, unless it is NOT_SWEPT, because it makes no call that
// others do not make.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "support/X11Window.h"

namespace kivgles {

// The text with each {} replaced by the next value, the remaining ones by the last.
template <typename... Values>
std::string Line(std::string text, const Values&... values) {
    std::string value;
    std::size_t at = 0;
    const auto put = [&](const auto& next) {
        std::ostringstream written;
        written << next;
        value = written.str();
        at = text.find("{}", at);
        text.replace(at, 2, value);
        at += value.size();
    };
    (put(values), ...);
    while ((at = text.find("{}", at)) != std::string::npos) {
        text.replace(at, 2, value);
    }
    return text;
}

// Calls and log lines in their order, of lines, which may have several calls ("glDrawElements(...);
// glFinish()"), and of other calls. What is listed in a call (attributes, vertices) stands in lines of its
// own below it.
struct Calls {
    template <typename... Parts>
    Calls(const Parts&... parts) {  // NOLINT(google-explicit-constructor): a line is a call
        (Add(parts), ...);
    }
    void Add(const char* line) { Add(std::string(line)); }
    void Add(const std::string& line);
    void Add(const Calls& calls) { lines.insert(lines.end(), calls.lines.begin(), calls.lines.end()); }
    Calls Beginning(const std::string& words) const;  // those that begin so

    std::vector<std::string> lines;
};

using Color = std::uint32_t;  // 0xrrggbbaa
constexpr Color NONE = 0;
constexpr Color RED = 0xff0000ff;
constexpr Color GREEN = 0x00ff00ff;
constexpr Color BLUE = 0x0000ffff;
constexpr Color GREY = 0x808080ff;
constexpr Color WHITE = 0xffffffff;
std::string Hex(Color color);  // "#rrggbbaa"
TagKivColorRGBA Components(Color color);

// A layer, by the client's name for it; the window; or any number in place of a handle.
struct Target {
    std::string Bound() const { return name == "window" ? "0" : "layer " + name; }  // as framebuffer
    std::string Texture() const { return name == "window" ? "0" : Bound() + "'s texture"; }

    std::string name;
    unsigned int width = 64;
    unsigned int height = 48;
};
const Target WINDOW{"window"};
const Target A{"a"};
constexpr TagKivRectInfo WHOLE{0, 0, 64, 48};

// Answers that the draw thread does not give; KivGLDrawSurface.h tells the others by number.
constexpr int FAILED = 1;
constexpr int NOT_FOUND = 101;  // a window or a layer
constexpr int NO_CONTEXT = 102;
constexpr int NO_TEXT = 103;  // renderer

struct Bitmap {
    // NOLINTNEXTLINE(google-explicit-constructor): is given as one
    operator TagKivBitmapInfo() const { return {&pixels[0].r, format, 0, 0, columns, rows, rect}; }

    TagKivRectInfo rect;
    Color color = BLUE;
    unsigned int columns = 2;
    unsigned int rows = 1;
    int format = KIV_COLOR_FORMAT_RGBA8888;
    // The second one has red and blue exchanged.
    TagKivColorRGBA pixels[2] = {Components(color), {pixels[0].b, pixels[0].g, pixels[0].r, pixels[0].a}};
};

// Styles are b, i and u. The text ends with a 0, unless the length that it claims says where. Its pointer may
// be null.
struct Text {
    operator TagKivTextInfo() const;  // NOLINT(google-explicit-constructor): is given as one
    std::vector<char16_t> Units() const;

    std::optional<std::u16string> text;
    unsigned int size = 40;
    std::string style = {};
    Color background = NONE;
    Color color = WHITE;
    std::optional<std::uint32_t> length = {};
    std::vector<char16_t> units = Units();
};

struct Step {
    std::string answer;  // the result code, and what else the client is told: "0, 64 x 48"
    Calls calls;
    bool hasErrorsOnly = false;  // of the calls
};

class Scenario {
 public:
    Scenario();
    virtual ~Scenario() = default;
    virtual void Play() = 0;

    // Of an operation. Whoever plays the scenario judges what has come of it.
    struct [[nodiscard]] Came {
        template <typename Answer, typename... Parts>
        void Answers(const Answer& answer, const Parts&... calls) const {
            scenario.Judge({Line("{}", answer), Calls(calls...)});
        }
        template <typename... Parts>
        void Makes(const Parts&... calls) const {
            Answers(0, calls...);
        }
        // Whatever the other calls and lines are.
        template <typename... Parts>
        void LogsErrors(const std::string& answer, const Parts&... lines) const {
            scenario.Judge({answer, Calls(lines...), true});
        }

        Scenario& scenario;
    };

    void Perform();  // the operation at work, again if it has been done

    // --- Operations ---

    Came Create() { return Wait("create", &Surface::KivCreateGLContext); }
    Came Destroy() {
        return Take("destroy", [this] { return End(); });
    }
    Came Renew();                // another surface in the place of this one
    Came Connect(int which);     // 0, 1, which is of 80 x 40, or 2 for the sweep; -1: none
    Came LoseWindow(int which);  // under the surface's hands
    Came Init(unsigned int mask) { return Wait("init", &Surface::Init, mask); }
    Came LoadFont(const std::string& file, unsigned int size = 40) {
        return Wait("font", &Surface::KivLoadFont, file, size);
    }
    Came MakeLayer(const Target& layer, int format = KIV_COLOR_FORMAT_RGBA8888);
    Came Drop(const Target& layer) { return Wait("drop", &Surface::KivDestoryGLFBO, Handle(layer)); }
    Came Clear(const Target& target) { return Queue("clear", &Surface::KivClearGLFBO, Handle(target)); }
    Came Rect(const Target& target, const TagKivRectInfo& rect, Color color = RED) {
        return Queue("rect", &Surface::KivDrawRect, Handle(target), rect, Components(color));
    }
    Came Round(const Target& target, const TagKivRoundInfo& round, Color color = RED) {
        return Queue("round", &Surface::KivDrawRound, Handle(target), round, Components(color));
    }
    Came Blit(const Target& source, const Target& target, const TagKivRectInfo& from,
              const TagKivRectInfo& to) {
        return Queue("blit", &Surface::KivBlit, TagKivBlitInfo{Handle(source), Handle(target), from, to});
    }
    Came Display(const Target& source, const TagKivRectInfo& from, const TagKivRectInfo& to) {
        return Queue("display", &Surface::KivDisplayFBO, Handle(source), from, to);
    }
    Came Refresh() { return Queue("refresh", &Surface::KivRefreshOnSrceen); }
    Came Draw(const Target& target, const Bitmap& bitmap) {
        return Wait("bitmap", &Surface::KivDrawBitmap, Handle(target), bitmap);
    }
    Came Blend(const Target& target, const Bitmap& bitmap) {
        return Wait("blend", &Surface::KivDrawBitmapByBlend, Handle(target), bitmap);
    }
    Came Show(const Bitmap& bitmap) { return Wait("show", &Surface::KivDisplayBitmap, bitmap); }
    Came Write(const Target& target, const TagKivRectInfo& rect, const Text& text) {
        return Queue("text", &Surface::KivDrawText, Handle(target), text, rect);
    }
    Came Measure(const Text& text);

    static constexpr int ALWAYS = 0;
    void Fail(const std::string& function, unsigned int result = 0, int nth = 1);  // call from now on

    void Begin();        // a context on a window, and layer a
    void DrawPicture();  // from every renderer

    // --- For whoever plays it ---

    int End();  // if there is one: answers as Destroy

    std::function<void(const Step& expected)> judge;
    std::string operation;  // at work
    Step came;              // of it
    bool isOver = false;    // no more is done
    std::set<std::string> failing;

 private:
    using Surface = KivGLDrawSurface;

    Came Take(const std::string& name, std::function<int()> does);
    // What is given has memory of its own, which is gone when the operation returns.
    template <typename Member, typename... Arguments>
    Came Wait(const char* name, Member member, const Arguments&... arguments) {
        return Take(name, [=] { return (surface.get()->*member)(Arguments(arguments)...); });
    }
    // Queued, and done when this returns: Init(0) waits (and logs that there is no context if there is none).
    template <typename Member, typename... Arguments>
    Came Queue(const char* name, Member member, const Arguments&... arguments) {
        return Take(name, [=] {
            const int result = (surface.get()->*member)(Arguments(arguments)...);
            if (result != NO_CONTEXT) {
                (void)surface->Init(0);
            }
            return result;
        });
    }
    void Judge(const Step& expected) {
        if (!isOver) {
            judge(expected);
        }
    }
    unsigned int Handle(const Target& target) const;
    void ForgetContext();

    std::unique_ptr<Surface> surface = std::make_unique<Surface>();
    std::vector<std::unique_ptr<X11Window>> windows;
    bool isShown = false;                        // what is drawn, in a window
    std::map<std::string, unsigned int> layers;  // handles
    std::function<int()> run;                    // the operation at work
    std::string told;                            // by it, besides its result
};

struct SweptScenario {
    const char* name;
    std::unique_ptr<Scenario> (*make)();
};
inline std::vector<SweptScenario> sweptScenarios;
constexpr bool SWEPT = true;
constexpr bool NOT_SWEPT = false;
template <typename Played>
bool KeepForTheSweep(const char* name, bool isSwept) {
    if (isSwept) {
        sweptScenarios.push_back(
            {name, []() -> std::unique_ptr<Scenario> { return std::make_unique<Played>(); }});
    }
    return isSwept;
}
void Expect(Scenario&& scenario);

#define SCENARIO(Name, isSwept)                                                          \
    struct Name : Scenario {                                                             \
        void Play() override;                                                            \
    };                                                                                   \
    [[maybe_unused]] const bool is##Name##Swept = KeepForTheSweep<Name>(#Name, isSwept); \
    TEST(Scenario, Name) { Expect(Name()); }                                             \
    void Name::Play()

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SCENARIOS_SCENARIO_H
