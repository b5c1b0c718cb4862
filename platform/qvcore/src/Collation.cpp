#include <qvcore/Collation.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include <qvsys/QuorvelException.h>

#include "HashMix.h"
#include "InternTable.h"
#include "NeverDestroyed.h"

namespace qvcore::detail {

struct CollationEntry : InternEntry {
    CollationEntry(std::size_t entryHash, const TString& entryName, int entryFlags)
        : InternEntry(entryHash), name(entryName), flags(entryFlags) {}

    const TString name;
    const int flags;
};

}  // namespace qvcore::detail

namespace {

using qvcore::detail::CollationEntry;
using qvcore::detail::InternTable;

constexpr std::u16string_view kUnknownName = u"unknown";
constexpr std::size_t kMaximumNameLength = 64;

// Never destroyed: collations in static objects may outlive every static of this file.
InternTable<CollationEntry>& Table() {
    static auto* const table = new InternTable<CollationEntry>;
    return *table;
}

struct CollationKey {
    CollationKey(const TString& keyName, int keyFlags)
        : name(keyName),
          flags(keyFlags),
          hash(qvcore::detail::MixHash(std::hash<TString>()(keyName), static_cast<std::size_t>(keyFlags))) {}

    bool Matches(const CollationEntry& entry) const noexcept { return entry.flags == flags && entry.name == name; }
    std::unique_ptr<const CollationEntry> Make() const {
        return std::make_unique<const CollationEntry>(hash, name, flags);
    }

    const TString& name;
    const int flags;
    const std::size_t hash;
};

bool IsNameUnit(char16_t unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') ||
           unit == u'_' || unit == u'-';
}

bool IsName(std::u16string_view name) {
    return name.size() <= kMaximumNameLength && std::all_of(name.begin(), name.end(), IsNameUnit);
}

}  // namespace

namespace qvcore::detail {

void intrusive_ptr_add_ref(const CollationEntry* entry) noexcept { entry->AddUser(); }

void intrusive_ptr_release(const CollationEntry* entry) noexcept { Table().Release(entry); }

}  // namespace qvcore::detail

Collation::Collation(const TString& name, int flags) {
    if (!IsName(name)) {
        throw QuorvelException(u"Collation name is not valid");
    }
    if (flags == 0 && name.view() == kUnknownName) {
        return;
    }
    m_entry.reset(Table().Acquire(CollationKey(name, flags)), false);
}

const TString& Collation::GetName() const noexcept {
    static const qvcore::detail::NeverDestroyed<TString> s_unknownName(kUnknownName);  // fits in place
    return m_entry ? m_entry->name : s_unknownName.Get();
}

int Collation::GetFlags() const noexcept { return m_entry ? m_entry->flags : 0; }

const Collation& GetUnknownCollation() noexcept {
    static constinit Collation s_unknown;
    return s_unknown;
}
