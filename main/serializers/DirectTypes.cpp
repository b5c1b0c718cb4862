#include <qvpreslayer/detail/DirectTypes.h>

#include <algorithm>
#include <typeindex>
#include <typeinfo>

#include <boost/unordered/unordered_flat_map.hpp>

#include <qvcore/TextNumbers.h>

#include <qvpreslayer/Enumerations.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/TStringSerializer.h>
#include <qvpreslayer/detail/NumberText.h>

namespace qvpreslayer::detail {

namespace {

using Infos = boost::unordered_flat_map<std::type_index, DirectInfo>;

template <class... T>
void AddTypes(Infos& infos) {
    (infos.emplace(typeid(ParameterTypeSerializer<T>), DirectInfoFor<T>()), ...);
}

Infos MakeInfos() {
    Infos infos;
    AddTypes<int, unsigned int, ::Int64, ::UInt64, float, double, bool>(infos);
    AddTypes<FieldName, QualifiedName, TUUID>(infos);
    AddTypes<HoursDuration, MinutesDuration, SecondsDuration, MillisecondsDuration, MicrosecondsDuration,
             NanosecondsDuration>(infos);
    AddTypes<AggType, BoxplotStyle, DataScaling, DataType, FontWeight, ForecastModelType, ForecastRangeType,
             ForecastStatus, ParserMode, QuorvelFontStyle>(infos);
    AddTypes<StyleAttribute, StyleDataClass, StyleElement, StyleFieldScope, StyleSwatch, TextAlign, TextBreakMode,
             TextDecoration, TextOrient, TextWholeLineMode, TextWrapMode, WhiskerEnd>(infos);
    infos[typeid(TStringSerializer)].type = DirectType::String;
    return infos;
}

}  // namespace

DirectInfo DirectInfoOf(const IParameterSerializer& serializer) {
    static const Infos s_infos = MakeInfos();
    const auto info = s_infos.find(typeid(serializer));
    return info == s_infos.end() ? DirectInfo{} : info->second;
}

const void* FunctionsOf(DirectType type, const DirectTextType* text) {
    switch (type) {
        case DirectType::Int:
            return FunctionsOfHolder<int>();
        case DirectType::Double:
            return FunctionsOfHolder<double>();
        case DirectType::Bool:
            return FunctionsOfHolder<bool>();
        case DirectType::String:
            return FunctionsOfHolder<TString>();
        case DirectType::Text:
            return text->functions();
        default:
            return nullptr;
    }
}

template <class T>
std::u16string_view DirectDuration<T>::Text(const T& value, TextScratch& scratch) {
    const char16_t* end = WriteInteger(scratch.units, value.count());
    return {scratch.units, static_cast<std::size_t>(end - scratch.units)};
}

// Digits alone that cannot overflow, as nearly all durations are.
static bool ParseFewDigits(std::u16string_view text, ::Int64& value) {
    if (text.size() - 1 >= 18) {
        return false;
    }
    ::UInt64 number = 0;  // of no meaning where a unit is no digit
    unsigned largest = 0;
    for (const char16_t unit : text) {
        const unsigned digit = static_cast<unsigned>(unit) - u'0';
        largest = std::max(largest, digit);
        number = number * 10 + digit;
    }
    value = static_cast<::Int64>(number);
    return largest <= 9;
}

template <class T>
bool DirectDuration<T>::Read(std::u16string_view text, T& value) {
    ::Int64 ticks = 0;
    if (!ParseFewDigits(text, ticks) && !ParseInt64(text, ticks)) {
        return false;
    }
    value = T(static_cast<typename T::rep>(ticks));
    return true;
}

template struct DirectDuration<HoursDuration>;
template struct DirectDuration<MinutesDuration>;
template struct DirectDuration<SecondsDuration>;
template struct DirectDuration<MillisecondsDuration>;
template struct DirectDuration<MicrosecondsDuration>;
template struct DirectDuration<NanosecondsDuration>;

static_assert(kLongestInteger <= TextScratch::kUnits && TUUID::kTextUnits <= TextScratch::kUnits);

std::u16string_view DirectTraits<TUUID>::Text(const TUUID& value, TextScratch& scratch) {
    value.WriteText(scratch.units);
    return {scratch.units, TUUID::kTextUnits};
}

bool DirectTraits<TUUID>::Read(std::u16string_view text, TUUID& value) { return TUUID::TryParse(text, value); }

std::u16string_view DirectTraits<FieldName>::Text(const FieldName& value, TextScratch&) { return value.GetFullValue(); }

bool DirectTraits<FieldName>::Read(std::u16string_view text, FieldName& value) {
    return FieldName::TryParseGlobal(text, value);
}

std::u16string_view DirectTraits<QualifiedName>::Text(const QualifiedName& value, TextScratch&) {
    return value.GetFullValue();
}

bool DirectTraits<QualifiedName>::Read(std::u16string_view text, QualifiedName& value) {
    return QualifiedName::TryParseGlobal(text, value);
}

}  // namespace qvpreslayer::detail
