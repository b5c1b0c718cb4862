#include "main/command/EagerParametersNamespace.h"

#include <algorithm>

#include <qvcore/CaseConversion.h>

#include "main/command/SourceModule.h"

using qvpreslayer::detail::DirectInfo;
using qvpreslayer::detail::DirectInfoOf;
using qvpreslayer::detail::DirectRecord;
using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::FunctionsOf;
using qvpreslayer::detail::NameForm;

namespace {

ParameterTypeCategory KindToRecord(const RefCntPtr<IParameterSerializer>& serializer, ParameterTypeCategory kind) {
    if (!serializer) {
        return PTC_Bag;
    }
    return kind == PTC_List || kind == PTC_Map ? kind : serializer->GetType();
}

// Whether no unit of a name is ever written as an escape.
bool IsSpelledAsItIs(std::u16string_view name) {
    const auto isPlain = [](char16_t unit) { return unit >= 0x20 && unit != u'"' && unit != u'\\' && unit != 0x7F; };
    return std::all_of(name.begin(), name.end(), isPlain);
}

}  // namespace

void EagerParametersNamespace::AddValue(int pid, const TString& verboseName, const TString& shortName,
                                        RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind) {
    CheckRange(pid);
    ParameterInfo& record = Record(pid, verboseName, shortName, KindToRecord(serializer, kind));
    record.direct = serializer ? DirectInfoOf(*serializer) : DirectInfo{};
    record.serializer = std::move(serializer);
    record.structureSerializer.Reset();
}

void EagerParametersNamespace::AddStructure(int pid, const TString& verboseName, const TString& shortName,
                                            RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind) {
    CheckRange(pid);
    ParameterInfo& record = Record(pid, verboseName, shortName, kind);
    record.direct = serializer ? DirectInfoOf(*serializer) : DirectInfo{};
    record.structureSerializer = std::move(serializer);
    record.serializer.Reset();
}

void EagerParametersNamespace::CheckRange(int pid) const {
    QV_ASSERT(pid >= FirstID() && pid <= LastID(), kSourceModule);
}

ParameterInfo& EagerParametersNamespace::Record(int pid, const TString& verboseName, const TString& shortName,
                                                ParameterTypeCategory kind) {
    ParameterInfo* record = m_recordsById.Find(pid);
    if (record == nullptr) {
        m_recordsById.ReserveOne();
        record = &m_records.emplace_back();
        record->id = pid;
        m_recordsById.Insert(pid, record);
    }
    record->kind = kind;
    record->verboseName = verboseName;
    record->camelName = DashedToCamel(verboseName);
    m_idsByVerboseName.insert_or_assign(verboseName, pid);
    if (CamelToDashed(record->camelName) == verboseName) {
        m_idsByCamelName.insert_or_assign(record->camelName, pid);
    }
    // Without a short name an earlier one stays, and no name leads here.
    if (!shortName.empty()) {
        record->shortName = shortName;
        m_idsByShortName.insert_or_assign(shortName, pid);
    }
    return *record;
}

int EagerParametersNamespace::FindID(const TString& name, bool verbose) const noexcept {
    const NameTable& table = verbose ? m_idsByVerboseName : m_idsByShortName;
    const auto id = table.find(name.view());
    return id == table.end() ? 0 : id->second;
}

int EagerParametersNamespace::FindCamel(std::u16string_view camelName) const noexcept {
    const auto id = m_idsByCamelName.find(camelName);
    return id == m_idsByCamelName.end() ? 0 : id->second;
}

int EagerParametersNamespace::FindShort(std::u16string_view shortName) const noexcept {
    const auto id = m_idsByShortName.find(shortName);
    return id == m_idsByShortName.end() ? 0 : id->second;
}

// A name may have been given to another identifier later, its camel-case form may not lead back to it, and documents
// spell some units of names otherwise.
bool EagerParametersNamespace::IsFoundByItsNames(const ParameterInfo& record) const noexcept {
    return record.id != 0 && IsSpelledAsItIs(record.camelName) && IsSpelledAsItIs(record.shortName) &&
           FindCamel(record.camelName) == record.id &&
           (record.shortName.empty() || FindShort(record.shortName) == record.id);
}

DirectRecord EagerParametersNamespace::MakeDirectRecord(const ParameterInfo& record, NameForm form) const noexcept {
    const std::u16string_view name = form == NameForm::Camel ? record.camelName : record.shortName;
    DirectRecord direct;
    direct.info = &record;
    direct.text = record.direct.text;
    direct.id = record.id;
    direct.kind = record.kind;
    direct.type = record.direct.type;
    direct.isFoundByNames = !name.empty() && IsFoundByItsNames(record);
    direct.single = direct.kind == PTC_Text || direct.kind == PTC_Number || direct.kind == PTC_Bool ? direct.type
                                                                                                    : DirectType::None;
    // Camel-case names are written as they are; others that cannot be, are not held.
    if (name.size() > DirectRecord::kNameUnits || (form != NameForm::Camel && !IsSpelledAsItIs(name))) {
        direct.nameSize = DirectRecord::kNameUnits + 1;
    } else if (!name.empty()) {
        direct.nameSize = static_cast<std::uint8_t>(name.size());
        direct.memberSize = direct.isFoundByNames ? static_cast<std::uint8_t>(name.size() + 3) : 0;
        direct.functions = FunctionsOf(direct.single, direct.text);
        char16_t* to = std::copy_n(u",\"", 2, direct.start);
        to = std::copy(name.begin(), name.end(), to);
        std::copy_n(u"\": ", 3, to);
    }
    return direct;
}

void EagerParametersNamespace::MakeDirectRecords() {
    std::vector<ParameterInfo*> records;
    records.reserve(m_records.size());
    for (ParameterInfo& record : m_records) {
        records.push_back(&record);
    }
    std::sort(records.begin(), records.end(), [](auto* left, auto* right) { return left->id < right->id; });
    for (const NameForm form : {NameForm::Camel, NameForm::Short}) {
        std::vector<DirectRecord>& direct = m_directRecords[static_cast<std::size_t>(form)];
        direct.clear();
        direct.reserve(records.size() + 1);
        for (ParameterInfo* record : records) {
            record->direct.records[static_cast<std::size_t>(form)] =
                &direct.emplace_back(MakeDirectRecord(*record, form));
        }
        direct.emplace_back();
    }
    if (!records.empty()) {
        m_firstRecordId = records.front()->id;
        const auto span = static_cast<std::uint32_t>(records.back()->id) - static_cast<std::uint32_t>(m_firstRecordId);
        m_gapless = std::size_t{span} + 1 == records.size() ? records.size() : 0;
    }
}

std::span<const DirectRecord> EagerParametersNamespace::GetRecords(NameForm form) const noexcept {
    const std::vector<DirectRecord>& direct = m_directRecords[static_cast<std::size_t>(form)];
    return std::span(direct).first(direct.empty() ? 0 : direct.size() - 1);
}

std::vector<const ParameterInfo*> EagerParametersNamespace::Records() const {
    std::vector<const ParameterInfo*> records;
    records.reserve(m_records.size());
    for (const ParameterInfo& record : m_records) {
        records.push_back(&record);
    }
    return records;
}

std::vector<ParameterRegistryinfo> EagerParametersNamespace::Rows() const {
    std::vector<ParameterRegistryinfo> rows;
    for (const ParameterInfo& record : m_records) {
        if (!record.shortName.empty()) {
            rows.push_back({record.id, record.verboseName, record.shortName});
        }
    }
    return rows;
}
