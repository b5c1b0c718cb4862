#include <qvpreslayer/detail/ParameterTable.h>

#include <algorithm>
#include <new>

namespace qvpreslayer::detail {

namespace {

// Up to this size moving entries costs less than a tree's nodes.
constexpr std::size_t kLargestVector = 1024;

constexpr auto kBefore = [](const auto& entry, int id) { return entry.id < id; };

}  // namespace

ParameterTable::ParameterTable() noexcept = default;

ParameterTable::ParameterTable(ParameterTable&&) noexcept = default;

ParameterTable::~ParameterTable() = default;

IParameter* ParameterTable::Find(int id) const noexcept {
    if (m_tree) [[unlikely]] {
        const auto node = m_tree->find(id);
        return node == m_tree->end() ? nullptr : node->second.Get();
    }
    const auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), id, kBefore);
    return entry != m_entries.end() && entry->id == id ? entry->value.Get() : nullptr;
}

void ParameterTable::Set(int id, Value value) {
    if (m_tree) [[unlikely]] {
        m_tree->insert_or_assign(id, std::move(value));
        return;
    }
    const bool last = m_entries.empty() || m_entries.back().id < id;
    const auto entry = last ? m_entries.end() : LowerBound(id);
    if (!last && entry->id == id) {
        entry->value = std::move(value);
    } else if (!last && m_entries.size() >= kLargestVector) {
        MoveIntoTree();
        m_tree->emplace(id, std::move(value));
    } else {
        m_entries.insert(entry, {id, std::move(value)});
    }
}

bool ParameterTable::Erase(int id) noexcept {
    if (m_tree) [[unlikely]] {
        return m_tree->erase(id) != 0;
    }
    const auto entry = LowerBound(id);
    if (entry == m_entries.end() || entry->id != id) {
        return false;
    }
    if (m_entries.size() > kLargestVector && entry + 1 != m_entries.end() && TryMoveIntoTree()) {
        return m_tree->erase(id) != 0;
    }
    const Value removed = std::move(entry->value);  // let go of it when the table is in order again
    m_entries.erase(entry);
    return true;
}

void ParameterTable::Clear() noexcept {
    m_entries.clear();
    m_tree.reset();
}

void ParameterTable::Swap(ParameterTable& other) noexcept {
    m_entries.swap(other.m_entries);
    m_tree.swap(other.m_tree);
}

ParameterTable::Entries::iterator ParameterTable::LowerBound(int id) noexcept {
    return std::lower_bound(m_entries.begin(), m_entries.end(), id, kBefore);
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
    for (const Entry& entry : m_entries) {
        tree->emplace_hint(tree->end(), entry.id, entry.value);
    }
    m_entries.clear();
    m_tree = std::move(tree);
}

}  // namespace qvpreslayer::detail
