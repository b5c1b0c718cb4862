// The entries of a bag, ordered by identifier. Included by BaseParameters.h; not for callers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>

namespace qvpreslayer::detail {

// A sorted array: an entry costs 16 bytes and no allocation of its own, small arrays take kept blocks, and most bags
// are filled upwards or are small. A large one that is changed out of order moves into a tree, so that filling it in
// any order stays cheap.
//
// Threads: const operations may run at once; a change needs exclusion.
class QVPRESLAYER_API ParameterTable {
public:
    using Value = RefCntPtr<IParameter>;

    struct Entry {
        int id;
        Value value;
    };

    ParameterTable() noexcept = default;
    ParameterTable(ParameterTable&&) noexcept;  // leaves nothing behind
    ParameterTable(const ParameterTable&) = delete;
    ParameterTable& operator=(const ParameterTable&) = delete;
    ~ParameterTable() {
        if (m_entries != nullptr) {
            RemoveArray();
        }
    }

    // The value under id, or null.
    IParameter* Find(int id) const noexcept {
        // Identifiers often follow each other without gaps.
        if (m_size != 0) {
            const std::size_t guess = static_cast<std::uint32_t>(id) - static_cast<std::uint32_t>(m_entries[0].id);
            if (guess < m_size && m_entries[guess].id == id) {
                return m_entries[guess].value.Get();
            }
        }
        return Search(id);
    }

    // Stores a value that is not null, in place of any earlier one. Without memory nothing changes.
    void Set(int id, Value value) {
        // Most bags are filled upwards.
        if (m_size < m_capacity && (m_size == 0 || end()[-1].id < id)) [[likely]] {
            new (end()) Entry{id, std::move(value)};
            ++m_size;
        } else {
            SetElsewhere(id, std::move(value));
        }
    }

    // Makes room for so many entries.
    void Reserve(std::size_t entries);

    // Stores so many entries, one after the other as next() gives them. Requires: the table is empty and has room for
    // them, identifiers ascend, no value is null.
    template <class Next>
    void Fill(std::size_t entries, const Next& next) noexcept {
        for (Entry* entry = m_entries; entry != m_entries + entries; ++entry) {
            new (entry) Entry(next());
        }
        m_size = static_cast<std::uint32_t>(entries);
    }

    // Removes the entry; answers whether there was one.
    bool Erase(int id) noexcept;

    void Clear() noexcept {
        if (m_entries != nullptr || m_tree) {
            ClearSome();
        }
    }

    bool IsEmpty() const noexcept { return m_size == 0 && (m_tree == nullptr || m_tree->empty()); }

    void Swap(ParameterTable& other) noexcept;

    // The entries, upwards by identifier, of a table that is no tree; none of a tree.
    std::span<const Entry> Array() const noexcept { return {m_entries, m_size}; }
    bool IsTree() const noexcept { return m_tree != nullptr; }

    // Calls visit(id, value) for each entry, upwards by identifier.
    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (std::uint32_t i = 0; i < m_size; ++i) {
            visit(m_entries[i].id, m_entries[i].value);
        }
        if (m_tree) {
            for (const auto& [id, value] : *m_tree) {
                visit(id, value);
            }
        }
    }

private:
    using Tree = std::map<int, Value>;

    Entry* begin() const noexcept { return m_entries; }
    Entry* end() const noexcept { return m_entries + m_size; }

    IParameter* Search(int id) const noexcept;
    void SetElsewhere(int id, Value value);
    Entry* LowerBound(int id) const noexcept;
    void Insert(Entry* before, int id, Value value);
    void ClearSome() noexcept;
    void RemoveArray() noexcept;
    void MoveIntoTree();
    bool TryMoveIntoTree() noexcept;

    Entry* m_entries = nullptr;  // ascending
    std::uint32_t m_size = 0;    // 0 once m_tree is set
    std::uint32_t m_capacity = 0;
    std::unique_ptr<Tree> m_tree;  // null for most bags
};

}  // namespace qvpreslayer::detail
