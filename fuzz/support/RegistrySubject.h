// The library's registry under the operations of RegistryModel.h, each with its answer as text. Included by
// RegistryFuzz.cpp.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/RegistryScript.h"
#include "support/TestHost.h"

namespace registry_subject {

using namespace registry_script;

class Subject {
public:
    explicit Subject(const std::vector<Function>& functions) : m_functions(functions) {}

    std::string trace;  // the answers of look-ups that functions made

    void SetVerboseInForce(bool verbose) { m_session.Vars().shortNames = !verbose; }

    std::string Register(const std::string& name, int function, int first, int last, bool eager) {
        m_registry.RegisterNamespace(Wide(name), Filler(function), first, last, eager);
        return "ok";
    }
    std::string RegisterPart(const std::string& name, int function, int first, int last) {
        m_registry.RegisterNamespacePart(Wide(name), Filler(function), first, last);
        return "ok";
    }
    std::string SetFallback(const std::string& name, const std::string& fallback) {
        m_registry.SetFallback(Wide(name), Wide(fallback));
        return "ok";
    }
    std::string Clear(const std::string& name) {
        m_registry.Clear(Wide(name));
        return "ok";
    }
    std::string ClearAll() {
        m_registry.Clear();
        return "ok";
    }
    std::string AddUnserializable(int id) {
        m_registry.AddUnserializable(id);
        return "ok";
    }
    std::string IsUnserializable(int id) const { return m_registry.IsUnserializable(id) ? "yes" : "no"; }
    std::string HasNamespace(const std::string& name) const {
        return m_registry.HasNamespace(Wide(name)) ? "yes" : "no";
    }
    std::string GetID(const std::string& name, const std::string& parameter, bool verbose) {
        return std::to_string(m_registry.GetID(Wide(name), Wide(parameter), verbose));
    }
    std::string FromString(const std::string& name, const std::string& parameter, bool verbose) {
        const RefCntPtr<TestBag> bag = MakeBag();
        m_registry.FromString(Wide(name), bag, Wide(parameter), L"text", verbose);
        const int id = m_registry.GetID(Wide(name), Wide(parameter), verbose);
        return GetParameterValue<TString>(*bag, id).ToUtf8() + " under " + std::to_string(id);
    }
    std::string GetName(int id, bool verbose) { return m_registry.GetName(id, verbose).ToUtf8(); }
    std::string GetType(int id) { return std::to_string(m_registry.GetType(id)); }
    std::string GetSerializer(int id, ParameterTypeCategory kind) {
        const void* serializer = kind == PTC_List            ? Pointer(m_registry.GetListSerializer(id))
                                 : kind == PTC_Map           ? Pointer(m_registry.GetMapSerializer(id))
                                 : kind == PTC_Structure     ? Pointer(m_registry.GetStructureSerializer(id))
                                 : kind == PTC_StructureList ? Pointer(m_registry.GetStructureListSerializer(id))
                                                             : Pointer(m_registry.GetStructureMapSerializer(id));
        return serializer != nullptr ? "a serializer" : "null";
    }
    std::string GetValueSerializer(int id) {
        return m_registry.GetValueSerializer(id) != nullptr ? "a serializer" : "null";
    }
    std::string FindInfo(int id) {
        const ParameterInfo* info = m_registry.FindInfo(id);
        return info == nullptr
                   ? "null"
                   : std::to_string(info->id) + " " + std::to_string(info->kind) + " " + info->verboseName.ToUtf8() +
                         " " + info->shortName.ToUtf8() + " " + info->camelName.ToUtf8();
    }
    std::string GetNamespaceInfos() {
        std::string text;
        for (const auto& [name, rows] : m_registry.GetNamespaceInfos()) {
            text += name.ToUtf8() + ":";
            for (const ParameterRegistryinfo& row : rows) {
                text += " " + std::to_string(row.id) + " " + row.verboseName.ToUtf8() + " " + row.shortName.ToUtf8();
            }
            text += "\n";
        }
        return text;
    }

private:
    template <class T>
    static const void* Pointer(T* pointer) {
        return pointer;
    }

    ParametersRegistry::RegistrationFunction Filler(int function) {
        return [this, number = static_cast<std::size_t>(function), runs = std::make_shared<int>(0)](
                   AbstractParamAdder& adder) { Run(m_functions[number], (*runs)++, adder); };
    }

    void Run(const Function& function, int runs, AbstractParamAdder& adder) {
        if (++m_runs > kMostRuns) {
            return;
        }
        const bool fails = runs < function.failures;
        for (std::size_t i = 0; i < function.steps.size(); ++i) {
            if (fails && i == function.failsBefore) {
                throw FunctionFails();
            }
            Take(function.steps[i], adder);
        }
        if (fails) {
            throw FunctionFails();
        }
    }

    void Take(const Step& step, AbstractParamAdder& adder) {
        const wchar_t* const name = step.name.c_str();
        const wchar_t* const shortName = step.shortName.c_str();
        IStructureSerializer* const structure = step.hasSerializer ? new BagStructureSerializer : nullptr;
        const RefCntPtr<IStructureSerializer> owner(structure);
        if (step.action == Step::LookUp) {
            trace += Outcome([&] { return GetID(step.space, Narrow(step.name), true); }) + "\n";
            return;
        }
        if (step.action == Step::Part) {
            trace += Outcome([&] { return RegisterPart(step.space, step.function, step.id, LastOf(step.id)); }) + "\n";
            return;
        }
        switch (step.kind) {
            case PTC_Text:
                return adder.AddSimple(step.id, name, shortName, new TStringSerializer);
            case PTC_Number:
                return adder.AddSimple(step.id, name, shortName, new ParameterTypeSerializer<int>);
            case PTC_List:
                return adder.AddList(step.id, name, shortName, new TStringSerializer);
            case PTC_Map:
                return adder.AddMap(step.id, name, shortName, new TStringSerializer);
            case PTC_Structure:
                return adder.AddStructure(step.id, name, shortName, structure);
            case PTC_StructureList:
                return adder.AddStructureList(step.id, name, shortName, structure);
            case PTC_StructureMap:
                return adder.AddStructureMap(step.id, name, shortName, structure);
            default:
                return adder.AddBag(step.id, name, shortName);
        }
    }

    const std::vector<Function>& m_functions;
    int m_runs = 0;
    TestRegistry m_registry;
    TestSession m_session;
};

}  // namespace registry_subject
