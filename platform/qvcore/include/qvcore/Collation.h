// The names of text orders.
//
// Threads: as for a plain value, several threads may use several collations, also of one name, at once.
//
// Exceptions: making one from a name is strong; all else never throws.
#pragma once

#include <cstddef>
#include <functional>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

namespace qvcore::detail {
struct CollationEntry;
QVCORE_API void intrusive_ptr_add_ref(const CollationEntry* entry) noexcept;
QVCORE_API void intrusive_ptr_release(const CollationEntry* entry) noexcept;
}  // namespace qvcore::detail

// Says by which rules a text is to be ordered: a name and flags, both of which mean something to hosts only. Nothing
// in this library orders texts by a collation; it is carried along and compared.
//
// One pointer wide. Collations of one name and flags share their storage, which goes with the last of them.
class QVCORE_API Collation {
public:
    // The unknown collation: name "unknown", flags 0.
    constexpr Collation() noexcept = default;

    // A name is 0 to 64 characters out of A-Z, a-z, 0-9, "_" and "-", so that none can hold a delimiter of the text
    // forms; QuorvelException for any other. The empty name is a name of its own.
    explicit Collation(const TString& name, int flags = 0);

    // Valid as long as any collation of this name and flags.
    const TString& GetName() const noexcept;
    int GetFlags() const noexcept;

    // Same name and same flags.
    friend bool operator==(const Collation& left, const Collation& right) noexcept {
        return left.m_entry.get() == right.m_entry.get();
    }

    // Equal for equal collations, different from run to run.
    std::size_t GetHash() const noexcept { return std::hash<const qvcore::detail::CollationEntry*>()(m_entry.get()); }

private:
    boost::intrusive_ptr<const qvcore::detail::CollationEntry> m_entry;  // null for the unknown collation
};

// The collation of everything that nobody gave one; equal to Collation("unknown", 0). Lives as long as the program.
QVCORE_API const Collation& GetUnknownCollation() noexcept;

template <>
struct std::hash<Collation> {
    std::size_t operator()(const Collation& collation) const noexcept { return collation.GetHash(); }
};
