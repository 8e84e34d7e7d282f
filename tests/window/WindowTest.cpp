// Windows as their users meet them, with a surface on each: on an X server without window manager and
// compositor, or on sway, by scripts/wayland.sh.

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kivgles/KivGLDrawSurface.h"
#include "kivgles/window/Window.h"
#include "window/Outside.h"

namespace kivgles::window {

using std::chrono::milliseconds;
using testing::ElementsAre, testing::HasSubstr;

static WindowOptions Options(const std::string& title, int x) { return {title, {120, 100}, Position{x, 40}}; }

// A surface that shows one colour.
struct Surface {
    explicit Surface(const Window& window) {
        EXPECT_EQ(surface.KivCreateGLContextOn(window.Display()), 0);
        EXPECT_EQ(surface.KivConnectWindowSurface(window.Native()), 0);
    }
    ~Surface() { EXPECT_EQ(surface.KivDestoryGLContext(), 0); }

    void Show(const TagKivColorRGBA& color) {
        surface.KivDrawRect(FBO_HANDLE_BASE, {0, 0, 200, 200}, color);  // all over
        surface.KivRefreshOnSrceen();
        EXPECT_EQ(surface.Init(0), 0);  // waits
    }

    KivGLDrawSurface surface;
};

// The next one of any of them that is of this type: others come as window systems please.
static Event Await(Event::Type type, const std::vector<Window*>& windows) {
    Event event;
    while (event.type != type) {
        event = Window::WaitForAny(windows);
    }
    return event;
}

constexpr TagKivColorRGBA RED{255, 0, 0, 255}, GREEN{0, 255, 0, 255}, BLUE{0, 0, 255, 255};
constexpr TagKivColorRGBA GLASS{102, 0, 0, 102};  // premultiplied

TEST(Windows, AreDrawnOnResizedTypedIntoAndClosedOneByOne) {
    Window left(Options("left", 20));
    auto right = std::make_unique<Window>(Options("right", 200));
    auto onLeft = std::make_unique<Surface>(left);
    auto onRight = std::make_unique<Surface>(*right);
    onLeft->Show(RED);
    onRight->Show(GREEN);
    outside::Place("left", 20, 40);
    outside::Place("right", 200, 40);
    outside::Await(0xFF0000, 30, 50);
    outside::Await(0x00FF00, 210, 50);

    outside::Resize("left", 140, 110);
    EXPECT_EQ(Await(Event::RESIZED, {&left, right.get()}).window, &left);
    EXPECT_EQ(left.Size().width, 140);
    EXPECT_EQ(left.Size().height, 110);
    onLeft.reset();
    onLeft = std::make_unique<Surface>(left);
    EXPECT_EQ(onLeft->surface.KivGetWindowWidth(), 140U);
    onLeft->Show(BLUE);
    outside::Place("left", 20, 40);
    outside::Await(0x0000FF, 150, 140);

    outside::PressQ("right");
    EXPECT_EQ(Await(Event::KEY, {&left, right.get()}).key, "q");

    outside::Close("right");
    EXPECT_EQ(Await(Event::CLOSED, {&left, right.get()}).window, right.get());
    onRight.reset();
    right = std::make_unique<Window>(Options("again", 200));
    onRight = std::make_unique<Surface>(*right);
    onRight->Show(RED);
    outside::Place("again", 200, 40);
    onLeft->Show(GREEN);
    outside::Await(0xFF0000, 210, 50);
    outside::Await(0x00FF00, 30, 50);
    outside::Hide("again");
    for (int frame = 0; frame < 5; ++frame) {
        onRight->Show(BLUE);  // does not wait until it is seen
    }
}

TEST(Windows, TakeTheSizeThatTheyAreAskedFor) {
    Window window(Options("grown", 20));
    window.Resize({90, 60});
    Await(Event::RESIZED, {&window});
    EXPECT_EQ(window.Size().height, 60);
    EXPECT_EQ(Surface(window).surface.KivGetWindowWidth(), 90U);
    EXPECT_THROW(window.Resize({90, 0}), std::invalid_argument);
    while (Window::WaitForAny({&window, nullptr, &window}, milliseconds(50)).type != Event::NONE) {
    }
    EXPECT_EQ(Window::WaitForAny({nullptr}).type, Event::NONE);
}

TEST(Windows, ShowWhatIsBehindThemOrSayThatTheyDoNot) {
    Window behind(Options("behind", 20));
    WindowOptions options = Options("glass", 50);
    options.transparent = options.clickThrough = options.aboveOthers = true;
    options.decorated = false;
    Window glass(options);
    Surface onBehind(behind);
    Surface onGlass(glass);
    onBehind.Show(BLUE);
    onGlass.Show(GLASS);
    outside::Place("behind", 20, 40);
    outside::Place("glass", 50, 40);
    EXPECT_TRUE(glass.Granted().clickThrough);
    EXPECT_FALSE(glass.Granted().aboveOthers);
    if (outside::IsWayland()) {
        EXPECT_TRUE(glass.Granted().transparent);
        EXPECT_THAT(glass.Warnings(), ElementsAre(HasSubstr("above others"), HasSubstr("place its window")));
        outside::Await(0x660099, 70, 60);  // 2/5 over blue
    } else {
        EXPECT_FALSE(glass.Granted().transparent);
        EXPECT_THAT(glass.Warnings(),
                    ElementsAre(HasSubstr("no compositor"), HasSubstr("no window manager")));
        outside::Await(0x660000, 70, 60);
    }
}

static std::string Refusal(System system, const std::string& server, Size size) try {
    WindowOptions options{"refused", size};
    options.system = system;
    options.server = server;
    const Window window(options);
    return "none";
} catch (const std::exception& refusal) {
    return refusal.what();
}

TEST(Windows, SayWhatIsMissingWhere) {
    EXPECT_EQ(Refusal(System::X11, ":7654", {1, 1}), "no X server at DISPLAY=:7654");
    EXPECT_EQ(Refusal(System::WAYLAND, "wayland-7654", {1, 1}),
              "no Wayland compositor at WAYLAND_DISPLAY=wayland-7654");
    EXPECT_EQ(Refusal(System::ANY, "", {0, 1}), "a window cannot be 0 by 1 pixels");
    EXPECT_EQ(Refusal(System::ANY, "", {1, 32768}), "a window cannot be 1 by 32768 pixels");
}

// Its server is another process, SERVER_PID, and ends in this test.
TEST(WindowOfADyingServer, IsClosedAndTheProgramGoesOn) {
    const char* const server = std::getenv("SERVER_PID");
    ASSERT_NE(server, nullptr) << "run this by scripts/with_xvfb.sh or scripts/wayland.sh";
    Window window(Options("lost", 20));
    auto surface = std::make_unique<Surface>(window);
    surface->Show(RED);
    ASSERT_EQ(kill(std::atoi(server), SIGKILL), 0);
    EXPECT_EQ(Await(Event::CLOSED, {&window}).window, &window);
    surface.reset();
    EXPECT_EQ(window.Wait().type, Event::CLOSED);
    EXPECT_THROW(Window(Options("late", 20)), std::runtime_error);
}

}  // namespace kivgles::window
