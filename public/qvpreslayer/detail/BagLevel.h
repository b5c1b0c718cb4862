// How deep the calling thread is in nested bags. Not for callers.
#pragma once

#include <qvpreslayer/Export.h>

namespace qvpreslayer::detail {

// One level of nested bags on this thread; also counts the bags that structure serializers walk on their own.
class QVPRESLAYER_API BagLevel {
public:
    // QuorvelException "Parameter bags are nested too deeply" beyond PresLayerLimits::GetBagDepth().
    BagLevel();
    BagLevel(const BagLevel&) = delete;
    BagLevel& operator=(const BagLevel&) = delete;
    ~BagLevel();
};

}  // namespace qvpreslayer::detail
