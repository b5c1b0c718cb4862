// Bags straight into the compact form. Included by ThreadScratch.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/detail/DirectText.h>
#include <qvpreslayer/detail/ParameterTable.h>
#include <qvpreslayer/detail/PlainBags.h>

#include "main/json/direct/TextSink.h"

// Writes the members of bags in the form that the walk VisitStructuredParameters and the visitor BuildParameterStrings
// give the output type Compact, without events. Whatever is unusual is handed over to these two, parameter by parameter
// and in its place: host serializers and bags, values of another type than registered, identifiers that are not, deep
// nesting. So the text, the order in which host code is called and every failure are theirs.
class DirectWriter {
public:
    struct Captures {
        bool enabled;
        bool nested;
    };

    // Writes the outermost bag behind what out holds; captures are for the visitor. LogicException "m_ptr" when the bag
    // is null. May be called again for another bag, after Forget, which is faster than a new writer.
    void Write(TString& out, const ParametersRegistry& registry, const PresModelBuilderSupport::TextOptions& options,
               const Captures& captures, const RefCntPtr<const IParameters>& bag);

    // Lets go of what a text has left: after every Write, before the text goes.
    void Forget() noexcept {
        if (m_visitor) [[unlikely]] {
            m_visitor.reset();
        }
    }

private:
    using Bag = RefCntPtr<const IParameters>;
    using Value = RefCntPtr<IParameter>;
    using Record = qvpreslayer::detail::DirectRecord;
    using Table = qvpreslayer::detail::ParameterTable;

    // How far an object has been written.
    struct Members {
        bool first;
        const Record* guess;  // of the next one
    };

    void Begin(TString& out, const ParametersRegistry& registry, const PresModelBuilderSupport::TextOptions& options,
               const Captures& captures) noexcept;

    // Behind the opening brace of an object.
    void WriteMembers(const IParameters& bag, const Table& entries);
    void WriteOthers(const IParameters& bag, const Table& entries, std::size_t from, Members& members);
    void WriteEntry(const IParameters& bag, int id, const Value& value, Members& members);
    template <class Copy>
    void PutText(char16_t* to, std::u16string_view text, const Copy& copy);
    void PutLongText(char16_t* to, std::u16string_view text);
    const Table::Entry* WriteUsual(const Table::Entry* entry, const Table::Entry* end, Members& members);

    // Each writes a comma unless it is first, the name, the colon and the value; or nothing, answering false.
    bool WriteMember(const Record& parameter, const IParameter& value, bool first);
    bool WriteOther(const Record& parameter, const IParameter& value, bool first);
    BuildParameterStrings& Visitor();
    bool HandOver(const IParameters& bag, int id, const Value& value, bool first);
    void HandOverAll(const Bag& bag);

    const Record* FindRecord(int id) const;

    bool WriteList(const Record& parameter, const IParameter& value, bool first);
    bool WriteMap(const Record& parameter, const IParameter& value, bool first);
    template <class T>
    bool WriteEntries(const Record& parameter, const IParameter& value, bool first);
    bool WriteBag(const Record& parameter, const IParameter& value, bool first);
    bool WriteBags(const Record& parameter, const IParameter& value, bool first);
    bool WriteBagMap(const Record& parameter, const IParameter& value, bool first);
    template <class T>
    bool WriteNumber(const Record& parameter, const IParameter& value, bool first);
    template <class T>
    bool WriteNumbers(const Record& parameter, const IParameter& value, bool first);
    bool WriteText(const Record& parameter, std::u16string_view text, bool first);
    bool WriteTexts(const Record& parameter, const IParameter& value, bool first);
    void PutKey(const TString& key, bool first);
    bool HaveOptionsChanged() const;
    void WriteNested(const IParameters& bag, const Table& entries);
    const Table* FindNested(const Bag& bag);
    bool CanPack(int tag) const;

    // The beginning of a member up to its colon, with room for more units behind it; that of a single value with the
    // blank behind.
    static char16_t* CopyStart(char16_t* to, const Record& parameter, std::size_t skipped, std::size_t size);
    char16_t* StartMember(const Record& parameter, bool first, std::size_t room);
    char16_t* StartSingle(const Record& parameter, bool first, std::size_t room);
    char16_t* StartLongMember(const Record& parameter, bool first, std::size_t room);

    TextSink m_sink;

    // Of the last text, and good for the next one as long as the registry and the form of names are the same.
    const ParametersRegistry* m_registry = nullptr;
    std::uint64_t m_generation = 0;  // of the registry, when writing began
    qvpreslayer::detail::NameForm m_form = qvpreslayer::detail::NameForm::Camel;
    const Record* m_first = nullptr;  // that the last bag began with

    // Of one text.
    Captures m_captures{};
    PresModelBuilderSupport::TextOptions m_options;
    std::optional<BuildParameterStrings> m_visitor;  // once something is handed over
    bool m_optionsMayDiffer = false;                 // host code has run
    bool m_allHandedOver = false;  // host code has left events open: what follows is for the visitor to spell
    bool m_guesses = false;        // without it, something about every parameter has to be looked up
    int m_depth = 0;
    qvpreslayer::detail::BagsOfOneClass m_plainBags;
    qvpreslayer::detail::TextScratch m_scratch;
};
