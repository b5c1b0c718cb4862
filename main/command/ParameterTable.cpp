#include <qvpreslayer/detail/ParameterTable.h>

#include <algorithm>
#include <new>
#include <span>

#include <qvsys/BlockPool.h>

namespace qvpreslayer::detail {

namespace {

// Up to this size moving entries costs less than a tree's nodes.
constexpr std::size_t kLargestArray = 1024;

constexpr std::size_t kFirstCapacity = 4;

constexpr auto kBefore = [](const auto& entry, int id) { return entry.id < id; };

}  // namespace

ParameterTable::ParameterTable(ParameterTable&& other) noexcept : ParameterTable() { Swap(other); }

IParameter* ParameterTable::Search(int id) const noexcept {
    if (m_tree) [[unlikely]] {
        const auto node = m_tree->find(id);
        return node == m_tree->end() ? nullptr : node->second.Get();
    }
    if (m_size == 0) {
        return nullptr;
    }
    // The last entry that is not behind id, by halving without a branch that depends on what is found.
    const Entry* entry = m_entries;
    for (std::size_t count = m_size; count > 1;) {
        const std::size_t half = count / 2;
        entry = entry[half].id <= id ? entry + half : entry;
        count -= half;
    }
    return entry->id == id ? entry->value.Get() : nullptr;
}

void ParameterTable::SetElsewhere(int id, Value value) {
    if (m_tree) [[unlikely]] {
        m_tree->insert_or_assign(id, std::move(value));
        return;
    }
    const bool last = m_size == 0 || end()[-1].id < id;
    Entry* const entry = last ? end() : LowerBound(id);
    if (!last && entry->id == id) {
        entry->value = std::move(value);
    } else if (!last && m_size >= kLargestArray) {
        MoveIntoTree();
        m_tree->emplace(id, std::move(value));
    } else {
        Insert(entry, id, std::move(value));
    }
}

bool ParameterTable::Erase(int id) noexcept {
    if (m_tree) [[unlikely]] {
        return m_tree->erase(id) != 0;
    }
    Entry* const entry = LowerBound(id);
    if (entry == end() || entry->id != id) {
        return false;
    }
    if (m_size > kLargestArray && entry + 1 != end() && TryMoveIntoTree()) {
        return m_tree->erase(id) != 0;
    }
    const Value removed = std::move(entry->value);  // let go of it when the table is in order again
    std::move(entry + 1, end(), entry);
    --m_size;
    end()->~Entry();
    return true;
}

// Values are let go of when the table is empty already: what they hold may look into it.
void ParameterTable::ClearSome() noexcept {
    ParameterTable removed;
    Swap(removed);
}

void ParameterTable::Swap(ParameterTable& other) noexcept {
    std::swap(m_entries, other.m_entries);
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
    m_tree.swap(other.m_tree);
}

ParameterTable::Entry* ParameterTable::LowerBound(int id) const noexcept {
    return std::lower_bound(begin(), end(), id, kBefore);
}

void ParameterTable::Insert(Entry* before, int id, Value value) {
    const auto position = before - begin();
    if (m_size == m_capacity) {
        Reserve(std::max<std::size_t>(kFirstCapacity, std::size_t{2} * m_capacity));
    }
    Entry* const place = begin() + position;
    if (place == end()) {
        new (place) Entry{id, std::move(value)};
    } else {
        new (end()) Entry{end()[-1].id, std::move(end()[-1].value)};
        std::move_backward(place, end() - 1, end());
        *place = Entry{id, std::move(value)};
    }
    ++m_size;
}

void ParameterTable::Reserve(std::size_t entries) {
    if (entries <= m_capacity) {
        return;
    }
    auto* const grown = static_cast<Entry*>(qvsys::detail::AllocateBlock(entries * sizeof(Entry)));
    std::uninitialized_move(begin(), end(), grown);
    std::destroy(begin(), end());
    if (m_entries != nullptr) {
        qvsys::detail::ReleaseBlock(m_entries, m_capacity * sizeof(Entry));
    }
    m_entries = grown;
    m_capacity = static_cast<std::uint32_t>(entries);
}

// Requires: there is an array.
void ParameterTable::RemoveArray() noexcept {
    std::destroy(begin(), end());
    qvsys::detail::ReleaseBlock(m_entries, m_capacity * sizeof(Entry));
}

// Without memory for the nodes the entries stay where they are, which costs time only.
bool ParameterTable::TryMoveIntoTree() noexcept {
    try {
        MoveIntoTree();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void ParameterTable::MoveIntoTree() {
    auto tree = std::make_unique<Tree>();
    for (const Entry& entry : std::span(m_entries, m_size)) {
        tree->emplace_hint(tree->end(), entry.id, entry.value);
    }
    RemoveArray();
    m_entries = nullptr;
    m_size = 0;
    m_capacity = 0;
    m_tree = std::move(tree);
}

}  // namespace qvpreslayer::detail
