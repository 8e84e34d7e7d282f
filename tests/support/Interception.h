#ifndef KIVGLES_TESTS_SUPPORT_INTERCEPTION_H
#define KIVGLES_TESTS_SUPPORT_INTERCEPTION_H

// What a function that stands between the library and the real one of its name tells the recorder.
//
// Thread: any. A call that is not recorded and makes or deletes nothing takes no lock, so that the thread
// sanitizer sees the library's own ordering only.

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>

#include <dlfcn.h>

namespace recorder {

struct Function {
    std::atomic<int> count{0};
    std::atomic<int> failed{0};
    std::atomic<int> failAt{0};  // the count at which to fail; 0: never
    std::atomic<bool> failForGood{false};
    std::atomic<unsigned int> result{0};
};

Function& Find(const std::string& name);

// The real function.
template <typename Signature>
Signature* Next(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "recorder: there is no %s to forward to\n", name);
        std::abort();
    }
    return reinterpret_cast<Signature*>(symbol);
}

// Alive while a real function works: the calls that it makes of others are not the library's.
struct Forwarding {
    Forwarding() { ++depth; }
    ~Forwarding() { --depth; }
    static inline thread_local int depth = 0;
};

bool Enter(Function& function);  // counts a call by the library, tells whether it has to fail

bool IsRecording();
bool IsRecordingPictures();
void BeginCall(const std::string& text);    // the call at work on this thread; empty: it is not recorded
void AddResult(const std::string& object);  // of the call at work
void AddLine(const std::string& text);      // below the calls so far

template <typename Describe>
bool EnterRecorded(Function& function, const Describe& describe) {
    BeginCall(Forwarding::depth == 0 && IsRecording() ? describe() : "");
    return Enter(function);
}

// An object of GL, by its name, or of EGL and FreeType, by its address.
void SetLive(const std::string& kind, std::uintptr_t id, bool isLive);
void ForgetAll(std::initializer_list<const char*> kinds);

}  // namespace recorder

#endif  // KIVGLES_TESTS_SUPPORT_INTERCEPTION_H
