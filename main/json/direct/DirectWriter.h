// Bags straight into the compact form. Included by JSONSerializer.cpp.
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

    // Writes behind what out holds; captures are for the visitor. Requires: out and registry outlive the writer.
    DirectWriter(TString& out, const ParametersRegistry& registry, PresModelBuilderSupport::TextOptions options,
                 Captures captures);

    // Writes the outermost bag. LogicException "m_ptr" when it is null.
    void Write(const RefCntPtr<const IParameters>& bag);

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

    // Behind the opening brace of an object.
    void WriteMembers(const IParameters& bag, const Table& entries);
    void WriteEntry(const IParameters& bag, int id, const Value& value, Members& members);
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
    const ParametersRegistry& m_registry;
    Captures m_captures;
    std::optional<BuildParameterStrings> m_visitor;  // once something is handed over
    bool m_useVerboseNames;
    qvpreslayer::detail::NameForm m_form;
    bool m_compressArrays;
    bool m_optionsMayDiffer = false;  // host code has run
    bool m_allHandedOver = false;     // host code has left events open: what follows is for the visitor to spell
    bool m_hasUnserializable;
    bool m_guesses;              // without it, something about every parameter has to be looked up
    std::uint64_t m_generation;  // of the registry, when writing began
    const Record* m_first;       // that the last bag began with
    int m_depth = 0;
    qvpreslayer::detail::BagsOfOneClass m_plainBags;
    qvpreslayer::detail::TextScratch m_scratch;
};
