// Where kept blocks come from. Included by BlockPool.cpp.
//
// Blocks of one size lie side by side in slabs, so that what is allocated together stays together in memory, however
// fragmented the allocator's own has become. A slab belongs to the heap of one thread, which alone touches its free
// blocks; blocks that other threads release wait in a list until the owner looks. The heap of a thread that has ended
// stays for the blocks that are still in use, and is taken over by the next thread that begins.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include <qvsys/BlockPool.h>

namespace qvsys::detail {

inline constexpr std::size_t kClasses = kLargestKeptBlock / kGranule;
inline constexpr std::size_t kSlabBytes = 32 * 1024;
inline constexpr std::size_t kKeptBytes = 8 * 1024 * 1024;  // of slabs without a used block, of one thread

class BlockHeap;

// In front of the blocks of a slab, whose memory is aligned to its size. Every SlabFront is a part of one.
struct alignas(64) Slab : SlabFront {
    // What attention says beside a number of blocks.
    static constexpr std::int32_t kCurrent = -1;        // never: blocks are being taken from the slab
    static constexpr std::int32_t kFull = 0x7FFF'FFFF;  // with whatever is released next
    static constexpr std::size_t kColours = 16;

    std::int32_t attention = 0;  // the heap looks at the slab when used falls to this
    BlockHeap* heap = nullptr;
    char* fresh = nullptr;     // from here on nothing has been a block yet
    Slab* previous = nullptr;  // in a list of the heap
    Slab* next = nullptr;
    std::size_t sizeClass = 0;

    // Among the slabs of all heaps.
    Slab* previousOfAll = nullptr;
    Slab* nextOfAll = nullptr;

    // Stands in one of several places at the start of the memory: in the same one, the first lines of all slabs would
    // crowd each other out of the processor's cache.
    static Slab* In(std::uintptr_t memory) noexcept {
        return reinterpret_cast<Slab*>(memory + memory / kSlabBytes % kColours * 64);
    }
    static Slab* Behind(SlabFront* front) noexcept { return static_cast<Slab*>(front); }
    static Slab* Of(void* block) noexcept { return In(MemoryOf(block)); }
    static std::uintptr_t MemoryOf(void* inside) noexcept {
        return reinterpret_cast<std::uintptr_t>(inside) & ~std::uintptr_t{kSlabBytes - 1};
    }
};

// The slabs that blocks are taken from just now, by class.
using CurrentSlabs = std::array<SlabFront*, kClasses>;

// The slabs of one thread. All but ReleaseElsewhere is for the thread that owns it.
class BlockHeap {
public:
    // Stands for none where a current slab is expected: a block is never there.
    static constinit Slab s_noSlab;

    // A heap that no thread owns any more, or a new one; null without memory. Its owner calls Abandon when it ends.
    static BlockHeap* Acquire() noexcept;
    void Abandon(CurrentSlabs& current) noexcept;

    // A slab of the class with a free block, which has become the current one; null without memory.
    Slab* NextSlab(CurrentSlabs& current, std::size_t sizeClass) noexcept;

    // For a slab whose number of used blocks has fallen to what it says.
    void Attend(Slab& slab) noexcept;

    // Takes back a block on another thread than the owner's.
    void ReleaseElsewhere(FreeBlock* block) noexcept;

    // Frees the slabs without a used block.
    void FreeEmptySlabs(CurrentSlabs& current) noexcept;

    // Whether a block lies in a slab of any heap. Takes long.
    static bool IsInSlab(void* block) noexcept;

private:
    void TakeBack(FreeBlock* block) noexcept;
    void TakeBackReleased() noexcept;
    Slab* TakeEmptySlab() noexcept;

    std::array<Slab*, kClasses> m_partial{};  // lists of slabs with free blocks and used ones
    Slab* m_empty = nullptr;                  // a list of slabs without used ones, for any class
    std::size_t m_emptyBytes = 0;
    BlockHeap* m_nextAbandoned = nullptr;

    std::mutex m_mutex;
    FreeBlock* m_released = nullptr;  // under m_mutex: blocks that other threads released
    bool m_isOwned = true;            // under m_mutex for those who do not own it
};

}  // namespace qvsys::detail
