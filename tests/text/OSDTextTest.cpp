#include <gmock/gmock.h>

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

}  // namespace
}  // namespace kivgles
