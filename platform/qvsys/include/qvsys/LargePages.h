// Large pages for large memory. Not for callers.
//
// Threads: may be called from any thread.
//
// Exceptions: never throws.
#pragma once

#include <cstddef>

#include <qvsys/Export.h>

namespace qvsys::detail {

// Memory below this is left alone.
inline constexpr std::size_t kLargePagesFrom = 4 * 1024 * 1024;

QVSYS_API void AskForLargePages(void* memory, std::size_t bytes) noexcept;

// Asks the system for large pages for memory that was allocated just now, where it fills some: touching 32 MiB for the
// first time takes a fifth of the time then. A wish: nothing depends on it.
inline void PreferLargePages(void* memory, std::size_t bytes) noexcept {
    if (bytes >= kLargePagesFrom) [[unlikely]] {
        AskForLargePages(memory, bytes);
    }
}

}  // namespace qvsys::detail
