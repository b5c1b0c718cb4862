#include <qvsys/LargeBlocks.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include <qvsys/BlockPool.h>
#include <qvsys/LargePages.h>

namespace qvsys::detail {

namespace {

// Stands at the beginning of the block that is kept.
struct Kept {
    std::size_t bytes;
};

// Whoever takes the pointer out owns the block.
constinit std::atomic<Kept*> s_kept{nullptr};

void Keep(Kept* block) noexcept { std::free(s_kept.exchange(block, std::memory_order_acq_rel)); }

bool IsKept(std::size_t bytes) noexcept {
    return bytes - kLeastLargeBlock <= kMostLargeBlock - kLeastLargeBlock && KeepsBlocks();
}

}  // namespace

LargeBlock AllocateLargeBlock(std::size_t bytes, std::size_t most) noexcept {
    if (IsKept(bytes)) {
        if (Kept* const kept = s_kept.exchange(nullptr, std::memory_order_acq_rel)) {
            if (kept->bytes >= bytes && kept->bytes <= most) {
                return {kept, kept->bytes};
            }
            Keep(kept);
        }
    }
    void* const memory = std::malloc(bytes);
    if (memory != nullptr) {
        PreferLargePages(memory, bytes);
    }
    return {memory, bytes};
}

void ReleaseLargeBlock(void* memory, std::size_t bytes) noexcept {
    if (memory != nullptr && IsKept(bytes)) {
        Keep(new (memory) Kept{bytes});
    } else {
        std::free(memory);
    }
}

void ReleaseKeptLargeBlock() noexcept { Keep(nullptr); }

}  // namespace qvsys::detail
