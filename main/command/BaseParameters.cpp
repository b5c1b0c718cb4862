#include <qvpreslayer/BaseParameters.h>

#include <algorithm>
#include <utility>

#include <qvpreslayer/CommandExceptions.h>

#include "main/command/ReleaseQueue.h"

namespace {

using qvpreslayer::detail::ParameterTable;

// The one rule of both tables: null erases, anything else inserts or replaces.
void Store(ParameterTable& table, int id, RefCntPtr<IParameter> value) {
    if (value) {
        table.Set(id, std::move(value));
    } else {
        table.Erase(id);
    }
}

void StoreAll(const ParameterTable& from, ParameterTable& to) {
    from.ForEach([&to](int id, const RefCntPtr<IParameter>& value) { to.Set(id, value); });
}

// The entries of both, where those of from win.
ParameterTable Merged(const ParameterTable& from, const ParameterTable& into) {
    ParameterTable merged;
    merged.Reserve(std::max(from.Array().size(), into.Array().size()));
    StoreAll(into, merged);
    StoreAll(from, merged);
    return merged;
}

}  // namespace

IParameters::~IParameters() = default;

bool IParameters::IsTestParameters() const { return false; }

BaseParameters::BaseParameters() = default;

BaseParameters::~BaseParameters() { ReleaseQueue::Release(m_parameters, m_cacheParameters); }

void BaseParameters::SetParameter(int id, RefCntPtr<IParameter> value) { Store(m_parameters, id, std::move(value)); }

const IParameter& BaseParameters::GetParameter(int id) const { return Get(m_parameters, id); }

void BaseParameters::SetCacheParameter(int id, RefCntPtr<IParameter> value) const {
    Store(m_cacheParameters, id, std::move(value));
}

void BaseParameters::RemoveParameter(int id) {
    if (!m_parameters.Erase(id)) {
        ThrowMissing(id);
    }
}

void BaseParameters::RemoveOptionalParameter(int id) { m_parameters.Erase(id); }

void BaseParameters::Accept(IParameterVisitor& visitor) const {
    m_parameters.ForEach([&visitor](int id, const RefCntPtr<IParameter>& value) { visitor.VisitParameter(id, value); });
}

void BaseParameters::ThrowMissing(int id) { throw MissingParameterCommandException(id); }

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
    // Beside the target, so that without memory it stays as it was. What it held goes when it holds all the rest.
    ParameterTable parameters = Merged(source.m_parameters, target.m_parameters);
    ParameterTable cacheParameters = Merged(source.m_cacheParameters, target.m_cacheParameters);
    target.m_parameters.Swap(parameters);
    target.m_cacheParameters.Swap(cacheParameters);
}
