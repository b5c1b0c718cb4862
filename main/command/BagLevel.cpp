#include <qvpreslayer/detail/BagLevel.h>

#include <qvsys/QuorvelException.h>

#include <qvpreslayer/PresLayerLimits.h>

namespace qvpreslayer::detail {

namespace {

thread_local constinit int s_bagDepth = 0;

}  // namespace

BagLevel::BagLevel() {
    if (s_bagDepth >= PresLayerLimits::GetBagDepth()) {
        throw QuorvelException(u"Parameter bags are nested too deeply");
    }
    ++s_bagDepth;
}

BagLevel::~BagLevel() { --s_bagDepth; }

}  // namespace qvpreslayer::detail
