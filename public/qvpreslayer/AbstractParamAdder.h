// What a registration function declares its parameters on.
//
// Exceptions: basic: an entry that cannot be made is recorded in part or not at all, and the serializer that was handed
// over is freed. What leaves a registration function ends the filling of its namespace, and the next lookup runs all
// functions again.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameterSerializer.h>
#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/ParameterTypeCategory.h>

// One call for each parameter: its identifier, its verbose and its short name (one name alone serves as both) and its
// serializer. Names are null-terminated, a null pointer counts as empty; a parameter with an empty short name has none.
// A serializer handed over is kept alive by the namespace, so that a new one can be passed directly; null is allowed.
//
// Order decides: adding an identifier again replaces its names, kind and serializer, though the old name goes on
// leading to it (an empty short name leaves the earlier one); two identifiers under one name leave the name to the
// later one.
//
// Every operation reports LogicException "pid >= FirstID() && pid <= LastID()" for an identifier outside the
// namespace's range, and records nothing then.
class QVPRESLAYER_API AbstractParamAdder {
public:
    // A single value; its kind is the serializer's GetType(). Without a serializer it is a bag.
    void AddSimple(int id, const wchar_t* name, IParameterSerializer* serializer);
    void AddSimple(int id, const wchar_t* name, const wchar_t* shortName, IParameterSerializer* serializer);

    // A list, or a map from text, of single values; the serializer is that of the elements.
    void AddList(int id, const wchar_t* name, IParameterSerializer* serializer);
    void AddList(int id, const wchar_t* name, const wchar_t* shortName, IParameterSerializer* serializer);
    void AddMap(int id, const wchar_t* name, IParameterSerializer* serializer);
    void AddMap(int id, const wchar_t* name, const wchar_t* shortName, IParameterSerializer* serializer);

    // A nested bag.
    void AddBag(int id, const wchar_t* name);
    void AddBag(int id, const wchar_t* name, const wchar_t* shortName);

    // A structured value, a list of them, a map of them. Without a serializer the kind stays. Reading an object for a
    // structure then leaves the nested bag; everything else that needs the serializer is LogicException "m_ptr".
    void AddStructure(int id, const wchar_t* name, IStructureSerializer* serializer);
    void AddStructure(int id, const wchar_t* name, const wchar_t* shortName, IStructureSerializer* serializer);
    void AddStructureList(int id, const wchar_t* name, IStructureSerializer* serializer);
    void AddStructureList(int id, const wchar_t* name, const wchar_t* shortName, IStructureSerializer* serializer);
    void AddStructureMap(int id, const wchar_t* name, IStructureSerializer* serializer);
    void AddStructureMap(int id, const wchar_t* name, const wchar_t* shortName, IStructureSerializer* serializer);

    // What the operations above come down to. The kind is PTC_None where the recorded one follows from the serializer.
    virtual void AddStructureEntry(int id, const TString& verboseName, const TString& shortName,
                                   RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind) = 0;
    virtual void AddValueEntry(int id, const TString& verboseName, const TString& shortName,
                               RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind) = 0;

protected:
    ~AbstractParamAdder() = default;
};
