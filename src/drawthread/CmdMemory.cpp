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
// draw thread, which gives, and the clients, who take, seldom meet at a lock.
class Blocks {
 public:
    Blocks(std::size_t bytes, unsigned int mostGiven) : size(bytes), limit(mostGiven) {}

    std::size_t Size() const { return size; }
    void* Take();
    void GiveBack(void* memory) noexcept;

 private:
    struct Block {
        Block* next;
    };
    struct alignas(CACHE_LINE) Stack {
        std::mutex mutex;
        Block* top = nullptr;
    };

    Stack toTake;
    Stack given;  // its lock is taken under that of toTake, or alone
    const std::size_t size;
    const unsigned int limit;
    unsigned int givenCount = 0;  // guarded by given.mutex
};

void* Blocks::Take() {
    const std::lock_guard<std::mutex> lock(toTake.mutex);
    if (toTake.top == nullptr) {
        const std::lock_guard<std::mutex> givenLock(given.mutex);
        toTake.top = std::exchange(given.top, nullptr);
        givenCount = 0;
    }
    if (toTake.top == nullptr) {
        return ::operator new(size);
    }
    Block* const block = toTake.top;
    toTake.top = block->next;
    return block;
}

void Blocks::GiveBack(void* memory) noexcept {
    {
        const std::lock_guard<std::mutex> lock(given.mutex);
        if (givenCount < limit) {
            ++givenCount;
            given.top = new (memory) Block{given.top};
            return;
        }
    }
    ::operator delete(memory);
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
    return blocks != nullptr ? blocks->Take() : ::operator new(size);
}

void GiveBackCmdMemory(void* memory, std::size_t size) noexcept {
    Blocks* const blocks = BlocksFor(size);
    if (blocks != nullptr) {
        blocks->GiveBack(memory);
    } else {
        ::operator delete(memory);
    }
}

}  // namespace kivgles
