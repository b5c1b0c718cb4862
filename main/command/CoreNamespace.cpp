#include <qvpreslayer/CoreNamespace.h>

#include <qvpreslayer/PresModelBuilderSupport.h>

namespace {

constexpr int ToID(CoreParameterID id) { return static_cast<int>(id); }

void AddCoreParameters(AbstractParamAdder& adder) {
    adder.AddList(ToID(CoreParameterID::IntRLE), L"int-rle", L"pSA01", new ParameterTypeSerializer<int>);
    adder.AddList(ToID(CoreParameterID::UIntRLE), L"uint-rle", L"tqb01", new ParameterTypeSerializer<unsigned int>);
    adder.AddList(ToID(CoreParameterID::FloatRLE), L"float-rle", L"nVJ01", new ParameterTypeSerializer<float>);
    adder.AddSimple(ToID(CoreParameterID::ParamType), L"param-type", L"KQP01",
                    new ParameterTypeSerializer<CoreParameterID>);
}

}  // namespace

void RegisterCoreNamespaceParameters(ParametersRegistry& registry, const TString& name) {
    registry.RegisterNamespace(name, AddCoreParameters, kCoreNamespaceFirstID, kCoreNamespaceLastID, false);
}

void RegisterCoreNamespaceParameters(const TString& name) {
    RegisterCoreNamespaceParameters(ParametersRegistry::Get(), name);
}

void RegisterCorePresModelParameters(ParametersRegistry&, const TString&) {}

void RegisterCorePresModelParameters(const TString& name) {
    RegisterCorePresModelParameters(ParametersRegistry::Get(), name);
}

TString ParameterTypeTraits<CoreParameterID>::ToText(const CoreParameterID& value) {
    return ParametersRegistry::Get().GetName(ToID(value), PresModelBuilderSupport::UseVerboseNames());
}

CoreParameterID ParameterTypeTraits<CoreParameterID>::FromText(const TString& text) {
    return static_cast<CoreParameterID>(ParametersRegistry::Get().GetID(L"qvcore", text, false));
}

template class ParameterTypeSerializer<CoreParameterID>;
