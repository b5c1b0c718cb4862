// From member names to parameters. Included by DirectReader.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <qvcore/TString.h>

#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/DirectText.h>

#include "main/json/PlainUnits.h"

using qvpreslayer::detail::NameForm;

// Finds the parameters that names stand for, in a namespace and its fallbacks, as far as these are filled.
//
// Documents repeat themselves: members mostly come in the order of identifiers, as they are written, or in the order
// that an object before had, be it in an earlier document. So the name that is probably next is compared before any is
// sought.
class DirectNames {
public:
    using Record = qvpreslayer::detail::DirectRecord;

    // Makes ready for a text; keeps what it remembers where nothing has changed since the last one. False when not even
    // the first namespace can be asked.
    bool Prepare(const ParametersRegistry& registry, const TString& namespaceName, NameForm form) {
        // No other registry has this number.
        const bool isSame = m_generation == registry.GetGeneration() && m_form == form && IsNamespace(namespaceName);
        return isSame || PrepareAnew(registry, namespaceName, form);
    }

    // Makes ready for the names of one text; the unit at end can be read, and is no part of it.
    void Begin(const char16_t* end) noexcept { m_end = end; }

    NameForm Form() const noexcept { return m_form; }

    // What probably comes next: as the first member of what owner names, null for the outermost object; or behind a
    // member. Never null.
    const Record* First(const Record* owner) const {
        const Successor& successor = Remembered(owner, true);
        return successor.next != nullptr && successor.previous == owner && successor.first ? successor.next : &s_none;
    }
    const Record* Behind(const Record* member) const { return m_guesses && IsOwn(member) ? member + 1 : &s_none; }

    // Behind the closing quotation mark of the name at at when it is that of a guess; null when it is another.
    const char16_t* Skip(const Record& guess, const char16_t* at) const;

    // Behind the colon when a whole name with both quotation marks and a colon, as it is written, stands at at and is
    // that of a guess; null for all others.
    const char16_t* SkipMember(const Record& guess, const char16_t* at) const;

    // The parameter that the name at at stands for, in any place; at is left behind its closing quotation mark.
    // previous is the member before, or, with first, what the object belongs to. Null, for the long way, when the name
    // is not known so.
    const Record* Find(const char16_t*& at, const Record* previous, bool first);

private:
    struct Successor {
        const Record* previous;
        const Record* next;  // null: nothing is remembered here
        bool first;
    };

    static const Record s_none;  // stands nowhere

    // Whether a comparison with so many units, in whole blocks, stays inside the text.
    bool HasRoom(const char16_t* at, std::size_t size) const {
        return static_cast<std::size_t>(m_end - at) >= size + 8;
    }
    bool IsOwn(const Record* record) const;
    bool IsNamespace(const TString& name) const noexcept;
    bool PrepareAnew(const ParametersRegistry& registry, const TString& namespaceName, NameForm form);
    const Record* Seek(const char16_t*& at) const;
    const Record* Find(std::u16string_view name) const;
    const Successor& Remembered(const Record* previous, bool first) const {
        const std::uint32_t id = previous == nullptr ? 0 : static_cast<std::uint32_t>(previous->id);
        return m_successors[(id * 2 + (first ? 1 : 0)) % kSuccessors];
    }

    static constexpr std::size_t kSuccessors = 64;

    const char16_t* m_end = nullptr;
    const ParametersRegistry* m_registry = nullptr;
    std::uint64_t m_generation = 0;
    TString m_namespace;
    NameForm m_form = NameForm::Camel;
    bool m_guesses = false;  // without it, an identifier may belong to another namespace than its name
    const qvpreslayer::detail::INameIndex* m_names = nullptr;
    std::span<const Record> m_records;  // of that namespace, in that form
    std::array<Successor, kSuccessors> m_successors;
};

// Whether the text at at begins with size units of name, which is not 0. Compares in blocks of eight units; a name of
// fewer is followed by others that do not count.
inline bool StartsWith(const char16_t* at, const char16_t* name, std::size_t size) {
#if defined(__SSE2__)
    const auto equal = [&](std::size_t i) {
        return _mm_cmpeq_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i)),
                               _mm_loadu_si128(reinterpret_cast<const __m128i*>(name + i)));
    };
    if (size < 8) {
        const unsigned looked = (1u << (2 * size)) - 1;
        return (static_cast<unsigned>(_mm_movemask_epi8(equal(0))) & looked) == looked;
    }
    __m128i all = _mm_and_si128(equal(0), equal(size - 8));
    for (std::size_t i = 8; i + 8 < size; i += 8) {
        all = _mm_and_si128(all, equal(i));
    }
    return _mm_movemask_epi8(all) == 0xFFFF;
#else
    return std::u16string_view(at, size) == std::u16string_view(name, size);
#endif
}

// The memory of a TString goes on to the end of a block.
inline bool DirectNames::IsNamespace(const TString& name) const noexcept {
    return name.size() == m_namespace.size() &&
           (name.empty() || StartsWith(name.data(), m_namespace.data(), name.size()));
}

inline const char16_t* DirectNames::SkipMember(const Record& guess, const char16_t* at) const {
    const std::size_t size = guess.memberSize;
    const bool hasRoom = m_end - at >= static_cast<std::ptrdiff_t>(size + 8);
    return size != 0 && hasRoom && StartsWith(at, guess.Member(), size) ? at + size : nullptr;
}

// Only parameters of this namespace, which it finds by their names; the record behind the last one never stands.
inline const char16_t* DirectNames::Skip(const Record& guess, const char16_t* at) const {
    if (!guess.isFoundByNames) {
        return nullptr;
    }
    const std::size_t size = guess.nameSize;
    const char16_t* const name = guess.Name();
    if (size - 1 >= Record::kNameUnits) [[unlikely]] {
        return nullptr;
    }
    if (HasRoom(at, size)) [[likely]] {
        if (at[size] != u'"' || !StartsWith(at, name, size)) {
            return nullptr;
        }
    } else if (static_cast<std::size_t>(m_end - at) < size || at[size] != u'"' ||
               std::u16string_view(at, size) != std::u16string_view(name, size)) {
        return nullptr;
    }
    return at + size + 1;
}
