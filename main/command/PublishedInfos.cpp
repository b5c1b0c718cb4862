#include "main/command/PublishedInfos.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <utility>

#include <qvpreslayer/ParametersRegistry.h>

using qvpreslayer::detail::InfoTable;

namespace {

constexpr std::size_t kFewestSlots = 64;

// Fractions of the golden ratio and of square roots. Identifiers mostly stand at regular distances, which each of these
// spreads evenly or, for some distances, not at all well.
constexpr std::uint64_t kMultipliers[] = {0x9E3779B97F4A7C15, 0x6A09E667F3BCC909, 0xBB67AE8584CAA73B,
                                          0xA54FF53A5F1D36F1};

std::size_t InsertAll(const PublishedInfos::Records& records, InfoTable& table) noexcept {
    std::size_t steps = 0;
    for (const ParameterInfo* record : records) {
        steps += table.Insert(record->id, record);
    }
    return steps;
}

}  // namespace

void PublishedInfos::Add(const Records& records) {
    if (InUse() != nullptr && InUse()->HasRoomFor(records.size())) {
        InsertAll(records, *m_tables.back());
        return;
    }
    m_tables.push_back(MakeTableWith(records));
    m_place.store(InUse(), std::memory_order_release);
}

void PublishedInfos::Clear() noexcept {
    m_place.store(nullptr, std::memory_order_release);
    m_tables.clear();
}

// Of the multipliers the first one under which hardly an entry makes a step, else that with the fewest steps.
std::unique_ptr<InfoTable> PublishedInfos::MakeTableWith(const Records& records) const {
    const std::size_t count = records.size() + (InUse() == nullptr ? 0 : InUse()->GetCount());
    const std::size_t slots = std::bit_ceil(std::max(kFewestSlots, 2 * count));
    std::unique_ptr<InfoTable> best;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (const std::uint64_t multiplier : kMultipliers) {
        auto table = std::make_unique<InfoTable>(slots, multiplier);
        const std::size_t steps = (InUse() == nullptr ? 0 : table->InsertAll(*InUse())) + InsertAll(records, *table);
        if (steps < fewest) {
            best = std::move(table);
            fewest = steps;
        }
        if (fewest <= count / 32) {
            break;
        }
    }
    return best;
}
