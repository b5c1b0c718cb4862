// The adder that registration functions are called with. Included by ParametersNamespace.cpp.
#pragma once

#include <utility>

#include <qvpreslayer/AbstractParamAdder.h>

#include "main/command/EagerParametersNamespace.h"

// Forwards every entry to the namespace that is being filled. Requires: the namespace outlives the adder.
class ParamAdder final : public AbstractParamAdder {
public:
    explicit ParamAdder(EagerParametersNamespace& target) : m_namespace(&target) {}

    void AddStructureEntry(int id, const TString& verboseName, const TString& shortName,
                           RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind) override {
        m_namespace->AddStructure(id, verboseName, shortName, std::move(serializer), kind);
    }

    void AddValueEntry(int id, const TString& verboseName, const TString& shortName,
                       RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind) override {
        m_namespace->AddValue(id, verboseName, shortName, std::move(serializer), kind);
    }

private:
    EagerParametersNamespace* m_namespace;
};
