#include <qvpreslayer/ParametersRegistry.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <new>

#include <cxxabi.h>

#include <boost/unordered/unordered_flat_set.hpp>

#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/RegistryExceptions.h>

#include "main/command/IdSegments.h"
#include "main/command/ParametersNamespace.h"
#include "main/command/PublishedInfos.h"
#include "main/command/SourceModule.h"

namespace {

// Published before other threads look, as all of registration is; atomic so that reading it is never a race.
std::atomic<ParametersRegistry*> gm_registryInstance{nullptr};

std::uint64_t NewGeneration() noexcept {
    static std::atomic<std::uint64_t> s_last{0};
    return s_last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

struct ParametersRegistry::Impl {
    Impl(PublishedInfos::Place& place, State& ownState) noexcept : infos(place), state(ownState) {}

    std::map<TString, RefCntPtr<ParametersNamespace>> namespaces;
    boost::unordered_flat_set<int> unserializable;
    std::map<TString, TString> fallbacks;  // from a namespace to the one that is asked next
    IdSegments segments;                   // follows from namespaces
    PublishedInfos infos;                  // of the filled namespaces that are marked as published
    std::mutex publishing;                 // held while infos grows
    State& state;                          // the registry's own

    // The namespace of that name; ParameterNamespaceNotFoundException when there is none.
    ParametersNamespace& ByName(const TString& name) const {
        const auto found = namespaces.find(name);
        if (found == namespaces.end()) {
            throw ParameterNamespaceNotFoundException(name);
        }
        return *found->second;
    }

    // The record of id in its namespace, or null. The next time it is found among infos.
    const ParameterInfo* FindIn(ParametersNamespace& owner, int id) {
        const ParameterInfo* const record = owner.Filled().Find(id);
        if (!owner.IsPublished()) [[unlikely]] {
            Publish(owner);
        }
        return record;
    }

    // Makes the records of a namespace found among infos. What cannot be done now, because the namespace is just being
    // filled, another thread is at it or there is no memory, is left to a later lookup: that costs time only.
    void Publish(ParametersNamespace& space) noexcept {
        const EagerParametersNamespace* const tables = space.FindFilled();
        const std::unique_lock<std::mutex> lock(publishing, std::try_to_lock);
        if (tables == nullptr || !lock.owns_lock() || space.IsPublished()) {
            return;
        }
        try {
            std::vector<const ParameterInfo*> records = tables->Records();
            std::erase_if(records, [&](const ParameterInfo* record) { return segments.Find(record->id) != &space; });
            infos.Add(records);
            space.MarkPublished(true);
        } catch (const std::bad_alloc&) {
        }
    }

    // For when a record belongs to its identifier no longer.
    void Unpublish() noexcept {
        infos.Clear();
        for (const auto& [name, space] : namespaces) {
            space->MarkPublished(false);
        }
    }

    // The record of id, or null; ParameterNotFoundException when no namespace covers it.
    const ParameterInfo* Covered(int id) {
        const ParameterInfo* const record = infos.Find(id);
        if (record != nullptr) {
            return record;
        }
        ParametersNamespace* const owner = segments.Find(id);
        if (owner == nullptr) {
            throw ParameterNotFoundException(id);
        }
        return FindIn(*owner, id);
    }

    // The record of id, of that kind; ParameterNotFoundException for any other.
    const ParameterInfo& Record(int id, ParameterTypeCategory kind) {
        const ParameterInfo* record = Covered(id);
        if (record == nullptr || record->kind != kind) {
            throw ParameterNotFoundException(id);
        }
        return *record;
    }

    void Insert(const TString& name, RefCntPtr<ParametersNamespace> added) {
        const int first = added->FirstID();
        const int last = added->LastID();
        ParametersNamespace* owner = added.Get();
        if (!segments.Overlaps(first, last)) {
            segments.ReserveOne();
            namespaces.emplace(name, std::move(added));
            state.generation = NewGeneration();
            segments.AddUncovered(first, last, owner);
            return;
        }
        const auto place = namespaces.emplace(name, std::move(added)).first;
        try {
            SegmentsWithout(nullptr).Swap(segments);
            Unpublish();
            state.overlaps = true;
            state.generation = NewGeneration();
        } catch (...) {
            namespaces.erase(place);
            throw;
        }
    }

    // The segments of all namespaces but one.
    IdSegments SegmentsWithout(const ParametersNamespace* removed) const {
        IdSegments result;
        for (const auto& [name, space] : namespaces) {
            if (space.Get() != removed) {
                result.AddUncovered(space->FirstID(), space->LastID(), space.Get());
            }
        }
        return result;
    }
};

ParametersRegistry::ParametersRegistry()
    : m_state{.generation = NewGeneration()}, m_impl(std::make_unique<Impl>(m_infos, m_state)) {}

ParametersRegistry::~ParametersRegistry() = default;

void ParametersRegistry::SetInstance(ParametersRegistry* registry) {
    gm_registryInstance.store(registry, std::memory_order_release);
}

ParametersRegistry* ParametersRegistry::GetInstance() noexcept {
    return gm_registryInstance.load(std::memory_order_acquire);
}

ParametersRegistry& ParametersRegistry::Get() {
    ParametersRegistry* const gm_RegistryInstance = GetInstance();
    QV_ASSERT(gm_RegistryInstance != nullptr, kSourceModule);
    return *gm_RegistryInstance;
}

void ParametersRegistry::RegisterNamespace(const TString& name, RegistrationFunction fill, int firstId, int lastId,
                                           bool eager) {
    if (HasNamespace(name)) {
        throw ParameterNamespaceAlreadyExistsException(name);
    }
    auto added = MakeRefCnt<ParametersNamespace>(std::move(fill), firstId, lastId);
    if (eager) {
        added->Filled();
    }
    // The eager function may have registered the name itself.
    if (HasNamespace(name)) {
        throw ParameterNamespaceAlreadyExistsException(name);
    }
    m_impl->Insert(name, std::move(added));
}

void ParametersRegistry::RegisterNamespacePart(const TString& name, RegistrationFunction fill, int firstId,
                                               int lastId) {
    const auto found = m_impl->namespaces.find(name);
    if (found == m_impl->namespaces.end()) {
        RegisterNamespace(name, std::move(fill), firstId, lastId, false);
    } else {
        found->second->AddPart(std::move(fill), firstId, lastId);
        m_state.generation = NewGeneration();
    }
}

void ParametersRegistry::SetFallback(const TString& name, const TString& fallback) {
    m_impl->ByName(name);
    m_impl->ByName(fallback);
    auto& fallbacks = m_impl->fallbacks;
    if (fallbacks.contains(name)) {
        throw ParameterNamespaceAlreadyHasFallbackException(name);
    }
    for (const TString* current = &fallback; current != nullptr;) {
        if (*current == name) {
            throw CyclicFallbacksException(name);
        }
        const auto next = fallbacks.find(*current);
        current = next == fallbacks.end() ? nullptr : &next->second;
    }
    fallbacks.emplace(name, fallback);
    m_state.generation = NewGeneration();
}

void ParametersRegistry::AddUnserializable(int id) {
    m_impl->unserializable.insert(id);
    m_state.unserializable = true;
    m_state.generation = NewGeneration();
}

bool ParametersRegistry::IsUnserializable(int id) const {
    return !m_impl->unserializable.empty() && m_impl->unserializable.contains(id);
}

void ParametersRegistry::Clear(const TString& name) {
    // All that may fail comes first.
    ParametersNamespace& space = m_impl->ByName(name);
    const std::vector<ParameterRegistryinfo> rows = space.Filled().Rows();
    const TString removed = name;  // the caller's text may be the registry's own
    IdSegments segments = m_impl->SegmentsWithout(&space);

    for (const ParameterRegistryinfo& row : rows) {
        m_impl->unserializable.erase(row.id);
    }
    m_state.unserializable = !m_impl->unserializable.empty();
    std::erase_if(m_impl->fallbacks, [&](const auto& link) { return link.first == removed || link.second == removed; });
    m_impl->Unpublish();
    segments.Swap(m_impl->segments);
    m_impl->namespaces.erase(removed);
    m_state.generation = NewGeneration();
}

void ParametersRegistry::Clear() {
    m_state.generation = NewGeneration();
    m_impl->infos.Clear();
    m_impl->segments.Clear();
    m_impl->namespaces.clear();
    m_state.overlaps = false;
    m_impl->unserializable.clear();
    m_state.unserializable = false;
    m_impl->fallbacks.clear();
}

bool ParametersRegistry::HasNamespace(const TString& name) const { return m_impl->namespaces.contains(name); }

int ParametersRegistry::GetID(const TString& namespaceName, const TString& name, bool verbose) const {
    const TString* current = &namespaceName;
    while (true) {
        const EagerParametersNamespace& tables = m_impl->ByName(*current).Filled();
        const int id = tables.FindID(name, verbose || PresModelBuilderSupport::UseVerboseNames());
        if (id != 0) {
            return id;
        }
        const auto next = m_impl->fallbacks.find(*current);
        if (next == m_impl->fallbacks.end()) {
            throw ParameterNotFoundException(name);
        }
        current = &next->second;
    }
}

const TString& ParametersRegistry::GetName(int id, bool verbose) const {
    const ParameterInfo* record = m_impl->Covered(id);
    if (record != nullptr) {
        const TString& name = verbose ? record->verboseName : record->shortName;
        if (!name.empty()) {
            return name;
        }
    }
    throw ParameterNotFoundException(id);
}

ParameterTypeCategory ParametersRegistry::GetType(int id) const {
    const ParameterInfo* record = m_impl->Covered(id);
    if (record == nullptr || record->kind == PTC_None) {
        throw ParameterNotFoundException(id);
    }
    return record->kind;
}

IParameterSerializer* ParametersRegistry::GetListSerializer(int id) const {
    return m_impl->Record(id, PTC_List).serializer.Get();
}

IParameterSerializer* ParametersRegistry::GetMapSerializer(int id) const {
    return m_impl->Record(id, PTC_Map).serializer.Get();
}

IStructureSerializer* ParametersRegistry::GetStructureSerializer(int id) const {
    return m_impl->Record(id, PTC_Structure).structureSerializer.Get();
}

IStructureSerializer* ParametersRegistry::GetStructureListSerializer(int id) const {
    return m_impl->Record(id, PTC_StructureList).structureSerializer.Get();
}

IStructureSerializer* ParametersRegistry::GetStructureMapSerializer(int id) const {
    return m_impl->Record(id, PTC_StructureMap).structureSerializer.Get();
}

IParameterSerializer* ParametersRegistry::GetValueSerializer(int id) const {
    const ParameterInfo* record = m_impl->Covered(id);
    return record == nullptr ? nullptr : record->serializer.Get();
}

TString ParametersRegistry::GetValueString(RefCntPtr<const IParameter> value, int id) const {
    IParameterSerializer* serializer = GetValueSerializer(id);
    if (serializer == nullptr) {
        throw ParameterNotFoundException(id);
    }
    return serializer->ToString(std::move(value));
}

void ParametersRegistry::FromString(const TString& namespaceName, RefCntPtr<IParameters> params, const TString& name,
                                    const TString& valueText, bool verbose) const {
    SetFromString(GetID(namespaceName, name, verbose), params, valueText);
}

void ParametersRegistry::SetFromString(int id, const RefCntPtr<IParameters>& params, const TString& valueText) const {
    try {
        const RefCntPtr<IParameterSerializer> serializer(GetValueSerializer(id));
        params->SetParameter(id, serializer->FromString(valueText));
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        throw ParameterParseException(id);
    }
}

const ParameterInfo* ParametersRegistry::FindUnpublished(int id) const {
    ParametersNamespace* owner = m_impl->segments.Find(id);
    return owner == nullptr ? nullptr : m_impl->FindIn(*owner, id);
}

const TString* ParametersRegistry::FindFallback(const TString& namespaceName) const noexcept {
    const auto link = m_impl->fallbacks.find(namespaceName);
    return link == m_impl->fallbacks.end() ? nullptr : &link->second;
}

const qvpreslayer::detail::INameIndex* ParametersRegistry::FindNames(const TString& namespaceName, bool fill) const {
    const auto found = m_impl->namespaces.find(namespaceName);
    if (found == m_impl->namespaces.end()) {
        return nullptr;
    }
    return fill ? &found->second->Filled() : found->second->FindFilled();
}

std::vector<std::pair<TString, std::vector<ParameterRegistryinfo>>> ParametersRegistry::GetNamespaceInfos() const {
    std::vector<std::pair<TString, std::vector<ParameterRegistryinfo>>> infos;
    infos.reserve(m_impl->namespaces.size());
    for (const auto& [name, space] : m_impl->namespaces) {
        infos.emplace_back(name, space->Filled().Rows());
    }
    return infos;
}

std::vector<ParameterNamespaceInfo> ParametersRegistry::DescribeNamespaces() const {
    std::vector<ParameterNamespaceInfo> infos;
    infos.reserve(m_impl->namespaces.size());
    for (const auto& [name, space] : m_impl->namespaces) {
        const auto fallback = m_impl->fallbacks.find(name);
        infos.push_back({name, space->FirstID(), space->LastID(),
                         fallback == m_impl->fallbacks.end() ? TString() : fallback->second,
                         space->Filled().Records()});
    }
    return infos;
}

std::vector<int> ParametersRegistry::GetUnserializable() const {
    std::vector<int> ids(m_impl->unserializable.begin(), m_impl->unserializable.end());
    std::sort(ids.begin(), ids.end());
    return ids;
}
