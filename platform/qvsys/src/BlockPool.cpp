#include <qvsys/BlockPool.h>

#include <array>
#include <atomic>
#include <new>

#include <pthread.h>

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

// Plain data, so that reaching it needs no check whether it has been made.
thread_local constinit std::array<FreeList, kClasses> t_lists{};
thread_local constinit bool t_watched = false;  // the thread's end will free its lists

constinit std::atomic<bool> s_unloading{false};

void FreeAtThreadEnd(void*) noexcept {
    t_watched = false;
    ReleaseKeptBlocks();
}

// The key under which the system calls FreeAtThreadEnd; the thread that ends the program, or unloads the library, frees
// its own blocks here. A thread_local object would do the same, but registering its destructor takes memory, and the C
// library ends the program where there is none.
class ThreadEndKey {
public:
    ThreadEndKey() noexcept : m_made(pthread_key_create(&m_key, FreeAtThreadEnd) == 0) {}
    ThreadEndKey(const ThreadEndKey&) = delete;
    ThreadEndKey& operator=(const ThreadEndKey&) = delete;
    ~ThreadEndKey() {
        s_unloading.store(true, std::memory_order_relaxed);
        if (m_made) {
            pthread_key_delete(m_key);
        }
        FreeAtThreadEnd(nullptr);
    }

    bool Watch() const noexcept { return m_made && pthread_setspecific(m_key, &t_lists) == 0; }

private:
    pthread_key_t m_key{};
    bool m_made;
};

// Whether what the calling thread keeps will be freed.
bool IsWatched() noexcept {
    if (!t_watched && !s_unloading.load(std::memory_order_relaxed)) [[unlikely]] {
        static const ThreadEndKey s_key;
        t_watched = s_key.Watch();
    }
    return t_watched;
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
    // An empty list may be the first of its thread.
    if (list.bytes >= kKeptBytesOfAClass || (list.bytes == 0 && !IsWatched())) [[unlikely]] {
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

KeepNoBlocks::KeepNoBlocks() noexcept {
    ReleaseKeptBlocks();
    // Full lists without a block: there is none to take, and no room for one.
    for (FreeList& list : t_lists) {
        list.bytes = kKeptBytesOfAClass;
    }
}

KeepNoBlocks::~KeepNoBlocks() { ReleaseKeptBlocks(); }

}  // namespace qvsys::detail
