// A new serializer is handed over as a plain pointer: it gets its owner before anything else, so that it goes with a
// failure, also one of the names.
#include <qvpreslayer/AbstractParamAdder.h>

#include <utility>

void AbstractParamAdder::AddSimple(int id, const wchar_t* name, IParameterSerializer* serializer) {
    AddSimple(id, name, name, serializer);
}

void AbstractParamAdder::AddSimple(int id, const wchar_t* name, const wchar_t* shortName,
                                   IParameterSerializer* serializer) {
    RefCntPtr<IParameterSerializer> owned(serializer);
    AddValueEntry(id, name, shortName, std::move(owned), PTC_None);
}

void AbstractParamAdder::AddList(int id, const wchar_t* name, IParameterSerializer* serializer) {
    AddList(id, name, name, serializer);
}

void AbstractParamAdder::AddList(int id, const wchar_t* name, const wchar_t* shortName,
                                 IParameterSerializer* serializer) {
    RefCntPtr<IParameterSerializer> owned(serializer);
    AddValueEntry(id, name, shortName, std::move(owned), PTC_List);
}

void AbstractParamAdder::AddMap(int id, const wchar_t* name, IParameterSerializer* serializer) {
    AddMap(id, name, name, serializer);
}

void AbstractParamAdder::AddMap(int id, const wchar_t* name, const wchar_t* shortName,
                                IParameterSerializer* serializer) {
    RefCntPtr<IParameterSerializer> owned(serializer);
    AddValueEntry(id, name, shortName, std::move(owned), PTC_Map);
}

void AbstractParamAdder::AddBag(int id, const wchar_t* name) { AddBag(id, name, name); }

void AbstractParamAdder::AddBag(int id, const wchar_t* name, const wchar_t* shortName) {
    AddValueEntry(id, name, shortName, {}, PTC_None);
}

void AbstractParamAdder::AddStructure(int id, const wchar_t* name, IStructureSerializer* serializer) {
    AddStructure(id, name, name, serializer);
}

void AbstractParamAdder::AddStructure(int id, const wchar_t* name, const wchar_t* shortName,
                                      IStructureSerializer* serializer) {
    RefCntPtr<IStructureSerializer> owned(serializer);
    AddStructureEntry(id, name, shortName, std::move(owned), PTC_Structure);
}

void AbstractParamAdder::AddStructureList(int id, const wchar_t* name, IStructureSerializer* serializer) {
    AddStructureList(id, name, name, serializer);
}

void AbstractParamAdder::AddStructureList(int id, const wchar_t* name, const wchar_t* shortName,
                                          IStructureSerializer* serializer) {
    RefCntPtr<IStructureSerializer> owned(serializer);
    AddStructureEntry(id, name, shortName, std::move(owned), PTC_StructureList);
}

void AbstractParamAdder::AddStructureMap(int id, const wchar_t* name, IStructureSerializer* serializer) {
    AddStructureMap(id, name, name, serializer);
}

void AbstractParamAdder::AddStructureMap(int id, const wchar_t* name, const wchar_t* shortName,
                                         IStructureSerializer* serializer) {
    RefCntPtr<IStructureSerializer> owned(serializer);
    AddStructureEntry(id, name, shortName, std::move(owned), PTC_StructureMap);
}
