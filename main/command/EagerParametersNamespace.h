// The tables of one namespace. Included by ParametersNamespace.h and ParamAdder.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include <boost/unordered/unordered_flat_map.hpp>

#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/DirectText.h>

#include "main/command/IdTable.h"
#include "main/command/NameHash.h"

// One record for each identifier holds its names, kind and serializer, so that a lookup needs one table; names lead to
// identifiers through three more.
//
// Records never move: the references that the registry hands out last as long as the namespace.
class EagerParametersNamespace final : public RefCntObject, public qvpreslayer::detail::INameIndex {
public:
    EagerParametersNamespace(int firstId, int lastId) : m_firstId(firstId), m_lastId(lastId) {}
    ~EagerParametersNamespace() override = default;

    // The range, both ends inclusive.
    int FirstID() const noexcept { return m_firstId; }
    int LastID() const noexcept { return m_lastId; }

    // Record an identifier, or replace what is recorded of it. LogicException when pid is outside the range. The kind
    // of a value entry is PTC_Bag without a serializer, the kind passed for lists and maps, else the serializer's own.
    void AddValue(int pid, const TString& verboseName, const TString& shortName,
                  RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind);
    void AddStructure(int pid, const TString& verboseName, const TString& shortName,
                      RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind);

    // The record of an identifier, or null.
    const ParameterInfo* Find(int id) const noexcept {
        const std::size_t position = static_cast<std::uint32_t>(id) - static_cast<std::uint32_t>(m_firstRecordId);
        if (position < m_gapless) {
            return m_directRecords[0][position].info;
        }
        return m_recordsById.Find(id);
    }

    // The identifier of a verbose or short name; 0 when there is none.
    int FindID(const TString& name, bool verbose) const noexcept;

    int FindCamel(std::u16string_view camelName) const noexcept override;
    int FindShort(std::u16string_view shortName) const noexcept override;

    std::span<const qvpreslayer::detail::DirectRecord> GetRecords(
        qvpreslayer::detail::NameForm form) const noexcept override;

    // Makes the records of the short way, when all parameters are there.
    void MakeDirectRecords();

    // The identifiers that have both names, in the order in which they were added.
    std::vector<ParameterRegistryinfo> Rows() const;

    // All records, in the order in which their identifiers were first added.
    std::vector<const ParameterInfo*> Records() const;

private:
    using NameTable = boost::unordered_flat_map<TString, int, NameHash, NameEqual>;

    void CheckRange(int pid) const;
    bool IsFoundByItsNames(const ParameterInfo& record) const noexcept;
    qvpreslayer::detail::DirectRecord MakeDirectRecord(const ParameterInfo& record,
                                                       qvpreslayer::detail::NameForm form) const noexcept;
    ParameterInfo& Record(int pid, const TString& verboseName, const TString& shortName, ParameterTypeCategory kind);

    std::deque<ParameterInfo> m_records;   // in order of adding
    IdTable<ParameterInfo> m_recordsById;  // into m_records
    // By form; with the one behind the last; empty until made.
    std::vector<qvpreslayer::detail::DirectRecord> m_directRecords[qvpreslayer::detail::kNameForms];
    NameTable m_idsByVerboseName;
    NameTable m_idsByShortName;
    NameTable m_idsByCamelName;  // only names that the camel-case form leads back to
    int m_firstRecordId = 0;     // of m_directRecords
    std::size_t m_gapless = 0;   // so many records follow each other without a gap: all of them, or 0
    int m_firstId;
    int m_lastId;
};
