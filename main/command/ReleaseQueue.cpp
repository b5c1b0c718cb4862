#include "main/command/ReleaseQueue.h"

#include <new>
#include <utility>

thread_local ReleaseQueue* ReleaseQueue::s_outermost = nullptr;
thread_local int ReleaseQueue::s_depth = 0;

ReleaseQueue::ReleaseQueue() noexcept {
    if (s_depth++ == 0) {
        s_outermost = this;
    }
}

ReleaseQueue::~ReleaseQueue() {
    while (!m_pending.empty()) {
        const RefCntPtr<IParameter> value = std::move(m_pending.back());
        m_pending.pop_back();
    }
    if (--s_depth == 0) {
        s_outermost = nullptr;
    }
}

bool ReleaseQueue::IsTooDeep() const noexcept { return s_depth > kDirectLevels; }

void ReleaseQueue::Defer(RefCntPtr<IParameter>& value) noexcept {
    try {
        s_outermost->m_pending.push_back(std::move(value));
    } catch (const std::bad_alloc&) {
        // The value stays where it is.
    }
}
