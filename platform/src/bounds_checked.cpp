#include "bounds_checked.h"

#include <cerrno>
#include <cstring>

namespace {

// The checks that both functions make of their destination.
errno_t CheckDestination(const void* dest, rsize_t destSize, rsize_t count) {
    if (dest == nullptr) {
        return EINVAL;
    }
    if (destSize > RSIZE_MAX || count > RSIZE_MAX || count > destSize) {
        return ERANGE;
    }
    return 0;
}

bool IsClearable(const void* dest, rsize_t destSize) { return dest != nullptr && destSize <= RSIZE_MAX; }

// Whether [a, a + count) and [b, b + count) share a byte. Compared as numbers, without a sum that could wrap.
bool Overlap(const void* a, const void* b, rsize_t count) {
    const auto first = reinterpret_cast<uintptr_t>(a);
    const auto second = reinterpret_cast<uintptr_t>(b);
    return first < second ? second - first < count : first - second < count;
}

}  // namespace

errno_t memset_s(void* dest, rsize_t destSize, int value, rsize_t count) {
    const errno_t result = CheckDestination(dest, destSize, count);
    if (result == 0) {
        std::memset(dest, value, count);
    } else if (IsClearable(dest, destSize)) {
        std::memset(dest, value, destSize);
    }
    // To the compiler the bytes are read here, so the store stays even when nobody else looks at them.
    __asm__ __volatile__("" : : "r"(dest) : "memory");
    return result;
}

errno_t memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count) {
    errno_t result = CheckDestination(dest, destSize, count);
    if (result == 0 && (src == nullptr || Overlap(dest, src, count))) {
        result = EINVAL;
    }
    if (result == 0) {
        std::memcpy(dest, src, count);
    } else if (IsClearable(dest, destSize)) {
        std::memset(dest, 0, destSize);
    }
    return result;
}
