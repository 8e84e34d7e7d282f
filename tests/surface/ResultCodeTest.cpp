#include <map>

#include <gtest/gtest.h>

#include "surface/ResultCode.h"

namespace kivgles {
namespace {

TEST(ResultCodes, TranslateEveryStatus) {
    std::map<int, int> codes{{12, 11}, {40, 50}, {101, 103}, {102, 101}};
    for (const int same : {0, 1, 2, 3, 4, 5, 6, 10, 13, 14, 15, 20, 21, 30, 31, 32, 100}) {
        codes[same] = same;
    }
    for (int status = -1; status < 200; ++status) {
        EXPECT_EQ(TranslateResult(status), codes.count(status) != 0 ? codes[status] : 100) << status;
    }
}

}  // namespace
}  // namespace kivgles
