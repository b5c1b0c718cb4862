// Bags straight into the compact form. Included by JSONSerializer.cpp.
#pragma once

#include <cstdint>
#include <string_view>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/DirectText.h>

#include "main/json/direct/TextSink.h"

// Writes the members of bags in the form that the walk VisitStructuredParameters and the visitor BuildParameterStrings
// give the output type Compact, without events. Whatever is unusual is handed over to these two, parameter by parameter
// and in its place: host serializers and bags, values of another type than registered, identifiers that are not, deep
// nesting. So the text, the order in which host code is called and every failure are theirs.
class DirectWriter {
public:
    // visitor writes into the same text and has told it the opening brace. Requires: all three outlive the writer.
    DirectWriter(TString& out, BuildParameterStrings& visitor, const ParametersRegistry& registry, bool useVerboseNames,
                 bool compressArrays);

    // Writes the members of the outermost bag. LogicException "m_ptr" when it is null.
    void Write(const RefCntPtr<const IParameters>& bag);

private:
    using Bag = RefCntPtr<const IParameters>;
    using Record = qvpreslayer::detail::DirectRecord;

    // Behind the opening brace of an object. Nothing has been written when false is the answer.
    bool WriteMembers(const IParameters& bag, bool first);
    bool WriteMember(const Record& parameter, const IParameter& value, bool first);
    void HandOver(const IParameters& bag, int id, const RefCntPtr<IParameter>& value, bool& first);
    void HandOverAll(const Bag& bag);

    const Record* FindRecord(int id, const Record* previous);
    bool HasName(const ParameterInfo& info) const;

    // Each writes a comma unless it is first, the name, the colon and the value; or nothing, answering false.
    bool WriteScalar(const Record& parameter, const IParameter& value, bool first);
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
    void WriteNested(const Bag& bag);
    bool CanNest(const Bag& bag);
    bool CanPack(int tag) const;

    // The beginning of a member, with room for more units behind it.
    char16_t* StartMember(const Record& parameter, bool first, std::size_t room);
    char16_t* StartLongMember(const Record& parameter, bool first, std::size_t room);

    TextSink m_sink;
    BuildParameterStrings& m_visitor;
    const ParametersRegistry& m_registry;
    bool m_useVerboseNames;
    bool m_compressArrays;
    bool m_optionsMayDiffer = false;  // host code has run
    bool m_allHandedOver = false;     // host code has left events open: what follows is for the visitor to spell
    bool m_hasUnserializable;
    bool m_guesses;                   // without it, an identifier may belong to another namespace than the one before
    std::uint64_t m_generation;       // of the registry, when writing began
    const Record* m_first = nullptr;  // that the last bag began with
    int m_depth = 0;
    qvpreslayer::detail::TextScratch m_scratch;
};
