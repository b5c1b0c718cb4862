// Hosts' own classes on the way through JSON texts: serializers derived from the library's, value holders derived from
// its holders, bags and names that nobody expects.
#include <qvpreslayer/JSONSerializer.h>

#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

// Writes every list in its own way; single values as the library does.
template <class T>
class CountingListSerializer : public ParameterTypeSerializer<T> {
public:
    void SerializeVector(SerializeStructure& stream, int id, const std::vector<T>& values) const override {
        const ListStructure list(id, stream, PTC_Text);
        stream.ListItem(L"count");
        stream.ListItem(TString::number(static_cast<UInt64>(values.size())));
    }
};

// Writes and reads single values in its own way.
class DoublingSerializer : public ParameterTypeSerializer<int> {
public:
    TString ToString(RefCntPtr<const IParameter> value) override {
        return TypeToString(2 * GetParameterValue<int>(value.Get()));
    }
    RefCntPtr<IParameter> FromString(const TString& text) const override {
        return MakeRefCnt<ValParameter<int>>(TypeFromString(text) / 2);
    }
};

// Remembers how large the texts of a list were made before they were filled.
class CapacitySerializer : public TStringSerializer {
public:
    CapacitySerializer(std::size_t& texts, std::size_t& run) : m_texts(texts), m_run(run) {}
    RefCntPtr<IParameter> FromStringList(const std::vector<TString>& values,
                                         const std::vector<RunRecord>& runs) const override {
        m_texts = values.capacity();
        m_run = runs.empty() ? 0 : runs.front().second.capacity();
        return TStringSerializer::FromStringList(values, runs);
    }

private:
    std::size_t& m_texts;
    std::size_t& m_run;
};

// Holders with something of their own beside the value.
template <class T>
class NamedValue : public ValParameter<T> {
public:
    NamedValue(T value, std::string name) : ValParameter<T>(std::move(value)), m_name(std::move(name)) {}
    bool IsMarked() const override { return !m_name.empty(); }

private:
    std::string m_name;
};

template <class T>
RefCntPtr<IParameter> Named(T value) {
    return MakeRefCnt<NamedValue<T>>(std::move(value), "host");
}

class HostTypes : public testing::Test {
protected:
    HostTypes() {
        m_registry.Add(L"host", 1, 99, [this](AbstractParamAdder& adder) {
            adder.AddList(1, L"ints", new CountingListSerializer<int>);
            adder.AddList(2, L"reals", new CountingListSerializer<double>);
            adder.AddList(3, L"flags", new CountingListSerializer<bool>);
            adder.AddSimple(4, L"doubled", new DoublingSerializer);
            adder.AddList(5, L"doubled-list", new DoublingSerializer);
            adder.AddList(6, L"texts", new CapacitySerializer(m_texts, m_run));
            adder.AddSimple(10, L"qu\"ote", L"q\"", new ParameterTypeSerializer<int>);
            adder.AddList(11, L"back\\slash", L"b\\", new ParameterTypeSerializer<int>);
            adder.AddList(12, L"line\nfeed", L"l\n", new TStringSerializer);
            adder.AddMap(13, L"control\u0001-x", L"c\u001F", new TStringSerializer);
            adder.AddBag(14, L"tab\t-bag", L"t\t");
            adder.AddSimple(15, L"delete\u007F", L"d\u007F", new TStringSerializer);
            adder.AddSimple(20, L"int", new ParameterTypeSerializer<int>);
            adder.AddSimple(21, L"text", new TStringSerializer);
            adder.AddList(22, L"int-list", new ParameterTypeSerializer<int>);
            adder.AddMap(23, L"int-map", new ParameterTypeSerializer<int>);
            adder.AddList(24, L"text-list", new TStringSerializer);
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    std::string Written(const RefCntPtr<TestBag>& bag,
                        JSONSerializer::OutputType type = JSONSerializer::Compact) const {
        return JSONSerializer(L"host").ToString(bag, type).ToUtf8();
    }
    RefCntPtr<IParameters> Read(const char* text) const {
        return JSONSerializer(L"host").ToParameters(TString::FromUtf8(text));
    }

    std::size_t m_texts = 0;
    std::size_t m_run = 0;
    TestRegistry m_registry;
};

// One of each of the oddly named parameters.
RefCntPtr<TestBag> OddlyNamed() {
    return MakeBag({{10, Val<int>(1)},
                    {11, Val<std::vector<int>>({2})},
                    {12, Val<std::vector<TString>>({L"x"})},
                    {13, Val<std::map<TString, TString>>({{L"k\"", L"v"}})},
                    {14, BagVal(MakeBag())},
                    {15, Text(L"y")}});
}

}  // namespace

TEST_F(HostTypes, ListsGoTheWayOfTheirSerializer) {
    for (const bool packed : {false, true}) {
        const TestSession session(false, packed);
        const auto bag = MakeBag({{1, Val<std::vector<int>>({7, 7, 7, 7, 7})},
                                  {2, Val<std::vector<double>>({0.5})},
                                  {3, Val<std::vector<bool>>({})}});
        EXPECT_EQ(R"({"ints":["count","5"],"reals":["count","1"],"flags":["count","0"]})", Written(bag));
    }
}

TEST_F(HostTypes, SingleValuesGoTheWayOfTheirSerializer) {
    EXPECT_EQ(R"({"doubled": 42})", Written(MakeBag({{4, Val<int>(21)}})));
    EXPECT_EQ(21, GetParameterValue<int>(*Read(R"({"doubled": 42})"), 4));
    // Lists are not what that serializer changed.
    EXPECT_EQ(R"({"doubledList":[21]})", Written(MakeBag({{5, Val<std::vector<int>>({21})}})));
    EXPECT_EQ((std::vector<int>{42}), GetParameterValue<std::vector<int>>(*Read(R"({"doubledList": [42]})"), 5));
}

TEST_F(HostTypes, DerivedHoldersAreWrittenAsTheirValues) {
    const auto bag = MakeBag({{20, Named<int>(-5)},
                              {21, Named<TString>(L"a\tb")},
                              {22, Named<std::vector<int>>({1, 2, 3, 4, 5})},
                              {23, Named<std::map<TString, int>>({{L"k", 1}})},
                              {24, Named<std::vector<TString>>({L"x"})}});
    EXPECT_EQ(R"({"int": -5,"text": "a\tb","intList":[1,2,3,4,5],"intMap":{"k":1},"textList":["x"]})", Written(bag));
    const TestSession session(false, true);
    EXPECT_EQ(R"({"int": -5,"text": "a\tb","intList":[[1,5,1],[]],"intMap":{"k":1},"textList":["x"]})", Written(bag));
    const RefCntPtr<IParameters> copy = Read(Written(bag).c_str());
    EXPECT_FALSE(copy->GetParameter(20).IsMarked()) << "reading makes the library's own holders";
}

TEST_F(HostTypes, DerivedBagHoldersAreBags) {
    const auto inner = MakeBag({{20, Named<int>(1)}});
    m_registry.Add(L"bags", 100, 109, [](AbstractParamAdder& adder) { adder.AddBag(100, L"bag"); });
    EXPECT_EQ(R"({"bag":{"int": 1}})",
              Written(MakeBag({{100, Named<RefCntPtr<const IParameters>>(RefCntPtr<const IParameters>(inner))}})));
}

// Room is made for the texts of a list before they are collected, so that they never move; for those of a nested list
// too.
TEST_F(HostTypes, TextsOfListsAreReservedForAllElements) {
    std::string texts;
    for (int i = 0; i < 1000; ++i) {
        texts += ",\"x\"";
    }
    Read(("{\"texts\":[" + texts.substr(1) + "]}").c_str());
    EXPECT_EQ(1000U, m_texts);
    Read(("{\"texts\":[[\"1\",\"2\",\"3\",\"4\",\"5\"]" + texts + "]}").c_str());
    EXPECT_GE(m_texts, 1001U);
    EXPECT_LE(m_texts, 1006U) << "for each value in the array at most, those in nested lists included";
    EXPECT_EQ(5U, m_run);
}

TEST_F(HostTypes, TextListsOfSerializersAreReservedToTheirSize) {
    EXPECT_EQ(777U,
              ParameterTypeSerializer<int>().ToStringList(Val<std::vector<int>>(std::vector<int>(777))).capacity());
    EXPECT_EQ(777U, TStringSerializer().ToStringList(Val<std::vector<TString>>(std::vector<TString>(777))).capacity());
}

// Camel-case names are written as they are, whatever they hold; short and raw names are escaped.
TEST_F(HostTypes, RegisteredNamesAreEscapedOnlyWhereTheyAreNotTurnedToCamelCase) {
    const TestSession session;
    EXPECT_EQ(
        "{\"qu\"ote\": 1,\"back\\slash\":[2],\"line\nfeed\":[\"x\"],\"control\x01X\":{\"k\"\":\"v\"},"
        "\"tab\tBag\":{},\"delete\x7F\": \"y\"}",
        Written(OddlyNamed()));
    EXPECT_EQ(R"(1,"back\\slash":[2],"line\nfeed":["x"],"control\\x1-x":{"k\"":"v"},"tab\t-bag":{},"delete\\x7f": "y")",
              Written(OddlyNamed(), JSONSerializer::BareRawNames));
}

TEST_F(HostTypes, ShortNamesAreEscaped) {
    const TestSession session(true);
    EXPECT_EQ(R"({"q\"": 1,"b\\":[2],"l\n":["x"],"c\\x1f":{"k\"":"v"},"t\t":{},"d\\x7f": "y"})", Written(OddlyNamed()));
    EXPECT_EQ(R"({q\": 1,b\\:[2],l\n:["x"],c\\x1f:{k\":"v"},t\t:{},d\\x7f: "y"})",
              Written(OddlyNamed(), JSONSerializer::UnquotedNames));
}

TEST_F(HostTypes, EscapedShortNamesAreFoundAgain) {
    const TestSession session(true);
    const RefCntPtr<IParameters> bag = Read(R"({"q\"": 1,"b\\":[2],"l\n":["x"],"t\t":{}})");
    EXPECT_EQ(1, GetParameterValue<int>(*bag, 10));
    EXPECT_EQ((std::vector<int>{2}), GetParameterValue<std::vector<int>>(*bag, 11));
    EXPECT_EQ((std::vector<TString>{L"x"}), GetParameterValue<std::vector<TString>>(*bag, 12));
    EXPECT_TRUE(bag->HasParameter(14));
}
