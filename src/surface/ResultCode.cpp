#include "surface/ResultCode.h"

#include <algorithm>
#include <iterator>

namespace kivgles {

namespace {

struct ResultPair {
    int publicCode;
    int status;
};

constexpr int UNKNOWN_STATUS_CODE = 100;

// The statuses 10, 12, 13, 14 and 40 are reserved: nothing returns them.
constexpr ResultPair RESULT_PAIRS[] = {
    {1, 1},   {2, 2},   {3, 3},   {4, 4},   {5, 5},   {6, 6},   {10, 10}, {11, 12},   {13, 13},   {14, 14},
    {15, 15}, {20, 20}, {21, 21}, {30, 30}, {31, 31}, {32, 32}, {50, 40}, {100, 100}, {103, 101}, {101, 102},
};

}  // namespace

int TranslateResult(int status) {
    if (status == 0) {
        return RESULT_OK;
    }
    const auto* const found =
        std::find_if(std::begin(RESULT_PAIRS), std::end(RESULT_PAIRS),
                     [status](const ResultPair& pair) { return pair.status == status; });
    return found == std::end(RESULT_PAIRS) ? UNKNOWN_STATUS_CODE : found->publicCode;
}

}  // namespace kivgles
