#include <qvcore/IndirectString.h>

#include <memory>

#include "HashMix.h"
#include "InternTable.h"
#include "NeverDestroyed.h"

namespace qvcore::detail {

struct IndirectStringEntry : InternEntry {
    IndirectStringEntry(std::size_t entryHash, std::size_t entryTextHash, const Collation& entryCollation,
                        const TString& entryText)
        : InternEntry(entryHash), textHash(entryTextHash), collation(entryCollation), text(entryText) {}

    const std::size_t textHash;
    const Collation collation;
    const TString text;
};

}  // namespace qvcore::detail

namespace {

using qvcore::detail::IndirectStringEntry;
using qvcore::detail::InternTable;

// Never destroyed: strings in static objects may outlive every static of this file.
InternTable<IndirectStringEntry>& Table() {
    static auto* const table = new InternTable<IndirectStringEntry>;
    return *table;
}

const TString& EmptyText() noexcept {
    static const qvcore::detail::NeverDestroyed<TString> text;
    return text.Get();
}

struct IndirectStringKey {
    IndirectStringKey(const Collation& keyCollation, const TString& keyText)
        : collation(keyCollation),
          text(keyText),
          textHash(std::hash<TString>()(keyText)),
          hash(qvcore::detail::MixHash(textHash, keyCollation.GetHash())) {}

    bool Matches(const IndirectStringEntry& entry) const noexcept {
        return entry.textHash == textHash && entry.collation == collation && entry.text == text;
    }
    std::unique_ptr<const IndirectStringEntry> Make() const {
        return std::make_unique<const IndirectStringEntry>(hash, textHash, collation, text);
    }

    const Collation& collation;
    const TString& text;
    const std::size_t textHash;
    const std::size_t hash;
};

}  // namespace

namespace qvcore::detail {

void intrusive_ptr_add_ref(const IndirectStringEntry* entry) noexcept { entry->AddUser(); }

void intrusive_ptr_release(const IndirectStringEntry* entry) noexcept { Table().Release(entry); }

}  // namespace qvcore::detail

IndirectString IndirectString::Lookup(const Collation& collation, const TString& text) {
    IndirectString result;
    if (!text.empty() || collation != GetUnknownCollation()) {
        result.m_entry.reset(Table().Acquire(IndirectStringKey(collation, text)), false);
    }
    return result;
}

const TString& IndirectString::GetText() const noexcept { return m_entry ? m_entry->text : EmptyText(); }

const Collation& IndirectString::GetCollation() const noexcept {
    return m_entry ? m_entry->collation : GetUnknownCollation();
}

std::size_t IndirectString::GetTextHash() const noexcept {
    return m_entry ? m_entry->textHash : std::hash<TString>()(EmptyText());
}

std::size_t IndirectString::GetTableSize() { return Table().GetSize(); }
