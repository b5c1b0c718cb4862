#include <qvsys/LargePages.h>

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace qvsys::detail {

void AskForLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    // The system's own are at least as large; whole pages inside the memory alone.
    constexpr std::uintptr_t kPage = 2 * 1024 * 1024;
    const auto begin = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t from = (begin + kPage - 1) / kPage * kPage;
    const std::uintptr_t to = (begin + bytes) / kPage * kPage;
    if (from < to) {
        madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
    }
#endif
}

}  // namespace qvsys::detail
