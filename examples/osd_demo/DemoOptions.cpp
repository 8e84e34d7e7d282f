#include "DemoOptions.h"

#include <filesystem>
#include <system_error>

#include <CLI/CLI.hpp>

namespace examples::osd_demo {

namespace {

constexpr int MAX_LINES = 4;
constexpr char NO_FONT[] = "none";

// Where Debian's packages put a font with Chinese, Japanese and Korean characters; empty if there is none.
std::string FindCjkFont() {
    for (const char* path : {"/usr/share/fonts/truetype/wqy/wqy-microhei.ttc",
                             "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc",
                             "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf"}) {
        std::error_code error;
        if (std::filesystem::is_regular_file(path, error)) {
            return path;
        }
    }
    return {};
}

std::vector<std::string> DefaultLines(bool hasCjkFont) {
    std::vector<std::string> lines = {"Welcome aboard", "Καλώς ήρθατε", "Добро пожаловать"};
    if (hasCjkFont) {
        lines.emplace_back("欢迎 ようこそ 환영합니다");
    }
    return lines;
}

}  // namespace

std::optional<DemoOptions> ParseOptions(int argc, char** argv, int& exitCode) {
    DemoOptions options;
    options.cjkFont = FindCjkFont();

    CLI::App app("Draws an information panel in a window and saves what the window shows.", "osd_demo");
    app.add_option("--width", options.width, "Width of the window in pixels")
        ->check(CLI::Range(160, 4096))
        ->capture_default_str();
    app.add_option("--height", options.height, "Height of the window in pixels")
        ->check(CLI::Range(90, 4096))
        ->capture_default_str();
    app.add_option("--output", options.output, "PNG file for the picture")->capture_default_str();
    app.add_option("--frames", options.frames, "Number of frames in which the progress bar fills")
        ->check(CLI::Range(1U, 100000U))
        ->capture_default_str();
    app.add_option("--hold", options.hold, "Seconds for which the window stays afterwards")
        ->check(CLI::Range(0U, 3600U))
        ->capture_default_str();
    app.add_option("--font", options.font, "Font file")->capture_default_str();
    app.add_option("--cjk-font", options.cjkFont,
                   "Font file for Chinese, Japanese and Korean lines; \"none\": do without")
        ->capture_default_str();
    app.add_option("--logo", options.logo, "PNG file with a logo, in place of the demo's own");
    app.add_option("--title", options.title, "Title of the panel")->capture_default_str();
    app.add_option("--line", options.lines, "Lines of text (UTF-8), up to 4, in place of the greetings")
        ->expected(1, MAX_LINES);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error);
        return std::nullopt;
    }

    if (options.cjkFont == NO_FONT) {
        options.cjkFont.clear();
    }
    if (options.lines.empty()) {
        options.lines = DefaultLines(!options.cjkFont.empty());
    }
    return options;
}

}  // namespace examples::osd_demo
