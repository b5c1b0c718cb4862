#include <qvpreslayer/BaseParameters.h>

#include <utility>

#include <qvpreslayer/CommandExceptions.h>

#include "main/command/ReleaseQueue.h"

namespace {

using ParameterMap = std::map<int, RefCntPtr<IParameter>>;

// The one rule of both maps: null erases, anything else inserts or replaces.
void Store(ParameterMap& map, int id, RefCntPtr<IParameter> value) {
    if (value) {
        map.insert_or_assign(id, std::move(value));
    } else {
        map.erase(id);
    }
}

IParameter& Get(const ParameterMap& map, int id) {
    const auto entry = map.find(id);
    if (entry == map.end()) {
        throw MissingParameterCommandException(id);
    }
    return *entry->second;
}

void StoreAll(const ParameterMap& from, ParameterMap& to) {
    for (const auto& [id, value] : from) {
        Store(to, id, value);
    }
}

void Defer(ParameterMap& map) noexcept {
    for (auto& entry : map) {
        ReleaseQueue::Defer(entry.second);
    }
}

}  // namespace

IParameters::~IParameters() = default;

bool IParameters::IsTestParameters() const { return false; }

BaseParameters::BaseParameters() = default;

BaseParameters::~BaseParameters() {
    const ReleaseQueue level;
    if (level.IsTooDeep()) {
        Defer(m_parameters);
        Defer(m_cacheParameters);
    }
    m_parameters.clear();
    m_cacheParameters.clear();
}

void BaseParameters::SetParameter(int id, RefCntPtr<IParameter> value) { Store(m_parameters, id, std::move(value)); }

IParameter& BaseParameters::GetParameter(int id) { return Get(m_parameters, id); }

const IParameter& BaseParameters::GetParameter(int id) const { return Get(m_parameters, id); }

bool BaseParameters::HasParameter(int id) const { return m_parameters.contains(id); }

void BaseParameters::SetCacheParameter(int id, RefCntPtr<IParameter> value) const {
    Store(m_cacheParameters, id, std::move(value));
}

const IParameter& BaseParameters::GetCacheParameter(int id) const { return Get(m_cacheParameters, id); }

bool BaseParameters::HasCacheParameter(int id) const { return m_cacheParameters.contains(id); }

void BaseParameters::RemoveParameter(int id) {
    if (m_parameters.erase(id) == 0) {
        throw MissingParameterCommandException(id);
    }
}

void BaseParameters::RemoveOptionalParameter(int id) { m_parameters.erase(id); }

void BaseParameters::Accept(IParameterVisitor& visitor) const {
    for (const auto& [id, value] : m_parameters) {
        visitor.VisitParameter(id, value);
    }
}

RefCntPtr<BaseParameters> BaseParameters::EmptyClone() const {
    // Making an empty bag of the same class changes nothing here; the operation that classes override is not const.
    return const_cast<BaseParameters*>(this)->DoEmptyClone();
}

RefCntPtr<BaseParameters> BaseParameters::Clone() const {
    RefCntPtr<BaseParameters> clone = EmptyClone();
    Copy(RefCntPtr<const BaseParameters>(this), clone);
    return clone;
}

void BaseParameters::Copy(RefCntPtr<const BaseParameters> from, RefCntPtr<BaseParameters> to) {
    const BaseParameters& source = *from;
    BaseParameters& target = *to;
    if (&source == &target) {
        return;
    }
    StoreAll(source.m_parameters, target.m_parameters);
    StoreAll(source.m_cacheParameters, target.m_cacheParameters);
}
