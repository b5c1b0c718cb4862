// Letting go of long chains of bags without a long chain of calls. Included by BaseParameters.cpp.
#pragma once

#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/IParameter.h>

// A bag that is destroyed destroys the bags in its values, and these theirs. The first 64 levels do so directly; deeper
// ones hand their values to the queue of the outermost destructor, which lets go of them one after the other. So the
// stack holds 64 levels at most, however long the chain.
class ReleaseQueue {
public:
    // One level; the outermost one of a thread owns the queue and drains it when it ends.
    ReleaseQueue() noexcept;
    ReleaseQueue(const ReleaseQueue&) = delete;
    ReleaseQueue& operator=(const ReleaseQueue&) = delete;
    ~ReleaseQueue();

    // Whether this level is too deep to let go of values itself.
    bool IsTooDeep() const noexcept;

    // Takes the value over. Without memory for the entry the caller keeps it, and lets go of it on the spot.
    static void Defer(RefCntPtr<IParameter>& value) noexcept;

private:
    static constexpr int kDirectLevels = 64;

    static thread_local ReleaseQueue* s_outermost;  // null outside any destructor
    static thread_local int s_depth;

    std::vector<RefCntPtr<IParameter>> m_pending;  // used by the outermost level only
};
