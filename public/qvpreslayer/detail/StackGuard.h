// How much of the calling thread's stack is left. Not for callers.
#pragma once

#include <qvpreslayer/Export.h>

namespace qvpreslayer::detail {

// Levels of nesting that start without a look at the stack.
inline constexpr int kUnguardedLevels = 16;

// Whether less than PresLayerLimits::GetStackReserve() of the calling thread's stack is left. False where nobody can
// tell, as on a stack that the host switched to on its own.
QVPRESLAYER_API bool IsStackLow() noexcept;

}  // namespace qvpreslayer::detail
