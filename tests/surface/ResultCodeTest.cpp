#include <utility>

#include <gtest/gtest.h>

#include "surface/ResultCode.h"

namespace kivgles {
namespace {

TEST(ResultCodes, TranslateEveryStatus) {
    for (const int same : {0, 1, 2, 3, 4, 5, 6, 10, 13, 14, 15, 20, 21, 30, 31, 32, 100}) {
        EXPECT_EQ(TranslateResult(same), same);
    }
    for (const auto& [status, code] : {std::pair(12, 11),
                                       {40, 50},
                                       {101, 103},
                                       {102, 101},
                                       {7, 100},
                                       {11, 100},
                                       {50, 100},
                                       {103, 100},
                                       {-1, 100}}) {
        EXPECT_EQ(TranslateResult(status), code);
    }
}

}  // namespace
}  // namespace kivgles
