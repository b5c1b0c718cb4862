#include <qvsys/BlockPool.h>

#include <atomic>
#include <new>
#include <utility>

#include <qvsys/LargeBlocks.h>
#include <qvsys/ThreadEnd.h>

#include "BlockSlabs.h"

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

constexpr CurrentSlabs NoSlabs() {
    CurrentSlabs slabs{};
    slabs.fill(&BlockHeap::s_noSlab);
    return slabs;
}

// Plain data, so that reaching it needs no check whether it has been made.
thread_local constinit BlockHeap* t_heap = nullptr;

// Set once a block of a kept size came from the allocator itself. Until then no one asks where a block is from.
constinit std::atomic<bool> s_hasLooseBlocks{false};

constexpr std::size_t ClassOf(std::size_t bytes) { return (bytes - 1) / kGranule; }

bool IsKept(std::size_t bytes) { return QVSYS_KEEP_BLOCKS && bytes - 1 < kLargestKeptBlock; }

void EndThread() noexcept {
    if (BlockHeap* const heap = std::exchange(t_heap, nullptr)) {
        heap->Abandon(t_currentSlabs);
    }
}

// The heap of the calling thread; null when it has none.
BlockHeap* FindHeap() noexcept {
    if (t_heap == nullptr && !t_keepsNone) {
        static ThreadEnd s_end(EndThread);
        if (s_end.Watch()) {
            t_heap = BlockHeap::Acquire();
        }
    }
    return t_keepsNone ? nullptr : t_heap;
}

void* Take(Slab& slab) noexcept {
    FreeBlock* const block = slab.free;
    slab.free = block->next;
    ++slab.used;
    return block;
}

// Requires: block lies in a slab.
inline void ReleaseKept(void* block) noexcept {
    Slab& slab = *Slab::Of(block);
    auto* const released = static_cast<FreeBlock*>(block);
    if (slab.heap != t_heap) [[unlikely]] {
        slab.heap->ReleaseElsewhere(released);
        return;
    }
    released->next = slab.free;
    slab.free = released;
    if (--slab.used <= slab.attention) [[unlikely]] {
        slab.heap->Attend(slab);
    }
}

// For blocks that may be the allocator's own.
[[gnu::noinline]] void ReleaseLoose(void* block, std::size_t bytes) noexcept {
    if (block != nullptr && IsKept(bytes) && BlockHeap::IsInSlab(block)) {
        ReleaseKept(block);
    } else {
        ::operator delete(block);
    }
}

}  // namespace

constinit thread_local CurrentSlabs t_currentSlabs = NoSlabs();
constinit thread_local bool t_keepsNone = !QVSYS_KEEP_BLOCKS;

void* AllocateBlockSlowly(std::size_t bytes) {
    if (!IsKept(bytes)) {
        return ::operator new(bytes);
    }
    BlockHeap* const heap = FindHeap();
    if (heap == nullptr) {
        s_hasLooseBlocks.store(true, std::memory_order_relaxed);
        return ::operator new(bytes);
    }
    Slab* const slab = heap->NextSlab(t_currentSlabs, ClassOf(bytes));
    if (slab == nullptr) {
        throw std::bad_alloc();
    }
    return Take(*slab);
}

void* TryAllocateBlock(std::size_t bytes) noexcept {
    try {
        return AllocateBlock(bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void ReleaseBlock(void* block, std::size_t bytes) noexcept {
    if (block == nullptr || !IsKept(bytes) || s_hasLooseBlocks.load(std::memory_order_relaxed)) [[unlikely]] {
        ReleaseLoose(block, bytes);
    } else {
        ReleaseKept(block);
    }
}

void ReleaseSmallBlock(void* block) noexcept {
    if (!QVSYS_KEEP_BLOCKS || s_hasLooseBlocks.load(std::memory_order_relaxed)) [[unlikely]] {
        ReleaseLoose(block, kGranule);
    } else {
        ReleaseKept(block);
    }
}

void ReleaseBlockOfAnySize(void* block) noexcept { ReleaseLoose(block, kGranule); }

void ReleaseKeptBlocks() noexcept {
    t_keepsNone = !QVSYS_KEEP_BLOCKS;
    if (t_heap != nullptr) {
        t_heap->FreeEmptySlabs(t_currentSlabs);
    }
    ReleaseKeptLargeBlock();
}

KeepNoBlocks::KeepNoBlocks() noexcept {
    EndThread();  // no slab is current: every block is asked for slowly
    t_keepsNone = true;
}

KeepNoBlocks::~KeepNoBlocks() { ReleaseKeptBlocks(); }

}  // namespace qvsys::detail
