// Texts that are kept once, however many values hold them.
//
// Threads: Lookup, copying and destroying are safe from any thread at any time; one IndirectString object belongs to
// one thread at a time.
//
// Exceptions: Lookup is strong; all else never throws.
#pragma once

#include <cstddef>
#include <functional>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <qvcore/Collation.h>
#include <qvcore/Export.h>
#include <qvcore/TString.h>

namespace qvcore::detail {
struct IndirectStringEntry;
QVCORE_API void intrusive_ptr_add_ref(const IndirectStringEntry* entry) noexcept;
QVCORE_API void intrusive_ptr_release(const IndirectStringEntry* entry) noexcept;
}  // namespace qvcore::detail

// A text with a collation, one pointer wide. All of one text and collation share one copy, which is freed when the last
// of them goes: the table behind Lookup owns nothing, so that texts from outside cannot fill it for good.
class QVCORE_API IndirectString {
public:
    // The empty text with the unknown collation.
    constexpr IndirectString() noexcept = default;

    // The shared text for this pair, made when there is none yet. Copying what it answers counts and allocates nothing.
    static IndirectString Lookup(const Collation& collation, const TString& text);

    // Valid as long as any IndirectString of this pair.
    const TString& GetText() const noexcept;
    const Collation& GetCollation() const noexcept;

    // A hash of the text alone, equal for equal texts of different collations; kept with the text.
    std::size_t GetTextHash() const noexcept;

    // Same text and same collation.
    friend bool operator==(const IndirectString& left, const IndirectString& right) noexcept {
        return left.m_entry.get() == right.m_entry.get();
    }

    // The number of texts that are shared at this moment, for diagnostics.
    static std::size_t GetTableSize();

private:
    // Null for the empty text with the unknown collation.
    boost::intrusive_ptr<const qvcore::detail::IndirectStringEntry> m_entry;
};

template <>
struct std::hash<IndirectString> {
    std::size_t operator()(const IndirectString& string) const noexcept { return string.GetTextHash(); }
};
