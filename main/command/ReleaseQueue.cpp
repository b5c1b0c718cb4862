#include "main/command/ReleaseQueue.h"

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace {

constexpr int kDirectLevels = 64;

}  // namespace

// Tables whose turn comes later. Without memory for the list a few fixed places serve: a chain needs one of them.
class ReleaseQueue::Pending {
public:
    Pending() noexcept = default;
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

    // Takes the entries over; without room for them the caller keeps them, and lets go of them on the spot.
    void Add(Table& table) noexcept {
        if (table.IsEmpty()) {
            return;
        }
        try {
            m_tables.push_back(std::move(table));
        } catch (const std::bad_alloc&) {
            if (m_sparesUsed != kSpares) {
                new (Spare(m_sparesUsed++)) Table(std::move(table));
            }
        }
    }

    // Lets go of everything, also of what comes in meanwhile.
    void Drain() noexcept {
        while (m_sparesUsed != 0 || !m_tables.empty()) {
            Table table = m_sparesUsed != 0 ? TakeSpare() : TakeLast();
            table.Clear();
        }
    }

private:
    static constexpr std::size_t kSpares = 32;

    Table* Spare(std::size_t position) noexcept { return reinterpret_cast<Table*>(m_spares) + position; }

    Table TakeSpare() noexcept {
        Table* const spare = Spare(--m_sparesUsed);
        Table table = std::move(*spare);
        spare->~Table();
        return table;
    }

    Table TakeLast() noexcept {
        Table table = std::move(m_tables.back());
        m_tables.pop_back();
        return table;
    }

    std::vector<Table> m_tables;
    std::size_t m_sparesUsed = 0;
    alignas(Table) std::byte m_spares[kSpares * sizeof(Table)];  // the first m_sparesUsed hold tables
};

thread_local int ReleaseQueue::s_depth = 0;
thread_local ReleaseQueue::Pending* ReleaseQueue::s_pending = nullptr;

void ReleaseQueue::Release(Table& parameters, Table& cacheParameters) noexcept {
    if (s_depth == 0) {
        ReleaseOutermost(parameters, cacheParameters);
        return;
    }
    if (s_depth >= kDirectLevels) [[unlikely]] {
        Postpone(parameters, cacheParameters);
    }
    ++s_depth;
    parameters.Clear();
    cacheParameters.Clear();
    --s_depth;
}

void ReleaseQueue::Postpone(Table& parameters, Table& cacheParameters) noexcept {
    s_pending->Add(parameters);
    s_pending->Add(cacheParameters);
}

void ReleaseQueue::ReleaseOutermost(Table& parameters, Table& cacheParameters) noexcept {
    Pending pending;
    s_pending = &pending;
    ++s_depth;
    parameters.Clear();
    cacheParameters.Clear();
    pending.Drain();
    --s_depth;
    s_pending = nullptr;
}
