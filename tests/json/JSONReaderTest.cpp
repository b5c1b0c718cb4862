// JSON text into bags: which value goes into which parameter, how names are found, and what fails how.
#include <qvpreslayer/JSONSerializer.h>

#include <map>

#include "json/JSONTestSupport.h"

namespace {

using JSONReader = JSONTest;

// One parameter of each kind, by the number of the kind; the number is an int.
constexpr int kOfKind[] = {0,
                           view::kText,
                           view::kMaxCount,
                           view::kFlag,
                           view::kTextList,
                           view::kSubBag,
                           view::kMyModel,
                           view::kItems,
                           view::kMyMap,
                           view::kByKey};

// The name of a parameter as it stands in JSON.
std::string CamelName(int id) { return DashedToCamel(ParametersRegistry::Get().GetName(id, true)).ToUtf8(); }
std::string DashedName(int id) { return ParametersRegistry::Get().GetName(id, true).ToUtf8(); }

// Parameters whose names tell their order by code unit, "a", "b" and "B", and two that become one name.
class OrderRegistry : public TestRegistry {
public:
    OrderRegistry() {
        Add(L"order", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(1, L"a", new TStringSerializer);
            adder.AddSimple(2, L"b", new TStringSerializer);
            adder.AddSimple(3, L"B", new TStringSerializer);
            adder.AddSimple(4, L"foo-bar", new TStringSerializer);
            adder.AddSimple(5, L"-foo-bar", new TStringSerializer);
            adder.AddBag(6, L"bag");
        });
    }

    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new NotingBag(*this)); }

    // What was stored in bags, in order.
    const std::string& Stored() const { return m_stored; }

private:
    class NotingBag : public BaseParameters {
    public:
        explicit NotingBag(OrderRegistry& registry) : m_registry(registry) {}

        void SetParameter(int id, RefCntPtr<IParameter> value) override {
            const auto* text = dynamic_cast<const ValParameter<TString>*>(value.Get());
            m_registry.m_stored += std::to_string(id) + "=" + (text ? text->GetValue().ToUtf8() : "?") + " ";
            BaseParameters::SetParameter(id, value);
        }

    protected:
        ~NotingBag() override = default;
        RefCntPtr<BaseParameters> DoEmptyClone() override {
            return RefCntPtr<BaseParameters>(new NotingBag(m_registry));
        }

    private:
        OrderRegistry& m_registry;
    };

    std::string m_stored;
};

// What is stored, in order, when the text is read with names as they stand.
std::string StoredFrom(std::string_view json, bool shortNames = true) {
    OrderRegistry registry;
    JSONSerializer(L"order").ToParameters(TString::FromUtf8(json), shortNames, true);
    return registry.Stored();
}

}  // namespace

TEST_F(JSONReader, EveryKindOfValueIntoEveryKindOfParameter) {
    // '=' stored, '-' nothing stored, 'm' the kinds do not fit, 'p' the serializer refuses the text.
    // For text, number, bool, list, bag, structure, structure list, map and structure map. A scalar's text is what
    // counts: "5" is a number, 1 is no truth value, 2.0 is 2. An element of a structure list must be an object.
    const std::map<std::string, std::string> rows = {
        {R"("5")", "==pmmmmmm"}, {R"("true")", "=p=mmmmmm"}, {R"("x")", "=ppmmmmmm"}, {"true", "=p=mmmmmm"},
        {"false", "=p=mmmmmm"},  {"5", "==pmmmmmm"},         {"1", "==pmmmmmm"},      {"2.5", "=ppmmmmmm"},
        {"2.0", "==pmmmmmm"},    {"null", "---------"},      {"[]", "mmm=m-=mm"},     {"[[]]", "mmm=m-rmm"},
        {"{}", "mmmm==m=="},
    };
    for (const auto& [value, outcomes] : rows) {
        for (int kind = PTC_Text; kind <= PTC_StructureMap; ++kind) {
            const int id = kOfKind[kind];
            const std::string json = "{\"" + CamelName(id) + "\":" + value + "}";
            SCOPED_TRACE(json);
            const std::string outcome = Outcome(json);
            switch (outcomes[static_cast<std::size_t>(kind - 1)]) {
                case '=':
                    EXPECT_EQ(0U, outcome.find(DashedName(id) + "=")) << outcome;
                    break;
                case '-':
                    EXPECT_EQ("", outcome);
                    break;
                case 'm':
                    EXPECT_EQ(Mismatch(DashedName(id)), outcome);
                    break;
                case 'r':
                    EXPECT_EQ(0U, outcome.find("runtime: ")) << outcome;
                    break;
                default:
                    EXPECT_EQ("not parsed: " + std::to_string(id), outcome);
            }
        }
    }
}

TEST_F(JSONReader, ValuesOfEachKind) {
    const struct {
        const char* json;
        const char* bag;
    } cases[] = {
        {"{}", ""},
        {R"({"text":"as it stands"})", "text=as it stands"},
        {R"({"text":""})", "text="},
        {R"({"text":true})", "text=true"},
        {R"({"text":5})", "text=5"},
        {R"({"text":-0.25})", "text=-0.25"},
        {R"({"maxCount":"-7"})", "max-count=-7"},
        {R"({"unsigned":4294967295})", "unsigned=4294967295"},
        {R"({"flag":false})", "flag=false"},
        {R"({"flag":"true"})", "flag=true"},
        {R"({"real":"1e2"})", "real=100"},
        {R"({"real":"null"})", "real=null"},  // a text reaches the serializer, which knows it
        {R"({"hours":24})", "hours=24"},
        {R"({"field":"[a].[b]"})", "field=[a].[b]"},
        {R"({"uuid":"00112233-4455-6677-8899-AABBCCDDEEFF"})", "uuid=00112233-4455-6677-8899-aabbccddeeff"},
        {R"({"secret":"x"})", "secret=********"},
        {R"({"intList":[1,2]})", "int-list=[1,2]"},
        {R"({"intMap":{"a":1,"b":"2"}})", "int-map={a:1,b:2}"},
        {R"({"subBag":{"maxCount":1,"subBag":{}}})", "sub-bag=(max-count=1 sub-bag=())"},
        {R"({"myModel":{"aB":1,"c":"t"}})", "my-model=(a-b=1 c=t)"},
        {R"({"items":[{"n":1},{},{"n":2}]})", "items=<(n=1),(),(n=2)>"},
        {R"({"byKey":{"b-k":null,"a-k":{"n":1}}})", "by-key=<a-k:(n=1),b-k:null>"},
        {R"({"row":["a","b"]})", "row=(row=[a,b])"},
        {R"({"row":[]})", "row=(row=[])"},
        {R"({"rows":[["a"],[],["b","c"]]})", "rows=<(rows=[a]),(rows=[]),(rows=[b,c])>"},
        {R"({"bareModel":{"n":1}})", "bare-model=(n=1)"},  // without a serializer the nested bag stays
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.bag, Outcome(c.json));
    }
}

TEST_F(JSONReader, EmptyObjectGivesABagOfTheRegistry) {
    const auto bag = Read("{}");
    ASSERT_TRUE(bag);
    EXPECT_NE(nullptr, dynamic_cast<TestBag*>(bag.Get()));
}

TEST_F(JSONReader, ValuesHaveTheTypesOfTheirParameters) {
    const auto bag = Read(R"({"maxCount":1,"subBag":{},"textList":["a"],"intMap":{"k":3}})");
    EXPECT_EQ(1, GetParameterValue<int>(*bag, view::kMaxCount));
    EXPECT_EQ(std::vector<TString>{L"a"}, GetParameterValue<std::vector<TString>>(*bag, view::kTextList));
    EXPECT_EQ((std::map<TString, int>{{L"k", 3}}), (GetParameterValue<std::map<TString, int>>(*bag, view::kIntMap)));
    const auto& nested = GetParameterValue<RefCntPtr<const IParameters>>(*bag, view::kSubBag);
    EXPECT_NE(nullptr, dynamic_cast<const TestBag*>(nested.Get()));
}

TEST_F(JSONReader, RootsOfOtherKindsAreRuntimeErrors) {
    const struct {
        const char* json;
        const char* message;
    } cases[] = {
        {"[]", "the JSON root is array, not object"},    {R"("x")", "the JSON root is string, not object"},
        {"true", "the JSON root is bool, not object"},   {"5", "the JSON root is integer, not object"},
        {"2.5", "the JSON root is real, not object"},    {"null", "the JSON root is null, not object"},
        {" [1] ", "the JSON root is array, not object"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        const auto e = Caught<std::runtime_error>([&] { Read(c.json); });
        ASSERT_TRUE(e);
        EXPECT_STREQ(c.message, e->what());
    }
}

TEST_F(JSONReader, ElementsOfStructuresOfTheWrongKindAreRuntimeErrors) {
    for (const char* const json : {R"({"items":[1]})", R"({"items":[{},"x"]})", R"({"items":[null]})",
                                   R"({"items":[[]]})", R"({"rows":[{}]})", R"({"rows":[1]})", R"({"rows":[null]})",
                                   R"({"byKey":{"k":1}})", R"({"byKey":{"k":[]}})", R"({"byKey":{"k":"x"}})"}) {
        SCOPED_TRACE(json);
        EXPECT_EQ(0U, Outcome(json).find("runtime: "));
    }
}

TEST_F(JSONReader, NullIsSkippedAfterTheNameWasFound) {
    EXPECT_EQ("n=1", Outcome(R"({"maxCount":null,"n":1,"intList":null,"byKey":null})"));
    EXPECT_EQ("not found: unknown", Outcome(R"({"unknown":null})"));
}

TEST_F(JSONReader, UnknownNamesThrowWithTheConvertedName) {
    EXPECT_EQ("not found: no-such-name", Outcome(R"({"noSuchName":1})"));
    EXPECT_EQ("not found: no-such-name", Outcome(R"({"subBag":{"items":[{"noSuchName":1}]}})"));
    EXPECT_EQ("not found: ", Outcome(R"({"":1})"));
}

TEST_F(JSONReader, UnknownNamespaceThrows) {
    EXPECT_EQ("no namespace: nowhere",
              OutcomeOf([&] { return JSONSerializer(L"nowhere").ToParameters(LR"({"a":1})"); }));
    EXPECT_EQ("", OutcomeOf([&] { return JSONSerializer(L"nowhere").ToParameters(L"{}"); }));
}

TEST_F(JSONReader, NamesOfFallbacksAreFound) { EXPECT_EQ("param-type=int-rle", Outcome(R"({"paramType":"int-rle"})")); }

TEST_F(JSONReader, CamelCaseNamesAreLookedUpInTheirDashedForm) {
    EXPECT_EQ("max-count=1", Outcome(R"({"maxCount":1})"));
    EXPECT_EQ("max-count=1", Outcome(R"({"max-count":1})"));
    EXPECT_EQ("not found: -max-count", Outcome(R"({"MaxCount":1})"));
    EXPECT_EQ("a-1=1", Outcome(R"({"a-1":1})"));
}

TEST_F(JSONReader, ShortNamesAreLookedUpUnchangedWhenTheOptionsAskForThem) {
    const TestSession session(true);
    EXPECT_EQ("max-count=1 dashed-name=2", Outcome(R"({"mc":1,"d-n":2})"));
    EXPECT_EQ("not found: dN", Outcome(R"({"dN":1})"));
    EXPECT_EQ("not found: maxCount", Outcome(R"({"maxCount":1})"));
    EXPECT_EQ("sub-bag=(max-count=1)", Outcome(R"({"sb":{"mc":1}})"));
    EXPECT_EQ("not found: max-count", Outcome(R"({"sb":{"max-count":1}})"));
}

TEST_F(JSONReader, ConversionAndLookupFlagAreIndependent) {
    const struct {
        bool shortOption;  // what the session wants
        bool shortNames;
        bool lookupFlag;
        const wchar_t* json;
        const char* outcome;
    } cases[] = {
        {false, false, false, LR"({"maxCount":1})", "max-count=1"},
        {false, false, true, LR"({"maxCount":1})", "max-count=1"},
        {false, true, false, LR"({"max-count":1})", "max-count=1"},
        {false, true, false, LR"({"maxCount":1})", "not found: maxCount"},
        {false, true, false, LR"({"mc":1})", "not found: mc"},  // the options want verbose names
        {false, true, true, LR"({"max-count":1})", "max-count=1"},
        {true, true, false, LR"({"mc":1})", "max-count=1"},
        {true, true, true, LR"({"mc":1})", "not found: mc"},  // the flag asks for verbose names
        {true, true, true, LR"({"max-count":1})", "max-count=1"},
        {true, false, true, LR"({"maxCount":1})", "max-count=1"},
        {true, false, false, LR"({"maxCount":1})", "not found: max-count"},
        {true, false, false, LR"({"dN":1})", "dashed-name=1"},  // converted, then sought among short names
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.json).ToUtf8() + (c.shortOption ? " s" : " v") + (c.shortNames ? "s" : "v") +
                     (c.lookupFlag ? "v" : "-"));
        const TestSession session(c.shortOption);
        EXPECT_EQ(c.outcome, OutcomeOf([&] { return m_json.ToParameters(c.json, c.shortNames, c.lookupFlag); }));
    }
}

TEST_F(JSONReader, MismatchNamesTheConvertedMember) {
    EXPECT_EQ(Mismatch("max-count"), Outcome(R"({"maxCount":[1]})"));
    EXPECT_EQ(Mismatch("max-count"), Outcome(R"({"max-count":{}})"));
    EXPECT_EQ(Mismatch("int-list"), Outcome(R"({"subBag":{"intList":"x"}})"));
    const TestSession session(true);
    EXPECT_EQ(Mismatch("mc"), Outcome(R"({"mc":[1]})"));
}

TEST_F(JSONReader, MismatchTellsIdentifierAndBothKinds) {
    const struct {
        const char* json;
        int id;
        ParameterTypeCategory expected;
        JSONKind found;
    } cases[] = {
        {R"({"maxCount":[1]})", view::kMaxCount, PTC_Number, JSONKind::Array},
        {R"({"text":{}})", view::kText, PTC_Text, JSONKind::Object},
        {R"({"intList":"x"})", view::kIntList, PTC_List, JSONKind::String},
        {R"({"myMap":true})", view::kMyMap, PTC_Map, JSONKind::Bool},
        {R"({"subBag":7})", view::kSubBag, PTC_Bag, JSONKind::Integer},
        {R"({"byKey":0.5})", view::kByKey, PTC_StructureMap, JSONKind::Real},
        {R"({"subBag":[]})", view::kSubBag, PTC_Bag, JSONKind::Array},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        const auto e = Caught<JSONParseException>([&] { Read(c.json); });
        ASSERT_TRUE(e);
        EXPECT_EQ(178195976U, e->GetStringId());
        EXPECT_EQ(c.id, e->GetID());
        EXPECT_EQ(c.expected, e->GetExpectedKind());
        EXPECT_EQ(c.found, e->GetFoundKind());
    }
}

TEST_F(JSONReader, AnArgumentOfAMessageIsNotExpandedAgain) { EXPECT_EQ(Mismatch("%1%1"), Outcome(R"({"%1%1":[]})")); }

TEST_F(JSONReader, ScalarFailuresCarryTheIdentifier) {
    EXPECT_EQ("not parsed: 10", Outcome(R"({"maxCount":"x"})"));
    EXPECT_EQ("not parsed: 10", Outcome(R"({"maxCount":""})"));
    EXPECT_EQ("not parsed: 10", Outcome(R"({"maxCount":4294967295})"));
    EXPECT_EQ("not parsed: 11", Outcome(R"({"unsigned":-1})"));
    EXPECT_EQ("not parsed: 18", Outcome(R"({"uuid":"x"})"));  // whatever the serializer throws
    EXPECT_EQ("not parsed: 19", Outcome(R"({"hours":"x"})"));
    EXPECT_EQ("not parsed: 21", Outcome(R"({"field":"[a"})"));
    EXPECT_EQ("not parsed: 10", Outcome(R"({"subBag":{"maxCount":"x"}})"));
}

TEST_F(JSONReader, ListAndMapFailuresKeepTheirOwnType) {
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":["x"]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intMap":{"a":"x"}})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"flagMap":{"a":1}})"));
    EXPECT_EQ("failure: Data serialization error", Outcome(R"({"hoursList":["x"]})"));
    EXPECT_EQ(0U, Outcome(R"({"uuidList":["x"]})").find("failure: "));
    EXPECT_EQ(0U, Outcome(R"({"uuidMap":{"a":"x"}})").find("failure: "));
}

TEST_F(JSONReader, KeysOfMapsAreNeverConverted) {
    EXPECT_EQ("my-map={a-b:y,aB:x}", Outcome(R"({"myMap":{"a-b":"y","aB":"x"}})"));
    EXPECT_EQ("by-key=<a-b:null,aB:()>", Outcome(R"({"byKey":{"a-b":null,"aB":{}}})"));
}

// Entries of a map inside stand between those of the map around it.
TEST_F(JSONReader, KeysOfStructureMapsInsideStructureMaps) {
    EXPECT_EQ("by-key=<a:(by-key=<k:(),l:null>),b:null>",
              Outcome(R"({"byKey":{"a":{"byKey":{"k":{},"l":null}},"b":null}})"));
    EXPECT_EQ("by-key=<a:(items=<(by-key=<k:(n=1)>),(by-key=<l:()>)>),b:(by-key=<m:()>),c:()>",
              Outcome(R"({"byKey":{"a":{"items":[{"byKey":{"k":{"n":1}}},{"byKey":{"l":{}}}]},)"
                      R"("b":{"byKey":{"m":{}}},"c":{}}})"));
}

TEST_F(JSONReader, ValuesOfMapsBecomeTexts) {
    EXPECT_EQ("my-map={a:x,b:1,c:true,d:2.5,e:,f:,g:}",
              Outcome(R"({"myMap":{"a":"x","b":1,"c":true,"d":2.5,"e":null,"f":[1],"g":{"h":1}}})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intMap":{"a":null}})"));
    EXPECT_EQ("my-map={}", Outcome(R"({"myMap":{}})"));
}

TEST_F(JSONReader, MembersWithinSkippedValuesAreNotLookedUp) {
    EXPECT_EQ("text-list=[,]", Outcome(R"({"textList":[{"noSuchName":1},[{"noSuchName":1}],{}]})"));
    EXPECT_EQ("my-map={k:}", Outcome(R"({"myMap":{"k":{"noSuchName":1}}})"));
    EXPECT_EQ("", Outcome(R"({"myModel":[{"noSuchName":1}]})"));
}

TEST_F(JSONReader, AnArrayForAStructureNotInListFormStoresNothing) {
    EXPECT_EQ("n=1", Outcome(R"({"myModel":["a","b"],"n":1})"));
}

TEST_F(JSONReader, AnArrayForAStructureWithoutASerializerIsALogicError) {
    EXPECT_EQ("logic: m_ptr", Outcome(R"({"bareModel":[]})"));
}

TEST_F(JSONReader, NoBagIsAnsweredAfterAFailure) {
    RefCntPtr<IParameters> bag = Read(R"({"n":1})");
    const auto earlier = bag;
    EXPECT_THROW(bag = Read(R"({"maxCount":1,"n":2,"zzz":3})"), ParameterNotFoundException);
    EXPECT_TRUE(earlier == bag);
    EXPECT_EQ("n=1", BagDescription::Of(*earlier));
}

TEST_F(JSONReader, EachCallMakesABagOfItsOwn) {
    const auto first = Read(R"({"n":1})");
    const auto second = Read(R"({"maxCount":2})");
    EXPECT_EQ("n=1", BagDescription::Of(*first));
    EXPECT_EQ("max-count=2", BagDescription::Of(*second));
}

TEST(JSONReaderOrder, MembersGoUpByName) {
    EXPECT_EQ("3=v 1=v 2=v ", StoredFrom(R"({"b":"v","a":"v","B":"v"})"));
    EXPECT_EQ("3=v 1=v 2=v ", StoredFrom(R"({"B":"v","a":"v","b":"v"})"));
}

TEST(JSONReaderOrder, OfTwoEqualNamesOnlyTheLastIsRead) {
    EXPECT_EQ("1=2 ", StoredFrom(R"({"a":1,"a":2})"));
    EXPECT_EQ("1=2 ", StoredFrom(R"({"a":[],"a":2})"));
    EXPECT_EQ("1=2 ", StoredFrom(R"({"\u0061":1,"a":2})"));
    EXPECT_EQ("", StoredFrom(R"({"a":1,"a":null})"));
    EXPECT_EQ("1=4 2=3 ", StoredFrom(R"({"b":1,"a":2,"b":3,"a":4})"));
}

TEST(JSONReaderOrder, NamesThatConvertToOneAreBothApplied) {
    EXPECT_EQ("4=dash 4=camel ", StoredFrom(R"({"foo-bar":"dash","fooBar":"camel"})", false));
    EXPECT_EQ("4=dash 4=camel ", StoredFrom(R"({"fooBar":"camel","foo-bar":"dash"})", false));
    EXPECT_EQ("5=dash 5=camel ", StoredFrom(R"({"FooBar":"camel","-foo-bar":"dash"})", false));
}

TEST(JSONReaderOrder, OrderIsThatOfTheTextsOwnNames) {
    // "B" comes before "a" although it is looked up as "-b"; the first unknown name tells.
    const OrderRegistry registry;
    EXPECT_EQ("not found: -x", OutcomeOf([&] { return JSONSerializer(L"order").ToParameters(LR"({"ww":1,"X":1})"); }));
}

TEST(JSONReaderOrder, GoesByUTF16CodeUnit) {
    // U+1F600 begins with the surrogate U+D83D, below U+FF5E.
    const OrderRegistry registry;
    EXPECT_EQ("not found: \xF0\x9F\x98\x80",
              OutcomeOf([&] { return JSONSerializer(L"order").ToParameters(L"{\"\uFF5E\":1,\"\U0001F600\":1}"); }));
}

TEST(JSONReaderOrder, AShorterNameComesBeforeALongerOneThatItBegins) {
    const OrderRegistry registry;
    EXPECT_EQ("not found: z", OutcomeOf([&] { return JSONSerializer(L"order").ToParameters(LR"({"zz":1,"z":1})"); }));
}

TEST(JSONReaderOrder, DuplicatesInMaps) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    EXPECT_EQ("my-map={a:2}", OutcomeOf([&] { return json.ToParameters(LR"({"myMap":{"a":1,"a":2}})"); }));
    EXPECT_EQ("by-key=<a:null>", OutcomeOf([&] { return json.ToParameters(LR"({"byKey":{"a":{},"a":null}})"); }));
}

TEST(JSONReaderWithoutARegistry, TheTextIsLookedAtFirst) {
    const JSONSerializer json(L"view");
    EXPECT_EQ("not valid", OutcomeOf([&] { return json.ToParameters(L"{"); }));
    EXPECT_EQ("logic: gm_RegistryInstance != nullptr", OutcomeOf([&] { return json.ToParameters(L"{}"); }));
}
