#include "drawthread/CmdMemory.h"

#include <mutex>
#include <new>
#include <utility>

namespace kivgles {

namespace {

#ifdef KIVGLES_PLAIN_HEAP  // for a sanitizer, which watches every block of the heap by itself
constexpr bool KEEPS_BLOCKS = false;
#else
constexpr bool KEEPS_BLOCKS = true;
#endif

constexpr std::size_t CACHE_LINE = 64;  // bytes

// Free blocks of one size. Those given back lie apart from those to be taken, until these are used up: the
// draw thread, which gives, and the clients, who take, seldom meet at a lock. Nobody waits for one: the heap
// is there as well, also for a process that was forked off while a lock was held.
class Blocks {
 public:
    Blocks(std::size_t bytes, unsigned int mostGiven) : size(bytes), limit(mostGiven) {}

    std::size_t Size() const { return size; }
    // Null when there is none.
    void* Take();
    // False when there are enough.
    bool GiveBack(void* memory);

 private:
    struct Block {
        Block* next;
    };
    struct alignas(CACHE_LINE) Stack {
        std::mutex mutex;
        Block* top = nullptr;
    };

    void Refill();

    Stack toTake;
    Stack given;
    const std::size_t size;
    const unsigned int limit;
    unsigned int givenCount = 0;  // guarded by given.mutex
};

void* Blocks::Take() {
    const std::unique_lock<std::mutex> lock(toTake.mutex, std::try_to_lock);
    if (!lock.owns_lock()) {
        return nullptr;
    }
    if (toTake.top == nullptr) {
        Refill();
    }
    Block* const block = toTake.top;
    if (block != nullptr) {
        toTake.top = block->next;
    }
    return block;
}

void Blocks::Refill() {
    const std::unique_lock<std::mutex> lock(given.mutex, std::try_to_lock);
    if (lock.owns_lock()) {
        toTake.top = std::exchange(given.top, nullptr);
        givenCount = 0;
    }
}

bool Blocks::GiveBack(void* memory) {
    const std::unique_lock<std::mutex> lock(given.mutex, std::try_to_lock);
    if (!lock.owns_lock() || givenCount == limit) {
        return false;
    }
    ++givenCount;
    given.top = new (memory) Block{given.top};
    return true;
}

// Null for a size of which none are kept. Never destroyed: a draw thread may outlive the objects of static
// storage.
Blocks* BlocksFor(std::size_t size) {
    if (!KEEPS_BLOCKS) {
        return nullptr;
    }
    static Blocks& commands = *new Blocks(128, 4096);  // semaphores and all payloads but texts, too
    static Blocks& texts = *new Blocks(384, 512);
    if (size > texts.Size()) {
        return nullptr;
    }
    return size <= commands.Size() ? &commands : &texts;
}

}  // namespace

void* TakeCmdMemory(std::size_t size) {
    Blocks* const blocks = BlocksFor(size);
    if (blocks == nullptr) {
        return ::operator new(size);
    }
    void* const block = blocks->Take();
    return block != nullptr ? block : ::operator new(blocks->Size());
}

void GiveBackCmdMemory(void* memory, std::size_t size) noexcept {
    Blocks* const blocks = BlocksFor(size);
    if (blocks == nullptr || !blocks->GiveBack(memory)) {
        ::operator delete(memory);
    }
}

}  // namespace kivgles
