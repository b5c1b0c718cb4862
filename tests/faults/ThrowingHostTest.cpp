// Host code that throws, at each of its calls in turn: what was opened in a scope is closed, no event is lost or told
// twice, locks and counters are free, bags go, and the next try comes to its end.
#include <qvpreslayer/JSONSerializer.h>

#include <algorithm>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "faults/Trip.h"
#include "json/JSONTestSupport.h"

namespace {

using TrippingInt = TrippingSerializer<ParameterTypeSerializer<int>>;
using TrippingText = TrippingSerializer<TStringSerializer>;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

// A namespace of host code all through, in three parts.
class TrippingRegistry final : public TestRegistry {
public:
    // With plain records the structures are the library's own, which deep walks enter themselves.
    explicit TrippingRegistry(bool plainRecords = false) {
        RegisterNamespacePart(
            L"host",
            [this](AbstractParamAdder& adder) {
                Run("values");
                adder.AddSimple(1, L"number", L"nu", new TrippingInt);
                adder.AddSimple(2, L"text", L"te", new TrippingText);
                adder.AddList(3, L"list", L"li", new TrippingInt);
                adder.AddMap(4, L"map", L"ma", new TrippingText);
            },
            1, 99);
        RegisterNamespacePart(
            L"host",
            [this, plainRecords](AbstractParamAdder& adder) {
                Run("structures");
                const auto records = [plainRecords]() -> IStructureSerializer* {
                    return plainRecords ? new BagStructureSerializer : new TrippingStructureSerializer;
                };
                adder.AddBag(5, L"bag", L"ba");
                adder.AddStructure(6, L"record", L"re", records());
                adder.AddStructureList(7, L"records", L"rs", records());
                adder.AddStructureMap(9, L"by-key", L"bk", records());
                adder.AddStructureList(10, L"rows", L"ro",
                                       new TrippingStructureSerializer(BagStructureSerializer::List));
            },
            1, 99);
        RegisterNamespacePart(
            L"host",
            [this](AbstractParamAdder&) {
                Run("nothing");
                EXPECT_EQ(1, GetID(L"host", L"number", true)) << "what is there already";
            },
            1, 99);
    }

    RefCntPtr<IParameters> CreateParameters() override {
        Trip::Step("CreateParameters");
        return RefCntPtr<IParameters>(new TrippingBag(alive));
    }

    int alive = 0;  // bags
    std::vector<std::string> runs;

private:
    void Run(const char* part) {
        runs.push_back(part);
        Trip::Step(part);
    }
};

const std::vector<std::string> kAllParts{"values", "structures", "nothing"};

// Every kind of parameter, and bags in bags beyond the levels that are walked by calls.
RefCntPtr<TestBag> Everything(int& alive, int levels) {
    auto bag = MakeRefCnt<TrippingBag>(alive);
    bag->SetParameter(1, Val(5));
    bag->SetParameter(2, Text(L"x"));
    bag->SetParameter(3, Val(std::vector<int>{1, 2}));
    bag->SetParameter(4, Val(std::map<TString, TString>{{L"k", L"v"}}));
    const auto leaf = MakeRefCnt<TrippingBag>(alive);
    leaf->SetParameter(1, Val(7));
    bag->SetParameter(7, Val(Bags{leaf, leaf}));
    bag->SetParameter(9, Val(BagMap{{L"a", leaf}, {L"b", nullptr}}));
    for (int level = 1; level < levels; ++level) {
        auto outer = MakeRefCnt<TrippingBag>(alive);
        outer->SetParameter(level % 2 == 0 ? 5 : 6, BagVal(bag));
        outer->SetParameter(1, Val(level));
        bag = outer;
    }
    return bag;
}

// Whether the end of a start comes from a scope object: lists of serializers and records with braces of their own do,
// all that the walk itself starts does not.
bool IsScoped(const std::string& start) {
    return start == "StartList(list, 2)\n" || start == "StartComposite(record, false)\n" ||
           start == "StartComposite(records, false)\n";
}

std::string EndOf(const std::string& start) {
    const std::string name = start.substr(start.find('(') + 1, start.find(',') - start.find('(') - 1);
    return std::string(start.starts_with("StartList") ? "EndList(" : "EndComposite(") + name + ")\n";
}

// What is told when the walk ends behind so many events: these, and the ends of the scopes that are open. A start that
// failed has opened nothing.
std::vector<std::string> ToldWhenFailing(const std::vector<std::string>& all, std::size_t count, bool lastFailed) {
    std::vector<std::string> told(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    std::vector<std::string> open;
    for (std::size_t i = 0; i < count; ++i) {
        if (told[i].starts_with("Start")) {
            if (!lastFailed || i + 1 != count) {
                open.push_back(told[i]);
            }
        } else if (told[i].starts_with("End")) {
            open.pop_back();
        }
    }
    for (; !open.empty(); open.pop_back()) {
        if (IsScoped(open.back())) {
            told.push_back(EndOf(open.back()));
        }
    }
    return told;
}

// What operation comes to while call number of the host fails.
struct Tripped {
    bool failed;
    std::string where;
    std::string outcome;  // "done", "host failure", "not parsed ID"
};

template <class Operation>
Tripped RunTripping(int number, Operation&& operation) {
    Trip trip(number);
    std::string outcome = "done";
    try {
        operation();
    } catch (const HostFailure&) {
        outcome = "host failure";
    } catch (const ParameterParseException& e) {
        outcome = "not parsed " + std::to_string(e.GetID());
    }
    return {trip.HasFailed(), trip.Where(), outcome};
}

// The same on another thread, which waits for ever when a lock was left behind.
template <class Operation>
void OnAnotherThread(Operation operation) {
    std::thread(operation).join();
}

}  // namespace

TEST(ThrowingHost, FillingBeginsAgainWhicheverCallFailed) {
    const std::vector<void (*)(TrippingRegistry&)> lookups = {
        [](TrippingRegistry& r) { r.GetID(L"host", L"number", true); },
        [](TrippingRegistry& r) { r.GetName(1, true); },
        [](TrippingRegistry& r) { r.GetType(1); },
        [](TrippingRegistry& r) { r.GetValueSerializer(1); },
        [](TrippingRegistry& r) { r.GetListSerializer(3); },
        [](TrippingRegistry& r) { r.FindInfo(1); },
        [](TrippingRegistry& r) { r.FindNames(L"host", true); },
        [](TrippingRegistry& r) { r.GetNamespaceInfos(); },
    };
    for (const auto lookup : lookups) {
        std::set<std::string> places;
        for (int number = 0;; ++number) {
            TrippingRegistry registry;
            const Tripped tripped = RunTripping(number, [&] { lookup(registry); });
            if (!tripped.failed) {
                EXPECT_EQ("done", tripped.outcome);
                EXPECT_EQ(kAllParts, registry.runs);
                break;
            }
            EXPECT_EQ("host failure", tripped.outcome);
            places.insert(tripped.where);
            registry.runs.clear();
            OnAnotherThread([&] { lookup(registry); });
            EXPECT_EQ(kAllParts, registry.runs) << "all run again, from the first";
            registry.runs.clear();
            EXPECT_EQ(9U, registry.GetNamespaceInfos().at(0).second.size());
            EXPECT_EQ((std::vector<std::string>()), registry.runs) << "filled for good";
        }
        EXPECT_EQ((std::set<std::string>{"GetType", "nothing", "structures", "values"}), places);
    }
}

TEST(ThrowingHost, AnEagerNamespaceThatFailsIsNotThere) {
    for (int number = 0;; ++number) {
        TestRegistry registry;
        int runs = 0;
        const auto fill = [&](AbstractParamAdder& adder) {
            ++runs;
            Trip::Step("fill");
            adder.AddSimple(1, L"number", new TrippingInt);
            Trip::Step("fill's end");
        };
        const Tripped tripped = RunTripping(number, [&] { registry.RegisterNamespace(L"n", fill, 1, 9, true); });
        EXPECT_EQ(tripped.failed, !registry.HasNamespace(L"n"));
        if (!tripped.failed) {
            EXPECT_EQ(3, number);
            break;
        }
        EXPECT_EQ(nullptr, registry.FindInfo(1));
        EXPECT_NO_THROW(registry.RegisterNamespace(L"n", fill, 1, 9, true));
        EXPECT_EQ(PTC_Number, registry.GetType(1));
        EXPECT_EQ(2, runs);
    }
}

TEST(ThrowingHost, ClearingANamespaceThatCannotBeFilledLeavesIt) {
    TrippingRegistry registry;
    registry.AddUnserializable(1);
    EXPECT_EQ("host failure", RunTripping(0, [&] { registry.Clear(L"host"); }).outcome);
    EXPECT_TRUE(registry.HasNamespace(L"host"));
    EXPECT_TRUE(registry.IsUnserializable(1));
    EXPECT_EQ(PTC_Number, registry.GetType(1));
    EXPECT_NO_THROW(registry.Clear(L"host"));
    EXPECT_FALSE(registry.HasNamespace(L"host"));
}

TEST(ThrowingHost, WalksTellNothingTwiceAndCloseTheirScopes) {
    for (const auto& [levels, plainRecords] : {std::pair(2, false), {2, true}, {24, false}, {24, true}}) {
        TrippingRegistry registry(plainRecords);
        registry.GetNamespaceInfos();
        const auto bag = Everything(registry.alive, levels);
        const auto walk = [&](TrippingVisitor& visitor) { VisitParametersStructure(L"", bag, visitor); };
        TrippingVisitor undisturbed;
        walk(undisturbed);
        const std::vector<std::string>& all = undisturbed.Events();
        std::set<std::string> places;
        for (int number = 0;; ++number) {
            TrippingVisitor visitor;
            std::size_t told = 0;  // when the failure came
            const Tripped tripped = RunTripping(number, [&] { walk(visitor); });
            if (!tripped.failed) {
                EXPECT_EQ(all, visitor.Events());
                break;
            }
            EXPECT_EQ("host failure", tripped.outcome);
            places.insert(tripped.where);
            if (visitor.TrippedAt()) {
                told = *visitor.TrippedAt();
                ASSERT_EQ(ToldWhenFailing(all, told, true), visitor.Events()) << number;
            } else {
                // Which events came before is what the failure leaves open; the ends behind them are not.
                while (told < visitor.Events().size() && told < all.size() &&
                       ToldWhenFailing(all, told, false) != visitor.Events()) {
                    ++told;
                }
                ASSERT_EQ(ToldWhenFailing(all, told, false), visitor.Events()) << number << tripped.where;
            }
            TrippingVisitor again;
            OnAnotherThread([&] { walk(again); });
            ASSERT_EQ(all, again.Events()) << number;
            TrippingVisitor here;  // this thread's own counters
            walk(here);
            ASSERT_EQ(all, here.Events()) << number;
        }
        std::set<std::string> expected{"Accept",   "Accept's end", "GetType", "SerializeList", "SerializeList's end",
                                       "ToString", "ToStringMap",  "an event"};
        if (!plainRecords) {
            expected.insert({"IsListForm", "Serialize", "Serialize's end", "SplitList", "SplitMap"});
        }
        EXPECT_EQ(expected, places);
    }
}

// Ends that fail while a failure is on its way are dropped, all of them.
TEST(ThrowingHost, AVisitorThatFailsForGoodEndsTheWalkOnce) {
    TrippingRegistry registry;
    registry.GetNamespaceInfos();
    const auto bag = Everything(registry.alive, 24);
    class BrokenVisitor final : public IStructuredParameterVisitor {
    public:
        explicit BrokenVisitor(int number) : m_left(number) {}
        void Parameter(const TString&, const TString&, ParameterTypeCategory) override { Tell(); }
        void StartList(const TString&, ParameterTypeCategory) override { Tell(); }
        void ListItem(const TString&) override { Tell(); }
        void EndList(const TString&) override { Tell(); }
        void StartMap(const TString&, ParameterTypeCategory) override { Tell(); }
        void MapItem(const TString&, const TString&, bool) override { Tell(); }
        void EndMap(const TString&) override { Tell(); }
        void StartComposite(const TString&, bool) override { Tell(); }
        void EndComposite(const TString&) override { Tell(); }
        void NullMapItem(const TString&, bool) override { Tell(); }
        void StartCapture() override {}
        TString EndCapture() override { return {}; }
        void WriteCaptured(const TString&) override {}

    private:
        void Tell() {
            if (m_left-- <= 0) {
                throw HostFailure();
            }
        }
        int m_left;
    };
    int number = 0;
    for (bool done = false; !done; ++number) {
        BrokenVisitor visitor(number);
        try {
            VisitParametersStructure(L"", bag, visitor);
            done = true;
        } catch (const HostFailure&) {
        }
    }
    EXPECT_GT(number, 60);
}

TEST(ThrowingHost, WritingJSONAnswersAllOrNothing) {
    TrippingRegistry registry;
    registry.GetNamespaceInfos();
    const auto bag = Everything(registry.alive, 3);
    const JSONSerializer writer(L"host");
    for (const auto form : {JSONSerializer::Pretty, JSONSerializer::Compact}) {
        const TString text = writer.ToString(bag, form);
        for (int number = 0;; ++number) {
            const Tripped tripped = RunTripping(number, [&] { EXPECT_EQ(text, writer.ToString(bag, form)); });
            if (!tripped.failed) {
                EXPECT_EQ("done", tripped.outcome);
                break;
            }
            EXPECT_EQ("host failure", tripped.outcome);
            EXPECT_EQ(text, writer.ToString(bag, form));
        }
    }
}

TEST(ThrowingHost, ReadingJSONLeavesNoBagBehind) {
    const TString text =
        LR"({"number":5,"text":"x","list":[1,[2,3],[]],"map":{"k":"v"},"bag":{"number":1,"bag":{}},)"
        LR"("record":{"text":"y","records":[{"number":1},{}]},"records":[{"number":2},{"record":{}}],)"
        LR"("byKey":{"a":null,"b":{"number":3}},"rows":[["a","b"],[]]})";
    TrippingRegistry registry;
    const JSONSerializer reader(L"host");
    const TString written = reader.ToString(reader.ToParameters(text), JSONSerializer::Compact);
    std::set<std::string> places;
    for (int number = 0;; ++number) {
        const Tripped tripped = RunTripping(number, [&] { reader.ToParameters(text); });
        EXPECT_EQ(0, registry.alive) << number << tripped.where;
        if (!tripped.failed) {
            EXPECT_EQ("done", tripped.outcome);
            break;
        }
        places.insert(tripped.where);
        // What fails while a single value is parsed and stored is a parse failure of its parameter.
        const bool scalar = tripped.where == "FromString" || tripped.where == "SetParameter";
        EXPECT_TRUE(tripped.outcome == "host failure" || (scalar && tripped.outcome.starts_with("not parsed ")))
            << tripped.outcome << tripped.where;
        EXPECT_TRUE(tripped.where != "FromString" || tripped.outcome != "host failure");
        OnAnotherThread(
            [&] { EXPECT_EQ(written, reader.ToString(reader.ToParameters(text), JSONSerializer::Compact)); });
    }
    EXPECT_EQ(
        (std::set<std::string>{"CreateParameters", "FromParameters", "FromString", "FromStringList", "FromStringMap",
                               "IsListForm", "MakeList", "MakeMap", "PrepareElement", "SetParameter", "a bag"}),
        places);
}

// The first reading fills the namespace: when that fails, the next one fills it.
TEST(ThrowingHost, AFirstReadingThatCannotFillTheNamespaceMayBeRepeated) {
    for (int number = 0;; ++number) {
        TrippingRegistry registry;
        const JSONSerializer reader(L"host");
        const Tripped tripped = RunTripping(number, [&] { reader.ToParameters(L"{\"bag\":{\"list\":[1]}}"); });
        if (!tripped.failed) {
            break;
        }
        EXPECT_EQ(0, registry.alive);
        const bool filled = registry.runs == kAllParts && tripped.where != "nothing";
        registry.runs.clear();
        EXPECT_TRUE(reader.ToParameters(L"{\"bag\":{\"list\":[1]}}"));
        EXPECT_EQ(filled ? std::vector<std::string>() : kAllParts, registry.runs) << tripped.where;
    }
}

TEST(ThrowingHost, TheCallersBagStaysWhenParsingOrStoringFails) {
    TrippingRegistry registry;
    registry.GetNamespaceInfos();
    for (int number = 0;; ++number) {
        const RefCntPtr<IParameter> before = Val(1);
        const auto bag = MakeRefCnt<TrippingBag>(registry.alive);
        bag->SetParameter(1, before);
        const Tripped tripped = RunTripping(number, [&] { registry.FromString(L"host", bag, L"number", L"5", true); });
        if (!tripped.failed) {
            EXPECT_EQ(5, GetParameterValue<int>(*bag, 1));
            EXPECT_EQ(2, number);
            break;
        }
        EXPECT_EQ("not parsed 1", tripped.outcome);
        EXPECT_EQ(before.Get(), &bag->GetParameter(1));
    }
}

TEST(ThrowingHost, CloningABagThatCannotBeMade) {
    int alive = 0;
    const auto bag = Everything(alive, 1);
    const int before = alive;
    for (int number = 0; number < 2; ++number) {
        EXPECT_EQ("host failure", RunTripping(number, [&] { bag->Clone(); }).outcome);
        EXPECT_EQ(before, alive);
    }
    EXPECT_TRUE(bag->Clone()->HasParameter(9));
}

// Options come from the host too.
TEST(ThrowingHost, OptionsThatCannotBeAsked) {
    class TrippingVars final : public IBuilderVars {
    public:
        bool UseShortNames() const override {
            Trip::Step("UseShortNames");
            return false;
        }
        bool CompressArrays() const override {
            Trip::Step("CompressArrays");
            return false;
        }
        bool LossyEncodeImages() const override { return false; }
    };
    class TrippingSession final : public SessionContext {
    public:
        RefCntPtr<const IBuilderVars> GetIBuilderVars() const override {
            Trip::Step("GetIBuilderVars");
            return m_vars;
        }

    private:
        RefCntPtr<const IBuilderVars> m_vars{new TrippingVars};
    } session;
    const SessionContextScope scope(session);
    TrippingRegistry registry;
    const JSONSerializer json(L"host");
    const auto bag = Everything(registry.alive, 20);
    const TString text = json.ToString(bag, JSONSerializer::Compact);
    const int alive = registry.alive;
    std::set<std::string> places;
    for (int number = 0;; ++number) {
        const Tripped tripped =
            RunTripping(number, [&] { json.ToParameters(json.ToString(bag, JSONSerializer::Compact)); });
        if (!tripped.failed) {
            break;
        }
        places.insert(tripped.where);
        ASSERT_EQ(alive, registry.alive);
        ASSERT_EQ(text, json.ToString(bag, JSONSerializer::Compact));
    }
    EXPECT_TRUE(places.contains("UseShortNames") && places.contains("CompressArrays") &&
                places.contains("GetIBuilderVars"));
}
