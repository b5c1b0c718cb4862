// Small blocks of memory, kept for the next one who asks. Not for callers.
//
// Values and texts come and go by the thousand, mostly on one thread. Blocks of one size lie side by side in slabs of
// 32 KiB: taking one costs a fraction of an allocation, and what is made together is read from neighbouring memory,
// also where the allocator's own is fragmented.
//
// Threads: blocks may be released on another thread than the one that took them, which uses them again when it needs
// more. A slab whose blocks have all been released is free for any size; a thread keeps up to 8 MiB of these, until it
// ends or calls ReleaseKeptBlocks. A slab with a single block in use stays. Fibers must not move from one thread to
// another in the middle of an operation.
//
// Exceptions: AllocateBlock gives the strong guarantee; all else never throws, also where the system refuses to watch a
// thread's end, whose blocks are not kept then.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>

#include <qvsys/Export.h>

namespace qvsys::detail {

// Blocks up to this size are kept; larger ones go straight to the allocator.
inline constexpr std::size_t kLargestKeptBlock = 512;

// Blocks are so many bytes, or a multiple of it.
inline constexpr std::size_t kGranule = 16;

struct FreeBlock {
    FreeBlock* next;
};

// What taking a block from a slab needs to know of it.
struct SlabFront {
    FreeBlock* free = nullptr;
    std::int32_t used = 0;
};

// The slabs that the calling thread takes blocks from just now, by size. Those of no use have no free block.
extern QVSYS_API constinit thread_local std::array<SlabFront*, kLargestKeptBlock / kGranule> t_currentSlabs;

// Whether the calling thread keeps no blocks.
extern QVSYS_API constinit thread_local bool t_keepsNone;

// As AllocateBlock, where there is no free block of that size at hand.
[[nodiscard]] QVSYS_API void* AllocateBlockSlowly(std::size_t bytes);

// At least bytes, aligned as operator new aligns. std::bad_alloc without memory.
[[nodiscard]] inline void* AllocateBlock(std::size_t bytes) {
    if (bytes - 1 < kLargestKeptBlock) [[likely]] {
        SlabFront& slab = *t_currentSlabs[(bytes - 1) / kGranule];
        if (FreeBlock* const block = slab.free; block != nullptr) [[likely]] {
            slab.free = block->next;
            ++slab.used;
            return block;
        }
    }
    return AllocateBlockSlowly(bytes);
}

// The same; null without memory.
[[nodiscard]] QVSYS_API void* TryAllocateBlock(std::size_t bytes) noexcept;

// Requires: block was allocated with the same number of bytes, or is null.
QVSYS_API void ReleaseBlock(void* block, std::size_t bytes) noexcept;

// The same. Requires: block is not null, and was allocated with up to kLargestKeptBlock bytes.
QVSYS_API void ReleaseSmallBlock(void* block) noexcept;

// The same for a block of any size, which is looked for among those that are kept: takes long.
QVSYS_API void ReleaseBlockOfAnySize(void* block) noexcept;

// Frees what the calling thread keeps: every slab whose blocks have all been released; and the large block that the
// process keeps.
QVSYS_API void ReleaseKeptBlocks() noexcept;

// While one lives, the calling thread keeps no blocks: each comes from the allocator and goes back to it. For those who
// count allocations, or have them fail. Not to be nested; ReleaseKeptBlocks ends it early.
class QVSYS_API KeepNoBlocks {
public:
    KeepNoBlocks() noexcept;
    KeepNoBlocks(const KeepNoBlocks&) = delete;
    KeepNoBlocks& operator=(const KeepNoBlocks&) = delete;
    ~KeepNoBlocks();
};

// Whether the calling thread keeps anything: not while a KeepNoBlocks lives, and not under a sanitizer.
inline bool KeepsBlocks() noexcept { return !t_keepsNone; }

}  // namespace qvsys::detail

// Inside a class with a virtual destructor: its objects, and those of classes derived from it, take kept blocks. Types
// that ask for more alignment than usual go to the allocator.
#define QVSYS_USE_BLOCK_POOL                                                                       \
    static void* operator new(std::size_t bytes) { return ::qvsys::detail::AllocateBlock(bytes); } \
    static void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {                 \
        return ::qvsys::detail::TryAllocateBlock(bytes);                                           \
    }                                                                                              \
    static void* operator new(std::size_t, void* place) noexcept { return place; }                 \
    static void* operator new(std::size_t bytes, std::align_val_t alignment) {                     \
        return ::operator new(bytes, alignment);                                                   \
    }                                                                                              \
    static void operator delete(void* block, std::size_t bytes) noexcept {                         \
        if (bytes <= ::qvsys::detail::kLargestKeptBlock) {                                         \
            ::qvsys::detail::ReleaseSmallBlock(block);                                             \
        } else {                                                                                   \
            ::qvsys::detail::ReleaseBlock(block, bytes);                                           \
        }                                                                                          \
    }                                                                                              \
    static void operator delete(void* block, const std::nothrow_t&) noexcept {                     \
        ::qvsys::detail::ReleaseBlockOfAnySize(block);                                             \
    }                                                                                              \
    static void operator delete(void*, void*) noexcept {}                                          \
    static void operator delete(void* block, std::size_t, std::align_val_t alignment) noexcept {   \
        ::operator delete(block, alignment);                                                       \
    }
