// How deep the calling thread is in nested bags. Not for callers.
#pragma once

#include <qvpreslayer/Export.h>
#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/detail/StackGuard.h>

namespace qvpreslayer::detail {

// One level of nested bags on this thread; also counts the bags that structure serializers walk on their own.
class BagLevel {
public:
    // QuorvelException "Parameter bags are nested too deeply" when the bags are nested deeper than the limit, or the
    // thread's stack is nearly used up.
    BagLevel() {
        if (t_depth >= PresLayerLimits::GetBagDepth() || t_depth >= kUnguardedLevels) [[unlikely]] {
            Check();
        }
        ++t_depth;
    }
    BagLevel(const BagLevel&) = delete;
    BagLevel& operator=(const BagLevel&) = delete;
    ~BagLevel() { --t_depth; }

    // Whether so many levels are open that the next ones should not be calls inside calls.
    bool IsDeep() const noexcept { return t_depth > kDirectLevels; }

private:
    QVPRESLAYER_API static void Check();

    static constexpr int kDirectLevels = 16;

    QVPRESLAYER_API static constinit thread_local int t_depth;
};

}  // namespace qvpreslayer::detail
