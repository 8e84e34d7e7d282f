#include <vector>

#include <gtest/gtest.h>

#include "text/GlyphLoader.h"
#include "text/TextTest.h"

namespace kivgles {
namespace {

using Bytes = std::vector<unsigned char>;

TEST(PackGreyPixels, GivesFullRangeBytesTopRowFirst) {
    struct Case {
        const char* name;
        FT_Bitmap bitmap;  // rows, width, pitch, buffer, greys, mode
        Bytes buffer;      // of this very size: a read behind it is found by the address sanitizer
        Bytes packed;
    };
    std::vector<Case> cases{
        {"bits",
         {2, 10, 2, nullptr, 0, FT_PIXEL_MODE_MONO, 0, nullptr},
         {0x80, 0x40, 0x01, 0x80},
         {255, 0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 255, 255, 0}},
        {"padded bits",
         {2, 3, 4, nullptr, 0, FT_PIXEL_MODE_MONO, 0, nullptr},
         {0xA0, 9, 9, 9, 0x40, 9, 9, 9},
         {255, 0, 255, 0, 255, 0}},
        {"bits, bottom row first",
         {2, 2, -1, nullptr, 0, FT_PIXEL_MODE_MONO, 0, nullptr},
         {0x40, 0x80},
         {255, 0, 0, 255}},
        {"four greys",
         {1, 5, 2, nullptr, 4, FT_PIXEL_MODE_GRAY2, 0, nullptr},
         {0x1B, 0x80},
         {0, 85, 170, 255, 170}},
        {"16 greys", {1, 3, 2, nullptr, 16, FT_PIXEL_MODE_GRAY4, 0, nullptr}, {0x0F, 0x10}, {0, 255, 17}},
        {"padded greys",
         {2, 2, 3, nullptr, 256, FT_PIXEL_MODE_GRAY, 0, nullptr},
         {1, 2, 99, 3, 4, 99},
         {1, 2, 3, 4}},
        {"greys, bottom row first",
         {2, 2, -3, nullptr, 256, FT_PIXEL_MODE_GRAY, 0, nullptr},
         {3, 4, 99, 1, 2, 99},
         {1, 2, 3, 4}},
        {"colours",
         {1, 2, 8, nullptr, 0, FT_PIXEL_MODE_BGRA, 0, nullptr},
         {0, 0, 0, 255, 0, 0, 0, 0},
         {255, 0}}};
    FT_Library library = nullptr;
    ASSERT_EQ(FT_Init_FreeType(&library), 0);
    for (Case& row : cases) {
        SCOPED_TRACE(row.name);
        row.bitmap.buffer = row.buffer.data();
        Bytes packed{9, 9, 9};
        EXPECT_TRUE(PackGreyPixels(library, row.bitmap, packed));
        EXPECT_EQ(packed, row.packed);
        row.bitmap.pixel_mode = FT_PIXEL_MODE_NONE;
        EXPECT_FALSE(PackGreyPixels(library, row.bitmap, packed));
    }
    FT_Done_FreeType(library);
}

}  // namespace
}  // namespace kivgles
