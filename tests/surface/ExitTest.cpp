#include <cstdio>
#include <string>

#include <gmock/gmock.h>

namespace {

using testing::AllOf, testing::ContainsRegex, testing::EndsWith, testing::HasSubstr;

// Runs EXIT_CLIENT, a shell's words, but not for ever, and returns what it wrote, its log included, with its
// status at the end.
std::string RunClient(const std::string& environment, const std::string& way) {
    FILE* const pipe = popen((environment + " timeout 60 " EXIT_CLIENT " " + way + " 2>&1").c_str(), "r");
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        output += static_cast<char>(c);
    }
    return output + "status " + std::to_string(pclose(pipe));
}

TEST(Exit, IsCleanRightAfterDestructionAndWithAnIdleDrawThread) {
    for (int i = 0; i < 25; ++i) {
        ASSERT_THAT(RunClient("", "destroyed"), AllOf(HasSubstr("0 0 0\n0 0 0\n"), EndsWith("status 0")));
        ASSERT_THAT(RunClient("", "idle"), EndsWith("status 0"));
    }
}

TEST(Exit, ComesWhenTheHeapIsEmpty) {
    // A shell that waits for its last command tells how it ended by 128 + SIGABRT.
    EXPECT_THAT(RunClient("", "starved"),
                AllOf(HasSubstr("std::bad_alloc"), ContainsRegex("status (6|134|34304)$")));
}

TEST(Creation, CanBeTriedAgainWhicheverOfItsAllocationsFailed) {
    EXPECT_THAT(RunClient("", "starving"),
                AllOf(ContainsRegex("(failed 100 102\n)+0 0 0\n0 0 0\n"),
                      HasSubstr("E KivGLDrawSurface: start draw thread fail 12\n"), EndsWith("status 0")));
}

TEST(NoDisplay, ContextIsRefusedWithItsCodeAndLineAndCanBeTriedAgain) {
    const std::string notInitialised = "E EGLManager: eglInitialize failed: 0x3001\n";
    const std::string noPbuffer = "E EGLManager: eglCreatePbufferSurface error: 0x3005\n";
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {"DISPLAY=", "2 6 0\n2 6 0\n", notInitialised},
        {"DISPLAY=:59999", "2 6 0\n2 6 0\n", notInitialised},
        {"EGL_PLATFORM=wayland WAYLAND_DISPLAY=none", "2 6 0\n2 6 0\n", notInitialised},
        {"EGL_PLATFORM=surfaceless", "5 6 0\n5 6 0\n", noPbuffer},  // no configuration is for windows there
    };
    for (const auto& [environment, codes, line] : cases) {
        EXPECT_THAT(RunClient(environment, "destroyed"),
                    AllOf(HasSubstr(codes), ContainsRegex(line + "(.*\n)*" + line), EndsWith("status 0")))
            << environment;
    }
}

}  // namespace
