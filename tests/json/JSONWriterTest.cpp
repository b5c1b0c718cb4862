// Bags as JSON text.
#include <qvpreslayer/JSONSerializer.h>  // first: the header stands alone

#include <cmath>
#include <limits>

#include "json/JSONTestSupport.h"

namespace {

using JSONWriter = JSONTest;
using Texts = std::vector<TString>;

// A value for each kind of parameter.
RefCntPtr<TestBag> EveryKind() {
    return MakeBag({
        {view::kMaxCount, Val(3)},
        {view::kFlag, Val(true)},
        {view::kText, Text(L"t")},
        {view::kIntList, Val(std::vector<int>{1, 2})},
        {view::kMyMap, Val(std::map<TString, TString>{{L"b", L"y"}, {L"a", L"x"}})},
        {view::kSubBag, BagVal(MakeBag({{view::kMaxCount, Val(1)}}))},
        {view::kMyModel, BagVal(MakeBag({{view::kAB, Val(1)}, {view::kC, Text(L"t")}}))},
        {view::kItems, Val(BagStructureSerializer::Bags{MakeBag({{view::kN, Val(1)}}), MakeBag({{view::kN, Val(2)}})})},
        {view::kByKey, Val(BagStructureSerializer::BagMap{{L"b-k", nullptr}, {L"a-k", MakeBag({{view::kN, Val(1)}})}})},
    });
}

// A bag of one entry.
RefCntPtr<TestBag> One(int id, RefCntPtr<IParameter> value) { return MakeBag({{id, value}}); }

// Changes the options while a walk goes on: writes as "flip", and from then on names are asked for in the other form.
class FlippingSerializer : public TStringSerializer {
public:
    explicit FlippingSerializer(TestBuilderVars& vars) : m_vars(&vars) {}

    TString ToString(RefCntPtr<const IParameter>) override {
        m_vars->shortNames = !m_vars->shortNames;
        return L"flip";
    }

private:
    RefCntPtr<TestBuilderVars> m_vars;
};

}  // namespace

TEST_F(JSONWriter, EveryKindInCompact) {
    EXPECT_EQ(R"({"maxCount": 3,"flag": true,"text": "t","intList":[1,2],"myMap":{"a":"x","b":"y"},)"
              R"("subBag":{"maxCount": 1},"myModel":{"aB": 1,"c": "t"},"items":[{"n": 1},{"n": 2}],)"
              R"("byKey":{"a-k":{"n": 1},"bK":null}})",
              Write(EveryKind(), JSONSerializer::Compact));
}

TEST_F(JSONWriter, EveryKindInPretty) {
    EXPECT_EQ(
        "{\n"
        "  \"maxCount\": 3, \n"
        "  \"flag\": true, \n"
        "  \"text\": \"t\", \n"
        "  \"intList\": [\n"
        "    1, \n"
        "    2\n"
        "  ], \n"
        "  \"myMap\": {\n"
        "    \"a\": \"x\", \n"
        "    \"b\": \"y\"\n"
        "  }, \n"
        "  \"subBag\": {\n"
        "    \"maxCount\": 1\n"
        "  }, \n"
        "  \"myModel\": {\n"
        "    \"aB\": 1, \n"
        "    \"c\": \"t\"\n"
        "  }, \n"
        "  \"items\": [\n"
        "    {\n"
        "      \"n\": 1\n"
        "    }, \n"
        "    {\n"
        "      \"n\": 2\n"
        "    }\n"
        "  ], \n"
        "  \"byKey\": {\n"
        "    \"a-k\": {\n"
        "      \"n\": 1\n"
        "    }, \n"
        "    \"bK\": null\n"
        "  }\n"
        "}",
        Write(EveryKind(), JSONSerializer::Pretty));
}

TEST_F(JSONWriter, EveryKindInBare) {
    EXPECT_EQ(R"(3,"flag": true,"text": "t","intList":[1,2],"myMap":{"a":"x","b":"y"},)"
              R"("subBag":{"maxCount": 1},"myModel":{"aB": 1,"c": "t"},"items":[{"n": 1},{"n": 2}],)"
              R"("byKey":{"a-k":{"n": 1},"bK":null})",
              Write(EveryKind(), JSONSerializer::Bare));
}

TEST_F(JSONWriter, EveryKindInBareRawNames) {
    EXPECT_EQ(R"(3,"flag": true,"text": "t","int-list":[1,2],"my-map":{"a":"x","b":"y"},)"
              R"("sub-bag":{"max-count": 1},"my-model":{"a-b": 1,"c": "t"},"items":[{"n": 1},{"n": 2}],)"
              R"("by-key":{"a-k":{"n": 1},"b-k":null})",
              Write(EveryKind(), JSONSerializer::BareRawNames));
}

TEST_F(JSONWriter, EveryKindInUnquotedNames) {
    EXPECT_EQ(R"({maxCount: 3,flag: true,text: "t",intList:[1,2],myMap:{a:"x",b:"y"},)"
              R"(subBag:{maxCount: 1},myModel:{aB: 1,c: "t"},items:[{n: 1},{n: 2}],)"
              R"(byKey:{a-k:{n: 1},bK:null}})",
              Write(EveryKind(), JSONSerializer::UnquotedNames));
}

TEST_F(JSONWriter, EveryKindUnderShortNames) {
    const TestSession session(true);
    EXPECT_EQ(R"({"mc": 3,"fl": true,"tx": "t","il":[1,2],"mm":{"a":"x","b":"y"},"sb":{"mc": 1},)"
              R"("mo":{"ab": 1,"cc": "t"},"it":[{"nn": 1},{"nn": 2}],"bk":{"a-k":{"nn": 1},"b-k":null}})",
              Write(EveryKind(), JSONSerializer::Compact));
    EXPECT_EQ(R"(3,"fl": true,"tx": "t","il":[1,2],"mm":{"a":"x","b":"y"},"sb":{"mc": 1},)"
              R"("mo":{"ab": 1,"cc": "t"},"it":[{"nn": 1},{"nn": 2}],"bk":{"a-k":{"nn": 1},"b-k":null})",
              Write(EveryKind(), JSONSerializer::BareRawNames));
}

TEST_F(JSONWriter, EmptyBag) {
    const char* const texts[] = {"{\n\n}", "{}", "", "", "{}"};
    for (int type = JSONSerializer::Pretty; type <= JSONSerializer::UnquotedNames; ++type) {
        EXPECT_EQ(texts[type], Write(MakeBag(), static_cast<JSONSerializer::OutputType>(type))) << type;
    }
}

TEST_F(JSONWriter, EmptyContainers) {
    const auto bag = MakeBag({{view::kTextList, Val(Texts{})},
                              {view::kMyMap, Val(std::map<TString, TString>{})},
                              {view::kSubBag, BagVal(MakeBag())},
                              {view::kItems, Val(BagStructureSerializer::Bags{})}});
    EXPECT_EQ(R"({"textList":[],"myMap":{},"subBag":{},"items":[]})", Write(bag));
    EXPECT_EQ(
        "{\n  \"textList\": [\n\n  ], \n  \"myMap\": {\n\n  }, \n  \"subBag\": {\n\n  }, \n  \"items\": [\n\n  ]\n}",
        Write(bag, JSONSerializer::Pretty));
}

TEST_F(JSONWriter, ScalarsOfEachType) {
    const struct {
        int id;
        RefCntPtr<IParameter> value;
        const char* json;
    } cases[] = {
        {view::kMaxCount, Val(-5), R"({"maxCount": -5})"},
        {view::kUnsigned, Val(4294967295U), R"({"unsigned": 4294967295})"},
        {view::kInt64, Val(std::numeric_limits<Int64>::min()), R"({"big": -9223372036854775808})"},
        {view::kUInt64, Val(std::numeric_limits<UInt64>::max()), R"({"bigUnsigned": 18446744073709551615})"},
        {view::kFloat, Val(0.5F), R"({"smallReal": 0.5})"},
        {view::kReal, Val(0.1), R"({"real": 0.1})"},
        {view::kReal, Val(2.0), R"({"real": 2})"},
        {view::kReal, Val(5000000000.0), R"({"real": 5000000000})"},
        {view::kReal, Val(1e20), R"({"real": 100000000000000000000})"},
        {view::kReal, Val(std::nan("")), R"({"real": null})"},
        {view::kReal, Val(std::numeric_limits<double>::infinity()),
         R"({"real": 10000000000000000000000000000000000000})"},
        {view::kReal, Val(-std::numeric_limits<double>::infinity()),
         R"({"real": -10000000000000000000000000000000000000})"},
        {view::kFlag, Val(false), R"({"flag": false})"},
        {view::kText, Text(L""), R"({"text": ""})"},
        {view::kText, Text(L"5"), R"({"text": "5"})"},
        {view::kUuid, Val(TUUID(L"00112233-4455-6677-8899-aabbccddeeff")),
         R"({"uuid": "00112233-4455-6677-8899-aabbccddeeff"})"},
        {view::kHours, Val(HoursDuration(-7)), R"({"hours": "-7"})"},
        {view::kSeconds, Val(SecondsDuration(86400)), R"({"seconds": "86400"})"},
        {view::kField, Val(FieldName::ParseGlobal(L"[a].[b]")), R"({"field": "[a].[b]"})"},
        {view::kQualified, Val(QualifiedName::ParseGlobal(L"[a\"b]")), R"({"qualified": "[a\"b]"})"},
        {view::kSecret, Val(PasswordString(L"hunter2")), R"({"secret": "********"})"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.json, Write(One(c.id, c.value)));
    }
}

TEST_F(JSONWriter, ListsOfNumbersAndTruthValuesAreBareAllOthersQuoted) {
    const struct {
        int id;
        RefCntPtr<IParameter> value;
        const char* json;
    } cases[] = {
        {view::kIntList, Val(std::vector<int>{1, -2}), R"({"intList":[1,-2]})"},
        {view::kUInt64List, Val(std::vector<UInt64>{7}), R"({"bigUnsignedList":[7]})"},
        {view::kRealList, Val(std::vector<double>{0.5, 2, std::nan("")}), R"({"realList":[0.5,2,null]})"},
        {view::kFloatList, Val(std::vector<float>{0.25F}), R"({"smallRealList":[0.25]})"},
        {view::kFlagList, Val(std::vector<bool>{true, false}), R"({"flagList":[true,false]})"},
        {view::kTextList, Val(Texts{L"1", L"a\"b"}), R"({"textList":["1","a\"b"]})"},
        {view::kHoursList, Val(std::vector<HoursDuration>{HoursDuration(1), HoursDuration(24)}),
         R"({"hoursList":["1","24"]})"},
        {view::kParamTypeList, Val(std::vector<CoreParameterID>{CoreParameterID::ParamType, CoreParameterID::IntRLE}),
         R"({"paramTypeList":["param-type","int-rle"]})"},
        {view::kSecretList, Val(std::vector<PasswordString>{PasswordString(L"x"), PasswordString(L"longer")}),
         R"({"secretList":["********","********"]})"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.json, Write(One(c.id, c.value)));
    }
}

TEST_F(JSONWriter, MapsOfNumbersAndTruthValuesAreBareAllOthersQuoted) {
    EXPECT_EQ(R"({"intMap":{"a":1,"b":-2}})",
              Write(One(view::kIntMap, Val(std::map<TString, int>{{L"a", 1}, {L"b", -2}}))));
    EXPECT_EQ(R"({"flagMap":{"a":true}})", Write(One(view::kFlagMap, Val(std::map<TString, bool>{{L"a", true}}))));
    EXPECT_EQ(R"({"myMap":{"a":"1"}})", Write(One(view::kMyMap, Val(std::map<TString, TString>{{L"a", L"1"}}))));
}

TEST_F(JSONWriter, KeysOfMapsAreTurnedToCamelCaseUnderVerboseNames) {
    const auto bag = One(view::kMyMap, Val(std::map<TString, TString>{{L"a-b", L"x"}}));
    EXPECT_EQ(R"({"myMap":{"aB":"x"}})", Write(bag));
    EXPECT_EQ(R"({"a-b":"x"})", Write(bag, JSONSerializer::BareRawNames));
    const TestSession session(true);
    EXPECT_EQ(R"({"mm":{"a-b":"x"}})", Write(bag));
}

TEST_F(JSONWriter, KeysGoUpByCodeUnit) {
    const auto bag = One(view::kIntMap, Val(std::map<TString, int>{{L"a", 1}, {L"B", 2}, {L"-", 3}}));
    EXPECT_EQ(R"({"intMap":{"-":3,"B":2,"a":1}})", Write(bag));
}

TEST_F(JSONWriter, KeysUnderVerboseNamesAreNotEscaped) {
    // A key with a quote therefore writes members of its own: keys must not come from strangers.
    const auto bag = One(view::kMyMap, Val(std::map<TString, TString>{{L"x\":1,\"admin", L"t"}}));
    EXPECT_EQ(R"({"myMap":{"x":1,"admin":"t"}})", Write(bag));
    const TestSession session(true);
    EXPECT_EQ(R"({"mm":{"x\":1,\"admin":"t"}})", Write(bag));
}

TEST_F(JSONWriter, StructuresInListForm) {
    const auto row = [](Texts texts) { return MakeBag({{view::kRow, Val(std::move(texts))}}); };
    const auto bag = MakeBag({{view::kRow, BagVal(row({L"a", L"b"}))}});
    EXPECT_EQ(R"({"row":["a","b"]})", Write(bag));
}

TEST_F(JSONWriter, ParametersGoUpBySignedIdentifier) {
    m_registry.Add(L"low", -9, 0, [](AbstractParamAdder& adder) {
        adder.AddSimple(-3, L"minus-three", new ParameterTypeSerializer<int>);
        adder.AddSimple(-7, L"minus-seven", new ParameterTypeSerializer<int>);
    });
    EXPECT_EQ(R"({"minusSeven": 7,"minusThree": 3,"maxCount": 1})",
              Write(MakeBag({{view::kMaxCount, Val(1)}, {-3, Val(3)}, {-7, Val(7)}})));
}

TEST_F(JSONWriter, UnserializableParametersAndCacheEntriesAreLeftOut) {
    const auto bag = MakeBag({{view::kMaxCount, Val(1)}, {view::kN, Val(2)}, {5000, Val(3)}});
    bag->SetCacheParameter(view::kText, Text(L"hidden"));
    m_registry.AddUnserializable(view::kMaxCount);
    m_registry.AddUnserializable(5000);  // not registered either
    EXPECT_EQ(R"({"n": 2})", Write(bag));
}

TEST_F(JSONWriter, ADashBeforeADigitStays) { EXPECT_EQ(R"({"a-1": 4})", Write(One(view::kDigit, Val(4)))); }

TEST_F(JSONWriter, ShortNamesAreNeverTurnedToCamelCase) {
    const TestSession session(true);
    EXPECT_EQ(R"({"d-n": 4})", Write(One(view::kDashedShort, Val(4))));
}

TEST_F(JSONWriter, TextsAreEscaped) {
    EXPECT_EQ("{\"text\": \"\\t\\\"\\\\x1\"}", Write(One(view::kText, Text(L"\t\"\u0001"))));
    EXPECT_EQ("{\"textList\":[\"\\n\",\"\\\\x7f\"]}", Write(One(view::kTextList, Val(Texts{L"\n", L"\u007F"}))));
}

TEST_F(JSONWriter, NULAndUnpairedSurrogatesAreWrittenAsTheyAre) {
    const std::u16string text{u'a', u'\0', static_cast<char16_t>(0xDC00), static_cast<char16_t>(0xD800)};
    const TString json = m_json.ToString(One(view::kText, Text(text)), JSONSerializer::Bare);
    EXPECT_TRUE(u"\"" + text + u"\"" == json.view());
}

TEST_F(JSONWriter, PackedListsAreNestedListsAndAnEmptyOne) {
    const TestSession session(false, true);
    EXPECT_EQ(R"({"intList":[9,[1,5,1],[8,4],[]]})",
              Write(One(view::kIntList, Val(std::vector<int>{9, 1, 2, 3, 4, 5, 8, 8, 8, 8}))));
    EXPECT_EQ(R"({"unsignedList":[[10,4,-2],[]]})",
              Write(One(view::kUnsignedList, Val(std::vector<unsigned int>{10, 8, 6, 4}))));
    EXPECT_EQ(R"({"realList":[[0.5,4],[]]})",
              Write(One(view::kRealList, Val(std::vector<double>{0.5, 0.5, 0.5, 0.5}))));
    EXPECT_EQ(R"({"intList":[7,7,7]})", Write(One(view::kIntList, Val(std::vector<int>{7, 7, 7}))));
}

TEST_F(JSONWriter, PackedListsInPretty) {
    const TestSession session(false, true);
    EXPECT_EQ("{\n  \"intList\": [\n    [\n      1, \n      5, \n      1\n    ], \n    [\n\n    ]\n  ]\n}",
              Write(One(view::kIntList, Val(std::vector<int>{1, 2, 3, 4, 5})), JSONSerializer::Pretty));
}

TEST_F(JSONWriter, NestedBagsKeepThePlaceOfEachLevel) {
    RefCntPtr<TestBag> bag = MakeBag({{view::kN, Val(1)}});
    for (int level = 0; level < 2; ++level) {
        bag = MakeBag({{view::kMaxCount, Val(level)}, {view::kSubBag, BagVal(bag)}, {view::kC, Text(L"c")}});
    }
    EXPECT_EQ(R"({"maxCount": 1,"subBag":{"maxCount": 0,"subBag":{"n": 1},"c": "c"},"c": "c"})", Write(bag));
}

TEST_F(JSONWriter, NameFormOfTheVisitorIsFixedForTheWholeWrite) {
    // A nested bag asks the options anew; whether names are turned to camel case was decided at the start.
    TestSession session(false);
    m_registry.Add(L"flip", 1000, 1001, [&session](AbstractParamAdder& adder) {
        adder.AddSimple(1000, L"flip", new FlippingSerializer(session.Vars()));
        adder.AddBag(1001, L"inner-bag", L"i-b");
    });
    const auto bag = MakeBag({{1000, Text(L"")}, {1001, BagVal(MakeBag({{view::kDashedShort, Val(4)}}))}});
    EXPECT_EQ(R"({"flip": "flip","innerBag":{"dN": 4}})", Write(bag));
    ASSERT_TRUE(session.Vars().shortNames);
    EXPECT_EQ(R"({"flip": "flip","i-b":{"dashed-name": 4}})", Write(bag));
}

TEST_F(JSONWriter, OptionsAreAskedAtEveryWrite) {
    const auto bag = One(view::kMaxCount, Val(1));
    TestSession session(true);
    EXPECT_EQ(R"({"mc": 1})", Write(bag));
    session.Vars().shortNames = false;
    EXPECT_EQ(R"({"maxCount": 1})", Write(bag));
}

TEST_F(JSONWriter, NullBagIsALogicError) {
    const auto e = Caught<LogicException>([&] { m_json.ToString(nullptr, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_STREQ("m_ptr", e->GetExpression());
}

TEST_F(JSONWriter, UnknownIdentifierThrows) {
    const auto e = Caught<ParameterNotFoundException>([&] { Write(One(998, Val(1))); });
    ASSERT_TRUE(e);
    EXPECT_EQ(998, e->GetID());
}

TEST_F(JSONWriter, AParameterWithoutAShortNameCannotBeWrittenShort) {
    const auto bag = One(view::kNoShort, Val(1));
    EXPECT_EQ(R"({"noShort": 1})", Write(bag));
    const TestSession session(true);
    const auto e = Caught<ParameterNotFoundException>([&] { Write(bag); });
    ASSERT_TRUE(e);
    EXPECT_EQ(view::kNoShort, e->GetID());
}

TEST_F(JSONWriter, ValuesOfAnotherTypeThrow) {
    const auto scalar = Caught<TypeMismatchCommandException>([&] { Write(One(view::kMaxCount, Text(L"x"))); });
    ASSERT_TRUE(scalar);
    EXPECT_EQ(0, scalar->GetParameterID());  // the accessor does not know the identifier
    const auto bag = Caught<TypeMismatchCommandException>([&] { Write(One(view::kSubBag, Text(L"x"))); });
    ASSERT_TRUE(bag);
    EXPECT_EQ(view::kSubBag, bag->GetParameterID());
}

TEST_F(JSONWriter, AStructureWithoutASerializerCannotBeWritten) {
    const auto e = Caught<LogicException>([&] { Write(One(view::kBareModel, BagVal(MakeBag()))); });
    ASSERT_TRUE(e);
    EXPECT_STREQ("m_ptr", e->GetExpression());
}

TEST_F(JSONWriter, AFailureLeavesTheSerializerAsItWas) {
    EXPECT_THROW(Write(MakeBag({{view::kMaxCount, Val(1)}, {998, Val(1)}})), ParameterNotFoundException);
    EXPECT_EQ(R"({"maxCount": 1})", Write(One(view::kMaxCount, Val(1))));
}

TEST_F(JSONWriter, ABagThatHoldsItselfIsRefused) {
    const auto bag = MakeBag();
    bag->SetParameter(view::kSubBag, BagVal(bag));
    const auto e = Caught<QuorvelException>([&] { Write(bag); });
    bag->SetParameter(view::kSubBag, nullptr);  // lets the bag go
    ASSERT_TRUE(e);
    EXPECT_STREQ("Parameter bags are nested too deeply", e->what());
}

TEST_F(JSONWriter, NamesComeFromTheRegistryWhateverTheNamespace) {
    EXPECT_EQ(TString(LR"({"maxCount": 1})"),
              JSONSerializer(L"no such namespace").ToString(One(view::kMaxCount, Val(1)), JSONSerializer::Compact));
}

TEST(JSONWriterWithoutARegistry, IsALogicError) {
    const JSONSerializer json(L"view");
    const auto e = Caught<LogicException>([&] { json.ToString(MakeBag(), JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_STREQ("gm_RegistryInstance != nullptr", e->GetExpression());
}

TEST(JSONWriterOutputType, Numbers) {
    EXPECT_EQ(0, JSONSerializer::Pretty);
    EXPECT_EQ(1, JSONSerializer::Compact);
    EXPECT_EQ(2, JSONSerializer::Bare);
    EXPECT_EQ(3, JSONSerializer::BareRawNames);
    EXPECT_EQ(4, JSONSerializer::UnquotedNames);
}
