// The table of FindInfo, and the smaller ones before it. Included by ParametersRegistry.cpp.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include <qvpreslayer/detail/InfoTable.h>

// Lookups read the table while it is filled. One that has become too small is therefore kept until nobody looks up;
// all that are kept are smaller, together, than the one in use.
//
// Threads: Add is called by one thread at a time; Clear, and destroying, when no other thread looks up.
class PublishedInfos {
public:
    // The place where lookups find the table; null while there is none.
    using Place = std::atomic<const qvpreslayer::detail::InfoTable*>;

    explicit PublishedInfos(Place& place) noexcept : m_place(place) {}
    PublishedInfos(const PublishedInfos&) = delete;
    PublishedInfos& operator=(const PublishedInfos&) = delete;

    using Records = std::vector<const ParameterInfo*>;

    // Makes the records found. None of their identifiers may be there. Without memory nothing changes.
    void Add(const Records& records);

    void Clear() noexcept;

    // What is found under the identifier, or null.
    const ParameterInfo* Find(int id) const noexcept {
        const qvpreslayer::detail::InfoTable* const table = m_place.load(std::memory_order_acquire);
        return table == nullptr ? nullptr : table->Find(id);
    }

private:
    const qvpreslayer::detail::InfoTable* InUse() const noexcept {
        return m_tables.empty() ? nullptr : m_tables.back().get();
    }
    std::unique_ptr<qvpreslayer::detail::InfoTable> MakeTableWith(const Records& records) const;

    Place& m_place;
    std::vector<std::unique_ptr<qvpreslayer::detail::InfoTable>> m_tables;  // the last one is in use
};
