#include "main/json/BagFilling.h"

#include <map>
#include <utility>

#include <cxxabi.h>

#include <qvcore/Messages.h>

#include <qvpreslayer/RegistryExceptions.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/LenientReads.h>

#include "main/json/direct/DirectReading.h"
#include "main/json/StructureFillings.h"

using qvpreslayer::detail::CountLenientReads;
using qvpreslayer::detail::LenientRead;

BagFilling::BagFilling(const JSONReader& reader, RefCntPtr<IParameters> bag, JSONDocument::Index object)
    : m_bag(std::move(bag)), m_members(reader.Members(object, 0)) {}

bool BagFilling::Step(JSONReader& reader) {
    if (m_nested) {
        FinishNested();
    }
    if (m_next == m_members.size()) {
        return false;
    }
    const JSONMember& member = m_members[m_next++];
    FindParameter(reader, member.name);
    if (reader.IsWatched() && reader.Document()[member.value].kind != JSONKind::Null) {
        ReportOverridden(reader);
    }
    Apply(reader, member.value);
    return true;
}

void BagFilling::FindParameter(JSONReader& reader, std::u16string_view name) {
    m_info = reader.FindDirectly(name);
    if (m_info != nullptr && m_info->kind != PTC_None) {
        m_id = m_info->id;
        m_kind = m_info->kind;
        return;
    }
    m_info = nullptr;
    m_atName = true;
    m_id = reader.FindID(reader.RegisteredName(name));
    m_kind = reader.Registry().GetType(m_id);
    m_atName = false;
}

JSONDocument::Index BagFilling::Current() const {
    if (m_next == 0) {
        return 0;
    }
    return m_members[m_next - 1].value - (m_atName ? 1 : 0);
}

void BagFilling::AppendStep(TString& path, const JSONDocument&) const {
    if (m_next != 0) {
        AppendPath(path, m_members[m_next - 1].name);
    }
}

void BagFilling::Apply(JSONReader& reader, JSONDocument::Index value) {
    switch (reader.Document()[value].kind) {
        case JSONKind::Null:
            if (reader.IsWatched()) {
                reader.Report(Leniency::NullMember, m_id, value);
            }
            return;
        case JSONKind::Array:
            return ApplyArray(reader, value);
        case JSONKind::Object:
            return ApplyObject(reader, value);
        default:
            return ApplyScalar(reader, value);
    }
}

void BagFilling::ApplyScalar(JSONReader& reader, JSONDocument::Index value) {
    if (m_kind != PTC_Text && m_kind != PTC_Number && m_kind != PTC_Bool) {
        ThrowMismatch(reader, reader.Document()[value].kind);
    }
    if (reader.IsWatched()) {
        reader.ReportScalar(KnownParameter(reader), value);
    } else if (m_info != nullptr) {
        if (RefCntPtr<IParameter> typed = ReadScalarDirectly(*m_info, reader.Document(), value)) {
            StoreScalar(std::move(typed));
            return;
        }
    }
    reader.Registry().SetFromString(m_id, m_bag, reader.ScalarText(value));
}

// A failure while storing is a failure of the scalar, as in ParametersRegistry::SetFromString.
void BagFilling::StoreScalar(RefCntPtr<IParameter> value) {
    try {
        m_bag->SetParameter(m_id, std::move(value));
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        throw ParameterParseException(m_id);
    }
}

void BagFilling::ApplyArray(JSONReader& reader, JSONDocument::Index value) {
    switch (m_kind) {
        case PTC_List:
            return ReadList(reader, value);
        case PTC_Structure:
            return ReadListForm(reader, value);
        case PTC_StructureList:
            return reader.Push(std::make_unique<StructureListFilling>(reader, m_bag, m_id, value));
        default:
            ThrowMismatch(reader, JSONKind::Array);
    }
}

void BagFilling::ApplyObject(JSONReader& reader, JSONDocument::Index value) {
    switch (m_kind) {
        case PTC_Bag:
        case PTC_Structure:
            return StartNested(reader, value);
        case PTC_Map:
            return ReadMap(reader, value);
        case PTC_StructureMap:
            return reader.Push(std::make_unique<StructureMapFilling>(reader, m_bag, m_id, value));
        default:
            ThrowMismatch(reader, JSONKind::Object);
    }
}

// A nested array is a run record under its position among all elements; how runs and elements come together is the
// serializer's business.
void BagFilling::ReadList(JSONReader& reader, JSONDocument::Index array) {
    const JSONDocument& document = reader.Document();
    if (reader.IsWatched()) {
        ReportElements(reader, array);
    } else if (m_info != nullptr) {
        if (RefCntPtr<IParameter> typed = ReadListDirectly(*m_info, document, array)) {
            m_bag->SetParameter(m_id, std::move(typed));
            return;
        }
    }
    std::vector<TString> values;
    std::vector<RunRecord> runs;
    values.reserve(document.Next(array) - array - 1);
    int position = 0;
    for (auto element = array + 1; element != document.Next(array); element = document.Next(element), ++position) {
        if (document[element].kind == JSONKind::Array) {
            runs.emplace_back(position, reader.ScalarTexts(element));
        } else {
            values.push_back(reader.ScalarText(element));
        }
    }
    const RefCntPtr<IParameterSerializer> serializer(reader.Registry().GetListSerializer(m_id));
    const std::uint64_t skippedBefore = CountLenientReads(LenientRead::SkippedRuns);
    m_bag->SetParameter(m_id, serializer->FromStringList(values, runs));
    if (reader.IsWatched()) {
        ReportRuns(reader, array, CountLenientReads(LenientRead::SkippedRuns) != skippedBefore);
    }
}

const ParameterInfo& BagFilling::KnownParameter(const JSONReader& reader) const {
    const ParameterInfo* const info = m_info != nullptr ? m_info : reader.FindInfo(m_id);
    static const ParameterInfo s_unknown;
    return info != nullptr ? *info : s_unknown;
}

void BagFilling::ReportElements(const JSONReader& reader, JSONDocument::Index array) const {
    const JSONDocument& document = reader.Document();
    const ParameterInfo& info = KnownParameter(reader);
    std::size_t position = 0;
    for (auto element = array + 1; element != document.Next(array); element = document.Next(element), ++position) {
        if (document[element].kind != JSONKind::Array) {
            TString step;
            AppendPath(step, position);
            reader.ReportScalar(info, element, step);
        }
    }
}

// A nested list of two or three items is a run, one without items marks the end of a packed list.
void BagFilling::ReportRuns(const JSONReader& reader, JSONDocument::Index array, bool allSkipped) const {
    const JSONDocument& document = reader.Document();
    std::size_t position = 0;
    for (auto element = array + 1; element != document.Next(array); element = document.Next(element), ++position) {
        if (document[element].kind != JSONKind::Array) {
            continue;
        }
        TString step;
        AppendPath(step, position);
        const std::size_t items = reader.CountElements(element);
        if (allSkipped || items == 1 || items > 3) {
            reader.Report(Leniency::SkippedRun, m_id, element, step);
        } else {
            reader.ReportTexts(m_id, element, step);
        }
    }
}

// The member that was applied before under another spelling of the same name gives way to this one.
void BagFilling::ReportOverridden(const JSONReader& reader) {
    const auto [applied, isFirst] = m_applied.try_emplace(m_id, m_next);
    if (!isFirst) {
        const std::size_t current = std::exchange(m_next, std::exchange(applied->second, m_next));  // for its path
        reader.Report(Leniency::DuplicateMember, m_id, m_members[m_next - 1].value - 1);
        m_next = current;
    }
}

// Keys stand as they are: no case conversion.
void BagFilling::ReadMap(JSONReader& reader, JSONDocument::Index object) {
    std::map<TString, TString> texts;
    for (const JSONMember& entry : reader.Members(object, m_id)) {
        if (reader.IsWatched()) {
            TString step;
            AppendPath(step, entry.name);
            reader.ReportScalar(KnownParameter(reader), entry.value, step);
        }
        texts.emplace_hint(texts.end(), entry.name, reader.ScalarText(entry.value));
    }
    const RefCntPtr<IParameterSerializer> serializer(reader.Registry().GetMapSerializer(m_id));
    m_bag->SetParameter(m_id, serializer->FromStringMap(texts));
}

void BagFilling::ReadListForm(JSONReader& reader, JSONDocument::Index array) {
    const RefCntPtr<IStructureSerializer> serializer(reader.Registry().GetStructureSerializer(m_id));
    if (!serializer->IsListForm()) {
        if (reader.IsWatched()) {
            reader.Report(Leniency::IgnoredValue, m_id, array);
        }
        return;
    }
    const RefCntPtr<IParameters> texts = MakeListFormBag(reader, m_id, array);
    reader.PrepareElement(m_id, texts);
    m_bag->SetParameter(m_id, serializer->FromParameters(m_id, texts));
}

// The nested bag stands in its place while it is being filled, so that a recorded structure finds it there.
void BagFilling::StartNested(JSONReader& reader, JSONDocument::Index object) {
    m_nested = reader.NewBag();
    m_bag->SetParameter(m_id, MakeRefCnt<BagParameter>(m_nested));
    if (m_kind == PTC_Structure) {
        m_serializer = RefCntPtr<IStructureSerializer>(reader.Registry().GetStructureSerializer(m_id));
        reader.Record(m_serializer, m_bag);
    }
    reader.Push(std::make_unique<BagFilling>(reader, m_nested, object));
}

void BagFilling::FinishNested() {
    const RefCntPtr<IParameters> nested = std::exchange(m_nested, nullptr);
    const RefCntPtr<IStructureSerializer> serializer = std::exchange(m_serializer, nullptr);
    if (m_kind == PTC_Bag) {
        m_bag->SetParameter(m_id, MakeRefCnt<BagParameter>(nested));
    } else if (serializer) {
        const RefCntPtr<IParameter> structure = serializer->FromParameters(m_id, nested);
        m_bag->SetParameter(m_id, nullptr);
        m_bag->SetParameter(m_id, structure);
    }
}

void BagFilling::ThrowMismatch(const JSONReader& reader, JSONKind found) const {
    JSONParseException failure(Messages::kJSONKindMismatch, reader.RegisteredName(m_members[m_next - 1].name));
    failure.SetMismatch(m_id, m_kind, found);
    throw failure;
}
