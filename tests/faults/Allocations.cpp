#include "faults/Allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

#include "support/Sanitized.h"

namespace {

constexpr long kNever = std::numeric_limits<long>::max();

thread_local constinit bool t_armed = false;
thread_local constinit long t_asked = 0;
thread_local constinit long t_failed = 0;
thread_local constinit long t_first = kNever;  // the first one that fails
thread_local constinit long t_last = kNever;
std::atomic<long> s_live{0};

void Start(long first, long last) noexcept {
    t_asked = 0;
    t_failed = 0;
    t_first = first;
    t_last = last;
    t_armed = true;
}

// Whether this is an allocation that fails.
bool Fails() noexcept {
    if (!t_armed) {
        return false;
    }
    const long number = t_asked++;
    const bool fails = number >= t_first && number <= t_last;
    t_failed += fails ? 1 : 0;
    return fails;
}

void* Counted(void* block) noexcept {
    s_live.fetch_add(block == nullptr ? 0 : 1, std::memory_order_relaxed);
    return block;
}

void CountFree(void* block) noexcept { s_live.fetch_sub(block == nullptr ? 0 : 1, std::memory_order_relaxed); }

}  // namespace

namespace allocations {

long Live() noexcept { return s_live.load(std::memory_order_relaxed); }

void Arm(long number, Mode mode) noexcept { Start(number, mode == Mode::Once ? number : kNever); }

void ArmToCount() noexcept { Start(kNever, kNever); }

Tally Disarm() noexcept {
    t_armed = false;
    return {t_asked, t_failed};
}

}  // namespace allocations

#if QV_TEST_SANITIZED

// The compiler, inlining one of a pair, takes malloc and free for mismatched with the other.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

namespace {

void* New(std::size_t bytes) noexcept { return Fails() ? nullptr : Counted(std::malloc(bytes == 0 ? 1 : bytes)); }

void* NewOrThrow(std::size_t bytes) {
    void* const block = New(bytes);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void Delete(void* block) noexcept {
    CountFree(block);
    std::free(block);
}

}  // namespace

void* operator new(std::size_t bytes) { return NewOrThrow(bytes); }
void* operator new[](std::size_t bytes) { return NewOrThrow(bytes); }
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return New(bytes); }
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return New(bytes); }
void operator delete(void* block) noexcept { Delete(block); }
void operator delete[](void* block) noexcept { Delete(block); }
void operator delete(void* block, std::size_t) noexcept { Delete(block); }
void operator delete[](void* block, std::size_t) noexcept { Delete(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Delete(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Delete(block); }

#else

// The C library's own functions under their other names.
extern "C" {
void* __libc_malloc(std::size_t bytes) noexcept;
void* __libc_calloc(std::size_t count, std::size_t bytes) noexcept;
void* __libc_realloc(void* block, std::size_t bytes) noexcept;
void* __libc_memalign(std::size_t alignment, std::size_t bytes) noexcept;
void __libc_free(void* block) noexcept;

void* malloc(std::size_t bytes) noexcept { return Fails() ? nullptr : Counted(__libc_malloc(bytes)); }

void* calloc(std::size_t count, std::size_t bytes) noexcept {
    return Fails() ? nullptr : Counted(__libc_calloc(count, bytes));
}

void* realloc(void* block, std::size_t bytes) noexcept {
    if (bytes != 0 && Fails()) {
        return nullptr;
    }
    void* const moved = __libc_realloc(block, bytes);
    if (moved != nullptr || bytes == 0) {
        CountFree(block);
        Counted(moved);
    }
    return moved;
}

void* memalign(std::size_t alignment, std::size_t bytes) noexcept {
    return Fails() ? nullptr : Counted(__libc_memalign(alignment, bytes));
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept { return memalign(alignment, bytes); }

int posix_memalign(void** block, std::size_t alignment, std::size_t bytes) noexcept {
    void* const made = memalign(alignment, bytes);
    if (made == nullptr) {
        return ENOMEM;
    }
    *block = made;
    return 0;
}

void free(void* block) noexcept {
    CountFree(block);
    __libc_free(block);
}
}

#endif
