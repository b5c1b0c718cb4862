#include <qvpreslayer/detail/BagLevel.h>

#include <qvsys/QuorvelException.h>

namespace qvpreslayer::detail {

constinit thread_local int BagLevel::t_depth = 0;

void BagLevel::Check() {
    if (t_depth >= PresLayerLimits::GetBagDepth() || IsStackLow()) {
        throw QuorvelException(u"Parameter bags are nested too deeply");
    }
}

}  // namespace qvpreslayer::detail
