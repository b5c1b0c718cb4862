// Serializers of values without memory: each type, each operation, small and large.
#include <qvpreslayer/ParameterTypeSerializer.h>

#include <map>
#include <vector>

#include "faults/Subjects.h"
#include "support/TypedValues.h"

namespace {

using enum Promise;

// A registry for what needs names: the core namespace and lists of each type that packs.
class SerializerRegistry final : public TestRegistry {
public:
    SerializerRegistry() {
        RegisterCoreNamespaceParameters(*this, L"qvcore");
        GetType(static_cast<int>(CoreParameterID::IntRLE));  // fills it
    }
};

// Single values, lists and maps of a type, to texts and back: of count elements.
template <class T, class Serializer = ParameterTypeSerializer<T>>
std::vector<Scenario> AllOf(const char* name, const T& value, std::size_t count) {
    const auto serializer = MakeRefCnt<Serializer>();
    const RefCntPtr<const IParameter> single(Val(value));
    const RefCntPtr<const IParameter> list(Val(std::vector<T>(count, value)));
    std::map<TString, T> entries;
    for (std::size_t i = 0; i < count; ++i) {
        entries.emplace(kLong + TString::number(static_cast<UInt64>(i)), value);
    }
    const RefCntPtr<const IParameter> map(Val(entries));
    const RefCntPtr<const IParameter> other(Val(std::vector<char>()));
    const TString text = serializer->ToString(single);
    const std::vector<TString> texts = serializer->ToStringList(list);
    const std::map<TString, TString> mapTexts = serializer->ToStringMap(map);
    const auto scenario = [name](auto operation) { return Scenario{name, Strong, [=] { return Nothing(operation); }}; };
    return {
        scenario([=] { serializer->ToString(single); }),   scenario([=] { serializer->FromString(text); }),
        scenario([=] { serializer->FromString(kLong); }),  // no text of most types
        scenario([=] { serializer->ToStringList(list); }), scenario([=] { serializer->FromStringList(texts, {}); }),
        scenario([=] { serializer->ToStringMap(map); }),   scenario([=] { serializer->FromStringMap(mapTexts); }),
        scenario([=] { serializer->ToString(other); }),    scenario([=] { serializer->ToString(nullptr); }),
    };
}

// So many runs among as many plain elements, as a reader hands them over.
template <class T>
Scenario Expanding(const char* name, std::size_t runs, const TString& first = L"1") {
    const auto serializer = MakeRefCnt<ParameterTypeSerializer<T>>();
    const std::vector<TString> values(runs, first);
    std::vector<RunRecord> records;
    for (std::size_t i = 0; i < runs; ++i) {
        records.push_back({static_cast<int>(2 * i), {first, L"5", L"2"}});
    }
    records.push_back({static_cast<int>(2 * runs), {}});
    return {name, Strong, [=] { return Nothing([=] { serializer->FromStringList(values, records); }); }};
}

}  // namespace

TEST(Faults, SerializersOfValues) {
    const SerializerRegistry registry;
    for (const std::size_t count : {std::size_t{3}, std::size_t{40}}) {
        CheckUnderFaults(AllOf<int>("int", -5, count));
        CheckUnderFaults(AllOf<unsigned int>("unsigned int", 5, count));
        CheckUnderFaults(AllOf<Int64>("Int64", Int64{-1} << 60, count));
        CheckUnderFaults(AllOf<UInt64>("UInt64", ~UInt64{0}, count));
        CheckUnderFaults(AllOf<float>("float", 0.25f, count));
        CheckUnderFaults(AllOf<double>("double", 1e300 / 3, count));
        CheckUnderFaults(AllOf<bool>("bool", true, count));
        CheckUnderFaults(AllOf<TString, TStringSerializer>("TString", kLong, count));
        CheckUnderFaults(AllOf<TUUID>("TUUID", TUUID(), count));
        CheckUnderFaults(AllOf<FieldName>("FieldName", FieldName::ParseGlobal(kLong), count));
        CheckUnderFaults(AllOf<QualifiedName>("QualifiedName", QualifiedName::ParseGlobal(L"[a].[b]"), count));
        CheckUnderFaults(AllOf<PasswordString>("PasswordString", PasswordString(kLong), count));
        CheckUnderFaults(
            AllOf<NanosecondsDuration>("NanosecondsDuration", NanosecondsDuration(1) * (Int64{1} << 60), count));
        CheckUnderFaults(AllOf<WhiskerEnd>("an enumeration", WhiskerEnd::Small, count));
        CheckUnderFaults(AllOf<CoreParameterID>("CoreParameterID", CoreParameterID::IntRLE, count));
        CheckUnderFaults(AllOf<DataValue>("DataValue", typed::String(kLong, L"en_US"), count));
        CheckUnderFaults(AllOf<DataValue>(
            "a tuple", typed::TupleOf({1, 0.5, typed::String(kLong), typed::TupleOf({typed::Day(2024, 2, 29)})}),
            count));
    }
}

TEST(Faults, TuplesAndBareTexts) {
    const auto tuple = typed::MakeTuple({1, typed::String(kLong), typed::TupleOf({true})});
    const TString text = TupleDataValueSerializer::ToString(tuple);
    const DataValue value = typed::String(kLong);
    CheckUnderFaults({
        {"a tuple", Strong, [=] { return Nothing([=] { TupleDataValueSerializer::ToString(tuple); }); }},
        {"a tuple back", Strong, [=] { return Nothing([=] { TupleDataValueSerializer::FromString(text); }); }},
        {"no tuple", Strong, [=] { return Nothing([] { TupleDataValueSerializer::FromString(kLong); }); }},
        {"a bare text", Strong, [=] { return Nothing([=] { ContextualDataValueSerializerCore::ToString(value); }); }},
        {"a value without a name", Strong,
         [] {
             return Nothing([] { ParameterTypeSerializer<WhiskerEnd>::TypeToString(static_cast<WhiskerEnd>(99)); });
         }},
    });
}

TEST(Faults, ExpandingRuns) {
    for (const std::size_t runs : {std::size_t{2}, std::size_t{100}}) {
        CheckUnderFaults({
            Expanding<int>("int", runs),
            Expanding<unsigned int>("unsigned int", runs),
            Expanding<Int64>("Int64", runs),
            Expanding<UInt64>("UInt64", runs),
            Expanding<float>("float", runs),
            Expanding<double>("double", runs),
            Expanding<DataValue>("typed values", runs, L"i:1"),
            Expanding<DataValue>("typed values that cannot step", runs, L"b:true"),
        });
    }
    CheckUnderFaults({{"beyond the budget", Strong, [] {
                           return Nothing([] { PresLayerLimits::ExpansionBudgetScope::Spend(std::size_t{1} << 40); });
                       }}});
}
