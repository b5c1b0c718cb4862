// Two values of every type, and the texts that they have in JSON.
#pragma once

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

struct TypeSample {
    const char16_t* type;  // as declaration files spell it
    std::string first;     // two values as they stand in JSON, alone and in maps
    std::string second;
    bool comesBack;  // alone and in maps
    bool listComesBack;

    std::function<void(IParameters&, int)> setValue;  // the first
    std::function<void(IParameters&, int)> setList;   // both
    std::function<void(IParameters&, int)> setMap;    // "k": the first, "l": the second

    // Whether the bag holds them.
    std::function<bool(const IParameters&, int)> hasValue;
    std::function<bool(const IParameters&, int)> hasList;
    std::function<bool(const IParameters&, int)> hasMap;
};

template <class T>
TypeSample Sample(const char16_t* type, const T& first, const T& second, const std::string& firstText,
                  const std::string& secondText) {
    using List = std::vector<T>;
    using Map = std::map<TString, T>;
    const List list = {first, second};
    const Map map = {{L"k", first}, {L"l", second}};
    return {type,
            firstText,
            secondText,
            true,
            true,
            [=](IParameters& bag, int id) { SetParameterValue<T>(bag, id, first); },
            [=](IParameters& bag, int id) { SetParameterValue<List>(bag, id, list); },
            [=](IParameters& bag, int id) { SetParameterValue<Map>(bag, id, map); },
            [=](const IParameters& bag, int id) { return GetParameterValue<T>(bag, id) == first; },
            [=](const IParameters& bag, int id) { return GetParameterValue<List>(bag, id) == list; },
            [=](const IParameters& bag, int id) { return GetParameterValue<Map>(bag, id) == map; }};
}

// The first and the last enumerator.
template <class E>
TypeSample EnumSample(const char16_t* type) {
    const auto lines = GetEnumValues<E>();
    const auto quoted = [](std::u16string_view name) { return "\"" + TString(name).ToUtf8() + "\""; };
    return Sample<E>(type, lines.front().value, lines.back().value, quoted(lines.front().name),
                     quoted(lines.back().name));
}

inline TypeSample WithoutReturn(TypeSample sample) {
    sample.comesBack = sample.listComesBack = false;
    return sample;
}
inline TypeSample WithoutListReturn(TypeSample sample) {
    sample.listComesBack = false;
    return sample;
}

inline std::vector<TypeSample> AllTypeSamples() {
    constexpr int kMinInt = std::numeric_limits<int>::min();
    constexpr const char* kUuids[] = {"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21", "00000000-0000-0000-0000-0000000000ff"};
    return {
        Sample<TString>(u"text", L"a \"b\"", L"", R"("a \"b\"")", R"("")"),
        Sample<int>(u"int", kMinInt, 7, "-2147483648", "7"),
        Sample<unsigned int>(u"unsigned-int", 4294967295U, 7, "4294967295", "7"),
        Sample<Int64>(u"int64", -5, 7, "-5", "7"),
        Sample<UInt64>(u"uint64", 4294967295U, 7, "4294967295", "7"),
        Sample<float>(u"float", 0.5F, -2, "0.5", "-2"),
        Sample<double>(u"double", 0.1, 1e20, "0.1", "100000000000000000000"),
        Sample<bool>(u"bool", true, false, "true", "false"),
        Sample<FieldName>(u"field-name", FieldName::ParseGlobal(L"a"), FieldName::ParseGlobal(L"[b].[c]]]"), R"("[a]")",
                          R"("[b].[c]]]")"),
        Sample<QualifiedName>(u"qualified-name", QualifiedName::ParseGlobal(L"a"),
                              QualifiedName::ParseGlobal(L"[b].[c]]]"), R"("[a]")", R"("[b].[c]]]")"),
        Sample<TUUID>(u"uuid", TUUID(TString::FromUtf8(kUuids[0])), TUUID(TString::FromUtf8(kUuids[1])),
                      std::string("\"") + kUuids[0] + "\"", std::string("\"") + kUuids[1] + "\""),
        WithoutReturn(Sample<PasswordString>(u"password", PasswordString(L"secret"), PasswordString(), R"("********")",
                                             R"("********")")),
        Sample<HoursDuration>(u"hours", HoursDuration(kMinInt), HoursDuration(7), R"("-2147483648")", R"("7")"),
        Sample<MinutesDuration>(u"minutes", MinutesDuration(90), MinutesDuration(-7), R"("90")", R"("-7")"),
        Sample<SecondsDuration>(u"seconds", SecondsDuration(5000000000), SecondsDuration(7), R"("5000000000")",
                                R"("7")"),
        Sample<MillisecondsDuration>(u"milliseconds", MillisecondsDuration(1), MillisecondsDuration(7), R"("1")",
                                     R"("7")"),
        Sample<MicrosecondsDuration>(u"microseconds", MicrosecondsDuration(2), MicrosecondsDuration(7), R"("2")",
                                     R"("7")"),
        Sample<NanosecondsDuration>(u"nanoseconds", NanosecondsDuration(-3), NanosecondsDuration(7), R"("-3")",
                                    R"("7")"),
        WithoutListReturn(Sample<DataValue>(u"data-value", DataValue(42), DataValue(43), R"("i:42")", R"("i:43")")),
        Sample<CoreParameterID>(u"parameter-id", CoreParameterID::IntRLE, CoreParameterID::ParamType, R"("int-rle")",
                                R"("param-type")"),
        EnumSample<AggType>(u"AggType"),
        EnumSample<BoxplotStyle>(u"BoxplotStyle"),
        EnumSample<DataScaling>(u"DataScaling"),
        EnumSample<DataType>(u"DataType"),
        EnumSample<FontWeight>(u"FontWeight"),
        EnumSample<ForecastModelType>(u"ForecastModelType"),
        EnumSample<ForecastRangeType>(u"ForecastRangeType"),
        EnumSample<ForecastStatus>(u"ForecastStatus"),
        EnumSample<ParserMode>(u"ParserMode"),
        EnumSample<QuorvelFontStyle>(u"QuorvelFontStyle"),
        EnumSample<StyleAttribute>(u"StyleAttribute"),
        EnumSample<StyleDataClass>(u"StyleDataClass"),
        EnumSample<StyleElement>(u"StyleElement"),
        EnumSample<StyleFieldScope>(u"StyleFieldScope"),
        EnumSample<StyleSwatch>(u"StyleSwatch"),
        EnumSample<TextAlign>(u"TextAlign"),
        EnumSample<TextBreakMode>(u"TextBreakMode"),
        EnumSample<TextDecoration>(u"TextDecoration"),
        EnumSample<TextOrient>(u"TextOrient"),
        EnumSample<TextWholeLineMode>(u"TextWholeLineMode"),
        EnumSample<TextWrapMode>(u"TextWrapMode"),
        EnumSample<WhiskerEnd>(u"WhiskerEnd"),
    };
}
