// The entries of a bag, ordered by identifier. Included by BaseParameters.h; not for callers.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>

namespace qvpreslayer::detail {

// A sorted vector: an entry costs 16 bytes and no allocation of its own, and most bags are filled upwards or are small.
// A large one that is changed out of order moves into a tree, so that filling it in any order stays cheap.
//
// Threads: const operations may run at once; a change needs exclusion.
class QVPRESLAYER_API ParameterTable {
public:
    using Value = RefCntPtr<IParameter>;

    ParameterTable() noexcept;
    ParameterTable(ParameterTable&&) noexcept;  // leaves nothing behind
    ParameterTable(const ParameterTable&) = delete;
    ParameterTable& operator=(const ParameterTable&) = delete;
    ~ParameterTable();

    // The value under id, or null.
    IParameter* Find(int id) const noexcept;

    // Stores a value that is not null, in place of any earlier one. Without memory nothing changes.
    void Set(int id, Value value);

    // Removes the entry; answers whether there was one.
    bool Erase(int id) noexcept;

    void Clear() noexcept;

    bool IsEmpty() const noexcept { return m_entries.empty() && (m_tree == nullptr || m_tree->empty()); }

    void Swap(ParameterTable& other) noexcept;

    // Calls visit(id, value) for each entry, upwards by identifier.
    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (const Entry& entry : m_entries) {
            visit(entry.id, entry.value);
        }
        if (m_tree) {
            for (const auto& [id, value] : *m_tree) {
                visit(id, value);
            }
        }
    }

private:
    struct Entry {
        int id;
        Value value;
    };
    using Entries = std::vector<Entry>;
    using Tree = std::map<int, Value>;

    Entries::iterator LowerBound(int id) noexcept;
    void MoveIntoTree();
    bool TryMoveIntoTree() noexcept;

    Entries m_entries;             // ascending; empty once m_tree is set
    std::unique_ptr<Tree> m_tree;  // null for most bags
};

}  // namespace qvpreslayer::detail
