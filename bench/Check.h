#ifndef KIVGLES_BENCH_CHECK_H
#define KIVGLES_BENCH_CHECK_H

#include <string>

#include "Contestant.h"

namespace bench {

// Of an operation of the library.
inline void Check(int result) {
    if (result != 0) {
        Fail("result " + std::to_string(result));
    }
}

}  // namespace bench

#endif  // KIVGLES_BENCH_CHECK_H
