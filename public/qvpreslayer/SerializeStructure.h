// The stream through which structured values are written.
//
// Exceptions: basic: what was told stays told. An identifier that is not found is reported before the visitor is told
// anything.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/IStructuredParameterVisitor.h>
#include <qvpreslayer/ParameterTypeCategory.h>

class ParametersRegistry;

// Turns identifiers into names and kinds and tells the visitor. It keeps no nesting: that ends match starts is the
// writer's business, best left to the scope objects of StructureScopes.h.
//
// Unknown identifiers raise ParameterNotFoundException(id); what the visitor throws passes unchanged.
//
// Threads: a stream belongs to one writer on one thread.
class QVPRESLAYER_API SerializeStructure {
public:
    // Takes the registry from ParametersRegistry::Get(). useVerboseNames selects the names that the visitor is told;
    // compressArrays makes list writers pack runs. Requires: visitor outlives the stream, the stream every scope on it.
    SerializeStructure(IStructuredParameterVisitor& visitor, bool useVerboseNames, bool compressArrays);

    // One single value, under the kind that is registered for id.
    void Parameter(int id, const TString& value);

    // A list. The element kind that the visitor is told is category for a registered list, where PTC_None stands for
    // that of its serializer (LogicException "m_ptr" when it has none), and the registered kind for all others.
    void StartList(int id, ParameterTypeCategory category);
    void ListItem(const TString& value);
    void EndList(int id);

    // A map. The value kind is that of the serializer for a registered map ("m_ptr" when it has none), and the
    // registered kind for all others.
    void StartMap(int id);
    void MapItem(const TString& key, const TString& value, bool rawKey);
    void NullMapItem(const TString& key, bool rawKey);
    void EndMap(int id);

    // A nested structure of members.
    void StartComposite(int id);
    void EndComposite(int id);

    // An entry of a structure map; the key is told as it is.
    void StartMapItem(const TString& key);
    void EndMapItem(const TString& key);

    // The structure serializer of id, empty when it was registered with none; ParameterNotFoundException(id) when id is
    // of another kind.
    RefCntPtr<IStructureSerializer> GetStructureSerializer(int id) const;

    IStructuredParameterVisitor& GetVisitor() const noexcept { return m_visitor; }
    bool GetUseVerboseNames() const noexcept { return m_useVerboseNames; }
    bool GetCompressArrays() const noexcept { return m_compressArrays; }

private:
    IStructuredParameterVisitor& m_visitor;
    ParametersRegistry& m_registry;
    bool m_useVerboseNames;
    bool m_compressArrays;
};
