#include "main/command/IdSegments.h"

#include <algorithm>
#include <limits>

namespace {

// The first segment that ends at or after id.
constexpr auto kEndsBefore = [](const auto& segment, int id) { return segment.last < id; };

}  // namespace

void IdSegments::AddUncovered(int firstId, int lastId, ParametersNamespace* owner) {
    auto next = std::lower_bound(m_segments.begin(), m_segments.end(), firstId, kEndsBefore);
    while (firstId <= lastId) {
        if (next == m_segments.end() || next->first > lastId) {
            m_segments.insert(next, {firstId, lastId, owner});
            return;
        }
        if (next->first > firstId) {
            next = m_segments.insert(next, {firstId, next->first - 1, owner}) + 1;
        }
        if (next->last == std::numeric_limits<int>::max()) {
            return;
        }
        firstId = next->last + 1;
        ++next;
    }
}

void IdSegments::ReserveOne() {
    if (m_segments.size() == m_segments.capacity()) {
        m_segments.reserve(2 * m_segments.size() + 1);
    }
}

bool IdSegments::Overlaps(int firstId, int lastId) const noexcept {
    const auto next = std::lower_bound(m_segments.begin(), m_segments.end(), firstId, kEndsBefore);
    return firstId <= lastId && next != m_segments.end() && next->first <= lastId;
}

ParametersNamespace* IdSegments::Find(int id) const noexcept {
    const auto segment = std::lower_bound(m_segments.begin(), m_segments.end(), id, kEndsBefore);
    return segment != m_segments.end() && segment->first <= id ? segment->owner : nullptr;
}
