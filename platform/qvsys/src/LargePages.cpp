#include <qvsys/LargePages.h>

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace qvsys::detail {

void AskForLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    // All pages that the memory touches: advice for a part of a mapping would divide it, and what is divided cannot
    // grow in place.
    constexpr std::uintptr_t kPage = 4096;
    const auto begin = reinterpret_cast<std::uintptr_t>(memory) / kPage * kPage;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(memory) + bytes + kPage - 1) / kPage * kPage;
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

}  // namespace qvsys::detail
