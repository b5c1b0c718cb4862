// Walks that write into a text which a host has begun: inside an open list, inside a capture, behind other events.
#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/VisitParametersStructure.h>

#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

class OpenFrame : public JSONTest {
protected:
    static RefCntPtr<TestBag> Bag() {
        return MakeBag({
            {view::kMaxCount, Val<int>(3)},
            {view::kText, Text(L"t")},
            {view::kIntList, Val<std::vector<int>>({1, 2, 3, 4})},
            {view::kTextList, Val<std::vector<TString>>({L"a", L"b"})},
            {view::kMyMap, Val<std::map<TString, TString>>({{L"k", L"v"}})},
            {view::kSubBag, BagVal(MakeBag({{view::kAB, Val<int>(1)}}))},
        });
    }

    static std::string WalkedInList(JSONSerializer::OutputType type, bool packed = false) {
        const TestSession session(false, packed);
        TString out;
        BuildParameterStrings visitor(out, type, false, false, false);
        visitor.StartList(L"items", PTC_Structure);
        VisitParametersStructure(L"view", Bag(), visitor);
        visitor.EndList(L"items");
        visitor.Finish();
        return out.ToUtf8();
    }
};

// Keeps the text of the structure that it writes, and what came before it in the same capture.
class KeepingSerializer : public BagStructureSerializer {
public:
    explicit KeepingSerializer(std::vector<std::string>& kept) : m_kept(kept) {}

    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        stream.GetVisitor().StartCapture();
        BagStructureSerializer::Serialize(value, stream, id, ownComposite);
        m_kept.push_back(stream.GetVisitor().EndCapture().ToUtf8());
    }

private:
    std::vector<std::string>& m_kept;
};

}  // namespace

// In a list no element has a name, whether it comes as an event or as a value; inside nested objects names are back.
TEST_F(OpenFrame, ParametersInAListHaveNoNames) {
    EXPECT_EQ(R"({"items":[3,"t",[1,2,3,4],["a","b"],{"k":"v"},{"aB": 1}]})", WalkedInList(JSONSerializer::Compact));
    EXPECT_EQ(R"({"items":[3,"t",[[1,4,1],[]],["a","b"],{"k":"v"},{"aB": 1}]})",
              WalkedInList(JSONSerializer::Compact, true));
    EXPECT_EQ(R"({items:[3,"t",[1,2,3,4],["a","b"],{k:"v"},{aB: 1}]})", WalkedInList(JSONSerializer::UnquotedNames));
    EXPECT_EQ(R"([3,"t",[1,2,3,4],["a","b"],{"k":"v"},{"a-b": 1}])", WalkedInList(JSONSerializer::BareRawNames));
}

TEST_F(OpenFrame, ParametersInAListOfPrettyStandOnLinesOfTheirOwn) {
    EXPECT_EQ(
        "{\n"
        "  \"items\": [\n"
        "    3, \n"
        "    \"t\", \n"
        "    [\n"
        "      1, \n"
        "      2, \n"
        "      3, \n"
        "      4\n"
        "    ], \n"
        "    [\n"
        "      \"a\", \n"
        "      \"b\"\n"
        "    ], \n"
        "    {\n"
        "      \"k\": \"v\"\n"
        "    }, \n"
        "    {\n"
        "      \"aB\": 1\n"
        "    }\n"
        "  ]\n"
        "}",
        WalkedInList(JSONSerializer::Pretty));
}

TEST_F(OpenFrame, AWalkGoesOnBehindEventsOfTheHost) {
    const TestSession session;
    TString out;
    BuildParameterStrings visitor(out, JSONSerializer::Compact, false, false, false);
    visitor.Parameter(L"own-one", L"1", PTC_Number);
    VisitParametersStructure(L"view", MakeBag({{view::kMaxCount, Val<int>(3)}}), visitor);
    VisitParametersStructure(L"view", MakeBag({{view::kIntList, Val<std::vector<int>>({1})}}), visitor);
    visitor.Parameter(L"own-two", L"2", PTC_Number);
    visitor.Finish();
    EXPECT_EQ(R"({"ownOne": 1,"maxCount": 3,"intList":[1],"ownTwo": 2})", out.ToUtf8());
}

// The first name of the bare forms is dropped from the first list too, however its elements are written.
TEST_F(OpenFrame, BareDropsTheNameOfAFirstList) {
    for (const bool packed : {false, true}) {
        const TestSession session(false, packed);
        const auto bag = MakeBag(
            {{view::kIntList, Val<std::vector<int>>({1, 2})}, {view::kTextList, Val<std::vector<TString>>({L"a"})}});
        EXPECT_EQ(R"([1,2],"textList":["a"])", Write(bag, JSONSerializer::Bare));
    }
}

// What a capture answers is the text, whichever way it went into the document.
TEST_F(OpenFrame, CapturesHoldListsAndScalarsAsTheyAreWritten) {
    std::vector<std::string> kept;
    TestRegistry registry;
    registry.Add(L"kept", 1, 9, [&kept](AbstractParamAdder& adder) {
        adder.AddStructure(1, L"model", L"m", new KeepingSerializer(kept));
        adder.AddList(2, L"some-reals", L"sr", new ParameterTypeSerializer<double>);
        adder.AddList(3, L"some-texts", L"st", new TStringSerializer);
        adder.AddSimple(4, L"a-number", L"an", new ParameterTypeSerializer<int>);
        adder.AddStructureList(5, L"models", L"ms", new KeepingSerializer(kept));
    });
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    const auto inner = [] {
        return MakeBag({{2, Val<std::vector<double>>({0.5, 2, 2, 2, 2})},
                        {3, Val<std::vector<TString>>({L"a\"b"})},
                        {4, Val<int>(7)}});
    };
    JSONSerializer json(L"kept");
    json.EnableCapture(true, false);
    const auto bag = MakeBag({{1, BagVal(inner())},
                              {5, Val<BagStructureSerializer::Bags>({BagStructureSerializer::Bag(inner()),
                                                                     BagStructureSerializer::Bag(MakeBag())})}});
    {
        const TestSession session;
        const std::string model = R"({"someReals":[0.5,2,2,2,2],"someTexts":["a\"b"],"aNumber": 7})";
        EXPECT_EQ("{\"model\":" + model + ",\"models\":[" + model + ",{}]}",
                  json.ToString(bag, JSONSerializer::Compact).ToUtf8());
        EXPECT_EQ((std::vector<std::string>{"\"model\":" + model, model, ",{}"}), kept);
    }
    kept.clear();
    {
        const TestSession session(true, true);
        json.ToString(bag, JSONSerializer::Compact);
        EXPECT_EQ(R"("m":{"sr":[0.5,[2,4],[]],"st":["a\"b"],"an": 7})", kept[0]);
    }
    kept.clear();
    {
        const TestSession session;
        json.ToString(MakeBag({{1, BagVal(MakeBag({{3, Val<std::vector<TString>>({L"a", L"b"})}}))}}),
                      JSONSerializer::Pretty);
        EXPECT_EQ("  \"model\": {\n    \"someTexts\": [\n      \"a\", \n      \"b\"\n    ]\n  }", kept[0]);
    }
}

// A capture that starts between the elements of a list which the walk writes: the separator belongs to it.
TEST_F(OpenFrame, CapturesOfDirectlyWrittenElementsBeginWithTheirSeparator) {
    const TestSession session;
    TString out;
    BuildParameterStrings visitor(out, JSONSerializer::Compact, true, true, false);
    VisitParametersStructure(L"view", MakeBag({{view::kMaxCount, Val<int>(3)}}), visitor);
    visitor.StartCapture();
    VisitParametersStructure(L"view", MakeBag({{view::kIntList, Val<std::vector<int>>({1, 2})}}), visitor);
    EXPECT_EQ(R"(,"intList":[1,2])", visitor.EndCapture().ToUtf8());
}
