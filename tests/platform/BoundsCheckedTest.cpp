#include <algorithm>
#include <cerrno>
#include <string>

#include <gtest/gtest.h>

#include "bounds_checked.h"

namespace {

constexpr rsize_t TOO_LARGE = RSIZE_MAX + 1;

TEST(MemsetS, SetsCountBytesOrOnViolationTheWholeDestination) {
    struct Case {
        rsize_t destSize, count;
        errno_t result;
        const char* after;  // of a buffer that held "abcdefgh"
    };
    const Case cases[] = {
        {8, 3, 0, "###defgh"},
        {8, 8, 0, "########"},
        {8, 0, 0, "abcdefgh"},
        {4, 5, ERANGE, "####efgh"},
        {4, TOO_LARGE, ERANGE, "####efgh"},
        {TOO_LARGE, 3, ERANGE, "abcdefgh"},
    };
    for (const Case& test : cases) {
        std::string buffer = "abcdefgh";
        EXPECT_EQ(memset_s(buffer.data(), test.destSize, 0x100 + '#', test.count), test.result);
        EXPECT_EQ(buffer, test.after) << test.destSize << " bytes, " << test.count << " set";
    }
    EXPECT_EQ(memset_s(nullptr, 8, '#', 8), EINVAL);
}

TEST(MemcpyS, CopiesOrOnViolationClearsTheWholeDestination) {
    struct Case {
        const char* name;
        rsize_t dest, destSize;  // an offset into a buffer that holds "abcdefgh"
        int src;                 // another; -1: null
        rsize_t count;
        errno_t result;
        const char* after;  // zeros are "."
    };
    const Case cases[] = {
        {"fits", 0, 4, 4, 3, 0, "efgdefgh"},
        {"regions that touch", 0, 4, 4, 4, 0, "efghefgh"},
        {"the other way round", 4, 4, 0, 4, 0, "abcdabcd"},
        {"nothing onto itself", 0, 4, 0, 0, 0, "abcdefgh"},
        {"overlap from behind", 0, 4, 3, 4, EINVAL, "....efgh"},
        {"overlap from before", 4, 4, 1, 4, EINVAL, "abcd...."},
        {"the same region", 0, 4, 0, 1, EINVAL, "....efgh"},
        {"nothing of nothing", 0, 4, -1, 0, EINVAL, "....efgh"},
        {"count beyond the destination", 0, 4, 0, 5, ERANGE, "....efgh"},
        {"count beyond RSIZE_MAX", 0, 4, 0, TOO_LARGE, ERANGE, "....efgh"},
        {"destination size beyond RSIZE_MAX", 0, TOO_LARGE, 4, 1, ERANGE, "abcdefgh"},
    };
    for (const Case& test : cases) {
        std::string buffer = "abcdefgh";
        const char* const src = test.src < 0 ? nullptr : buffer.data() + test.src;
        EXPECT_EQ(memcpy_s(buffer.data() + test.dest, test.destSize, src, test.count), test.result)
            << test.name;
        std::replace(buffer.begin(), buffer.end(), '\0', '.');
        EXPECT_EQ(buffer, test.after) << test.name;
    }
    EXPECT_EQ(memcpy_s(nullptr, 8, "a", 1), EINVAL);
}

}  // namespace
