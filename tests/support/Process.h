#ifndef KIVGLES_TESTS_SUPPORT_PROCESS_H
#define KIVGLES_TESTS_SUPPORT_PROCESS_H

// What the test's process holds, its threads do, and its environment says.

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <string>
#include <thread>
#include <utility>

#include <unistd.h>

namespace kivgles {

inline std::size_t EntryNum(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}
inline std::size_t DescriptorNum() { return EntryNum("/proc/self/fd"); }
inline std::size_t ThreadNum() { return EntryNum("/proc/self/task"); }

// A thread that has ended is there for a moment more, and so are the driver's: waits until there are no more
// than so many.
inline void AwaitThreadNum(std::size_t most) {
    while (ThreadNum() > most) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

inline constexpr std::chrono::seconds NO_TIME(0);

// A call on a thread of its own, as soon as that sleeps or has ended.
template <typename Call>
auto AsleepIn(const Call& call) {
    std::promise<pid_t> told;
    std::future<pid_t> id = told.get_future();
    auto end = std::async(std::launch::async, [told = std::move(told), call]() mutable {
        told.set_value(gettid());
        return call();
    });
    const std::string stat = "/proc/self/task/" + std::to_string(id.get()) + "/stat";
    for (char state = 'R'; state != 'S' && end.wait_for(NO_TIME) != std::future_status::ready;) {
        std::ifstream(stat).ignore(100, ')').ignore() >> state;
    }
    return end;
}

inline unsigned int NumberOf(const char* variable, const char* otherwise) {
    const char* const set = std::getenv(variable);
    return static_cast<unsigned int>(std::atoi(set != nullptr ? set : otherwise));
}

}  // namespace kivgles

#endif  // KIVGLES_TESTS_SUPPORT_PROCESS_H
