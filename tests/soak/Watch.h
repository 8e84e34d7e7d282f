#ifndef KIVGLES_TESTS_SOAK_WATCH_H
#define KIVGLES_TESTS_SOAK_WATCH_H

// Looks at the process's memory while something is done many times.

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

namespace kivgles {

// KiB that may be added: the rasteriser has now more, now less, and heaps have gaps.
constexpr std::size_t HEAP_GROWTH = 2048;
constexpr std::size_t RESIDENT_GROWTH = 6144;

// A few times say nothing, and nothing says the heap of a sanitizer, which keeps what is freed.
#ifdef KIVGLES_SANITIZED
constexpr unsigned int ENOUGH = UINT_MAX;
#else
constexpr unsigned int ENOUGH = 20;
#endif

// Does something so many times, and looks at the process's memory after each tenth of them. The driver may
// take its time to reach its most; in the second half nothing may be added.
template <typename Do>
void Watch(const char* name, unsigned int times, const Do& something) {
    std::size_t mostHeap = 0;
    std::size_t mostResident = 0;
    for (unsigned int done = 1; done <= times; ++done) {
        something();
        if (done % std::max(times / 10, 1U) == 0) {
            const std::size_t heap = mallinfo2().uordblks / 1024;
            std::size_t resident = 0;
            std::ifstream("/proc/self/statm") >> resident >> resident;  // the second number, of pages
            resident *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) / 1024;
            std::printf("soak: %8u %s, %zu KiB of heap, %zu KiB resident\n", done, name, heap, resident);
            if (done <= times / 2) {
                mostHeap = std::max(mostHeap, heap + HEAP_GROWTH);
                mostResident = std::max(mostResident, resident + RESIDENT_GROWTH);
            }
            EXPECT_TRUE(times < ENOUGH || (heap <= mostHeap && resident <= mostResident));
        }
    }
}

// One heap, of which mallinfo2 tells.
inline void UseOneHeap() {
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_MAX, 0);
}

inline unsigned int NumberOf(const char* variable, const char* otherwise) {
    const char* const set = std::getenv(variable);
    return static_cast<unsigned int>(std::atoi(set != nullptr ? set : otherwise));
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SOAK_WATCH_H
