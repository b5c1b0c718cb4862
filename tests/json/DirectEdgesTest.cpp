// Where the short ways between values and text begin and end: long names, maps of every type, levels, what host code
// changes meanwhile, and values and texts that only the long way can tell of.
#include <ucontext.h>

#include <limits>
#include <map>
#include <string>
#include <vector>

#include "json/JSONTestSupport.h"
#include "support/Sanitized.h"

namespace {

class DirectEdges : public JSONTest {
protected:
    ~DirectEdges() override {
        PresLayerLimits::SetJSONDepth(PresLayerLimits::kDefaultJSONDepth);
        PresLayerLimits::SetStackReserve(PresLayerLimits::kDefaultStackReserve);
    }

    // Reads twice, so that the second time every namespace is filled.
    std::string ReadTwice(std::string_view json) {
        const std::string first = Outcome(json);
        EXPECT_EQ(first, Outcome(json)) << json;
        return first;
    }
};

TEST_F(DirectEdges, NamesOfEveryLength) {
    m_registry.Add(L"long", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(2001, L"a-very-long-name-that-does-not-fit-in-the-place-of-names", L"l",
                        new ParameterTypeSerializer<int>);
        adder.AddSimple(2002, L"beginning-abcd-one-the-ending", L"o", new ParameterTypeSerializer<int>);
        adder.AddSimple(2003, L"beginning-abcd-two-the-ending", L"t", new ParameterTypeSerializer<int>);
        adder.AddSimple(2004, L"z", L"z", new ParameterTypeSerializer<int>);
    });
    m_json = JSONSerializer(L"long");
    const std::string text = R"({"aVeryLongNameThatDoesNotFitInThePlaceOfNames": 1,"beginningAbcdOneTheEnding": 2,)"
                             R"("beginningAbcdTwoTheEnding": 3,"z": 4})";
    EXPECT_EQ(text, Write(MakeBag({{2001, Val(1)}, {2002, Val(2)}, {2003, Val(3)}, {2004, Val(4)}})));
    EXPECT_EQ(
        "a-very-long-name-that-does-not-fit-in-the-place-of-names=1 beginning-abcd-one-the-ending=2 "
        "beginning-abcd-two-the-ending=3 z=4",
        ReadTwice(text));
    EXPECT_EQ(R"({"z": 4})", Write(MakeBag({{2004, Val(4)}})));
    const std::string blanks(200, ' ');  // so that the names do not stand at the end of the text
    EXPECT_EQ("beginning-abcd-one-the-ending=5", ReadTwice(R"({"beginningAbcdOneTheEnding": 5})" + blanks));
    EXPECT_EQ("beginning-abcd-two-the-ending=6", ReadTwice(R"({"beginningAbcdTwoTheEnding": 6})" + blanks));
    EXPECT_EQ("beginning-abcd-two-the-ending=7", ReadTwice(R"({"beginningAbcdTwoTheEnding": 7})"));
    EXPECT_EQ("not found: beginning-abcd-six-the-ending", ReadTwice(R"({"beginningAbcdSixTheEnding": 7})" + blanks));
}

TEST_F(DirectEdges, ShortNamesThatAreEscaped) {
    m_registry.Add(L"quoted", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(2001, L"first", L"a\"b", new ParameterTypeSerializer<int>);
        adder.AddSimple(2002, L"second", L"c\\d", new ParameterTypeSerializer<int>);
    });
    m_json = JSONSerializer(L"quoted");
    const TestSession session(true);
    const std::string text = R"({"a\"b": 1,"c\\d": 2})";
    EXPECT_EQ(text, Write(MakeBag({{2001, Val(1)}, {2002, Val(2)}})));
    EXPECT_EQ("first=1 second=2", ReadTwice(text));
}

TEST_F(DirectEdges, AShortNameThatWasGivenAgainLeadsToTheLaterParameter) {
    m_registry.Add(L"again", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(2001, L"first", L"s", new ParameterTypeSerializer<int>);
        adder.AddSimple(2002, L"second", L"s", new ParameterTypeSerializer<int>);
    });
    m_json = JSONSerializer(L"again");
    EXPECT_EQ("first=1 second=2", ReadTwice(R"({"first": 1, "second": 2})"));
    const TestSession session(true);
    EXPECT_EQ("second=3", ReadTwice(R"({"s": 3})"));
}

template <class T>
RefCntPtr<IParameter> MapOf(T first, T second) {
    return Val(std::map<TString, T>{{L"a-b", first}, {L"c", second}});
}

class DirectMaps : public DirectEdges {
protected:
    DirectMaps() {
        m_registry.Add(L"maps", 2000, 2099, [](AbstractParamAdder& adder) {
            adder.AddMap(2001, L"int", L"i", new ParameterTypeSerializer<int>);
            adder.AddMap(2002, L"unsigned", L"u", new ParameterTypeSerializer<unsigned int>);
            adder.AddMap(2003, L"long", L"l", new ParameterTypeSerializer<Int64>);
            adder.AddMap(2004, L"unsigned-long", L"ul", new ParameterTypeSerializer<UInt64>);
            adder.AddMap(2005, L"float", L"f", new ParameterTypeSerializer<float>);
            adder.AddMap(2006, L"double", L"d", new ParameterTypeSerializer<double>);
            adder.AddMap(2007, L"bool", L"b", new ParameterTypeSerializer<bool>);
            adder.AddMap(2008, L"text", L"t", new TStringSerializer);
            adder.AddMap(2009, L"align", L"al", new ParameterTypeSerializer<TextAlign>);
        });
        m_json = JSONSerializer(L"maps");
    }
};

TEST_F(DirectMaps, AreWrittenBareOrQuotedByTheirType) {
    using Limits = std::numeric_limits<Int64>;
    const auto bag = MakeBag({{2001, MapOf<int>(-1, std::numeric_limits<int>::min())},
                              {2002, MapOf<unsigned int>(0, 4294967295U)},
                              {2003, MapOf<Int64>(Limits::min(), Limits::max())},
                              {2004, MapOf<UInt64>(0, std::numeric_limits<UInt64>::max())},
                              {2005, MapOf<float>(0.5F, -2)},
                              {2006, MapOf<double>(0.25, 1e20)},
                              {2007, MapOf<bool>(true, false)},
                              {2008, MapOf<TString>(L"x", L"\"")}});
    EXPECT_EQ(R"({"int":{"aB":-1,"c":-2147483648},"unsigned":{"aB":0,"c":4294967295},)"
              R"("long":{"aB":-9223372036854775808,"c":9223372036854775807},)"
              R"("unsignedLong":{"aB":0,"c":18446744073709551615},"float":{"aB":0.5,"c":-2},)"
              R"("double":{"aB":0.25,"c":100000000000000000000},"bool":{"aB":true,"c":false},)"
              R"("text":{"aB":"x","c":"\""}})",
              Write(bag));
}

TEST_F(DirectMaps, AreReadWithTheirKeysAsTheyStand) {
    EXPECT_EQ(
        "int={aB:-1,c:2} unsigned={a:4294967295} long={a:-5,b:7} unsigned-long={a:9} float={a:0.5} double={a:0.25} "
        "bool={a:true} text={a:x}",
        ReadTwice(R"({"int":{"aB":-1,"c":2},"unsigned":{"a":4294967295},"long":{"a":-5,"b":7},)"
                  R"("unsignedLong":{"a":9},"float":{"a":0.5},"double":{"a":0.25},"bool":{"a":true},)"
                  R"("text":{"a":"x"}})"));
    const RefCntPtr<IParameters> bag = Read(R"({"unsigned":{"k":1},"unsignedLong":{"k":2},"align":{"k":"up"}})");
    EXPECT_EQ((std::map<TString, unsigned int>{{L"k", 1}}),
              (GetParameterValue<std::map<TString, unsigned int>>(*bag, 2002)));
    EXPECT_EQ((std::map<TString, UInt64>{{L"k", 2}}), (GetParameterValue<std::map<TString, UInt64>>(*bag, 2004)));
}

TEST_F(DirectMaps, TextsThatAreNotValid) {
    EXPECT_EQ("int={a:1}", ReadTwice(R"({"int":{"a":1}})"));
    for (const char* const text :
         {R"({"int":{a:1}})", R"({"int":{"a":1,b:2}})", R"({"int":{"a" 1}})", R"({"int":{"a":1 "b":2}})",
          R"({"int":{"a":1]})", R"({"text":{"a":"x"]})", R"({"unsigned":{"a":1})", R"({"bool":{"a":true,}})"}) {
        EXPECT_EQ("not valid", ReadTwice(text)) << text;
    }
}

TEST_F(DirectEdges, StructuresThatAreNotValid) {
    EXPECT_EQ("items=<()> by-key=<a:()>", ReadTwice(R"({"items":[{}],"byKey":{"a":{}}})"));
    for (const char* const text :
         {R"({"items":[{}}})", R"({"items":[{} {}]})", R"({"items":[{},]})", R"({"items":[{})", R"({"byKey":{"a":{}])",
          R"({"byKey":{a:{}}})", R"({"byKey":{"a":{},b:{}}})", R"({"byKey":{"a":{} "b":{}}})", R"({"byKey":{"a" {}}})",
          R"({"subBag":{"n":1]})", R"({"intList":[[1,4}]})"}) {
        EXPECT_EQ("not valid", ReadTwice(text)) << text;
    }
}

// Every object and every array is a level.
TEST_F(DirectEdges, LevelsOfEveryKind) {
    const struct {
        const char* json;
        int levels;
        const char* bag;
    } cases[] = {
        {R"({"n": 1})", 1, "n=1"},
        {R"({"subBag": {}})", 2, "sub-bag=()"},
        {R"({"myModel": {"n": 1}})", 2, "my-model=(n=1)"},
        {R"({"intList": []})", 2, "int-list=[]"},
        {R"({"intList": [[1,4],[]]})", 3, "int-list=[1,1,1,1]"},
        {R"({"intList": [[]]})", 3, "int-list=[]"},
        {R"({"textList": ["a"]})", 2, "text-list=[a]"},
        {R"({"intMap": {}})", 2, "int-map={}"},
        {R"({"items": []})", 2, "items=<>"},
        {R"({"items": [{}]})", 3, "items=<()>"},
        {R"({"byKey": {}})", 2, "by-key=<>"},
        {R"({"byKey": {"a": {}}})", 3, "by-key=<a:()>"},
    };
    for (const auto& c : cases) {
        PresLayerLimits::SetJSONDepth(c.levels);
        EXPECT_EQ(c.bag, ReadTwice(c.json)) << c.json;
        PresLayerLimits::SetJSONDepth(c.levels - 1);
        EXPECT_EQ("not valid", ReadTwice(c.json)) << c.json;
    }
}

TEST_F(DirectEdges, ValuesOfAnotherTypeAreToldByTheLongWay) {
    for (const int id : {view::kMaxCount, view::kText, view::kUuid, view::kIntList, view::kTextList, view::kUuidList,
                         view::kIntMap, view::kMyMap, view::kSubBag, view::kMyModel, view::kItems, view::kByKey}) {
        const auto bag = MakeBag({{id, Val<std::vector<HoursDuration>>({})}});
        const auto failure = Caught<TypeMismatchCommandException>([&] { Write(bag); });
        EXPECT_TRUE(failure) << id;
    }
}

TEST_F(DirectEdges, AnElementThatIsNoneOfItsEnumeration) {
    m_registry.Add(L"style", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddList(2001, L"aligns", L"as", new ParameterTypeSerializer<TextAlign>);
    });
    const auto none = static_cast<TextAlign>(99);
    const auto bag = MakeBag({{2001, Val(std::vector<TextAlign>{TextAlign::TextAlignCenter, none})}});
    const auto failure = Caught<QuorvelException>([&] { Write(bag); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(LookupTStr(Messages::kEnumValueUnknown).ToUtf8(), failure->what());
    EXPECT_EQ(R"({"aligns":["text-align-center"]})",
              Write(MakeBag({{2001, Val(std::vector<TextAlign>{TextAlign::TextAlignCenter})}})));
}

// Tells one parameter, whatever it holds.
class TellingBag final : public TestBag {
public:
    void Accept(IParameterVisitor& visitor) const override { visitor.VisitParameter(view::kC, Text(L"told")); }
};

TEST_F(DirectEdges, BagsThatTellOtherParametersThanTheyHold) {
    const RefCntPtr<IParameters> telling(new TellingBag);
    telling->SetParameter(view::kN, Val(1));
    const BagStructureSerializer::Bag plain(MakeBag({{view::kN, Val(2)}}));
    const BagStructureSerializer::Bag bag(telling);
    EXPECT_EQ(R"({"subBag":{"c": "told"}})", Write(MakeBag({{view::kSubBag, BagVal(telling)}})));
    EXPECT_EQ(R"({"myModel":{"c": "told"}})", Write(MakeBag({{view::kMyModel, BagVal(telling)}})));
    EXPECT_EQ(R"({"items":[{"n": 2},{"c": "told"}]})",
              Write(MakeBag({{view::kItems, Val(BagStructureSerializer::Bags{plain, bag})}})));
    EXPECT_EQ(R"({"byKey":{"k":{"c": "told"},"l":{"n": 2}}})",
              Write(MakeBag({{view::kByKey, Val(BagStructureSerializer::BagMap{{L"k", bag}, {L"l", plain}})}})));
}

TEST_F(DirectEdges, ABagThatTellsNull) {
    class NullBag final : public TestBag {
        void Accept(IParameterVisitor& visitor) const override { visitor.VisitParameter(view::kC, nullptr); }
    };
    const RefCntPtr<TestBag> bag(new NullBag);
    EXPECT_TRUE(Caught<MissingParameterCommandException>([&] { Write(bag); }));
}

// What its serializer leaves open stays open, and what comes behind it stands inside.
TEST_F(DirectEdges, AStructureThatStaysOpen) {
    class Opening final : public BagStructureSerializer {
        void Serialize(RefCntPtr<const IParameter>, SerializeStructure& stream, int, bool) const override {
            stream.GetVisitor().StartComposite(L"open", false);
        }
    };
    m_registry.Add(L"host", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddStructure(2001, L"model", L"mo", new Opening);
        adder.AddSimple(2002, L"count", L"co", new ParameterTypeSerializer<int>);
        adder.AddBag(2003, L"bag", L"ba");
    });
    const auto bag = MakeBag({{2001, Val(0)}, {2002, Val(5)}, {2003, BagVal(MakeBag({{2002, Val(6)}}))}});
    EXPECT_EQ(R"({"open":{"count": 5,"bag":{"count": 6}})", Write(bag));
}

// The namespace that is first by name covers what both have; the other one's name leads there all the same.
TEST_F(DirectEdges, NamespacesThatOverlap) {
    m_registry.Add(L"one", 2000, 2009, [](AbstractParamAdder& adder) {
        adder.AddSimple(2004, L"four", L"f", new ParameterTypeSerializer<int>);
        adder.AddSimple(2007, L"seven-of-one", L"s1", new ParameterTypeSerializer<int>);
    });
    m_registry.Add(L"two", 2005, 2020, [](AbstractParamAdder& adder) {
        adder.AddSimple(2007, L"seven-of-two", L"s2", new ParameterTypeSerializer<int>);
        adder.AddSimple(2015, L"fifteen", L"fi", new ParameterTypeSerializer<int>);
    });
    m_registry.SetFallback(L"one", L"two");
    m_json = JSONSerializer(L"one");
    const std::string text = R"({"four": 1,"sevenOfOne": 2,"fifteen": 3})";
    EXPECT_EQ(text, Write(MakeBag({{2004, Val(1)}, {2007, Val(2)}, {2015, Val(3)}})));
    EXPECT_EQ("four=1 seven-of-one=2 fifteen=3", ReadTwice(text));
    EXPECT_EQ("four=1 seven-of-one=2 fifteen=3", ReadTwice(R"({"four": 1,"sevenOfTwo": 2,"fifteen": 3})"));
}

// Answers other values than it holds.
class AnsweringBag final : public TestBag {
public:
    using TestBag::GetParameter;
    const IParameter& GetParameter(int) const override { return *m_answer; }

private:
    RefCntPtr<IParameter> m_answer = BagVal(MakeBag({{view::kN, Val(7)}}));
};

TEST_F(DirectEdges, NestedBagsAreThoseThatTheBagAnswers) {
    const RefCntPtr<TestBag> bag(new AnsweringBag);
    bag->SetParameter(view::kSubBag, BagVal(MakeBag({{view::kN, Val(1)}})));
    EXPECT_EQ(R"({"subBag":{"n": 7}})", Write(bag));
}

TEST_F(DirectEdges, StructuresInListFormInsideManyBags) {
    const auto texts = MakeBag({{view::kRow, Val(std::vector<TString>{L"a", L"b"})}});
    RefCntPtr<TestBag> bag = MakeBag({{view::kRow, BagVal(texts)}});
    std::string expected = R"({"row":["a","b"]})";
    for (int level = 0; level < 100; ++level) {
        bag = MakeBag({{view::kSubBag, BagVal(bag)}});
        expected = R"({"subBag":)" + expected + "}";
    }
    EXPECT_EQ(expected, Write(bag));
}

// What the short way takes of the stack for each level, the long way does not.
TEST_F(DirectEdges, AThreadWithoutStackToSpareReadsWhatIsDeep) {
    std::string text = R"({"n":1})";
    std::string expected = "n=1";
    for (int level = 0; level < 30; ++level) {
        text = R"({"subBag":)" + text + "}";
        expected = "sub-bag=(" + expected + ")";
    }
    EXPECT_EQ(expected, ReadTwice(text));
    PresLayerLimits::SetStackReserve(std::size_t{1} << 40);
    EXPECT_EQ(expected, ReadTwice(text));
}

// Neighbours that are spelled alike are read once: texts of these lengths are compared in parts.
TEST_F(DirectEdges, RealsThatAreSpelledNearlyAlike) {
    EXPECT_EQ("real=1", ReadTwice(R"({"real":1.0})"));
    const struct {
        const char* list;
        std::vector<double> values;
    } cases[] = {
        {"0.500000000000000000,0.500000000000000000,0.500000000100000000", {0.5, 0.5, 0.5000000001}},
        {"0.500000000100000000,0.500000000000000000", {0.5000000001, 0.5}},
        {"0.5000000000000000000000000000,0.5000000000010000000000000000", {0.5, 0.500000000001}},
        {"0.5000000000000000000000000000,0.5000000000000000000000000000", {0.5, 0.5}},
        {"1.50,1.50,2.50,1.51,1.5", {1.5, 1.5, 2.5, 1.51, 1.5}},
        {"1234567.1200000000,1234567.2500000000,1234567.2500000000", {1234567.12, 1234567.25, 1234567.25}},
        {"1.25000,1.25000,1.24000,2.25000,1.25001", {1.25, 1.25, 1.24, 2.25, 1.25001}},
    };
    for (const auto& c : cases) {
        const RefCntPtr<IParameters> bag =
            Read(R"({"realList":[)" + std::string(c.list) + "]}" + std::string(100, ' '));
        EXPECT_EQ(c.values, GetParameterValue<std::vector<double>>(*bag, view::kRealList)) << c.list;
    }
}

TEST_F(DirectEdges, ListsBeyondWhatIsCountedAtOnce) {
    EXPECT_EQ("n=1", ReadTwice(R"({"n":1})"));
    std::vector<int> values(200'000);
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<int>(i % 7);
        text += (i == 0 ? "" : ",") + std::to_string(values[i]);
    }
    const RefCntPtr<IParameters> bag = Read(R"({"intList":[)" + text + "]}");
    EXPECT_EQ(values, GetParameterValue<std::vector<int>>(*bag, view::kIntList));
}

// What comes next is remembered in places that these bags share, since their identifiers differ by a multiple of 32.
TEST_F(DirectEdges, BagsWhoseFirstMembersAreRememberedInOnePlace) {
    m_registry.Add(L"places", 2000, 2999, [](AbstractParamAdder& adder) {
        adder.AddSimple(2000, L"first", L"fi", new ParameterTypeSerializer<int>);
        adder.AddSimple(2001, L"second", L"se", new ParameterTypeSerializer<int>);
        adder.AddBag(2016, L"one", L"o");
        adder.AddBag(2016 + 32, L"two", L"t");
        adder.AddBag(2016 + 320, L"three", L"th");
    });
    m_json = JSONSerializer(L"places");
    const std::string text =
        R"({"one":{"first":1,"second":2},"two":{"second":3},"three":{"second":4,"first":5}})" + std::string(100, ' ');
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ("one=(first=1 second=2) two=(second=3) three=(first=5 second=4)", ReadTwice(text));
    }
}

// Behind the last record stands one without an identifier.
TEST_F(DirectEdges, IdentifierZeroBehindTheLastOne) {
    m_registry.Add(L"negative", -9, -1, [](AbstractParamAdder& adder) {
        adder.AddSimple(-1, L"last", L"la", new ParameterTypeSerializer<int>);
    });
    EXPECT_EQ(R"({"last": 5})", Write(MakeBag({{-1, Val(5)}})));
    const auto failure = Caught<ParameterNotFoundException>([&] { Write(MakeBag({{-1, Val(5)}, {0, Val(6)}})); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(0, failure->GetID());
}

#if !QV_TEST_SANITIZED  // which must be told of every change of the stack

// Reads and writes a text of many levels.
std::string s_outcome;
void ReadAndWriteWhatIsDeep() {
    std::string text = R"({"n": 1})";
    for (int level = 0; level < 30; ++level) {
        text = R"({"subBag":)" + text + "}";
    }
    const JSONSerializer json(L"view");
    json.ToParameters(L"{\"n\": 1}");  // fills the namespace
    const RefCntPtr<IParameters> bag = json.ToParameters(TString::FromUtf8(text));
    s_outcome = json.ToString(bag, JSONSerializer::Compact).ToUtf8() == text ? "the same" : "another text";
}

// Fibres, say: what is left of them nobody can tell.
TEST_F(DirectEdges, OnAStackOfTheHostsOwn) {
    std::vector<char> stack(1024 * 1024);
    ucontext_t host{};
    ucontext_t fibre{};
    ASSERT_EQ(0, getcontext(&fibre));
    fibre.uc_stack.ss_sp = stack.data();
    fibre.uc_stack.ss_size = stack.size();
    fibre.uc_link = &host;
    makecontext(&fibre, ReadAndWriteWhatIsDeep, 0);
    ASSERT_EQ(0, swapcontext(&host, &fibre));
    EXPECT_EQ("the same", s_outcome);
}

#endif

// What has no kind is not registered.
TEST_F(DirectEdges, AParameterWithoutAKind) {
    class Kindless final : public ParameterTypeSerializer<int> {
        ParameterTypeCategory GetType() const override { return PTC_None; }
    };
    m_registry.Add(L"odd", 2000, 2099,
                   [](AbstractParamAdder& adder) { adder.AddSimple(2001, L"odd", L"od", new Kindless); });
    m_json = JSONSerializer(L"odd");
    EXPECT_EQ("not found: 2001", ReadTwice(R"({"odd": 1})"));
    const auto failure = Caught<ParameterNotFoundException>([&] { Write(MakeBag({{2001, Val(1)}})); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(2001, failure->GetID());
}

TEST(DirectEdgesOfPacking, NeedsTheCoreNamespace) {
    TestRegistry registry;
    registry.Add(L"view", 1, 999, RegisterViewParameters);
    const JSONSerializer json(L"view");
    const TestSession session(false, true);
    const auto text = [&](std::vector<int> values) {
        return json.ToString(MakeBag({{view::kIntList, Val(std::move(values))}}), JSONSerializer::Compact).ToUtf8();
    };
    const auto failure = Caught<ParameterNotFoundException>([&] { text({8, 8, 8, 8}); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(static_cast<int>(CoreParameterID::IntRLE), failure->GetID());
    EXPECT_EQ(R"({"intList":[9,1]})", text({9, 1})) << "nothing is packed";
}

// Nested bags are written under the options in force where they begin, the rest of the bag under those of its start.
TEST(DirectEdgesOfOptions, PackingMayBeAskedForMeanwhile) {
    class Switching final : public ParameterTypeSerializer<int> {
    public:
        explicit Switching(TestSession& session) : m_session(session) {}
        TString ToString(RefCntPtr<const IParameter> value) override {
            m_session.Vars().compressArrays = true;
            return ParameterTypeSerializer<int>::ToString(value);
        }

    private:
        TestSession& m_session;
    };
    TestSession session;
    TestRegistry registry;
    RegisterCoreNamespaceParameters(registry, L"qvcore");
    registry.Add(L"host", 1, 99, [&](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"count", L"co", new Switching(session));
        adder.AddList(2, L"list", L"li", new ParameterTypeSerializer<int>);
        adder.AddBag(3, L"bag", L"ba");
    });
    const auto list = Val(std::vector<int>{8, 8, 8, 8});
    const auto bag = MakeBag({{1, Val(5)}, {2, list}, {3, BagVal(MakeBag({{2, list}}))}});
    EXPECT_EQ(R"({"count": 5,"list":[8,8,8,8],"bag":{"list":[[8,4],[]]}})",
              JSONSerializer(L"host").ToString(bag, JSONSerializer::Compact).ToUtf8());
}

}  // namespace
