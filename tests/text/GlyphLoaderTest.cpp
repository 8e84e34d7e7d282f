#include <vector>

#include <gtest/gtest.h>

#include "text/GlyphLoader.h"

namespace kivgles {
namespace {

using Bytes = std::vector<unsigned char>;

TEST(PackGreyPixels, GivesFullRangeBytesTopRowFirst) {
    struct Case {
        const char* name;
        unsigned int rows, width;
        int pitch;
        FT_Pixel_Mode mode;
        unsigned short greys;
        Bytes buffer;  // of this very size: a read behind it is found by the address sanitizer
        Bytes packed;
    };
    Case cases[] = {
        {"bits", 1, 10, 2, FT_PIXEL_MODE_MONO, 0, {0x82, 0x40}, {255, 0, 0, 0, 0, 0, 255, 0, 0, 255}},
        {"padded bits", 2, 3, 3, FT_PIXEL_MODE_MONO, 0, {0xA0, 9, 9, 0x40, 9, 9}, {255, 0, 255, 0, 255, 0}},
        {"bits, bottom row first", 2, 2, -1, FT_PIXEL_MODE_MONO, 0, {0x40, 0x80}, {255, 0, 0, 255}},
        {"four greys", 1, 5, 2, FT_PIXEL_MODE_GRAY2, 4, {0x1B, 0x80}, {0, 85, 170, 255, 170}},
        {"16 greys", 1, 3, 2, FT_PIXEL_MODE_GRAY4, 16, {0x0F, 0x10}, {0, 255, 17}},
        {"padded greys", 2, 2, 3, FT_PIXEL_MODE_GRAY, 256, {1, 2, 99, 3, 4, 99}, {1, 2, 3, 4}},
        {"greys, bottom row first", 2, 2, -3, FT_PIXEL_MODE_GRAY, 256, {3, 4, 99, 1, 2, 99}, {1, 2, 3, 4}},
        {"colours", 1, 2, 8, FT_PIXEL_MODE_BGRA, 0, {0, 0, 0, 255, 0, 0, 0, 0}, {255, 0}},
    };
    FT_Library library = nullptr;
    ASSERT_EQ(FT_Init_FreeType(&library), 0);
    for (Case& test : cases) {
        SCOPED_TRACE(test.name);
        const auto mode = static_cast<unsigned char>(test.mode);
        FT_Bitmap bitmap{test.rows, test.width, test.pitch, test.buffer.data(), test.greys, mode, 0, nullptr};
        Bytes packed{9, 9, 9};
        EXPECT_TRUE(PackGreyPixels(library, bitmap, packed));
        EXPECT_EQ(packed, test.packed);
        bitmap.pixel_mode = FT_PIXEL_MODE_NONE;
        EXPECT_FALSE(PackGreyPixels(library, bitmap, packed));
    }
    FT_Done_FreeType(library);
}

}  // namespace
}  // namespace kivgles
