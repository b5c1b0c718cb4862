// How deep the calling thread is in nested bags. Not for callers.
#pragma once

#include <qvpreslayer/Export.h>

namespace qvpreslayer::detail {

// One level of nested bags on this thread; also counts the bags that structure serializers walk on their own.
class QVPRESLAYER_API BagLevel {
public:
    // QuorvelException "Parameter bags are nested too deeply" when the bags are nested deeper than the limit, or the
    // thread's stack is nearly used up.
    BagLevel();
    BagLevel(const BagLevel&) = delete;
    BagLevel& operator=(const BagLevel&) = delete;
    ~BagLevel();

    // Whether so many levels are open that the next ones should not be calls inside calls.
    bool IsDeep() const noexcept;
};

}  // namespace qvpreslayer::detail
