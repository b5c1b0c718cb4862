#include <qvpreslayer/detail/BagLevel.h>

#include <qvsys/QuorvelException.h>

#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/detail/StackGuard.h>

namespace qvpreslayer::detail {

namespace {

constexpr int kDirectLevels = 16;

thread_local constinit int s_depth = 0;

}  // namespace

BagLevel::BagLevel() {
    const bool low = s_depth >= kUnguardedLevels && IsStackLow();
    if (s_depth >= PresLayerLimits::GetBagDepth() || low) {
        throw QuorvelException(u"Parameter bags are nested too deeply");
    }
    ++s_depth;
}

BagLevel::~BagLevel() { --s_depth; }

bool BagLevel::IsDeep() const noexcept { return s_depth > kDirectLevels; }

}  // namespace qvpreslayer::detail
