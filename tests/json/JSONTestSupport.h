// What the JSON tests share: the namespace "view" with parameters of every kind, short ways to write and read, and the
// outcome of a reading as one line of text.
//
// Included by the tests of the JSON writer and reader.
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Printing.h"
#include "support/TestHost.h"

// The identifiers of the namespace "view".
namespace view {
inline constexpr int kMaxCount = 10;
inline constexpr int kUnsigned = 11;
inline constexpr int kInt64 = 12;
inline constexpr int kUInt64 = 13;
inline constexpr int kFloat = 14;
inline constexpr int kReal = 15;
inline constexpr int kFlag = 16;
inline constexpr int kText = 17;
inline constexpr int kUuid = 18;
inline constexpr int kHours = 19;
inline constexpr int kSeconds = 20;
inline constexpr int kField = 21;
inline constexpr int kQualified = 22;
inline constexpr int kSecret = 23;
inline constexpr int kDashedShort = 24;  // both names have dashes
inline constexpr int kDigit = 25;        // a dash before a digit
inline constexpr int kNoShort = 26;
inline constexpr int kPercent = 27;

inline constexpr int kIntList = 30;
inline constexpr int kUnsignedList = 31;
inline constexpr int kInt64List = 32;
inline constexpr int kUInt64List = 33;
inline constexpr int kFloatList = 34;
inline constexpr int kRealList = 35;
inline constexpr int kFlagList = 36;
inline constexpr int kTextList = 37;
inline constexpr int kHoursList = 38;
inline constexpr int kUuidList = 39;
inline constexpr int kSecretList = 40;
inline constexpr int kParamTypeList = 41;

inline constexpr int kMyMap = 50;
inline constexpr int kIntMap = 51;
inline constexpr int kFlagMap = 52;
inline constexpr int kUuidMap = 53;

inline constexpr int kSubBag = 60;

inline constexpr int kMyModel = 70;
inline constexpr int kItems = 71;
inline constexpr int kByKey = 72;
inline constexpr int kRow = 73;        // a structure in list form
inline constexpr int kRows = 74;       // a list of them
inline constexpr int kBareModel = 75;  // a structure without a serializer

inline constexpr int kAB = 80;
inline constexpr int kC = 81;
inline constexpr int kN = 82;
}  // namespace view

inline void RegisterViewScalars(AbstractParamAdder& adder) {
    adder.AddSimple(view::kMaxCount, L"max-count", L"mc", new ParameterTypeSerializer<int>);
    adder.AddSimple(view::kUnsigned, L"unsigned", L"un", new ParameterTypeSerializer<unsigned int>);
    adder.AddSimple(view::kInt64, L"big", L"bi", new ParameterTypeSerializer<Int64>);
    adder.AddSimple(view::kUInt64, L"big-unsigned", L"bu", new ParameterTypeSerializer<UInt64>);
    adder.AddSimple(view::kFloat, L"small-real", L"sr", new ParameterTypeSerializer<float>);
    adder.AddSimple(view::kReal, L"real", L"re", new ParameterTypeSerializer<double>);
    adder.AddSimple(view::kFlag, L"flag", L"fl", new ParameterTypeSerializer<bool>);
    adder.AddSimple(view::kText, L"text", L"tx", new TStringSerializer);
    adder.AddSimple(view::kUuid, L"uuid", L"uu", new ParameterTypeSerializer<TUUID>);
    adder.AddSimple(view::kHours, L"hours", L"ho", new ParameterTypeSerializer<HoursDuration>);
    adder.AddSimple(view::kSeconds, L"seconds", L"se", new ParameterTypeSerializer<SecondsDuration>);
    adder.AddSimple(view::kField, L"field", L"fi", new ParameterTypeSerializer<FieldName>);
    adder.AddSimple(view::kQualified, L"qualified", L"qu", new ParameterTypeSerializer<QualifiedName>);
    adder.AddSimple(view::kSecret, L"secret", L"sc", new ParameterTypeSerializer<PasswordString>);
    adder.AddSimple(view::kDashedShort, L"dashed-name", L"d-n", new ParameterTypeSerializer<int>);
    adder.AddSimple(view::kDigit, L"a-1", L"a-2", new ParameterTypeSerializer<int>);
    adder.AddSimple(view::kNoShort, L"no-short", L"", new ParameterTypeSerializer<int>);
    adder.AddSimple(view::kPercent, L"%1%1", new ParameterTypeSerializer<int>);
}

inline void RegisterViewLists(AbstractParamAdder& adder) {
    adder.AddList(view::kIntList, L"int-list", L"il", new ParameterTypeSerializer<int>);
    adder.AddList(view::kUnsignedList, L"unsigned-list", L"ul", new ParameterTypeSerializer<unsigned int>);
    adder.AddList(view::kInt64List, L"big-list", L"bl", new ParameterTypeSerializer<Int64>);
    adder.AddList(view::kUInt64List, L"big-unsigned-list", L"bul", new ParameterTypeSerializer<UInt64>);
    adder.AddList(view::kFloatList, L"small-real-list", L"srl", new ParameterTypeSerializer<float>);
    adder.AddList(view::kRealList, L"real-list", L"rl", new ParameterTypeSerializer<double>);
    adder.AddList(view::kFlagList, L"flag-list", L"fll", new ParameterTypeSerializer<bool>);
    adder.AddList(view::kTextList, L"text-list", L"tl", new TStringSerializer);
    adder.AddList(view::kHoursList, L"hours-list", L"hl", new ParameterTypeSerializer<HoursDuration>);
    adder.AddList(view::kUuidList, L"uuid-list", L"uul", new ParameterTypeSerializer<TUUID>);
    adder.AddList(view::kSecretList, L"secret-list", L"scl", new ParameterTypeSerializer<PasswordString>);
    adder.AddList(view::kParamTypeList, L"param-type-list", L"ptl", new ParameterTypeSerializer<CoreParameterID>);
}

inline void RegisterViewParameters(AbstractParamAdder& adder) {
    RegisterViewScalars(adder);
    RegisterViewLists(adder);
    adder.AddMap(view::kMyMap, L"my-map", L"mm", new TStringSerializer);
    adder.AddMap(view::kIntMap, L"int-map", L"im", new ParameterTypeSerializer<int>);
    adder.AddMap(view::kFlagMap, L"flag-map", L"fm", new ParameterTypeSerializer<bool>);
    adder.AddMap(view::kUuidMap, L"uuid-map", L"uum", new ParameterTypeSerializer<TUUID>);
    adder.AddBag(view::kSubBag, L"sub-bag", L"sb");
    adder.AddStructure(view::kMyModel, L"my-model", L"mo", new BagStructureSerializer);
    adder.AddStructureList(view::kItems, L"items", L"it", new BagStructureSerializer);
    adder.AddStructureMap(view::kByKey, L"by-key", L"bk", new BagStructureSerializer);
    adder.AddStructure(view::kRow, L"row", L"rw", new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructureList(view::kRows, L"rows", L"rs", new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructure(view::kBareModel, L"bare-model", L"bm", nullptr);
    adder.AddSimple(view::kAB, L"a-b", L"ab", new ParameterTypeSerializer<int>);
    adder.AddSimple(view::kC, L"c", L"cc", new TStringSerializer);
    adder.AddSimple(view::kN, L"n", L"nn", new ParameterTypeSerializer<int>);
}

// A published registry with "qvcore", and "view" that falls back to it.
class ViewRegistry : public TestRegistry {
public:
    ViewRegistry() {
        RegisterCoreNamespaceParameters(*this, L"qvcore");
        Add(L"view", 1, 999, RegisterViewParameters);
        SetFallback(L"view", L"qvcore");
    }
};

// A bag as one line, by serializers alone: members upwards by identifier as name=value; [a,b] lists, {k:v} maps,
// (members) bags, <..> lists and maps of structures.
class BagDescription final : public IParameterVisitor {
public:
    static std::string Of(const IParameters& bag) {
        BagDescription description;
        bag.Accept(description);
        return description.m_text;
    }

    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override {
        const auto& registry = ParametersRegistry::Get();
        m_text += m_text.empty() ? "" : " ";
        m_text += registry.GetName(id, true).ToUtf8() + "=";
        switch (registry.GetType(id)) {
            case PTC_List:
                m_text += Listed(registry.GetListSerializer(id)->ToStringList(value));
                break;
            case PTC_Map:
                m_text += Mapped(registry.GetMapSerializer(id)->ToStringMap(value));
                break;
            case PTC_Text:
            case PTC_Number:
            case PTC_Bool:
                m_text += registry.GetValueString(value, id).ToUtf8();
                break;
            default:
                m_text += Structured(*value);
        }
    }

    static std::string Listed(const std::vector<TString>& texts) {
        std::string text;
        for (const TString& element : texts) {
            text += (&element == &texts.front() ? "" : ",") + element.ToUtf8();
        }
        return "[" + text + "]";
    }

    static std::string Mapped(const std::map<TString, TString>& texts) {
        std::string text = "{";
        for (const auto& [key, element] : texts) {
            text += (text.size() == 1 ? "" : ",") + key.ToUtf8() + ":" + element.ToUtf8();
        }
        return text + "}";
    }

private:
    static std::string Bag(const RefCntPtr<const IParameters>& bag) { return bag ? "(" + Of(*bag) + ")" : "null"; }

    static std::string Structured(const IParameter& value) {
        if (const auto* bag = dynamic_cast<const BagParameter*>(&value)) {
            return Bag(bag->GetValue());
        }
        if (const auto* text = dynamic_cast<const ValParameter<TString>*>(&value)) {
            return text->GetValue().ToUtf8();
        }
        if (const auto* texts = dynamic_cast<const ValParameter<std::vector<TString>>*>(&value)) {
            return Listed(texts->GetValue());
        }
        std::string result = "<";
        if (const auto* bags = dynamic_cast<const ValParameter<BagStructureSerializer::Bags>*>(&value)) {
            for (const auto& bag : bags->GetValue()) {
                result += (result.size() == 1 ? "" : ",") + Bag(bag);
            }
        } else if (const auto* map = dynamic_cast<const ValParameter<BagStructureSerializer::BagMap>*>(&value)) {
            for (const auto& [key, bag] : map->GetValue()) {
                result += (result.size() == 1 ? "" : ",") + key.ToUtf8() + ":" + Bag(bag);
            }
        } else {
            result += "a value of another type";
        }
        return result + ">";
    }

    std::string m_text;
};

// What reading came to, as one line: the bag, or the exception with its data.
template <class Reading>
std::string OutcomeOf(Reading&& read) {
    try {
        return BagDescription::Of(*read());
    } catch (const JSONParseException& e) {
        return e.GetStringId() == Messages::kJSONNotValid ? "not valid" : "mismatch: " + std::string(e.what());
    } catch (const ParameterNotFoundException& e) {
        return "not found: " + (e.GetID() != 0 ? std::to_string(e.GetID()) : e.GetName().ToUtf8());
    } catch (const ParameterParseException& e) {
        return "not parsed: " + std::to_string(e.GetID());
    } catch (const ParameterNamespaceNotFoundException& e) {
        return "no namespace: " + e.GetName().ToUtf8();
    } catch (const QuorvelException& e) {
        return "failure: " + std::string(e.what());
    } catch (const LogicException& e) {
        return "logic: " + std::string(e.GetExpression());
    } catch (const std::runtime_error& e) {
        return "runtime: " + std::string(e.what());
    }
}

// The message of a value that does not fit the member of this (converted) name.
inline std::string Mismatch(const std::string& member) {
    return "mismatch: The value of member \"" + member + "\" does not fit its parameter.";
}

// The exception of this type that a call throws; nothing, and a failed test, when it throws none or another.
template <class E, class Call>
std::optional<E> Caught(Call&& call) {
    try {
        call();
    } catch (const E& e) {
        return e;
    } catch (const std::exception& e) {
        ADD_FAILURE() << "another exception: " << e.what();
        return std::nullopt;
    }
    ADD_FAILURE() << "no exception";
    return std::nullopt;
}

// A test over the namespace "view". Texts are UTF-8, for short literals.
class JSONTest : public testing::Test {
protected:
    std::string Write(const RefCntPtr<TestBag>& bag, JSONSerializer::OutputType type = JSONSerializer::Compact) const {
        return m_json.ToString(bag, type).ToUtf8();
    }

    RefCntPtr<IParameters> Read(std::string_view json) const { return m_json.ToParameters(TString::FromUtf8(json)); }

    // See OutcomeOf.
    std::string Outcome(std::string_view json) const {
        return OutcomeOf([&] { return Read(json); });
    }
    std::string Outcome(const TString& json) const {
        return OutcomeOf([&] { return m_json.ToParameters(json); });
    }

    ViewRegistry m_registry;
    JSONSerializer m_json{L"view"};
};
