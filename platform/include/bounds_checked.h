#ifndef KIVGLES_PLATFORM_BOUNDS_CHECKED_H
#define KIVGLES_PLATFORM_BOUNDS_CHECKED_H

// memset_s and memcpy_s for C libraries without the bounds-checking interfaces of ISO C (glibc and bionic
// have none). Where a C library has them, these declarations repeat its own and the hidden definitions in
// bounds_checked.cpp serve this library alone.
//
// Thread: any. No constraint handler is called: a violation shows in the result.

#include <stddef.h>
#include <stdint.h>

#ifndef RSIZE_MAX
// Half the address space: a size above it was negative before a conversion.
#define RSIZE_MAX (SIZE_MAX >> 1)
#endif

typedef int errno_t;
typedef size_t rsize_t;

#ifdef __cplusplus
extern "C" {
#endif

// Sets the first `count` bytes at `dest` to `value`; the compiler may not leave it out.
// Returns 0; EINVAL for a null `dest`; ERANGE when a size exceeds RSIZE_MAX or `count` exceeds `destSize`.
// After a failure with a valid `dest` and `destSize`, all `destSize` bytes are `value`.
errno_t memset_s(void* dest, rsize_t destSize, int value, rsize_t count);

// Copies `count` bytes from `src` to `dest`.
// Returns 0; EINVAL for a null pointer or regions that overlap; ERANGE as above.
// After a failure with a valid `dest` and `destSize`, all `destSize` bytes are 0.
errno_t memcpy_s(void* dest, rsize_t destSize, const void* src, rsize_t count);

#ifdef __cplusplus
}
#endif

#endif  // KIVGLES_PLATFORM_BOUNDS_CHECKED_H
