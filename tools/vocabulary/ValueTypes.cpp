#include "tools/vocabulary/ValueTypes.h"

#include <algorithm>

namespace qvpres {

namespace {

template <class S>
ValueType TypeOf(std::u16string_view name, std::string_view cppType, TextForm form) {
    ValueType type{};
    type.name = name;
    type.cppType = cppType;
    type.form = form;
    type.category = MakeRefCnt<S>()->GetType();
    type.makeSerializer = CreateParameterSerializer<S>;
    // Exactly: a class that a host derives may do anything.
    type.isSerializerOf = [](const IParameterSerializer& serializer) { return typeid(serializer) == typeid(S); };
    return type;
}

template <class T>
ValueType Scalar(std::u16string_view name, std::string_view cppType, TextForm form) {
    return TypeOf<ParameterTypeSerializer<T>>(name, cppType, form);
}

template <class E>
ValueType Enumeration(std::u16string_view name, std::string_view cppType) {
    ValueType type = Scalar<E>(name, cppType, TextForm::Enumeration);
    for (const EnumName<E>& line : GetEnumValues<E>()) {
        type.names.push_back(line.name);
        if (line.value == GetEnumDefault<E>()) {
            type.defaultName = line.name;
        }
    }
    return type;
}

// An enumeration is named as its class is.
#define QVPRES_ENUMERATION(E) Enumeration<E>(u## #E, #E)

std::vector<ValueType> MakeValueTypes() {
    return {
        TypeOf<TStringSerializer>(u"text", "TString", TextForm::AnyText),
        Scalar<int>(u"int", "int", TextForm::Integer),
        Scalar<unsigned int>(u"unsigned-int", "unsigned int", TextForm::Integer),
        Scalar<Int64>(u"int64", "Int64", TextForm::Integer),
        Scalar<UInt64>(u"uint64", "UInt64", TextForm::Integer),
        Scalar<float>(u"float", "float", TextForm::Real),
        Scalar<double>(u"double", "double", TextForm::Real),
        Scalar<bool>(u"bool", "bool", TextForm::Bool),
        Scalar<FieldName>(u"field-name", "FieldName", TextForm::Name),
        Scalar<QualifiedName>(u"qualified-name", "QualifiedName", TextForm::Name),
        Scalar<TUUID>(u"uuid", "TUUID", TextForm::UUID),
        Scalar<PasswordString>(u"password", "PasswordString", TextForm::Password),
        Scalar<HoursDuration>(u"hours", "HoursDuration", TextForm::Duration),
        Scalar<MinutesDuration>(u"minutes", "MinutesDuration", TextForm::Duration),
        Scalar<SecondsDuration>(u"seconds", "SecondsDuration", TextForm::Duration),
        Scalar<MillisecondsDuration>(u"milliseconds", "MillisecondsDuration", TextForm::Duration),
        Scalar<MicrosecondsDuration>(u"microseconds", "MicrosecondsDuration", TextForm::Duration),
        Scalar<NanosecondsDuration>(u"nanoseconds", "NanosecondsDuration", TextForm::Duration),
        Scalar<DataValue>(u"data-value", "DataValue", TextForm::TypedValue),
        Scalar<CoreParameterID>(u"parameter-id", "CoreParameterID", TextForm::ParameterID),
        QVPRES_ENUMERATION(AggType),
        QVPRES_ENUMERATION(BoxplotStyle),
        QVPRES_ENUMERATION(DataScaling),
        QVPRES_ENUMERATION(DataType),
        QVPRES_ENUMERATION(FontWeight),
        QVPRES_ENUMERATION(ForecastModelType),
        QVPRES_ENUMERATION(ForecastRangeType),
        QVPRES_ENUMERATION(ForecastStatus),
        QVPRES_ENUMERATION(ParserMode),
        QVPRES_ENUMERATION(QuorvelFontStyle),
        QVPRES_ENUMERATION(StyleAttribute),
        QVPRES_ENUMERATION(StyleDataClass),
        QVPRES_ENUMERATION(StyleElement),
        QVPRES_ENUMERATION(StyleFieldScope),
        QVPRES_ENUMERATION(StyleSwatch),
        QVPRES_ENUMERATION(TextAlign),
        QVPRES_ENUMERATION(TextBreakMode),
        QVPRES_ENUMERATION(TextDecoration),
        QVPRES_ENUMERATION(TextOrient),
        QVPRES_ENUMERATION(TextWholeLineMode),
        QVPRES_ENUMERATION(TextWrapMode),
        QVPRES_ENUMERATION(WhiskerEnd),
    };
}

#undef QVPRES_ENUMERATION

}  // namespace

std::span<const ValueType> GetValueTypes() {
    static const std::vector<ValueType> s_types = MakeValueTypes();
    return s_types;
}

const ValueType* FindValueType(std::u16string_view name) {
    const auto types = GetValueTypes();
    const auto type = std::find_if(types.begin(), types.end(), [&](const ValueType& row) { return row.name == name; });
    return type == types.end() ? nullptr : &*type;
}

const ValueType* FindValueTypeOf(const IParameterSerializer& serializer) {
    const auto types = GetValueTypes();
    const auto type =
        std::find_if(types.begin(), types.end(), [&](const ValueType& row) { return row.isSerializerOf(serializer); });
    return type == types.end() ? nullptr : &*type;
}

}  // namespace qvpres
