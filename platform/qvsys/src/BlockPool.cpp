#include <qvsys/BlockPool.h>

#include <array>
#include <new>

// Under a sanitizer every block is the allocator's own, so that it sees every use after release.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QVSYS_KEEP_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define QVSYS_KEEP_BLOCKS 0
#endif
#endif
#ifndef QVSYS_KEEP_BLOCKS
#define QVSYS_KEEP_BLOCKS 1
#endif

namespace qvsys::detail {

namespace {

constexpr std::size_t kGranule = 32;
constexpr std::size_t kClasses = kLargestKeptBlock / kGranule;
constexpr std::size_t kKeptBytesOfAClass = 256 * 1024;

struct FreeBlock {
    FreeBlock* next;
};

struct FreeList {
    FreeBlock* first;
    std::size_t bytes;
};

// Plain data, so that reaching it needs no check whether it has been made; the cleaner beside it frees the blocks.
thread_local constinit std::array<FreeList, kClasses> t_lists{};
thread_local constinit bool t_ended = false;

struct Cleaner {
    Cleaner() = default;
    Cleaner(const Cleaner&) = delete;
    Cleaner& operator=(const Cleaner&) = delete;
    ~Cleaner() {
        t_ended = true;
        ReleaseKeptBlocks();
    }
    void Touch() noexcept {}
};
thread_local Cleaner t_cleaner;

constexpr std::size_t ClassOf(std::size_t bytes) { return (bytes - 1) / kGranule; }
constexpr std::size_t SizeOf(std::size_t sizeClass) { return (sizeClass + 1) * kGranule; }

bool IsKept(std::size_t bytes) { return QVSYS_KEEP_BLOCKS && bytes - 1 < kLargestKeptBlock; }

}  // namespace

void* AllocateBlock(std::size_t bytes) {
    if (!IsKept(bytes)) {
        return ::operator new(bytes);
    }
    const std::size_t sizeClass = ClassOf(bytes);
    FreeList& list = t_lists[sizeClass];
    if (list.first == nullptr) [[unlikely]] {
        return ::operator new(SizeOf(sizeClass));
    }
    FreeBlock* block = list.first;
    list.first = block->next;
    list.bytes -= SizeOf(sizeClass);
    return block;
}

void* TryAllocateBlock(std::size_t bytes) noexcept {
    try {
        return AllocateBlock(bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void ReleaseBlock(void* block, std::size_t bytes) noexcept {
    if (block == nullptr || !IsKept(bytes)) {
        ::operator delete(block);
        return;
    }
    const std::size_t sizeClass = ClassOf(bytes);
    FreeList& list = t_lists[sizeClass];
    if (list.bytes == 0) [[unlikely]] {
        if (t_ended) {
            ::operator delete(block);
            return;
        }
        t_cleaner.Touch();  // the first block kept: makes sure that the thread's end frees them
    }
    if (list.bytes >= kKeptBytesOfAClass) {
        ::operator delete(block);
        return;
    }
    auto* kept = static_cast<FreeBlock*>(block);
    kept->next = list.first;
    list.first = kept;
    list.bytes += SizeOf(sizeClass);
}

void ReleaseKeptBlocks() noexcept {
    for (FreeList& list : t_lists) {
        while (list.first != nullptr) {
            FreeBlock* block = list.first;
            list.first = block->next;
            ::operator delete(block);
        }
        list.bytes = 0;
    }
}

}  // namespace qvsys::detail
