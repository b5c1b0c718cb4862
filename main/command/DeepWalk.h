// The deep levels of a walk. Included by VisitParametersStructure.cpp.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/VisitParametersStructure.h>

namespace qvpreslayer::detail {

// Walks bags in bags with a list of the open levels in place of calls inside calls, so that depth costs no stack: the
// events, their order and what happens when one fails are those of the calls. Plain records are entered here too; other
// structures are written by their serializers, which come back with walks of their own.
class DeepWalk {
public:
    using Value = RefCntPtr<const IParameter>;

    DeepWalk();
    DeepWalk(const DeepWalk&) = delete;
    DeepWalk& operator=(const DeepWalk&) = delete;
    ~DeepWalk();  // closes what scope objects would close while an exception passes, innermost first

    // Walks the bag of walker, whose level is counted already.
    void Run(const VisitStructuredParameters& walker);

    // Each enters a level inside the one that is being told, and leaves its events to Run. What stands for it in the
    // text has been started. Requires: name is the registry's own.
    void EnterBag(const VisitStructuredParameters& inner, const TString& name);
    void EnterList(const VisitStructuredParameters& walker, int id, const TString& name,
                   RefCntPtr<IStructureSerializer> serializer, std::vector<Value> elements);
    void EnterMap(const VisitStructuredParameters& walker, int id, const TString& name,
                  RefCntPtr<IStructureSerializer> serializer, std::map<TString, Value> elements);

    // Enters a structure with braces of its own: a plain record, which is started, or what its serializer writes.
    void WriteStructure(const VisitStructuredParameters& walker, int id,
                        const RefCntPtr<IStructureSerializer>& serializer, const Value& value);

private:
    class Step;
    class BagStep;
    class HostStep;
    class ElementsStep;
    class ListStep;
    class MapStep;

    static SerializeStructure StreamOf(const VisitStructuredParameters& walker);
    static VisitStructuredParameters MembersOf(const Value& record, const VisitStructuredParameters& walker);
    [[gnu::noinline]] void Start(const VisitStructuredParameters& walker);
    [[gnu::noinline]] void EndInnermost();
    void ReserveStep();
    void Enter(std::unique_ptr<Step> step);

    std::vector<std::unique_ptr<Step>> m_steps;  // outermost first
};

}  // namespace qvpreslayer::detail
