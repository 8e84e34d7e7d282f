#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <future>
#include <new>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "drawthread/CmdMemory.h"

static std::atomic<int> heapCalls{0};

// Not inlined: g++ would see memory of `new` go to `free`, or the other way round.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++heapCalls;
    void* const memory = std::malloc(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kivgles {
namespace {

constexpr std::size_t SIZES[] = {1, 64, 128, 129, 384, 385, 5000};  // of kept blocks, between them, beyond
constexpr std::size_t BLOCKS = 6000;                                // more than are kept

void TakeFillAndGiveBack(std::size_t client) {
    const auto size = [](std::size_t i) { return SIZES[i % std::size(SIZES)]; };
    const auto content = [client](std::size_t i) { return static_cast<unsigned char>(i + 30 * client); };
    std::vector<unsigned char*> blocks(BLOCKS);
    for (std::size_t i = 0; i < BLOCKS; ++i) {
        blocks[i] = static_cast<unsigned char*>(TakeCmdMemory(size(i)));
        std::fill_n(blocks[i], size(i), content(i));
    }
    for (std::size_t i = 0; i < BLOCKS; ++i) {
        ASSERT_EQ(std::count(blocks[i], blocks[i] + size(i), content(i)),
                  static_cast<std::ptrdiff_t>(size(i)));
        ASSERT_EQ(reinterpret_cast<std::size_t>(blocks[i]) % alignof(std::max_align_t), 0U);
        GiveBackCmdMemory(blocks[i], size(i));
    }
}

// So many blocks of a command, all at once.
void TakeAndGiveBack(std::size_t n) {
    constexpr std::size_t COMMAND = 100;
    void* blocks[3 * BLOCKS];
    std::generate_n(blocks, n, [] { return TakeCmdMemory(COMMAND); });
    std::for_each(blocks, blocks + n, [](void* block) { GiveBackCmdMemory(block, COMMAND); });
}

// Whether a process forked off here does its work in good time.
bool SucceedsForked(bool (*work)()) {
    if (fork() == 0) {
        alarm(30);  // ends it if it waits for what another thread had taken
        _exit(work() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    wait(&status);
    return status == 0;
}

// While another thread takes and gives back, at first for the first time.
bool ServesForkedProcesses() {
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    TakeAndGiveBack(2);  // the other needs no heap: a sanitizer leaves its locks to the child as they are
#endif
    std::atomic<bool> stops{false};
    const auto other = std::async(std::launch::async, [&stops] {
        while (!stops) {
            TakeAndGiveBack(1);
        }
    });
    bool served = true;
    for (int i = 0; i < 10 && served; ++i) {
        served = SucceedsForked([] { return TakeAndGiveBack(1), true; });
    }
    stops = true;
    return served;
}

// The first of the tests: nothing has been taken before.
TEST(CmdMemory, ServesAProcessThatWasForkedWhileAnotherThreadTookMemory) {
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(SucceedsForked(ServesForkedProcesses));
    }
}

TEST(CmdMemory, GivesEveryTakerBytesOfItsOwnWhileOthersGiveTheirsBack) {
    std::future<void> clients[8];
    for (std::size_t i = 0; i < std::size(clients); ++i) {
        clients[i] = std::async(std::launch::async, TakeFillAndGiveBack, i);
    }
}

TEST(CmdMemory, KeepsWhatIsGivenBackButNotWithoutLimit) {
    TakeAndGiveBack(3 * BLOCKS);
    const int before = heapCalls;
    for (int i = 0; i < 10000; ++i) {
        TakeAndGiveBack(3);
    }
    EXPECT_EQ(heapCalls, before);
    TakeAndGiveBack(3 * BLOCKS);
    EXPECT_GE(heapCalls, before + static_cast<int>(3 * BLOCKS) - 8192);
}

}  // namespace
}  // namespace kivgles
