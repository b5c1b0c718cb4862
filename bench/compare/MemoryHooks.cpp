// Counts the bytes that the process has from malloc, for Memory.cpp. A module of its own, loaded in front of everything
// by LD_PRELOAD for the memory figures alone, so that times are taken without it. Not part of the program itself.
#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstddef>

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

}  // extern "C"

namespace {

std::atomic<long> s_live{0};
std::atomic<long> s_peak{0};

void* Count(void* block) {
    if (block != nullptr) {
        const auto size = static_cast<long>(malloc_usable_size(block));
        const long live = s_live.fetch_add(size) + size;
        long peak = s_peak.load();
        while (live > peak && !s_peak.compare_exchange_weak(peak, live)) {
        }
    }
    return block;
}

void Discount(std::size_t size) { s_live.fetch_sub(static_cast<long>(size)); }

}  // namespace

extern "C" {

long CompareMemoryLive() { return s_live.load(); }
long CompareMemoryPeak() { return s_peak.load(); }
void CompareMemoryRestart() { s_peak.store(s_live.load()); }

void* malloc(std::size_t size) { return Count(__libc_malloc(size)); }
void* calloc(std::size_t count, std::size_t size) { return Count(__libc_calloc(count, size)); }
void* memalign(std::size_t alignment, std::size_t size) { return Count(__libc_memalign(alignment, size)); }
void* aligned_alloc(std::size_t alignment, std::size_t size) { return Count(__libc_memalign(alignment, size)); }

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    void* made = Count(__libc_memalign(alignment, size));
    if (made == nullptr) {
        return ENOMEM;
    }
    *block = made;
    return 0;
}

// While a block moves, old and new are taken to be there both: the larger of what may happen.
void* realloc(void* block, std::size_t size) {
    const std::size_t before = block == nullptr ? 0 : malloc_usable_size(block);
    void* made = Count(__libc_realloc(block, size));
    if (made != nullptr || size == 0) {
        Discount(before);
    }
    return made;
}

void free(void* block) {
    if (block != nullptr) {
        Discount(malloc_usable_size(block));
        __libc_free(block);
    }
}

}  // extern "C"
