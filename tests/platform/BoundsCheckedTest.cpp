#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "bounds_checked.h"

constexpr rsize_t TOO_LARGE = RSIZE_MAX + 1;

// What is answered, and what is then in a buffer that held "abcdefgh"; zeros are ".".
using Outcome = std::pair<errno_t, std::string>;

static Outcome Set(rsize_t destSize, rsize_t count) {
    std::string buffer = "abcdefgh";
    const errno_t result = memset_s(buffer.data(), destSize, 0x100 + '#', count);
    return {result, buffer};
}

// From place to place in the buffer.
static Outcome Copy(rsize_t dest, rsize_t destSize, rsize_t src, rsize_t count) {
    std::string buffer = "abcdefgh";
    const errno_t result = memcpy_s(buffer.data() + dest, destSize, buffer.data() + src, count);
    std::replace(buffer.begin(), buffer.end(), '\0', '.');
    return {result, buffer};
}

TEST(BoundsChecked, FunctionsSetAndCopyOrOnViolationClearTheWholeDestination) {
    EXPECT_EQ(Set(8, 3), Outcome(0, "###defgh"));
    EXPECT_EQ(Set(8, 8), Outcome(0, "########"));
    EXPECT_EQ(Set(4, 5), Outcome(ERANGE, "####efgh"));
    EXPECT_EQ(Set(4, TOO_LARGE), Outcome(ERANGE, "####efgh"));
    EXPECT_EQ(Set(TOO_LARGE, 3), Outcome(ERANGE, "abcdefgh"));
    EXPECT_EQ(memset_s(nullptr, 8, '#', 8), EINVAL);

    EXPECT_EQ(Copy(0, 4, 4, 4), Outcome(0, "efghefgh"));  // regions that touch
    EXPECT_EQ(Copy(4, 4, 0, 3), Outcome(0, "abcdabch"));
    EXPECT_EQ(Copy(0, 4, 0, 0), Outcome(0, "abcdefgh"));
    EXPECT_EQ(Copy(0, 4, 3, 4), Outcome(EINVAL, "....efgh"));  // regions that overlap
    EXPECT_EQ(Copy(4, 4, 1, 4), Outcome(EINVAL, "abcd...."));
    EXPECT_EQ(Copy(0, 4, 0, 1), Outcome(EINVAL, "....efgh"));
    EXPECT_EQ(Copy(0, 4, 0, 5), Outcome(ERANGE, "....efgh"));
    EXPECT_EQ(Copy(0, TOO_LARGE, 4, 1), Outcome(ERANGE, "abcdefgh"));
    EXPECT_EQ(memcpy_s(nullptr, 8, "a", 1), EINVAL);
    char buffer[] = "ab";
    EXPECT_EQ(memcpy_s(buffer, 1, nullptr, 0), EINVAL);
    EXPECT_EQ(buffer[0], '\0');
}
