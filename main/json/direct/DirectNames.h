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

// How names are spelled in a text, and sought.
enum class NameForm : unsigned char {
    Camel,  // the camel-case forms of verbose names
    Short,  // short names
};

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
    bool Prepare(const ParametersRegistry& registry, const TString& namespaceName, NameForm form);

    NameForm Form() const noexcept { return m_form; }

    // The parameter that the name at at stands for, up to its closing quotation mark; at is left behind that. previous
    // is the member before, or, with first, what the object belongs to, null for the outermost. Null, for the long way,
    // when the name is not known so.
    const Record* Take(const char16_t*& at, const char16_t* end, const Record* previous, bool first);

private:
    struct Successor {
        const Record* previous;
        const Record* next;  // null: nothing is remembered here
        bool first;
    };

    bool StandsAt(const Record& record, const char16_t*& at, const char16_t* end) const;
    bool IsOwn(const Record* record) const;
    const Record* Seek(const char16_t*& at, const char16_t* end) const;
    const Record* Find(std::u16string_view name) const;
    Successor& Remembered(const Record* previous, bool first);

    const ParametersRegistry* m_registry = nullptr;
    std::uint64_t m_generation = 0;
    TString m_namespace;
    NameForm m_form = NameForm::Camel;
    bool m_guesses = false;  // without it, an identifier may belong to another namespace than its name
    const qvpreslayer::detail::INameIndex* m_names = nullptr;
    std::span<const Record> m_records;  // of that namespace
    std::array<Successor, 64> m_successors;
};
