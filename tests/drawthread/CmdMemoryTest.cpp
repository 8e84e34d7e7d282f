#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <future>
#include <new>
#include <tuple>
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

using Block = std::tuple<unsigned char*, std::size_t, unsigned char>;  // its bytes, their number and content

std::vector<Block> TakeFilled(std::size_t client) {
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < BLOCKS; ++i) {
        const std::size_t size = SIZES[i % std::size(SIZES)];
        const auto content = static_cast<unsigned char>(i + 30 * client);
        blocks.emplace_back(static_cast<unsigned char*>(TakeCmdMemory(size)), size, content);
        std::fill_n(std::get<0>(blocks.back()), size, content);
    }
    return blocks;
}

void GiveBackUnchanged(const std::vector<Block>& blocks) {
    for (const auto& [bytes, size, content] : blocks) {
        ASSERT_EQ(std::count(bytes, bytes + size, content), static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(reinterpret_cast<std::size_t>(bytes) % alignof(std::max_align_t), 0U);
        GiveBackCmdMemory(bytes, size);
    }
}

// So many blocks of a command, all at once.
void TakeAndGiveBack(std::size_t n) {
    constexpr std::size_t COMMAND = 100;
    void* blocks[3 * BLOCKS];
    std::generate_n(blocks, n, [] { return TakeCmdMemory(COMMAND); });
    std::for_each(blocks, blocks + n, [](void* block) { GiveBackCmdMemory(block, COMMAND); });
}

// Forks off processes while another thread takes and gives back, at first for the first time. Returns whether
// all of them had their turn.
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
    int status = 0;
    for (int i = 0; i < 10 && status == 0; ++i) {
        if (fork() == 0) {
            alarm(30);  // ends it if it waits for the other thread
            TakeAndGiveBack(1);
            _exit(EXIT_SUCCESS);
        }
        wait(&status);
    }
    stops = true;
    return status == 0;
}

// The first of the tests: nothing has been taken before.
TEST(CmdMemory, ServesAProcessThatWasForkedWhileAnotherThreadTookMemory) {
    for (int i = 0, status = 0; i < 200 && status == 0; ++i) {
        if (fork() == 0) {
            _exit(ServesForkedProcesses() ? EXIT_SUCCESS : EXIT_FAILURE);
        }
        wait(&status);
        EXPECT_EQ(status, 0);
    }
}

TEST(CmdMemory, GivesEveryTakerBytesOfItsOwnWhileOthersGiveTheirsBack) {
    std::vector<std::future<void>> clients;
    for (std::size_t client = 0; client < 8; ++client) {
        clients.push_back(
            std::async(std::launch::async, [client] { GiveBackUnchanged(TakeFilled(client)); }));
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
