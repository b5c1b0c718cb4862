// From identifiers to what the registry knows of them. Included by ParametersRegistry.h; not for callers.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

struct ParameterInfo;

namespace qvpreslayer::detail {

// Open addressing with single steps, at most half full: an entry is mostly one line of the processor's cache away. One
// table for all namespaces, so that a lookup need not find the namespace first.
//
// Threads: Find may run while one thread inserts; it then answers what is there or null. An entry never changes.
class InfoTable {
public:
    // An empty table of that many slots, a power of two that is at least 2. The odd multiplier spreads the identifiers.
    InfoTable(std::size_t slots, std::uint64_t multiplier);

    // What is stored under the identifier, or null.
    const ParameterInfo* Find(int id) const noexcept {
        std::size_t position = Home(id);
        while (true) {
            // The identifier counts when the pointer is there, which is stored last.
            const ParameterInfo* const info = m_slots[position].info.load(std::memory_order_acquire);
            if (m_slots[position].id.load(std::memory_order_relaxed) == id) [[likely]] {
                return info;
            }
            if (info == nullptr) {
                return nullptr;
            }
            position = (position + 1) & m_mask;
        }
    }

    bool HasRoomFor(std::size_t entries) const noexcept { return m_count + entries <= (m_mask + 1) / 2; }

    std::size_t GetCount() const noexcept { return m_count; }

    // Answers how many steps away from its first place the entry went. Requires: the identifier is not stored, info is
    // not null, and there is room.
    std::size_t Insert(int id, const ParameterInfo* info) noexcept;

    // Inserts all entries of the other table, and answers the sum of their steps. Requires: there is room, and none is
    // stored.
    std::size_t InsertAll(const InfoTable& other) noexcept;

private:
    struct Slot {
        std::atomic<int> id{0};
        std::atomic<const ParameterInfo*> info{nullptr};
    };

    std::size_t Home(int id) const noexcept {
        return static_cast<std::size_t>((static_cast<std::uint32_t>(id) * m_multiplier) >> m_shift);
    }

    std::unique_ptr<Slot[]> m_slots;
    std::uint64_t m_multiplier;
    std::size_t m_mask;
    unsigned m_shift;
    std::size_t m_count = 0;
};

}  // namespace qvpreslayer::detail
