#include <string>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/Recorder.h"
#include "text/OSDText.h"

namespace kivgles {
namespace {

TEST(OSDText, WithoutItsProgramThereIsNoFontAndNoCharacter) {
    OSDText text;
    EXPECT_EQ(text.Init(), 20);  // there is no context
    EXPECT_EQ(text.LoadFont("any.ttf", 40), 101);
    TagGLTextInfo request{};
    request.text = u"AA";
    request.textLength = 2;
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(text.GetTextSize(request, width, height), 0);
    EXPECT_EQ(width, 60U);
    EXPECT_EQ(text.DrawText({FBO_HANDLE_BASE, 0, 0, 64, 32}, request, 0, 0), 101);
    EXPECT_THAT(recorder::Log("E OSDText"), testing::Contains("E OSDText: OSDText is not inited\n").Times(2));
}

TEST(FontFiles, OfAnotherKindThanRegularDoNotOpenAndKeepNobodyWaiting) {
    const std::string pipe = testing::TempDir() + "kivgles_font_pipe";
    (void)unlink(pipe.c_str());
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, testing::TempDir()}) {
        recorder::Reset();
        EXPECT_EQ(FontAtlas().LoadFontByPath(path, 40), 31);
        EXPECT_EQ(FontStyleAtlas().LoadFontByPath(path), 31);
        EXPECT_THAT(recorder::Log("E "), testing::ElementsAre("E FontAtlas: Error loading font face",
                                                              "E FontStyleAtlas: Error loading font face"));
        EXPECT_EQ(recorder::Counts()["FT_New_Face"], 0);
    }
    EXPECT_EQ(unlink(pipe.c_str()), 0);
    EXPECT_EQ(FontAtlas().LoadFontByPath(pipe, 40), 31);
    EXPECT_EQ(recorder::Counts()["FT_New_Face"], 1) << "a file that is not there is FreeType's to miss";
}

}  // namespace
}  // namespace kivgles
