#ifndef KIVGLES_TESTS_FUZZ_MEMORYFILE_H
#define KIVGLES_TESTS_FUZZ_MEMORYFILE_H

#include <cstddef>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "StubGL.h"

// A file that is never on a disk, rewritten as often as there are inputs.
class MemoryFile {
 public:
    MemoryFile()
        : descriptor(memfd_create("font", MFD_CLOEXEC)),
          path("/proc/self/fd/" + std::to_string(descriptor)) {}
    ~MemoryFile() { close(descriptor); }

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    void Write(const void* bytes, std::size_t size) const {
        if (ftruncate(descriptor, 0) != 0 ||
            pwrite(descriptor, bytes, size, 0) != static_cast<ssize_t>(size)) {
            stubgl::Report("the memory file cannot be written");
        }
    }
    const std::string& Path() const { return path; }

 private:
    int descriptor;
    std::string path;
};

#endif  // KIVGLES_TESTS_FUZZ_MEMORYFILE_H
