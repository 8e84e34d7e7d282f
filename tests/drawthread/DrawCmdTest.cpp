#include <algorithm>
#include <numeric>
#include <vector>

#include <gmock/gmock.h>

#include "drawthread/DrawCmd.h"

namespace kivgles {
namespace {

TEST(TextInfo, KeepsItsOwnCopyAndReadsNothingPastTheCallersText) {
    struct Case {
        const char* name;
        std::size_t units;  // in the caller's memory, which ends with them
        bool terminated;    // the last of them is 0
        unsigned int length, kept;
        std::size_t copied;  // units that are the caller's; 0 from there on
    };
    const Case cases[] = {
        {"short", 6, true, 5, 5, 5},
        {"longest", 128, true, 127, 127, 127},
        {"one too long", 129, true, 128, 127, 128},
        {"much too long", 201, true, 200, 127, 128},
        {"unterminated", 5, false, 5, 5, 5},
        {"unterminated, longest", 127, false, 127, 127, 127},
        {"shorter than it claims", 6, true, 4000000000, 127, 5},
    };
    TextInfo info;  // of one text after the other
    for (const Case& test : cases) {
        SCOPED_TRACE(test.name);
        std::vector<char16_t> text(test.units);
        std::iota(text.begin(), text.end(), u'a');
        text.back() = test.terminated ? u'\0' : text.back();
        std::vector<char16_t> expected = text;
        expected.resize(test.copied);
        expected.resize(TEXT_MAX_LEN + 1);
        EXPECT_EQ(info.SetTextInfo({text.data(), test.length, {1, 2, 3, 4}, {5, 6, 7, 8}, 9, 10, 11, 12, 13}),
                  0);
        std::fill(text.begin(), text.end(), u'#');
        const TagGLTextInfo& kept = info.GetTextInfo();
        EXPECT_EQ(std::vector<char16_t>(kept.text, kept.text + TEXT_MAX_LEN + 1), expected);
        EXPECT_THAT((std::vector<float>{kept.fgColor.a, kept.bgColor.r}), testing::ElementsAre(4, 5));
        EXPECT_THAT((std::vector<unsigned int>{kept.textLength, kept.reserved, kept.fontSize, kept.bold,
                                               kept.underline, kept.italic}),
                    testing::ElementsAre(test.kept, 9, 10, 11, 12, 13));
    }
    TextInfo none;
    EXPECT_EQ(none.SetTextInfo({nullptr, 5, {}, {}, 1, 40, 1, 1, 1}), 100);
    EXPECT_EQ(none.GetTextInfo().textLength, 0U);
}

}  // namespace
}  // namespace kivgles
