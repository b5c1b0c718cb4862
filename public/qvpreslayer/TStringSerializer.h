// The serializer of texts.
//
// Exceptions: as IParameterSerializer tells.
#pragma once

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameterSerializer.h>

// Converts ValParameter<TString> and its list and map: a text is its own text, unchanged. Failures of the values are
// those of ParameterTypeSerializer; run records are ignored.
class QVPRESLAYER_API TStringSerializer : public IParameterSerializer {
public:
    TStringSerializer();
    TStringSerializer(const TStringSerializer&);
    ~TStringSerializer() override;

    ParameterTypeCategory GetType() const override;
    TString ToString(RefCntPtr<const IParameter> value) override;
    RefCntPtr<IParameter> FromString(const TString& text) const override;
    std::vector<TString> ToStringList(RefCntPtr<const IParameter> value) override;
    RefCntPtr<IParameter> FromStringList(const std::vector<TString>& values,
                                         const std::vector<std::pair<int, std::vector<TString>>>& runs) const override;
    void SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const override;
    std::map<TString, TString> ToStringMap(RefCntPtr<const IParameter> value) override;
    RefCntPtr<IParameter> FromStringMap(const std::map<TString, TString>& texts) const override;
};
