#include <qvsys/BlockPool.h>

#include <array>
#include <new>

#include <qvsys/ThreadEnd.h>

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
constexpr std::size_t kKeptBytes = 8 * 1024 * 1024;  // of one thread

struct FreeBlock {
    FreeBlock* next;
};

// Plain data, so that reaching it needs no check whether it has been made.
thread_local constinit std::array<FreeBlock*, kClasses> t_lists{};
thread_local constinit std::size_t t_keptBytes = 0;  // beyond kKeptBytes where none are to be kept

// Whether what the calling thread keeps will be freed at its end.
bool IsWatched() noexcept {
    static ThreadEnd s_end(ReleaseKeptBlocks);
    return s_end.Watch();
}

constexpr std::size_t ClassOf(std::size_t bytes) { return (bytes - 1) / kGranule; }
constexpr std::size_t SizeOf(std::size_t sizeClass) { return (sizeClass + 1) * kGranule; }

bool IsKept(std::size_t bytes) { return QVSYS_KEEP_BLOCKS && bytes - 1 < kLargestKeptBlock; }

}  // namespace

void* AllocateBlock(std::size_t bytes) {
    if (!IsKept(bytes)) {
        return ::operator new(bytes);
    }
    const std::size_t sizeClass = ClassOf(bytes);
    FreeBlock* const block = t_lists[sizeClass];
    if (block == nullptr) [[unlikely]] {
        return ::operator new(SizeOf(sizeClass));
    }
    t_lists[sizeClass] = block->next;
    t_keptBytes -= SizeOf(sizeClass);
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
    if (t_keptBytes - 1 >= kKeptBytes) [[unlikely]] {  // enough of them, or none, which may be the first of its thread
        if (t_keptBytes != 0 || !IsWatched()) {
            ::operator delete(block);
            return;
        }
    }
    auto* const kept = static_cast<FreeBlock*>(block);
    kept->next = t_lists[sizeClass];
    t_lists[sizeClass] = kept;
    t_keptBytes += SizeOf(sizeClass);
}

void ReleaseKeptBlocks() noexcept {
    for (FreeBlock*& list : t_lists) {
        while (list != nullptr) {
            FreeBlock* const block = list;
            list = block->next;
            ::operator delete(block);
        }
    }
    t_keptBytes = 0;
}

KeepNoBlocks::KeepNoBlocks() noexcept {
    ReleaseKeptBlocks();
    t_keptBytes = kKeptBytes + 1;  // none is there to take, and there is no room for one
}

KeepNoBlocks::~KeepNoBlocks() { ReleaseKeptBlocks(); }

bool KeepsBlocks() noexcept { return QVSYS_KEEP_BLOCKS && t_keptBytes <= kKeptBytes; }

}  // namespace qvsys::detail
