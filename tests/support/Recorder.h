#ifndef KIVGLES_TESTS_SUPPORT_RECORDER_H
#define KIVGLES_TESTS_SUPPORT_RECORDER_H

// Stands between the library and GL, EGL, FreeType, the log and the starting of threads: sees every call the
// library makes, can let one fail, and forwards the others. Calls that those libraries make to one another
// are not counted, recorded or failed. A test may define one of these functions itself: here they are weak.
//
// Thread: any; nothing here is destroyed at exit. A call that is not recorded and makes or deletes nothing
// takes no lock, so that the thread sanitizer sees the library's own ordering only.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace recorder {

// Forgets calls, counts, faults and log lines, and stops recording. Objects alive stay known.
void Reset();

// --- Calls as text, "glViewport(0, 0, 64, 32)" ---
// From now on; forgets those recorded before. With what a window shows at each swap, if it is there.
void Record(bool pictures);
std::vector<std::string> Calls();     // recorded so far, in order
std::map<std::string, int> Counts();  // calls of each function since Reset, recorded or not

// --- Faults ---
// Lets the nth call of a function from now on fail, with `forGood` every later one too: it does nothing,
// except for what ends something, which is done, and answers with its error value (EGL_BAD_ALLOC,
// FT_Err_Out_Of_Memory, EAGAIN, a name of 0, a location of -1); glCheckFramebufferStatus and glGetIntegerv
// answer `result`.
void Fail(const std::string& function, int nth = 1, bool forGood = false, unsigned int result = 0);

// --- Without a driver ---
// From now on, which is before any call, those of EGL and GL are not forwarded and come out well. What GL
// would read from the caller is read in full, so that a sanitizer sees it; what would read or write where it
// must not ends the process: an upload outside a texture, vertices behind the end of their buffer. Resets,
// and forgets what is alive.
void StandAlone(int maxTextureSize);
// Ends the process as a finding, and says which, unless `holds`.
void Expect(bool holds, const char* finding);

// --- Objects alive ---
// Of "texture", "buffer", "framebuffer", "shader" and "program", of which one context has all, and which no
// thread makes or deletes that never had a context; of "context", "surface", "face" and "library".
std::map<std::string, std::size_t> Live();
std::size_t LiveNum();

// --- Log lines, "E FBOManager: Create texture fail\n", that begin as said ---
std::vector<std::string> Log(const std::string& beginning = "");

// --- For functions that stand between the library and the real one of their name ---

struct Function {
    std::atomic<int> count{0};
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
int MaxTextureSize();                              // without a driver; 0: there is one
inline std::atomic<std::uintptr_t> lastAnswer{0};  // without a driver
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

#endif  // KIVGLES_TESTS_SUPPORT_RECORDER_H
