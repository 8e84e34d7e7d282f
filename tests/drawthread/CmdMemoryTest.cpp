#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <future>
#include <new>
#include <vector>

#include <gtest/gtest.h>

#include "drawthread/CmdMemory.h"

namespace {

std::atomic<int> heapBlocks{0};  // taken and not given back
std::atomic<int> heapCalls{0};   // takings

}  // namespace

// Not inlined: g++ would see memory of `new` go to `free`, or the other way round.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++heapBlocks;
    ++heapCalls;
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    --heapBlocks;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace kivgles {
namespace {

constexpr std::size_t SIZES[] = {1, 64, 128, 129, 384, 385, 5000};  // of kept blocks, between them, beyond
constexpr std::size_t BLOCKS = 6000;                                // more than are kept

struct Block {
    unsigned char* bytes;
    std::size_t size;
    unsigned char content;
};

std::vector<Block> TakeFilled(unsigned char client) {
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < BLOCKS; ++i) {
        const std::size_t size = SIZES[i % std::size(SIZES)];
        const auto content = static_cast<unsigned char>(i + client);
        blocks.push_back({static_cast<unsigned char*>(TakeCmdMemory(size)), size, content});
        std::memset(blocks.back().bytes, content, size);
    }
    return blocks;
}

void GiveBackUnchanged(const std::vector<Block>& blocks) {
    for (const Block& block : blocks) {
        const auto isContent = [&block](unsigned char byte) { return byte == block.content; };
        ASSERT_TRUE(std::all_of(block.bytes, block.bytes + block.size, isContent));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block.bytes) % alignof(std::max_align_t), 0U);
        GiveBackCmdMemory(block.bytes, block.size);
    }
}

TEST(CmdMemory, GivesEveryTakerBytesOfItsOwnWhileOthersGiveTheirsBack) {
    std::vector<Block> former = TakeFilled(0);
    for (unsigned char round = 1; round < 10; ++round) {
        auto client = std::async(std::launch::async, TakeFilled, round);
        auto other = std::async(std::launch::async, TakeFilled, static_cast<unsigned char>(round + 100));
        GiveBackUnchanged(former);
        former = client.get();
        const std::vector<Block> others = other.get();
        former.insert(former.end(), others.begin(), others.end());
    }
    GiveBackUnchanged(former);
}

TEST(CmdMemory, KeepsWhatIsGivenBackButNotWithoutLimit) {
    constexpr std::size_t COMMAND = 100;
    void* blocks[3] = {};
    int calls = 0;
    for (int i = 0; i < 1000; ++i) {
        std::generate(std::begin(blocks), std::end(blocks), [] { return TakeCmdMemory(COMMAND); });
        for (void* const block : blocks) {
            GiveBackCmdMemory(block, COMMAND);
        }
        calls = i == 10 ? heapCalls.load() : calls;
    }
    EXPECT_EQ(heapCalls, calls);

    const int before = heapBlocks;
    std::vector<void*> many(3 * BLOCKS);
    std::generate(many.begin(), many.end(), [] { return TakeCmdMemory(COMMAND); });
    for (void* const block : many) {
        GiveBackCmdMemory(block, COMMAND);
    }
    EXPECT_LE(heapBlocks - before, 8192 + 1);  // and the list of them
}

}  // namespace
}  // namespace kivgles
