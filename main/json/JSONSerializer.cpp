#include <qvpreslayer/JSONSerializer.h>

#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/VisitParametersStructure.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONReader.h"

namespace {

// Room for most texts at the first go.
constexpr std::size_t kReservedUnits = 4096;

}  // namespace

bool JSONSerializer::s_forceDisableCapture = false;

JSONSerializer::JSONSerializer(const TString& namespaceName) : m_namespace(namespaceName) {}

JSONSerializer::JSONSerializer(const JSONSerializer&) = default;
JSONSerializer& JSONSerializer::operator=(const JSONSerializer&) = default;
JSONSerializer::~JSONSerializer() = default;

void JSONSerializer::EnableCapture(bool enable, bool nested) {
    m_captureEnabled = enable && !s_forceDisableCapture;
    m_nestedCapture = nested && !s_forceDisableCapture;
}

void JSONSerializer::ForceDisableCapture(bool disable) { s_forceDisableCapture = disable; }

TString JSONSerializer::ToString(RefCntPtr<const IParameters> bag, OutputType type) const {
    TString out;
    out.reserve(kReservedUnits);
    BuildParameterStrings visitor(out, type, m_captureEnabled, m_nestedCapture,
                                  !PresModelBuilderSupport::UseVerboseNames());
    VisitParametersStructure(m_namespace, std::move(bag), visitor);
    visitor.Finish();
    return out;
}

TString JSONSerializer::PresModelToString(RefCntPtr<const PresentationModel> model, OutputType type) const {
    TString out;
    out.reserve(kReservedUnits);
    PresModelToString(std::move(model), PresModelBuilderSupport::UseVerboseNames(), type, out);
    return out;
}

void JSONSerializer::PresModelToString(RefCntPtr<const PresentationModel> model, bool verboseNames, OutputType type,
                                       TString& out) const {
    BuildParameterStrings visitor(out, type, m_captureEnabled, m_nestedCapture, !verboseNames);
    const int id = model->GetDefaultParamID();
    const RefCntPtr<IStructureSerializer> serializer(ParametersRegistry::Get().GetStructureSerializer(id));
    SerializeStructure stream(visitor, verboseNames, PresModelBuilderSupport::CompressArrays());
    // A model hands out a bag of itself without changing; that operation alone is not const.
    const RefCntPtr<IParameters> bag = const_cast<PresentationModel&>(*model).AsIParameters();
    const RefCntPtr<const IParameter> value(&bag->GetParameter(id));
    serializer->Serialize(value, stream, id, true);
    visitor.Finish();
}

RefCntPtr<IParameters> JSONSerializer::ToParameters(const TString& json) const {
    return ToParameters(json, !PresModelBuilderSupport::UseVerboseNames(), false);
}

RefCntPtr<IParameters> JSONSerializer::ToParameters(const TString& json, bool shortNames, bool lookupFlag) const {
    const JSONDocument document(json);
    return JSONReader(document, m_namespace, shortNames, lookupFlag).Read();
}
