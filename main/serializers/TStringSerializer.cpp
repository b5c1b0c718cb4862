#include <qvpreslayer/TStringSerializer.h>

#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>
#include <qvpreslayer/detail/LenientReads.h>

IParameterSerializer::~IParameterSerializer() = default;

TStringSerializer::TStringSerializer() = default;
TStringSerializer::TStringSerializer(const TStringSerializer&) = default;
TStringSerializer::~TStringSerializer() = default;

ParameterTypeCategory TStringSerializer::GetType() const { return PTC_Text; }

TString TStringSerializer::ToString(RefCntPtr<const IParameter> value) {
    return GetParameterValue<TString>(value.Get());
}

RefCntPtr<IParameter> TStringSerializer::FromString(const TString& text) const {
    return MakeRefCnt<ValParameter<TString>>(text);
}

std::vector<TString> TStringSerializer::ToStringList(RefCntPtr<const IParameter> value) {
    return GetParameterValue<std::vector<TString>>(value.Get());
}

RefCntPtr<IParameter> TStringSerializer::FromStringList(
    const std::vector<TString>& values, const std::vector<std::pair<int, std::vector<TString>>>& runs) const {
    if (!runs.empty()) {
        qvpreslayer::detail::NoteLenientRead(qvpreslayer::detail::LenientRead::SkippedRuns);
    }
    return MakeRefCnt<ValParameter<std::vector<TString>>>(values);
}

void TStringSerializer::SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const {
    const auto& texts = GetParameterValue<std::vector<TString>>(value.Get());
    const ListStructure list(id, stream, PTC_None);
    for (const TString& text : texts) {
        stream.ListItem(text);
    }
}

std::map<TString, TString> TStringSerializer::ToStringMap(RefCntPtr<const IParameter> value) {
    return GetParameterValue<std::map<TString, TString>>(value.Get());
}

RefCntPtr<IParameter> TStringSerializer::FromStringMap(const std::map<TString, TString>& texts) const {
    return MakeRefCnt<ValParameter<std::map<TString, TString>>>(texts);
}
