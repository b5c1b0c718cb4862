// Whole documents the short way against the long one: random bags of every kind of parameter, and the same texts with
// changes, must come to the same text, the same bag or the same failure in the same place.
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "json/JSONTestSupport.h"
#include "support/EventsOnly.h"
#include "support/Rounds.h"

namespace {

using Random = std::mt19937_64;

// Spellings of numbers, and of what is none.
constexpr const char16_t* kNumberSpellings[] = {u"16777217",
                                                u"16777219",
                                                u"8388608.5",
                                                u"33554435.5",
                                                u"-0",
                                                u"1234567890",
                                                u"2147483648",
                                                u"-2147483647",
                                                u"-2147483648",
                                                u"4294967295",
                                                u"4294967296",
                                                u"99999999999",
                                                u"9223372036854775807",
                                                u"9223372036854775808",
                                                u"12345678901234567890",
                                                u"-0.0",
                                                u"0.0",
                                                u"0.00000000000001",
                                                u"0.123456789012345",
                                                u"12345678.5",
                                                u"1234567.12345678901234",
                                                u"99999999.99999999999999",
                                                u"123456789012345678901234567890",
                                                u"01",
                                                u"-01",
                                                u"00.5",
                                                u"-",
                                                u"--1",
                                                u"1.",
                                                u".5",
                                                u"1..5",
                                                u"1.5.5",
                                                u"1e5",
                                                u"1E-5",
                                                u"1.5e3",
                                                u" 5",
                                                u"5 ",
                                                u"  5",
                                                u"\t6\n",
                                                u"[1,3]",
                                                u"[1,3,2]",
                                                u"[]",
                                                u"[1]",
                                                u"null",
                                                u"true",
                                                u"\"8\"",
                                                u"+1",
                                                u"0x1",
                                                u"\uFF11",
                                                u"1:5",
                                                u"1/5",
                                                u"12a45678",
                                                u"1234567x",
                                                u"",
                                                u"{}"};

// A comment takes a text the long way, and changes nothing but the places.
constexpr std::string_view kLongWay = "/**/";

class DirectDocuments : public JSONTest {
protected:
    bool Roll(unsigned chances) { return m_random() % chances == 0; }
    std::size_t Below(std::size_t limit) { return m_random() % limit; }

    template <class T>
    T Number() {
        switch (Below(5)) {
            case 0:
                return static_cast<T>(Below(10));
            case 1:
                return static_cast<T>(static_cast<std::int32_t>(m_random()));
            case 2:
                return static_cast<T>(static_cast<std::uint32_t>(m_random()));
            case 3:
                return static_cast<T>(static_cast<double>(static_cast<std::int32_t>(m_random())) / 1024);
            default:
                return static_cast<T>(static_cast<std::int64_t>(Below(2000)) - 1000);
        }
    }

    TString Characters() {
        static constexpr char16_t kTelling[] = {u'"', u'\\', u'\n', u'\0', 0x1F, 0x7F, 0xD800, 0x416, u'-', u',', u']'};
        TString text;
        for (std::size_t n = Below(Roll(4) ? 40 : 12); n > 0; --n) {
            text.push_back(Roll(12) ? kTelling[Below(std::size(kTelling))] : static_cast<char16_t>(u'a' + Below(26)));
        }
        return text;
    }

    TString Digits(std::size_t count) {
        static constexpr std::u16string_view kDigits = u"0123456789abcdef";
        TString text;
        while (count-- > 0) {
            text.push_back(kDigits[Below(16)]);
        }
        return text;
    }

    TUUID Identifier() {
        const TString dash = u"-";
        return TUUID(Digits(8) + dash + Digits(4) + dash + Digits(4) + dash + Digits(4) + dash + Digits(12));
    }

    // Runs of equal and of evenly spaced values between others.
    template <class T>
    std::vector<T> Numbers() {
        std::vector<T> values;
        for (std::size_t pieces = Below(6); pieces > 0; --pieces) {
            T value = Number<T>();
            const T step = Roll(2) ? T{} : static_cast<T>(Below(5));
            for (std::size_t n = 1 + Below(Roll(3) ? 60 : 4); n > 0; --n) {
                values.push_back(value);
                if constexpr (std::is_integral_v<T>) {  // modulo 2^n
                    using Unsigned = std::make_unsigned_t<T>;
                    value = static_cast<T>(static_cast<Unsigned>(value) + static_cast<Unsigned>(step));
                } else {
                    value += step;
                }
            }
        }
        return values;
    }

    template <class T, class Make>
    std::vector<T> Some(Make make) {
        std::vector<T> values(Below(5));
        std::generate(values.begin(), values.end(), make);
        return values;
    }

    template <class T, class Make>
    std::map<TString, T> Keyed(Make make) {
        std::map<TString, T> values;
        for (std::size_t n = Below(4); n > 0; --n) {
            values[Characters()] = make();
        }
        return values;
    }

    template <class T>
    void Set(TestBag& bag, int id, T value) {
        if (Roll(3)) {
            bag.SetParameter(id, Val<T>(std::move(value)));
        }
    }

    RefCntPtr<TestBag> MakeRandomBag(int depth) {
        const auto bag = MakeBag();
        const auto characters = [this] { return Characters(); };
        Set<int>(*bag, view::kMaxCount, Number<int>());
        Set<unsigned int>(*bag, view::kUnsigned, Number<unsigned int>());
        Set<Int64>(*bag, view::kInt64, Number<Int64>());
        Set<UInt64>(*bag, view::kUInt64, Number<UInt64>());
        Set<float>(*bag, view::kFloat, Number<float>());
        Set<double>(*bag, view::kReal, Number<double>());
        Set<bool>(*bag, view::kFlag, Roll(2));
        Set<TString>(*bag, view::kText, Characters());
        Set<TUUID>(*bag, view::kUuid, Identifier());
        Set<HoursDuration>(*bag, view::kHours, HoursDuration(Number<int>()));
        Set<SecondsDuration>(*bag, view::kSeconds, SecondsDuration(Number<Int64>()));
        Set<FieldName>(*bag, view::kField, FieldName::ParseGlobal(L"[a]]b].[c\"d]"));
        Set<QualifiedName>(*bag, view::kQualified, QualifiedName::ParseGlobal(L"plain name"));
        Set<int>(*bag, view::kDashedShort, Number<int>());
        Set<int>(*bag, view::kDigit, Number<int>());
        Set<std::vector<int>>(*bag, view::kIntList, Numbers<int>());
        Set<std::vector<unsigned int>>(*bag, view::kUnsignedList, Numbers<unsigned int>());
        Set<std::vector<Int64>>(*bag, view::kInt64List, Numbers<Int64>());
        Set<std::vector<UInt64>>(*bag, view::kUInt64List, Numbers<UInt64>());
        Set<std::vector<float>>(*bag, view::kFloatList, Numbers<float>());
        Set<std::vector<double>>(*bag, view::kRealList, Numbers<double>());
        Set<std::vector<bool>>(*bag, view::kFlagList, std::vector<bool>(Below(5), Roll(2)));
        Set<std::vector<TString>>(*bag, view::kTextList, Some<TString>(characters));
        Set<std::vector<TUUID>>(*bag, view::kUuidList, Some<TUUID>([this] { return Identifier(); }));
        Set<std::vector<HoursDuration>>(*bag, view::kHoursList,
                                        Some<HoursDuration>([this] { return HoursDuration(Number<int>()); }));
        Set<std::vector<CoreParameterID>>(*bag, view::kParamTypeList,
                                          Some<CoreParameterID>([] { return CoreParameterID::IntRLE; }));
        Set<std::map<TString, TString>>(*bag, view::kMyMap, Keyed<TString>(characters));
        if (Roll(8)) {  // takes reading the long way
            Set<std::map<TString, int>>(*bag, view::kIntMap, Keyed<int>([this] { return Number<int>(); }));
        }
        if (depth > 0) {
            AddNested(*bag, depth - 1);
        }
        return bag;
    }

    void AddNested(TestBag& bag, int depth) {
        using Bag = BagStructureSerializer::Bag;
        const auto nested = [this, depth] { return Bag(MakeRandomBag(depth)); };
        Set<Bag>(bag, view::kSubBag, nested());
        Set<Bag>(bag, view::kMyModel, nested());
        Set<BagStructureSerializer::Bags>(bag, view::kItems, Some<Bag>(nested));
        Set<BagStructureSerializer::BagMap>(bag, view::kByKey, Keyed<Bag>([&] { return Roll(4) ? Bag() : nested(); }));
    }

    // By events: the visitor is told of single parameters, lists and so on.
    TString AtLength(const RefCntPtr<TestBag>& bag) const {
        TString out;
        BuildParameterStrings builder(out, JSONSerializer::Compact, false, false,
                                      !PresModelBuilderSupport::UseVerboseNames());
        EventsOnly visitor(builder);
        VisitParametersStructure(L"view", bag, visitor);
        builder.Finish();
        return out;
    }

    // The bag, or the failure and where it is. before is what stands before the text.
    std::string OutcomeAndPlace(const TString& json, std::size_t before) const {
        std::string place;
        const std::string outcome = OutcomeOf([&] {
            try {
                return m_json.ToParameters(json);
            } catch (const TextLocated& failure) {
                const TextLocation& location = failure.GetLocation();
                place = " at " + std::to_string(location.offset - before) + " " + location.path.ToUtf8();
                throw;
            }
        });
        return outcome + place;
    }

    void ExpectSameBothWays(const TString& json) const {
        const TString longWay = TString::FromUtf8(kLongWay) + json;
        EXPECT_EQ(OutcomeAndPlace(longWay, kLongWay.size()), OutcomeAndPlace(json, 0)) << printing::ToPrintable(json);
    }

    Random m_random{Seed(20261121)};
};

TEST_F(DirectDocuments, AreWrittenAsByEvents) {
    for (int round = Rounds(300); round > 0; --round) {
        const TestSession session(Roll(2), Roll(2));
        const auto bag = MakeRandomBag(2);
        ASSERT_EQ(AtLength(bag), m_json.ToString(bag, JSONSerializer::Compact));
    }
}

TEST_F(DirectDocuments, AreReadAsAtLength) {
    for (int round = Rounds(300); round > 0; --round) {
        const TestSession session(Roll(2), Roll(2));
        const auto type = Roll(4) ? JSONSerializer::Pretty : JSONSerializer::Compact;
        ExpectSameBothWays(m_json.ToString(MakeRandomBag(2), type));
    }
}

TEST_F(DirectDocuments, FailAsAtLength) {
    static constexpr std::u16string_view kTelling = u"{}[]\",:-+.0123456789eEtfn \\/\n\tu\x7F";
    for (int round = Rounds(150); round > 0; --round) {
        const TestSession session(false, Roll(2));
        const TString json = m_json.ToString(MakeRandomBag(1), JSONSerializer::Compact);
        for (int change = 0; change < 20; ++change) {
            TString changed = json;
            const std::size_t at = Below(changed.size());
            switch (Below(4)) {
                case 0:
                    changed.removeAt(static_cast<int>(at));
                    break;
                case 1:
                    changed.resize(at);
                    break;
                default:
                    changed.mutable_data()[at] = kTelling[Below(kTelling.size())];
            }
            ExpectSameBothWays(changed);
        }
    }
}

TEST_F(DirectDocuments, NumbersAloneAndInMapsInEverySpelling) {
    const TestSession session(false, false);
    for (const char16_t* telling : kNumberSpellings) {
        for (const char16_t* name :
             {u"maxCount", u"unsigned", u"big", u"bigUnsigned", u"real", u"smallReal", u"flag"}) {
            for (const char16_t* rest : {u"", u", \"text\": \"a text that makes the document longer than a block\""}) {
                ExpectSameBothWays(TString(u"{\"") + TString(name) + TString(u"\": ") + TString(telling) +
                                   TString(rest) + TString(u"}"));
            }
        }
        for (const char16_t* name : {u"intMap", u"flagMap", u"myMap"}) {
            ExpectSameBothWays(TString(u"{\"") + TString(name) + TString(u"\":{\"a\":1,\"b-c\": ") + TString(telling) +
                               TString(u"}}"));
        }
    }
}

TEST_F(DirectDocuments, MapsOfNumbersAreWrittenAsByEvents) {
    const auto bag = MakeBag({{view::kIntMap, Val(std::map<TString, int>{{L"a-b", 1}, {L"c", -2147483647}, {L"", 0}})},
                              {view::kFlagMap, Val(std::map<TString, bool>{{L"x", true}, {L"y-1", false}})},
                              {view::kMyMap, Val(std::map<TString, TString>{})}});
    for (const bool shortNames : {false, true}) {
        const TestSession session(shortNames, false);
        const TString text = m_json.ToString(bag, JSONSerializer::Compact);
        EXPECT_EQ(AtLength(bag), text);
    }
}

// Lists are looked at in blocks of 64 units: every spelling comes to stand in every place of a block.
TEST_F(DirectDocuments, ListsOfNumbersInEverySpelling) {
    static constexpr const char16_t* kUsual[] = {
        u"0",          u"7",   u"-7",    u"42",        u"-613",       u"12345678",        u"123456789",
        u"2147483647", u"1.5", u"-0.25", u"1234567.5", u"0.12345678", u"3.14159265358979"};
    static constexpr const char16_t* kLists[] = {u"intList",         u"unsignedList", u"bigList",
                                                 u"bigUnsignedList", u"realList",     u"smallRealList"};
    const TestSession session(false, false);
    for (const char16_t* list : kLists) {
        for (const char16_t* telling : kNumberSpellings) {
            for (int round = Rounds(4); round > 0; --round) {
                TString json = TString(u"{\"") + list + u"\":[";
                const std::size_t size = 1 + Below(40);
                const std::size_t place = Below(size);
                for (std::size_t i = 0; i < size; ++i) {
                    json += i == 0 ? u"" : Roll(20) ? u", " : u",";
                    json += i == place ? telling : kUsual[Below(Roll(3) ? std::size(kUsual) : 8)];
                }
                json += Roll(2) ? u"]}"
                                : u"],\"n\":1,\"text\":\"a text, with commas, that makes the document longer, 1,2\"}";
                ExpectSameBothWays(json);
            }
        }
    }
}

// Runs are looked at in pieces of 32 units: every spelling stands as each of their items, close to the end of the text
// and far from it.
TEST_F(DirectDocuments, RunsInEverySpelling) {
    static constexpr const char16_t* kItems[] = {
        u"0",  u"5", u"-5",  u"10",  u"-10", u"007",  u"",      u"1234567", u"12345678", u"123456789", u"-0",
        u"1-", u"-", u"--1", u"1.5", u"1e2", u"null", u"\"3\"", u"[1]",     u"{}",       u" 8"};
    static constexpr const char16_t* kLists[] = {u"intList", u"unsignedList", u"bigList", u"bigUnsignedList",
                                                 u"realList"};
    const TestSession session(false, false);
    const std::size_t earlier = PresLayerLimits::GetExpansionBytes();
    PresLayerLimits::SetExpansionBytes(100 * sizeof(int));  // long runs are refused
    const auto expect = [&](const char16_t* list, const TString& run) {
        for (const char16_t* before : {u"", u"1,2,3,-44,555,"}) {
            for (const char16_t* behind :
                 {u"]}", u",7]}", u",[0,3],[]],\"text\":\"a text that makes it longer, 1\"}"}) {
                ExpectSameBothWays(TString(u"{\"") + list + u"\":[" + before + run + behind);
            }
        }
    };
    for (const char16_t* list : kLists) {
        for (const char16_t* item : kItems) {
            expect(list, TString(u"[") + item + u",5]");
            expect(list, TString(u"[") + item + u",4,2]");
            expect(list, TString(u"[3,") + item + u"]");
            expect(list, TString(u"[3,") + item + u",1]");
            expect(list, TString(u"[3,4,") + item + u"]");
            expect(list, TString(u"[3,4,1,") + item + u"]");
            expect(list, TString(u"[") + item + u"]");
            expect(list, TString(u"[1234567,1000,") + item);  // not closed
            expect(list, TString(u"[ 3 , 4 , ") + item + u" ]");
        }
    }
    PresLayerLimits::SetExpansionBytes(earlier);
}

TEST_F(DirectDocuments, MembersInAnyOrderAndTwice) {
    for (const char* json : {R"({"text": "b", "maxCount": 1})",
                             R"({"maxCount": 1, "maxCount": 2})",
                             R"({"maxCount": 1, "maxCount": null})",
                             R"({"maxCount": null, "text": "a"})",
                             R"({"maxCount": "x", "flag": 3})",
                             R"({"flag": 3, "maxCount": "x"})",
                             R"({"subBag": {"flag": true, "big": 7}, "big": 8})",
                             R"({"items": [{}, {"n": 1}], "c": "d"})",
                             R"({"byKey": {"b": null, "a": {"n": 2}, "b": {}}})",
                             R"({"intList": [1, [2, 5, 3], [], 4]})",
                             R"({"intList": [1, [2], [2, 3, 4, 5]]})",
                             R"({"realList": [[0.5, 4], [1, 3, 0.25], 2]})",
                             R"({"intList": [[1, -3]]})",
                             R"({"intList": [[1, 4294967295]]})",
                             R"({"intList": [01]})",
                             R"({"intList": [1,]})",
                             R"({"intList": [1 2]})",
                             R"({"realList": [1.5, -0.0, -0, 1e3, 2.]})",
                             R"({"realList": [0.123456789012345, 12345678901234.5, 0.1, 0.1, 0.1]})",
                             R"({"maxCount": 4294967295})",
                             R"({"maxCount": -2147483649})",
                             R"({"big": 134217728})",
                             R"({"real": 123456789012345678901234567890.5})",
                             R"({"maxCount": 1.0})",
                             R"({"maxCount": 1} rest)",
                             R"({} {)",
                             R"([])",
                             R"("")",
                             "",
                             R"({"paramTypeList": ["int-rle", "?"]})"}) {
        ExpectSameBothWays(TString::FromUtf8(json));
    }
}

// A bag that notes what is stored in it.
class WatchingBag final : public TestBag {
public:
    explicit WatchingBag(std::string& notes) : m_notes(notes) {}

    void SetParameter(int id, RefCntPtr<IParameter> value) override {
        m_notes += " set " + std::to_string(id) + (value ? "" : " null");
        TestBag::SetParameter(id, std::move(value));
    }

private:
    std::string& m_notes;
};

class WatchingRegistry final : public ViewRegistry {
public:
    RefCntPtr<IParameters> CreateParameters() override {
        notes += " new";
        return plainFrom-- > 0 ? RefCntPtr<IParameters>(new TestBag) : RefCntPtr<IParameters>(new WatchingBag(notes));
    }

    std::string notes;
    int plainFrom = 0;  // so many bags come before the first that watches
};

TEST(DirectDocumentsOfWatchedBags, AreFilledAsAtLength) {
    WatchingRegistry registry;
    const JSONSerializer json(L"view");
    for (const std::string_view text :
         {R"({"text": "a", "maxCount": 1, "flag": true})", R"({"subBag": {"n": 1, "c": "d"}, "n": 2})",
          R"({"myModel": {"n": 1}, "items": [{"n": 1}, {}], "byKey": {"b": {"n": 1}, "c": null}})",
          R"({"subBag": {"byKey": {"k1": {}, "k3": {"n": 1}}, "aB": 1}, "byKey": {"k2": {}}})"}) {
        for (int plain = 0; plain < 3; ++plain) {
            const auto outcome = [&](std::string_view prefix) {
                registry.notes.clear();
                registry.plainFrom = plain;
                const std::string bag = OutcomeOf(
                    [&] { return json.ToParameters(TString::FromUtf8(std::string(prefix) + std::string(text))); });
                return bag + registry.notes;
            };
            outcome("");  // fills the namespace
            const std::string atLength = outcome(kLongWay);
            if (plain == 0) {
                EXPECT_EQ(atLength, outcome("")) << text;
            } else {  // bags of one object are made in the order of the text
                EXPECT_EQ(atLength.substr(0, atLength.find(" new")), outcome("").substr(0, atLength.find(" new")))
                    << text;
            }
        }
    }
}

// The bag of a member is stored before it is filled, and stored again; that of a structure gives way to nothing and
// then to the structure. Members come in the order of their names.
TEST(DirectDocumentsOfWatchedBags, SeeTheirNestedBagsBeforeTheseAreFilled) {
    WatchingRegistry registry;
    const JSONSerializer json(L"view");
    for (const char* prefix : {"", "", kLongWay.data()}) {  // the first one fills the namespace
        registry.notes.clear();
        registry.plainFrom = 1;
        const std::string text = R"({"subBag": {"subBag": {"n": 1}, "n": 2, "myModel": {"c": "x"}, "text": null}})";
        const RefCntPtr<IParameters> bag = json.ToParameters(TString::FromUtf8(prefix + text));
        EXPECT_EQ("sub-bag=(sub-bag=(n=1) my-model=(c=x) n=2)", BagDescription::Of(*bag));
        EXPECT_EQ(" new new new set 70 set 81 set 70 null set 70 set 82 new set 60 set 82 set 60", registry.notes)
            << prefix;
    }
}

// The order is that of the names in the text, whichever they are: "text" is before "textList", "tx" behind "tl".
TEST(DirectDocumentsOfWatchedBags, AreFilledInTheOrderOfTheNamesInForce) {
    WatchingRegistry registry;
    const JSONSerializer json(L"view");
    const auto notesOf = [&](const wchar_t* text) {
        for (int round = 0; round < 2; ++round) {  // the first one fills the namespace
            registry.notes.clear();
            registry.plainFrom = 1;
            json.ToParameters(text);
        }
        return registry.notes;
    };
    EXPECT_EQ(" new new set 17 set 37", notesOf(LR"({"subBag": {"textList": ["a"], "text": "x"}})"));
    const TestSession session(true);
    EXPECT_EQ(" new new set 37 set 17", notesOf(LR"({"sb": {"tx": "x", "tl": ["a"]}})"));
}

// Whatever fails while a value is parsed and stored is a failure to parse it; other failures pass.
TEST(DirectDocumentsOfNothing, ARegistryThatMakesNoBag) {
    class EmptyRegistry final : public ViewRegistry {
        RefCntPtr<IParameters> CreateParameters() override { return {}; }
    };
    EmptyRegistry registry;
    const JSONSerializer json(L"view");
    for (int round = 0; round < 2; ++round) {  // the first one fills the namespace
        EXPECT_EQ("not parsed: 82", OutcomeOf([&] { return json.ToParameters(L"{\"n\": 1}"); }));
        EXPECT_EQ("logic: m_ptr", OutcomeOf([&] { return json.ToParameters(L"{\"subBag\": {}}"); }));
    }
}

TEST_F(DirectDocuments, MapsInsideEntriesKeepTheirKeys) {
    const std::string text =
        R"({"byKey":{"a":{"byKey":{"x":{"n":1},"y":{}}},"b":{"byKey":{"p":{},"q":null}},"c":{"n":2}}})";
    const JSONSerializer json(L"view");
    json.ToParameters(TString::FromUtf8(text));  // fills the namespace
    const RefCntPtr<IParameters> bag = json.ToParameters(TString::FromUtf8(text));
    EXPECT_EQ("by-key=<a:(by-key=<x:(n=1),y:()>),b:(by-key=<p:(),q:null>),c:(n=2)>", BagDescription::Of(*bag));
}

TEST_F(DirectDocuments, HostsThatWriteNothingLeaveNoComma) {
    class Silent final : public BagStructureSerializer {
        void Serialize(RefCntPtr<const IParameter>, SerializeStructure&, int, bool) const override {}
    };
    m_registry.Add(L"host", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddStructure(2001, L"silent", L"si", new Silent);
        adder.AddSimple(2002, L"count", L"co", new ParameterTypeSerializer<int>);
        adder.AddStructure(2003, L"last", L"la", new Silent);
    });
    const auto bag = MakeBag({{2001, Text(L"")}, {2002, Val(5)}, {2003, Text(L"")}});
    EXPECT_EQ(R"({"count": 5})", JSONSerializer(L"host").ToString(bag, JSONSerializer::Compact).ToUtf8());
}

}  // namespace
