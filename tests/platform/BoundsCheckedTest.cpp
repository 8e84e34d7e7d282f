#include <array>
#include <cerrno>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "bounds_checked.h"

namespace {

constexpr rsize_t TOO_LARGE = RSIZE_MAX + 1;

struct MemsetCase {
    const char* name;
    rsize_t destSize;
    rsize_t count;
    errno_t result;
    std::string after;  // of a buffer that held "abcdefgh"; the value set is '#'
};

TEST(MemsetS, SetsCountBytesOrOnViolationTheWholeDestination) {
    const MemsetCase cases[] = {
        {"a part", 8, 3, 0, "###defgh"},
        {"all", 8, 8, 0, "########"},
        {"nothing", 8, 0, 0, "abcdefgh"},
        {"count beyond the destination", 4, 5, ERANGE, "####efgh"},
        {"count beyond RSIZE_MAX", 4, TOO_LARGE, ERANGE, "####efgh"},
        {"destination size beyond RSIZE_MAX", TOO_LARGE, 3, ERANGE, "abcdefgh"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string buffer = "abcdefgh";
        EXPECT_EQ(memset_s(buffer.data(), c.destSize, '#', c.count), c.result);
        EXPECT_EQ(buffer, c.after);
    }
    EXPECT_EQ(memset_s(nullptr, 8, '#', 8), EINVAL);
}

TEST(MemsetS, TakesTheLowByteOfTheValue) {
    std::string buffer = "abc";
    EXPECT_EQ(memset_s(buffer.data(), 3, 0x100 + '#', 3), 0);
    EXPECT_EQ(buffer, "###");
}

struct MemcpyCase {
    const char* name;
    rsize_t destOffset;  // into a buffer that holds "abcdefgh"
    rsize_t destSize;
    rsize_t srcOffset;  // into the same buffer
    rsize_t count;
    errno_t result;
    std::string after;
};

TEST(MemcpyS, CopiesOrOnViolationClearsTheWholeDestination) {
    const std::string zeros(4, '\0');
    const MemcpyCase cases[] = {
        {"fits", 0, 4, 4, 3, 0, "efgdefgh"},
        {"regions that touch", 0, 4, 4, 4, 0, "efghefgh"},
        {"the other way round", 4, 4, 0, 4, 0, "abcdabcd"},
        {"nothing onto itself", 0, 4, 0, 0, 0, "abcdefgh"},
        {"overlap from behind", 0, 4, 3, 4, EINVAL, zeros + "efgh"},
        {"overlap from before", 4, 4, 1, 4, EINVAL, "abcd" + zeros},
        {"the same region", 0, 4, 0, 1, EINVAL, zeros + "efgh"},
        {"count beyond the destination", 0, 4, 0, 5, ERANGE, zeros + "efgh"},
        {"count beyond RSIZE_MAX", 0, 4, 0, TOO_LARGE, ERANGE, zeros + "efgh"},
        {"destination size beyond RSIZE_MAX", 0, TOO_LARGE, 4, 1, ERANGE, "abcdefgh"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::string buffer = "abcdefgh";
        EXPECT_EQ(memcpy_s(buffer.data() + c.destOffset, c.destSize, buffer.data() + c.srcOffset, c.count),
                  c.result);
        EXPECT_EQ(buffer, c.after);
    }
}

TEST(MemcpyS, RefusesNullPointers) {
    std::string buffer = "abcdefgh";
    EXPECT_EQ(memcpy_s(nullptr, 8, buffer.data(), 1), EINVAL);
    EXPECT_EQ(buffer, "abcdefgh");
    EXPECT_EQ(memcpy_s(buffer.data(), 4, nullptr, 0), EINVAL);
    EXPECT_EQ(buffer, std::string(4, '\0') + "efgh");
}

}  // namespace
