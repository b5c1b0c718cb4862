// Walks, streams and scopes without memory: what was told stays told, what was opened in a scope is closed.
#include <qvpreslayer/VisitParametersStructure.h>

#include <optional>
#include <vector>

#include "faults/Subjects.h"
#include "hostile/NestedForms.h"
#include "json/JSONTestSupport.h"

namespace {

using enum Promise;

// Counts starts and ends of each sort, and allocates nothing.
class BalanceVisitor final : public IStructuredParameterVisitor {
public:
    void Parameter(const TString&, const TString&, ParameterTypeCategory) override { ++events; }
    void StartList(const TString&, ParameterTypeCategory) override { ++lists; }
    void ListItem(const TString&) override { ++events; }
    void EndList(const TString&) override { --lists; }
    void StartMap(const TString&, ParameterTypeCategory) override { ++maps; }
    void MapItem(const TString&, const TString&, bool) override { ++events; }
    void EndMap(const TString&) override { --maps; }
    void StartComposite(const TString&, bool) override { ++composites; }
    void EndComposite(const TString&) override { --composites; }
    void NullMapItem(const TString&, bool) override { ++events; }
    void StartCapture() override {}
    TString EndCapture() override { return {}; }
    void WriteCaptured(const TString&) override {}

    int lists = 0;
    int maps = 0;
    int composites = 0;
    int events = 0;
};

// The registry of the view, filled.
class FilledRegistry final : public ViewRegistry {
public:
    FilledRegistry() {
        GetType(view::kN);
        GetType(static_cast<int>(CoreParameterID::IntRLE));
    }
};

// A bag with a parameter of every kind.
RefCntPtr<TestBag> Everything() {
    const auto inner = MakeBag({{view::kN, Val(1)}});
    return MakeBag({{view::kMaxCount, Val(5)},
                    {view::kText, Text(kLong)},
                    {view::kUuid, Val(TUUID())},
                    {view::kIntList, Val(std::vector<int>{1, 2, 3, 4, 5, 9, 9, 9, 9, 1})},
                    {view::kRealList, Val(std::vector<double>{1.5, 1.5, 1.5, 1.5, 2})},
                    {view::kHoursList, Val(std::vector<HoursDuration>(3, HoursDuration(4)))},
                    {view::kMyMap, Val(std::map<TString, TString>{{kLong, kLong}, {L"k", L"v"}})},
                    {view::kSubBag, BagVal(inner)},
                    {view::kMyModel, BagVal(inner)},
                    {view::kItems, Val(BagStructureSerializer::Bags{inner, inner})},
                    {view::kByKey, Val(BagStructureSerializer::BagMap{{L"a", inner}, {L"b", nullptr}})}});
}

Subject Walking(const RefCntPtr<TestBag>& bag, bool compress) {
    return Nothing([=] {
        BalanceVisitor visitor;
        VisitStructuredParameters(ParametersRegistry::Get(), bag, visitor, true, compress).Walk();
    });
}

// An operation on a stream over scopes: all that a scope opened is closed.
template <class Operation>
Scenario Balanced(const char* name, Operation operation) {
    return {name, Basic, [=] {
                return Nothing([=] {
                    BalanceVisitor visitor;
                    SerializeStructure stream(visitor, true, true);
                    const struct Balance {
                        const BalanceVisitor& visitor;
                        ~Balance() {
                            EXPECT_EQ(0, visitor.lists);
                            EXPECT_EQ(0, visitor.maps);
                            EXPECT_EQ(0, visitor.composites);
                        }
                    } balance{visitor};
                    operation(stream);
                });
            }};
}

}  // namespace

TEST(Faults, Walking) {
    const FilledRegistry registry;
    std::vector<Scenario> scenarios = {
        {"an empty bag", Basic, [] { return Walking(MakeBag(), false); }},
        {"every kind", Basic, [] { return Walking(Everything(), false); }},
        {"every kind, packed", Basic, [] { return Walking(Everything(), true); }},
        {"an identifier that is not registered", Basic,
         [] {
             return Walking(MakeBag({{9999, Val(1)}}), false);
         }},
        {"too deep", Basic, [] { return Walking(kNestedForms[0].Bags(1001), false); }},
    };
    for (const NestedForm& form : kNestedForms) {
        scenarios.push_back({form.name, Basic, [&form] { return Walking(form.Bags(60), false); }});
    }
    CheckUnderFaults(scenarios);
}

TEST(Faults, Streams) {
    const FilledRegistry registry;
    const std::vector<int> numbers{1, 2, 3, 4, 5, 9, 9, 9, 9, 1};
    const std::vector<DataValue> typedValues(10, DataValue(7));
    const auto records = MakeRefCnt<BagStructureSerializer>();
    const auto inner = MakeBag({{view::kText, Text(kLong)}, {view::kIntList, Val(numbers)}});
    const RefCntPtr<const IParameter> record(BagVal(inner));
    const RefCntPtr<const IParameter> list(Val(BagStructureSerializer::Bags(5, inner)));
    const RefCntPtr<const IParameter> map(Val(BagStructureSerializer::BagMap{{kLong, inner}, {L"b", nullptr}}));
    CheckUnderFaults({
        Balanced("a parameter", [](SerializeStructure& s) { s.Parameter(view::kText, kLong); }),
        Balanced("scopes in scopes",
                 [](SerializeStructure& s) {
                     const CompositeStructure composite(view::kMyModel, s);
                     const MapStructure entries(view::kByKey, s);
                     const MapItemStructure entry(kLong, s);
                     const ListStructure items(view::kIntList, s, PTC_None);
                     const SubStructure sub(view::kMyModel, s, false);
                     s.ListItem(TString::number(5));
                     ThrowLogicException("on the way", 1, "here");
                 }),
        Balanced("an identifier that is not there", [](SerializeStructure& s) { CompositeStructure(9999, s); }),
        Balanced("integers",
                 [=](SerializeStructure& s) {
                     MakeRefCnt<ParameterTypeSerializer<int>>()->SerializeVector(s, view::kIntList, numbers);
                 }),
        Balanced("typed values",
                 [=](SerializeStructure& s) {
                     MakeRefCnt<ParameterTypeSerializer<DataValue>>()->SerializeVector(s, view::kIntList, typedValues);
                 }),
        Balanced("a record", [=](SerializeStructure& s) { records->Serialize(record, s, view::kMyModel, true); }),
        Balanced("no record", [=](SerializeStructure& s) { records->Serialize(list, s, view::kMyModel, true); }),
    });
    CheckUnderFaults({
        {"splitting a list", Strong, [=] { return Nothing([=] { records->SplitList(list); }); }},
        {"splitting a map", Strong, [=] { return Nothing([=] { records->SplitMap(map); }); }},
        {"a structure of a bag", Strong, [=] { return Nothing([=] { records->FromParameters(1, inner); }); }},
        {"a list of structures", Strong,
         [=] { return Nothing([=, elements = std::vector(9, BagVal(inner))] { records->MakeList(elements); }); }},
        {"a map of structures", Strong,
         [=] {
             return Nothing([=, entries = std::map<TString, RefCntPtr<IParameter>>{{kLong, BagVal(inner)}}] {
                 records->MakeMap(entries);
             });
         }},
    });
}
