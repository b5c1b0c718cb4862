// The table behind shared immutable entries. Internal to qvcore: included by Collation.cpp and IndirectString.cpp.
//
// The table finds entries but does not keep them alive. An entry's last user takes it out of the table; the step from
// one user to none happens only under the lock under which Acquire looks, so that Acquire never meets an entry on its
// way out.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>

#include <boost/unordered/unordered_flat_set.hpp>

namespace qvcore::detail {

// What every entry starts with.
struct InternEntry {
    explicit InternEntry(std::size_t entryHash) noexcept : hash(entryHash) {}

    void AddUser() const noexcept { users.fetch_add(1, std::memory_order_relaxed); }

    mutable std::atomic<std::size_t> users{1};  // the first one is whoever had it made
    const std::size_t hash;
};

// Entry derives from InternEntry. A key has a hash, tells whether an entry Matches it and can Make the entry.
template <class Entry>
class InternTable {
public:
    // The entry for key, with one more user; made when there is none.
    template <class Key>
    const Entry* Acquire(const Key& key) {
        Shard& shard = ShardOf(key.hash);
        const std::lock_guard lock(shard.mutex);
        if (const auto found = shard.entries.find(key); found != shard.entries.end()) {
            (*found)->AddUser();
            return *found;
        }
        std::unique_ptr<const Entry> entry = key.Make();
        shard.entries.insert(entry.get());
        return entry.release();
    }

    // Takes one user away, and frees the entry when it was the last.
    void Release(const Entry* entry) noexcept {
        std::size_t users = entry->users.load(std::memory_order_relaxed);
        while (users > 1) {
            if (entry->users.compare_exchange_weak(users, users - 1, std::memory_order_release,
                                                   std::memory_order_relaxed)) {
                return;
            }
        }
        // Freed after the lock is gone: an entry may itself hold another table's entry.
        const std::unique_ptr<const Entry> last(RemoveLast(entry));
    }

    std::size_t GetSize() {
        std::size_t size = 0;
        for (Shard& shard : m_shards) {
            const std::lock_guard lock(shard.mutex);
            size += shard.entries.size();
        }
        return size;
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const Entry* entry) const noexcept { return entry->hash; }
        template <class Key>
        std::size_t operator()(const Key& key) const noexcept {
            return key.hash;
        }
    };

    struct Equal {
        using is_transparent = void;
        bool operator()(const Entry* left, const Entry* right) const noexcept { return left == right; }
        template <class Key>
        bool operator()(const Key& key, const Entry* entry) const noexcept {
            return key.Matches(*entry);
        }
        template <class Key>
        bool operator()(const Entry* entry, const Key& key) const noexcept {
            return key.Matches(*entry);
        }
    };

    using EntrySet = boost::unordered_flat_set<const Entry*, Hash, Equal>;

    // A part of the table with a lock of its own, on a cache line of its own.
    struct alignas(64) Shard {
        std::mutex mutex;  // protects entries, and every entry's step to no users
        EntrySet entries;
    };

    static constexpr unsigned kShardBits = 4;
    static constexpr std::size_t kKeptBuckets = 1024;

    Shard& ShardOf(std::size_t hash) noexcept { return m_shards[hash >> (sizeof(hash) * 8 - kShardBits)]; }

    // The entry, no longer in the table, when this was its last user; else null: another user came meanwhile.
    const Entry* RemoveLast(const Entry* entry) noexcept {
        Shard& shard = ShardOf(entry->hash);
        const std::lock_guard lock(shard.mutex);
        if (entry->users.fetch_sub(1, std::memory_order_acq_rel) != 1) {
            return nullptr;
        }
        shard.entries.erase(entry);
        if (shard.entries.empty() && shard.entries.bucket_count() > kKeptBuckets) {
            shard.entries = EntrySet();  // gives back what a flood of texts made it grow to
        }
        return entry;
    }

    std::array<Shard, std::size_t{1} << kShardBits> m_shards;
};

}  // namespace qvcore::detail
