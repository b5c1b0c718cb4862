#include <qvcore/Tuple.h>

#include <array>
#include <new>
#include <utility>

#include "HashMix.h"

namespace {

using Values = std::vector<DataValue>;

// How many destructors of tuples may stand on the stack inside each other.
constexpr int kMaximumNestedReleases = 32;

// Values whose turn comes later. Without memory for the list a few fixed places serve: a chain needs one of them.
class Postponed {
public:
    // Takes the values over; without room for them they stay where they are, better deep than leaked.
    void Add(Values& values) noexcept {
        try {
            m_lists.emplace_back();
            m_lists.back().swap(values);
        } catch (const std::bad_alloc&) {
            if (m_sparesUsed != m_spares.size()) {
                m_spares[m_sparesUsed++].swap(values);
            }
        }
    }

    // Frees everything, also what comes in meanwhile.
    void Drain() noexcept {
        while (m_sparesUsed != 0 || !m_lists.empty()) {
            Values next;
            if (m_sparesUsed != 0) {
                next.swap(m_spares[--m_sparesUsed]);
            } else {
                next.swap(m_lists.back());
                m_lists.pop_back();
            }
        }
    }

private:
    std::vector<Values> m_lists;
    std::array<Values, 8> m_spares;
    std::size_t m_sparesUsed = 0;
};

// The destructors of tuples that are running on this thread. Trivial on purpose: tuples of static objects may go after
// the thread's other variables.
struct ReleaseState {
    int depth = 0;
    Postponed* postponed = nullptr;  // of the outermost destructor
};

thread_local constinit ReleaseState s_release;

void ReleaseOutermost(Values& values) noexcept {
    Postponed postponed;
    s_release = {1, &postponed};
    values.clear();
    postponed.Drain();
    s_release = {};
}

std::size_t HashOf(const Values& values) noexcept {
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
        s_release.postponed->Add(m_values);
    }
    ++s_release.depth;
    m_values.clear();
    --s_release.depth;
}
