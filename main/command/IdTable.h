// From identifiers to objects. Included by EagerParametersNamespace.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Open addressing with single steps, at most half full. An entry is one line of the processor's cache away, where
// tables of groups take two; that is what a look-up costs.
template <class T>
class IdTable {
public:
    // The object of the identifier, or null.
    T* Find(int id) const noexcept {
        if (m_slots.empty()) {
            return nullptr;
        }
        for (std::size_t slot = SlotOf(id);; slot = (slot + 1) & (m_slots.size() - 1)) {
            if (m_slots[slot].id == id || m_slots[slot].object == nullptr) {
                return m_slots[slot].object;
            }
        }
    }

    // Makes room for one more. Without memory nothing changes.
    void ReserveOne() {
        if (2 * (m_count + 1) > m_slots.size()) {
            Grow();
        }
    }

    // Requires: nothing is stored under the identifier, object is not null, and there is room.
    void Insert(int id, T* object) noexcept {
        Store(id, object);
        ++m_count;
    }

private:
    struct Slot {
        int id = 0;
        T* object = nullptr;
    };

    std::size_t SlotOf(int id) const noexcept {
        constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>((static_cast<std::uint32_t>(id) * kGoldenRatio) >> m_shift);
    }

    void Store(int id, T* object) noexcept {
        std::size_t slot = SlotOf(id);
        while (m_slots[slot].object != nullptr) {
            slot = (slot + 1) & (m_slots.size() - 1);
        }
        m_slots[slot] = {id, object};
    }

    void Grow() {
        const std::size_t size = m_slots.empty() ? 8 : 2 * m_slots.size();
        std::vector<Slot> slots(size);
        slots.swap(m_slots);
        m_shift = 64;
        for (std::size_t left = size; left > 1; left /= 2) {
            --m_shift;
        }
        for (const Slot& slot : slots) {
            if (slot.object != nullptr) {
                Store(slot.id, slot.object);
            }
        }
    }

    std::vector<Slot> m_slots;  // a power of two of them
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};
