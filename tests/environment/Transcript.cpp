#include "environment/Transcript.h"

#include <limits>
#include <vector>

#include "json/JSONTestSupport.h"
#include "support/TypedValues.h"

namespace {

void Line(std::string& out, const std::string& line) { out += line + "\n"; }

// What a call answers, or what it throws.
template <class Call>
void Outcome(std::string& out, const std::string& name, Call&& call) {
    try {
        Line(out, name + ": " + call());
    } catch (const std::exception& e) {
        Line(out, name + " failed: " + e.what());
    }
}

// Every kind of parameter; letters whose case some locales see otherwise, numbers that some write otherwise.
RefCntPtr<TestBag> EverythingBag() {
    const std::vector<double> reals = {1234567.25, -0.5, 1e20, 1.0 / 3, 7, 7, 7, 7};
    const RefCntPtr<TestBag> bag = MakeBag({
        {view::kMaxCount, Val<int>(-1234567)},
        {view::kUnsigned, Val<unsigned int>(4000000000U)},
        {view::kFloat, Val<float>(1.1F)},
        {view::kReal, Val<double>(1234567.891)},
        {view::kFlag, Val<bool>(true)},
        {view::kText, Text(L"I\u0130\u0131i \u00DF\u00E4\u20AC 1.234,5")},
        {view::kUuid, Val<TUUID>(TUUID(L"6F1C2A90-51D4-4E0B-9B7E-3A8D5C0F7E21"))},
        {view::kHours, Val<HoursDuration>(HoursDuration(-40000))},
        {view::kSecret, Val<PasswordString>(PasswordString(L"geheim"))},
        {view::kIntList, Val<std::vector<int>>({1000000, 1000001, 1000002, 1000003, -5})},
        {view::kFloatList, Val<std::vector<float>>({0.1F, 1234.5F})},
        {view::kRealList, Val<std::vector<double>>(reals)},
        {view::kFlagList, Val<std::vector<bool>>({true, false})},
        {view::kTextList, Val<std::vector<TString>>({L"INFO", L"info", L"\u0130nfo"})},
        {view::kMyMap, Val<std::map<TString, TString>>({{L"title-id", L"I"}, {L"a-i", L"\u0131"}})},
        {view::kIntMap, Val<std::map<TString, int>>({{L"i", 1000}, {L"I", -1000}, {L"\u0130", 0}})},
        {view::kSubBag, BagVal(MakeBag({{view::kAB, Val<int>(1)}}))},
    });
    return bag;
}

void JSONTexts(std::string& out) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    for (const bool shortNames : {false, true}) {
        for (const bool packed : {false, true}) {
            const TestSession session(shortNames, packed);
            for (int form = JSONSerializer::Pretty; form <= JSONSerializer::UnquotedNames; ++form) {
                Outcome(out, "form " + std::to_string(form), [&] {
                    const auto type = static_cast<JSONSerializer::OutputType>(form);
                    const TString text = json.ToString(EverythingBag(), type);
                    return text.ToUtf8() + "\nread: " + OutcomeOf([&] { return json.ToParameters(text); });
                });
            }
        }
    }
    for (const char* text :
         {R"({"titleI": 1})", R"({"text": "\u0130\u0131"})", R"({"real": 1234.5})", R"({"real": 1,5})",
          R"({"real": "1,5"})", R"({"real": "1.234,5"})", R"({"real": 1e-3, "smallReal": 0.1})",
          R"({"maxCount": "1.000"})", R"({"maxCount": "1,000"})", R"({"flag": "TRUE"})", R"({"MAXCOUNT": 1})",
          R"({"int-list": [1.5, "2,5"]})", "{\"text\": \"\u00A0\"}", "{\u00A0}", R"({"hours": "1,5"})"}) {
        Outcome(out, text, [&] { return OutcomeOf([&] { return json.ToParameters(TString::FromUtf8(text)); }); });
    }
}

void Numbers(std::string& out) {
    for (const wchar_t* text : {L"1.5", L"1,5", L"1.000", L"1,000", L"1 000", L"1\u00A0000", L"\u0661", L"1e3", L"1E3",
                                L"nan", L"inf", L"0x1p3", L" 1", L"1 "}) {
        bool read = false;
        const double value = TString(text).toDouble(&read);
        Line(out, TString(text).ToUtf8() + (read ? " is " : " is no number ") +
                      ParameterTypeSerializer<double>::TypeToString(value).ToUtf8());
        const int integer = TString(text).toInt(&read);
        Line(out, (read ? "integer " : "no integer ") + TString::number(integer).ToUtf8());
    }
    for (const double value : {0.1, -1234567.891, 1e15, 5e-324, std::numeric_limits<double>::infinity()}) {
        Line(out, ParameterTypeSerializer<double>::TypeToString(value).ToUtf8() + " " +
                      ParameterTypeSerializer<float>::TypeToString(static_cast<float>(value)).ToUtf8());
    }
    Line(out, TString::number(-1234567).ToUtf8() + TString::number(std::numeric_limits<UInt64>::max(), 36).ToUtf8());
}

void TypedValues(std::string& out) {
    const std::vector<DataValue> values = {1234567,
                                           DataValue(-1234567.875, 9, 3),
                                           DataValue(true),
                                           DataValue(typed::Day(2024, 2, 29)),
                                           DataValue(typed::LeapEvening(123456789)),
                                           typed::String(L"I\u0130 1.5"),
                                           typed::Null(DataType::Integer),
                                           typed::TupleOf({1, typed::String(L"i")})};
    using Serializer = ParameterTypeSerializer<DataValue>;
    for (const DataValue& value : values) {
        for (const int style : {0, 1}) {
            DataValueFormatter::FormatOptions options;
            options.style = style;
            Outcome(out, "formatted", [&] { return DataValueFormatter::Format(value, options).ToUtf8(); });
        }
        Outcome(out, "typed", [&] {
            const TString text = Serializer::TypeToString(value);
            return text.ToUtf8() + (typed::Identical(value, Serializer::TypeFromString(text)) ? " comes back" : "");
        });
    }
    for (const wchar_t* text : {L"r:::1,5", L"r:::1.5", L"i:1.000", L"d:2024-02-29", L"d:29.02.2024", L"b:TRUE"}) {
        Outcome(out, "typed text", [&] { return Serializer::TypeToString(Serializer::TypeFromString(text)).ToUtf8(); });
    }
}

void NamesAndLetters(std::string& out) {
    for (const wchar_t* name : {L"title-id", L"i-i", L"TitleI", L"\u0130-\u0131", L"I", L"x-\u00E4"}) {
        Line(out, DashedToCamel(name).ToUtf8() + " " + CamelToDashed(name).ToUtf8());
    }
    for (const auto& [value, name] : GetEnumValues<StyleElement>()) {
        Line(out, TString(name).ToUtf8());
    }
    Line(out, TString(GetEnumValues<TextAlign>()[1].name).ToUtf8());
    for (const wchar_t* name : {L"[I].[\u0130]", L"\u00E4", L"[a"}) {
        Outcome(out, "name", [&] { return QualifiedName::ParseGlobal(name).GetFullValue().ToUtf8(); });
    }
    for (const wchar_t* collation : {L"I", L"\u0130", L"\u00E4"}) {
        Outcome(out, "collation", [&] { return Collation(collation).GetName().ToUtf8(); });
    }
    const std::vector<TString> ordered = {L"I", L"i", L"\u00C4", L"\u00E4", L"\u0130", L"\u0131", L"z"};
    for (std::size_t i = 1; i < ordered.size(); ++i) {
        Line(out, ordered[i - 1] < ordered[i] ? "before" : "not before");
    }
    Line(out, TString::FromUtf8("\xC4\xB0\xFF\xE2\x82\xAC").ToUtf8());
}

}  // namespace

std::string Transcript() {
    std::string out;
    JSONTexts(out);
    Numbers(out);
    TypedValues(out);
    NamesAndLetters(out);
    return out;
}
