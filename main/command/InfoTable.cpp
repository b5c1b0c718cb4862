#include <qvpreslayer/detail/InfoTable.h>

#include <bit>

namespace qvpreslayer::detail {

InfoTable::InfoTable(std::size_t slots, std::uint64_t multiplier)
    : m_slots(std::make_unique<Slot[]>(slots)),
      m_multiplier(multiplier),
      m_mask(slots - 1),
      m_shift(64 - static_cast<unsigned>(std::countr_zero(slots))) {}

std::size_t InfoTable::Insert(int id, const ParameterInfo* info) noexcept {
    std::size_t position = Home(id);
    std::size_t steps = 0;
    while (m_slots[position].info.load(std::memory_order_relaxed) != nullptr) {
        position = (position + 1) & m_mask;
        ++steps;
    }
    m_slots[position].id.store(id, std::memory_order_relaxed);
    m_slots[position].info.store(info, std::memory_order_release);
    ++m_count;
    return steps;
}

std::size_t InfoTable::InsertAll(const InfoTable& other) noexcept {
    std::size_t steps = 0;
    for (std::size_t position = 0; position <= other.m_mask; ++position) {
        const Slot& slot = other.m_slots[position];
        if (const ParameterInfo* const info = slot.info.load(std::memory_order_relaxed)) {
            steps += Insert(slot.id.load(std::memory_order_relaxed), info);
        }
    }
    return steps;
}

}  // namespace qvpreslayer::detail
