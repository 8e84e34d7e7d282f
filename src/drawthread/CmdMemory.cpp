#include "drawthread/CmdMemory.h"

#include <atomic>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

namespace kivgles {

namespace {

#ifdef KIVGLES_PLAIN_HEAP  // for a sanitizer, which watches every block of the heap by itself
constexpr bool KEEPS_BLOCKS = false;
#else
constexpr bool KEEPS_BLOCKS = true;
#endif

constexpr std::size_t CACHE_LINE = 64;  // bytes

// Nobody waits for it. It has nothing to do before its first use or after its last, as std::mutex has on some
// platforms.
class TryLock {
 public:
    bool try_lock() { return !taken.exchange(true, std::memory_order_acquire); }
    void unlock() { taken.store(false, std::memory_order_release); }

 private:
    std::atomic<bool> taken{false};
};

// Free blocks of one size. Those given back lie apart from those to be taken, until these are used up: the
// draw thread, which gives, and the clients, who take, seldom meet at a lock. Nobody waits for one: the heap
// is there as well, also for a process that was forked off while a lock was held.
class Blocks {
 public:
    constexpr Blocks(std::size_t bytes, unsigned int mostGiven) : size(bytes), limit(mostGiven) {}

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
        TryLock lock;
        Block* top = nullptr;
    };

    void Refill();

    Stack toTake;
    Stack given;
    const std::size_t size;
    const unsigned int limit;
    unsigned int givenCount = 0;  // guarded by given.lock
};

void* Blocks::Take() {
    const std::unique_lock<TryLock> lock(toTake.lock, std::try_to_lock);
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
    const std::unique_lock<TryLock> lock(given.lock, std::try_to_lock);
    if (lock.owns_lock()) {
        toTake.top = std::exchange(given.top, nullptr);
        givenCount = 0;
    }
}

bool Blocks::GiveBack(void* memory) {
    const std::unique_lock<TryLock> lock(given.lock, std::try_to_lock);
    if (!lock.owns_lock() || givenCount == limit) {
        return false;
    }
    ++givenCount;
    given.top = new (memory) Block{given.top};
    return true;
}

// There as the program is loaded, so that no thread waits for another one to make them, and never destroyed:
// a draw thread may outlive the objects of static storage.
static_assert(std::is_trivially_destructible_v<Blocks>);
Blocks commands(128, 4096);  // semaphores and all payloads but texts, too
Blocks texts(384, 512);

// Null for a size of which none are kept.
Blocks* BlocksFor(std::size_t size) {
    if (!KEEPS_BLOCKS || size > texts.Size()) {
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
