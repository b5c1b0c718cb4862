#include "main/command/EagerParametersNamespace.h"

#include <qvcore/CaseConversion.h>

#include "main/command/SourceModule.h"

namespace {

ParameterTypeCategory KindToRecord(const RefCntPtr<IParameterSerializer>& serializer, ParameterTypeCategory kind) {
    if (!serializer) {
        return PTC_Bag;
    }
    return kind == PTC_List || kind == PTC_Map ? kind : serializer->GetType();
}

}  // namespace

void EagerParametersNamespace::AddValue(int pid, const TString& verboseName, const TString& shortName,
                                        RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind) {
    CheckRange(pid);
    ParameterInfo& record = Record(pid, verboseName, shortName, KindToRecord(serializer, kind));
    record.directType = qvpreslayer::detail::DirectTypeOf(serializer.Get());
    record.serializer = std::move(serializer);
    record.structureSerializer.Reset();
}

void EagerParametersNamespace::AddStructure(int pid, const TString& verboseName, const TString& shortName,
                                            RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind) {
    CheckRange(pid);
    ParameterInfo& record = Record(pid, verboseName, shortName, kind);
    record.structureSerializer = std::move(serializer);
    record.directType = qvpreslayer::detail::DirectType::None;
    record.serializer.Reset();
}

void EagerParametersNamespace::CheckRange(int pid) const {
    QV_ASSERT(pid >= FirstID() && pid <= LastID(), kSourceModule);
}

ParameterInfo& EagerParametersNamespace::Record(int pid, const TString& verboseName, const TString& shortName,
                                                ParameterTypeCategory kind) {
    ParameterInfo*& record = m_recordsById[pid];
    if (record == nullptr) {
        record = &m_records.emplace_back();
        record->id = pid;
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

const ParameterInfo* EagerParametersNamespace::Find(int id) const noexcept {
    const auto record = m_recordsById.find(id);
    return record == m_recordsById.end() ? nullptr : record->second;
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
