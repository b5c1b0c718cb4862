// The family of value serializers: one mechanism over ParameterTypeTraits<T>.
//
// Exceptions: as IParameterSerializer tells; what the traits throw passes.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include <qvpreslayer/DataSerializerHelpers.h>
#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameterSerializer.h>
#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>
#include <qvpreslayer/detail/LenientReads.h>

// Converts ValParameter<T>, ValParameter<std::vector<T>> and ValParameter<std::map<TString, T>>.
//
// A value of another type raises TypeMismatchCommandException(0); a null value MissingParameterCommandException(0), or
// LogicException "m_ptr" where the traits say so. In a list or map the first element that fails ends the operation.
//
// Threads: holds no state; one object may be used from several threads at once.
template <class T>
class QVPRESLAYER_API ParameterTypeSerializer : public IParameterSerializer {
public:
    using Traits = ParameterTypeTraits<T>;

    ParameterTypeCategory GetType() const override { return Traits::kCategory; }

    TString ToString(RefCntPtr<const IParameter> value) override { return TypeToString(Value<T>(value)); }

    RefCntPtr<IParameter> FromString(const TString& text) const override {
        return MakeRefCnt<ValParameter<T>>(TypeFromString(text));
    }

    std::vector<TString> ToStringList(RefCntPtr<const IParameter> value) override {
        const auto& values = Value<std::vector<T>>(value);
        std::vector<TString> texts;
        texts.reserve(values.size());
        for (const auto& element : values) {
            texts.push_back(TypeToString(element));
        }
        return texts;
    }

    // Lists that are packed expand runs (see DataSerializerHelpers); others do not look at them.
    RefCntPtr<IParameter> FromStringList(const std::vector<TString>& values,
                                         const std::vector<std::pair<int, std::vector<TString>>>& runs) const override {
        std::vector<T> result;
        result.reserve(values.size());
        for (const TString& text : values) {
            result.push_back(TypeFromString(text));
        }
        if constexpr (Traits::kPacksRuns) {
            DataSerializerHelpers::DeserializeRLE(result, runs);
        } else if (!runs.empty()) {
            qvpreslayer::detail::NoteLenientRead(qvpreslayer::detail::LenientRead::SkippedRuns);
        }
        return MakeRefCnt<ValParameter<std::vector<T>>>(std::move(result));
    }

    void SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const override {
        SerializeVector(stream, id, Value<std::vector<T>>(value));
    }

    std::map<TString, TString> ToStringMap(RefCntPtr<const IParameter> value) override {
        std::map<TString, TString> texts;
        for (const auto& [key, element] : Value<std::map<TString, T>>(value)) {
            texts.emplace_hint(texts.end(), key, TypeToString(element));
        }
        return texts;
    }

    RefCntPtr<IParameter> FromStringMap(const std::map<TString, TString>& texts) const override {
        std::map<TString, T> result;
        for (const auto& [key, text] : texts) {
            result.emplace_hint(result.end(), key, TypeFromString(text));
        }
        return MakeRefCnt<ValParameter<std::map<TString, T>>>(std::move(result));
    }

    // Writes values as parameter id onto the stream: packed types in the form that the stream's options ask for, others
    // as one item each.
    virtual void SerializeVector(SerializeStructure& stream, int id, const std::vector<T>& values) const {
        if constexpr (Traits::kPacksRuns) {
            DataSerializerHelpers::SerializeVector(stream, id, values);
        } else {
            const ListStructure list(id, stream, PTC_None);
            for (const auto& element : values) {
                stream.ListItem(TypeToString(element));
            }
        }
    }

    // The text of one value, and the value of one text; both as the traits say.
    static TString TypeToString(const T& value) { return Traits::ToText(value); }
    static T TypeFromString(const TString& text) { return Traits::FromText(text); }

private:
    template <class V>
    static const V& Value(const RefCntPtr<const IParameter>& value) {
        if constexpr (Traits::kNullIsLogicError) {
            return GetParameterValue<V>(&*value);
        } else {
            return GetParameterValue<V>(value.Get());
        }
    }
};

// A new serializer of class S, held by one reference.
template <class S>
RefCntPtr<IParameterSerializer> CreateParameterSerializer() {
    return RefCntPtr<IParameterSerializer>(new S);
}

// The library's own instances stand in the library.
extern template class ParameterTypeSerializer<int>;
extern template class ParameterTypeSerializer<unsigned int>;
extern template class ParameterTypeSerializer<Int64>;
extern template class ParameterTypeSerializer<UInt64>;
extern template class ParameterTypeSerializer<float>;
extern template class ParameterTypeSerializer<double>;
extern template class ParameterTypeSerializer<bool>;
extern template class ParameterTypeSerializer<FieldName>;
extern template class ParameterTypeSerializer<QualifiedName>;
extern template class ParameterTypeSerializer<PasswordString>;
extern template class ParameterTypeSerializer<TUUID>;
extern template class ParameterTypeSerializer<HoursDuration>;
extern template class ParameterTypeSerializer<MinutesDuration>;
extern template class ParameterTypeSerializer<SecondsDuration>;
extern template class ParameterTypeSerializer<MillisecondsDuration>;
extern template class ParameterTypeSerializer<MicrosecondsDuration>;
extern template class ParameterTypeSerializer<NanosecondsDuration>;
