#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>

#include <gmock/gmock.h>

#include "text/OSDTextTest.h"

namespace kivgles {
namespace {

TEST_F(OSDTextTest, AFontThatFailsToLoadIsLoggedAndLeavesNoHalf) {
    struct Failure {
        const char* fault;
        int nth;
        const char* font;
        int status;
        std::string line;
        unsigned int measured;  // 30: the standard atlas has gone
    };
    const std::vector<Failure> failures{
        {"FT_Init_FreeType", 1, "bearings.ttf", 30, "FontAtlas: Failed to initialize freetype library", 30},
        {"FT_New_Face", 1, "bearings.ttf", 31, "FontAtlas: Error loading font face", 30},
        {"", 0, "missing.ttf", 31, "FontAtlas: Error loading font face", 30},
        {"", 0, "no_characters.ttf", 32, "FontAtlas: Calculate texture width 0d, height 0d\n", 30},
        {"", 0, "spaces.ttf", 32, "FontAtlas: Calculate texture width 2d, height 0d\n", 30},
        {"glGenTextures", 1, "bearings.ttf", 21, "FontAtlas: Create texture fail\n", 30},
        {"FT_Init_FreeType", 2, "bearings.ttf", 30, "FontStyleAtlas: Failed to initialize freetype library",
         14},
        {"FT_New_Face", 2, "bearings.ttf", 31, "FontStyleAtlas: Error loading font face", 14},
        {"FT_New_Face", 3, "bearings.ttf", 31, "FontStyleAtlas: Error loading font face for text size", 14}};
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.line);
        Load("outlines.otf");
        recorder::Reset();
        recorder::Fail(failure.fault, failure.nth);
        EXPECT_EQ(text.LoadFont(TestFont(failure.font), 40), failure.status);
        const std::string which = failure.measured == 30 ? "standard" : "dynamic";
        EXPECT_EQ(recorder::Log("E "),
                  (Lines{"E " + failure.line, "E OSDText: Load " + which + " font lib fail " +
                                                  std::to_string(failure.status) + "\n"}));
        EXPECT_EQ(MeasuredWidth(Request(u"A")), failure.measured);
        EXPECT_EQ(recorder::Live("texture").size(), failure.measured == 30 ? 1U : 2U);
        ASSERT_EQ(Draw(Request(u"A")), 0);
        EXPECT_EQ(DrawnBox() == NOTHING, failure.measured == 30);
    }
}

TEST_F(OSDTextTest, ADrawWithoutATextureIsLoggedAndTouchesNoTarget) {
    struct Failure {
        const char* fault;
        const char16_t* text;
        int height;  // of the target
        int status;
        std::string line;
    };
    const std::vector<Failure> failures{
        {"", u"A", HEIGHT, 101, "FontStyleAtlas: font face is null pointer\n"},
        {"", u"A", 0, 102, "OSDText: Param is invalid\n"},
        {"", u"", HEIGHT, 32, "FontStyleAtlas: Calculate texture width 0d, height 0d\n"},
        {"FT_Load_Char", u"A", HEIGHT, 32, "FontStyleAtlas: Char 65 is not exit\n"},
        {"glGenTextures", u"A", HEIGHT, 21, "FontStyleAtlas: Create texture fail\n"}};
    for (const Failure& failure : failures) {
        SCOPED_TRACE(failure.line);
        recorder::Reset();
        if (failure.status != 101) {
            Load("bearings.ttf");
            ASSERT_EQ(Draw(Request(u"A", STYLED)), 0);
        }
        recorder::Reset();
        recorder::Fail(failure.fault);
        TagFrameBuffObject target = layer;
        target.height = failure.height;
        EXPECT_EQ(text.DrawText(target, Request(failure.text, STYLED), 0, 0), failure.status);

        Lines log = recorder::Log("E ");
        const std::string status = std::to_string(failure.status);
        EXPECT_EQ(log.front(), "E " + failure.line);
        EXPECT_EQ(log.back(), "E OSDText: get font alpha texture fail " + status + "\n");
        if (failure.height != 0) {
            EXPECT_EQ(log.end()[-2], "E OSDText: Get font atlas texture fail " + status);
            EXPECT_EQ(recorder::Live("texture").size(),
                      failure.status == 101 ? 1U : 2U);  // the former has gone
        }
        EXPECT_EQ(recorder::Counts().count("glBindFramebuffer") + recorder::Counts().count("glUseProgram"),
                  0U);
    }
}

TEST_F(OSDTextTest, WithoutItsProgramThereIsNoFontAndNoCharacter) {
    OSDText broken;
    recorder::Fail("glCreateProgram");
    EXPECT_EQ(broken.Init(), 20);
    EXPECT_EQ(broken.LoadFont(TestFont("bearings.ttf"), 40), 101);
    EXPECT_EQ(recorder::Log("E OSDText"),
              (Lines{"E OSDText: create shader program fail", "E OSDText: OSDText is not inited\n"}));
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(broken.GetTextSize(Request(u"AA", STYLED), width, height), 0);
    EXPECT_EQ(width, 60U);
    EXPECT_NE(broken.DrawText(layer, Request(u"AA"), 0, 0), 0);
}

TEST_F(OSDTextTest, DamagedFontsGiveAStatusAndLeaveTheRestWorking) {
    const std::string path = TestFont("damaged");
    const auto Try = [&](const std::string& bytes) {
        std::remove(path.c_str());  // the former one may be open
        std::ofstream(path, std::ios::binary) << bytes;
        const int status = text.LoadFont(path, 40);
        ASSERT_THAT(status, testing::AnyOf(0, 31, 32));
        (void)Draw(Request(u"AJ"));
        (void)Draw(Request(u"AJ", OTHER));
        EXPECT_TRUE(status == 0 || MeasuredWidth(Request(u"AJ")) == 60);
        ASSERT_LE(recorder::Live("texture").size(), 3U);  // the layer's, and one of each atlas
        ASSERT_LE(recorder::Live("face").size(), 2U);
        recorder::Reset();
    };
    for (const char* const font : {"bearings.ttf", "outlines.otf", "bits.bdf"}) {
        std::ifstream file(TestFont(font), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            SCOPED_TRACE(font + (" cut to " + std::to_string(length)));
            Try(bytes.substr(0, length));
        }
    }
    std::mt19937 random(1);
    for (int i = 0; i < 50; ++i) {
        std::string bytes(500, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        Try(bytes);
    }
    Load("bearings.ttf");
    EXPECT_EQ(MeasuredWidth(Request(u"A")), 14U);
}

}  // namespace
}  // namespace kivgles
