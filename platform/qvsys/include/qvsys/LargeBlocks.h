// Large blocks of memory, of which the process keeps one. Not for callers.
//
// A text of many pages costs more to get than to write: the system clears each page before it hands it out. The large
// block that was released last is therefore kept for the next one who asks for about as much, as the C library keeps
// what lies at the end of its heap.
//
// Threads: may be called from any thread; a block may be released on another thread than the one that took it.
//
// Exceptions: never throws.
#pragma once

#include <cstddef>

#include <qvsys/Export.h>

namespace qvsys::detail {

// What is kept is no smaller than this, and no larger than that.
inline constexpr std::size_t kLeastLargeBlock = std::size_t{1} << 20;
inline constexpr std::size_t kMostLargeBlock = std::size_t{1} << 25;

// Memory of std::malloc, and how much of it there is.
struct LargeBlock {
    void* memory;
    std::size_t bytes;
};

// At least bytes, and up to most of them where so much is kept; null without memory. May be handed to std::realloc and
// std::free, too.
[[nodiscard]] QVSYS_API LargeBlock AllocateLargeBlock(std::size_t bytes, std::size_t most) noexcept;

// Requires: memory is null, or was allocated by AllocateLargeBlock or std::malloc with at least bytes.
QVSYS_API void ReleaseLargeBlock(void* memory, std::size_t bytes) noexcept;

// Frees the block that is kept.
QVSYS_API void ReleaseKeptLargeBlock() noexcept;

}  // namespace qvsys::detail
