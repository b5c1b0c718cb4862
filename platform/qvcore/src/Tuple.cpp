#include <qvcore/Tuple.h>

#include <new>
#include <utility>

#include "HashMix.h"

namespace {

using ValueLists = std::vector<std::vector<DataValue>>;

// How many destructors of tuples may stand on the stack inside each other.
constexpr int kMaximumNestedReleases = 32;

// The destructors of tuples that are running on this thread. Trivial on purpose: tuples of static objects may go after
// the thread's other variables.
struct ReleaseState {
    int depth = 0;
    ValueLists* postponed = nullptr;  // of the outermost destructor
};

thread_local constinit ReleaseState s_release;

// Leaves the values to the outermost destructor; without memory for that they stay where they are.
void Postpone(std::vector<DataValue>& values) noexcept {
    try {
        s_release.postponed->emplace_back();
        s_release.postponed->back().swap(values);
    } catch (const std::bad_alloc&) {
        // Freed in place then: better deep than leaked.
    }
}

void ReleaseOutermost(std::vector<DataValue>& values) noexcept {
    ValueLists postponed;
    s_release = {1, &postponed};
    values.clear();
    while (!postponed.empty()) {
        std::vector<DataValue> next = std::move(postponed.back());
        postponed.pop_back();
        next.clear();  // may postpone more
    }
    s_release = {};
}

std::size_t HashOf(const std::vector<DataValue>& values) noexcept {
    std::size_t hash = values.size();
    for (const DataValue& value : values) {
        hash = qvcore::detail::MixHash(hash, value.GetHash());
    }
    return hash;
}

}  // namespace

Tuple::Tuple(std::vector<DataValue> values) : m_values(std::move(values)), m_hash(HashOf(m_values)) {}

Tuple::~Tuple() {
    if (s_release.depth == 0) {
        ReleaseOutermost(m_values);
        return;
    }
    if (s_release.depth >= kMaximumNestedReleases) {
        Postpone(m_values);
    }
    ++s_release.depth;
    m_values.clear();
    --s_release.depth;
}
