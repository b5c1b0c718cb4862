// The walk of a bag: from values to events.
//
// Exceptions: basic: events told before a failure stay told, composites of records and lists of serializers are told
// closed, bags, maps and structure lists are not. Making a walker is strong.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/IStructuredParameterVisitor.h>

class ParametersRegistry;
struct ParameterInfo;

namespace qvpreslayer::detail {
class DeepWalk;
class IDirectVisitor;
}  // namespace qvpreslayer::detail

// Walks bag, upwards by identifier, and tells visitor everything that it holds, nested bags included. No event wraps
// the top level; name is not looked at. Identifiers marked unserializable are passed over; cache entries never show.
//
// Throws ParameterNotFoundException(id) for an identifier that is not registered or has no name of the form in force,
// TypeMismatchCommandException(id) for a bag parameter that holds none, LogicException "m_ptr" for a null bag,
// "gm_RegistryInstance != nullptr" without a registry, QuorvelException for bags nested deeper than
// PresLayerLimits::GetBagDepth(), and whatever serializers and the visitor throw. Events told before stay told.
//
// Bags in bags, and the records of BagStructureSerializer, cost no stack however deep they are. Structure serializers
// of the host that walk bags of their own do: from the 17th level on, one that starts with less than
// PresLayerLimits::GetStackReserve() of the thread's stack left is one level too many.
//
// Threads: the bag is only read; the visitor belongs to the caller.
QVPRESLAYER_API void VisitParametersStructure(const TString& name, RefCntPtr<const IParameters> bag,
                                              IStructuredParameterVisitor& visitor);

// The walker of one bag, for hosts that walk with options of their own. Nested bags are walked by walkers that take
// both options from PresModelBuilderSupport.
class QVPRESLAYER_API VisitStructuredParameters final : public IParameterVisitor {
public:
    // Takes both options from PresModelBuilderSupport. Requires: the registry and the visitor outlive the walker.
    VisitStructuredParameters(const ParametersRegistry& registry, RefCntPtr<const IParameters> bag,
                              IStructuredParameterVisitor& visitor);
    VisitStructuredParameters(const ParametersRegistry& registry, RefCntPtr<const IParameters> bag,
                              IStructuredParameterVisitor& visitor, bool useVerboseNames, bool compressArrays);
    ~VisitStructuredParameters();

    // Walks the bag; LogicException "m_ptr" when it is null.
    void Walk();

    // Tells the visitor one parameter; called by the bag's Accept.
    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override;

private:
    friend class qvpreslayer::detail::DeepWalk;

    bool VisitDirectly(const ParameterInfo& info, const RefCntPtr<IParameter>& value);
    void VisitList(int id, const RefCntPtr<IParameter>& value);
    void VisitMap(int id, const TString& name, const RefCntPtr<IParameter>& value);
    void VisitBag(int id, const TString& name);
    void VisitStructure(int id, const RefCntPtr<IParameter>& value);
    void VisitStructureList(int id, const TString& name, const RefCntPtr<IParameter>& value);
    void VisitStructureMap(int id, const TString& name, const RefCntPtr<IParameter>& value);

    const ParametersRegistry* m_registry;
    RefCntPtr<const IParameters> m_bag;
    IStructuredParameterVisitor& m_visitor;
    qvpreslayer::detail::IDirectVisitor* m_directVisitor;  // the same visitor, where it takes values as they are
    bool m_useVerboseNames;
    bool m_compressArrays;
    qvpreslayer::detail::DeepWalk* m_deepWalk = nullptr;  // the walk that this is a level of, when there is one
};
