#include "BlockSlabs.h"

#include <algorithm>
#include <new>
#include <utility>

namespace qvsys::detail {

namespace {

constexpr std::size_t kCarvedBytes = 4096;  // made blocks at once, so that the pages behind stay untouched

// Locked behind a heap's own mutex, never before it.
constinit std::mutex s_mutex;
constinit Slab* s_slabs = nullptr;           // of all heaps
constinit BlockHeap* s_abandoned = nullptr;  // heaps without an owner

constexpr std::size_t SizeOf(std::size_t sizeClass) { return (sizeClass + 1) * kGranule; }

void Push(Slab*& list, Slab& slab) noexcept {
    slab.previous = nullptr;
    slab.next = list;
    if (list != nullptr) {
        list->previous = &slab;
    }
    list = &slab;
}

void Remove(Slab*& list, Slab& slab) noexcept {
    (slab.previous != nullptr ? slab.previous->next : list) = slab.next;
    if (slab.next != nullptr) {
        slab.next->previous = slab.previous;
    }
}

Slab* NewSlab(BlockHeap& heap) noexcept {
    void* const memory = ::operator new (kSlabBytes, std::align_val_t{kSlabBytes}, std::nothrow);
    if (memory == nullptr) {
        return nullptr;
    }
    auto* const slab = new (Slab::Of(memory)) Slab;
    slab->heap = &heap;
    const std::lock_guard lock(s_mutex);
    slab->nextOfAll = s_slabs;
    if (s_slabs != nullptr) {
        s_slabs->previousOfAll = slab;
    }
    s_slabs = slab;
    return slab;
}

void DeleteSlab(Slab* slab) noexcept {
    {
        const std::lock_guard lock(s_mutex);
        (slab->previousOfAll != nullptr ? slab->previousOfAll->nextOfAll : s_slabs) = slab->nextOfAll;
        if (slab->nextOfAll != nullptr) {
            slab->nextOfAll->previousOfAll = slab->previousOfAll;
        }
    }
    ::operator delete (reinterpret_cast<void*>(Slab::MemoryOf(slab)), std::align_val_t{kSlabBytes});
}

// Makes the next free blocks of a slab that has none; false when there is no room for one.
bool Carve(Slab& slab) noexcept {
    const std::size_t size = SizeOf(slab.sizeClass);
    const auto room =
        static_cast<std::size_t>(reinterpret_cast<char*>(Slab::MemoryOf(&slab) + kSlabBytes) - slab.fresh);
    const std::size_t blocks = std::min(kCarvedBytes, room) / size;
    for (std::size_t left = blocks; left != 0; --left) {
        auto* const block = reinterpret_cast<FreeBlock*>(slab.fresh + (left - 1) * size);
        block->next = std::exchange(slab.free, block);
    }
    slab.fresh += blocks * size;
    return blocks != 0;
}

void Format(Slab& slab, std::size_t sizeClass) noexcept {
    slab.free = nullptr;
    slab.fresh = reinterpret_cast<char*>(&slab + 1);
    slab.sizeClass = sizeClass;
}

}  // namespace

constinit Slab BlockHeap::s_noSlab;

BlockHeap* BlockHeap::Acquire() noexcept {
    BlockHeap* heap = nullptr;
    {
        const std::lock_guard lock(s_mutex);
        heap = s_abandoned;
        if (heap != nullptr) {
            s_abandoned = heap->m_nextAbandoned;
        }
    }
    if (heap == nullptr) {
        return new (std::nothrow) BlockHeap;
    }
    const std::lock_guard lock(heap->m_mutex);
    heap->m_isOwned = true;
    return heap;
}

// From then on who releases a block puts the heap in order.
void BlockHeap::Abandon(CurrentSlabs& current) noexcept {
    for (SlabFront*& place : current) {
        if (place != &s_noSlab) {
            Slab* const slab = Slab::Behind(std::exchange(place, &s_noSlab));
            const bool hasRoom = slab->free != nullptr || Carve(*slab);
            slab->attention = hasRoom ? 0 : Slab::kFull;
            if (hasRoom) {
                Push(m_partial[slab->sizeClass], *slab);
            }
            if (slab->used == 0) {
                Attend(*slab);
            }
        }
    }
    FreeEmptySlabs(current);
    {
        const std::lock_guard lock(m_mutex);
        m_isOwned = false;
        for (FreeBlock* block = std::exchange(m_released, nullptr); block != nullptr;) {
            TakeBack(std::exchange(block, block->next));
        }
    }
    const std::lock_guard lock(s_mutex);
    m_nextAbandoned = std::exchange(s_abandoned, this);
}

Slab* BlockHeap::NextSlab(CurrentSlabs& current, std::size_t sizeClass) noexcept {
    SlabFront*& place = current[sizeClass];
    if (place != &s_noSlab) {
        Slab* const last = Slab::Behind(place);
        if (Carve(*last)) {
            return last;
        }
        last->attention = Slab::kFull;
        place = &s_noSlab;
    }
    TakeBackReleased();
    Slab* slab = m_partial[sizeClass];
    if (slab != nullptr) {
        Remove(m_partial[sizeClass], *slab);
    } else {
        slab = m_empty != nullptr ? TakeEmptySlab() : NewSlab(*this);
        if (slab == nullptr) {
            return nullptr;
        }
        Format(*slab, sizeClass);
        Carve(*slab);
    }
    slab->attention = Slab::kCurrent;
    place = slab;
    return slab;
}

void BlockHeap::Attend(Slab& slab) noexcept {
    Slab*& partial = m_partial[slab.sizeClass];
    if (slab.attention == Slab::kFull) {
        slab.attention = 0;
        Push(partial, slab);
    }
    if (slab.used != 0) {
        return;
    }
    Remove(partial, slab);
    if (m_isOwned && m_emptyBytes < kKeptBytes) {
        Push(m_empty, slab);
        m_emptyBytes += kSlabBytes;
    } else {
        DeleteSlab(&slab);
    }
}

void BlockHeap::ReleaseElsewhere(FreeBlock* block) noexcept {
    const std::lock_guard lock(m_mutex);
    if (m_isOwned) {
        block->next = std::exchange(m_released, block);
    } else {
        TakeBack(block);
    }
}

void BlockHeap::TakeBack(FreeBlock* block) noexcept {
    Slab& slab = *Slab::Of(block);
    block->next = std::exchange(slab.free, block);
    if (--slab.used <= slab.attention) {
        Attend(slab);
    }
}

void BlockHeap::TakeBackReleased() noexcept {
    FreeBlock* block = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        block = std::exchange(m_released, nullptr);
    }
    while (block != nullptr) {
        TakeBack(std::exchange(block, block->next));
    }
}

Slab* BlockHeap::TakeEmptySlab() noexcept {
    Slab* const slab = m_empty;
    Remove(m_empty, *slab);
    m_emptyBytes -= kSlabBytes;
    return slab;
}

void BlockHeap::FreeEmptySlabs(CurrentSlabs& current) noexcept {
    TakeBackReleased();
    for (SlabFront*& place : current) {
        if (place != &s_noSlab && place->used == 0) {
            DeleteSlab(Slab::Behind(std::exchange(place, &s_noSlab)));
        }
    }
    while (m_empty != nullptr) {
        DeleteSlab(TakeEmptySlab());
    }
}

bool BlockHeap::IsInSlab(void* block) noexcept {
    const std::lock_guard lock(s_mutex);
    const std::uintptr_t memory = Slab::MemoryOf(block);
    const Slab* slab = s_slabs;
    while (slab != nullptr && slab != Slab::In(memory)) {
        slab = slab->nextOfAll;
    }
    return slab != nullptr;
}

}  // namespace qvsys::detail
