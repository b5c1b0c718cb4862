// What is written and read back is the same: random bags of the kinds for which that is promised.
#include <qvpreslayer/JSONSerializer.h>

#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "json/JSONTestSupport.h"

namespace {

using JSONRoundTrip = JSONTest;

// Random values; the same ones at every run.
class Generator {
public:
    explicit Generator(unsigned seed) : m_engine(seed) {}

    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_engine); }
    bool Chance(std::size_t oneIn) { return Below(oneIn) == 0; }

    // Among all values, the limits and small ones.
    template <class T>
    T Integer(T low = std::numeric_limits<T>::min(), T high = std::numeric_limits<T>::max()) {
        switch (Below(6)) {
            case 0:
                return low;
            case 1:
                return high;
            case 2:
                return static_cast<T>(Below(10));
            default:
                return std::uniform_int_distribution<T>(low, high)(m_engine);
        }
    }

    // What the integers of JSON keep: 32 bits, of either sign.
    template <class T>
    T WireInteger() {
        if constexpr (std::is_signed_v<T>) {
            return Integer<T>(std::numeric_limits<int>::min(),
                              sizeof(T) == 4 ? std::numeric_limits<int>::max()
                                             : static_cast<T>(std::numeric_limits<unsigned int>::max()));
        } else {
            return Integer<T>(0, std::numeric_limits<unsigned int>::max());
        }
    }

    // A real that is not whole, or below 2^32.
    double Real() {
        switch (Below(5)) {
            case 0:
                return static_cast<double>(WireInteger<int>());
            case 1:
                return std::uniform_real_distribution<double>(-1, 1)(m_engine);
            case 2:
                return static_cast<double>(WireInteger<int>()) + 0.5;
            case 3:
                return 5000000000.5 + static_cast<double>(Below(1000000));
            default:
                return std::uniform_real_distribution<double>(-100000, 100000)(m_engine);
        }
    }

    // Any unit but the controls that have no escape of JSON's own.
    TString Text() {
        static constexpr char16_t kSpecial[] = {u'"', u'\\', u'/', u'\n', u'\t', u'\r', u'\b', u'\f', u'\0', u'%'};
        std::u16string text;
        const std::size_t length = Below(12);
        while (text.size() < length) {
            if (Chance(4)) {
                text += kSpecial[Below(std::size(kSpecial))];
            } else if (Chance(2)) {
                text += static_cast<char16_t>(0x20 + Below(0x5F));
            } else {
                text += static_cast<char16_t>(0x80 + Below(0x10000 - 0x80));  // surrogates too
            }
        }
        return TString(text);
    }

    // A key that no name form changes.
    TString Key() {
        std::u16string key(1 + Below(4), u'a');
        for (auto& unit : key) {
            unit = static_cast<char16_t>(u'a' + Below(26));
        }
        return TString(key);
    }

    TUUID Uuid() {
        std::u16string text = u"00000000-0000-0000-0000-000000000000";
        for (auto& unit : text) {
            unit = unit == u'-' ? unit : u"0123456789abcdef"[Below(16)];
        }
        return TUUID(TString(text));
    }

    QualifiedName Name() {
        std::u16string text = u"[";
        text += static_cast<char16_t>(u'A' + Below(26));
        text += Chance(2) ? u"]].\"" : u"é";
        return QualifiedName::ParseGlobal(TString(text + u"]"));
    }
    FieldName Field() { return FieldName::ParseGlobal(Name().GetFullValue()); }

    template <class Make>
    auto Vector(Make&& make) {
        using T = decltype(make());
        std::vector<T> values;
        const std::size_t count = Below(20);
        while (values.size() < count) {
            values.push_back(make());
            while (Chance(3)) {
                values.push_back(values.back());  // runs of equal values
            }
        }
        return Val(std::move(values));
    }

    // Rising and falling runs among others.
    template <class T>
    RefCntPtr<IParameter> Steps() {
        std::vector<T> values;
        for (std::size_t run = Below(5); run > 0; --run) {
            const T step = static_cast<T>(Below(7) - 3);
            T value = static_cast<T>(1000 + Below(1000));
            for (std::size_t i = Below(9); i > 0; --i) {
                values.push_back(value);
                value = static_cast<T>(value + step);
            }
        }
        return Val(std::move(values));
    }

    template <class Make>
    auto Map(Make&& make) {
        std::map<TString, decltype(make())> values;
        for (std::size_t count = Below(5); count > 0; --count) {
            values.insert_or_assign(Key(), make());
        }
        return Val(std::move(values));
    }

    RefCntPtr<TestBag> Bag(int depth) {
        auto bag = MakeBag();
        AddScalars(*bag);
        AddLists(*bag);
        AddMaps(*bag);
        if (depth > 0) {
            AddStructures(*bag, depth - 1);
        }
        return bag;
    }

private:
    void Add(IParameters& bag, int id, RefCntPtr<IParameter> value) {
        if (Chance(3)) {
            bag.SetParameter(id, value);
        }
    }

    void AddScalars(IParameters& bag) {
        Add(bag, view::kMaxCount, Val(Integer<int>()));
        Add(bag, view::kUnsigned, Val(Integer<unsigned int>()));
        Add(bag, view::kInt64, Val(WireInteger<Int64>()));
        Add(bag, view::kUInt64, Val(WireInteger<UInt64>()));
        Add(bag, view::kReal, Val(Real()));
        Add(bag, view::kFloat, Val(static_cast<float>(Below(1000)) / 8));
        Add(bag, view::kFlag, Val(Chance(2)));
        Add(bag, view::kText, Val(Text()));
        Add(bag, view::kUuid, Val(Uuid()));
        Add(bag, view::kHours, Val(HoursDuration(Integer<int>())));
        Add(bag, view::kSeconds, Val(SecondsDuration(Integer<Int64>())));
        Add(bag, view::kField, Val(Field()));
        Add(bag, view::kQualified, Val(Name()));
        Add(bag, view::kDashedShort, Val(Integer<int>()));
        Add(bag, view::kDigit, Val(Integer<int>()));
    }

    void AddLists(IParameters& bag) {
        Add(bag, view::kIntList, Vector([&] { return Integer<int>(); }));
        Add(bag, view::kUnsignedList, Steps<unsigned int>());
        Add(bag, view::kInt64List, Vector([&] { return WireInteger<Int64>(); }));
        Add(bag, view::kUInt64List, Steps<UInt64>());
        Add(bag, view::kRealList, Vector([&] { return Real(); }));
        Add(bag, view::kFloatList, Vector([&] { return static_cast<float>(Below(9)) / 4; }));
        Add(bag, view::kFlagList, Vector([&] { return Chance(2); }));
        Add(bag, view::kTextList, Vector([&] { return Text(); }));
        Add(bag, view::kHoursList, Vector([&] { return HoursDuration(Integer<int>()); }));
        Add(bag, view::kUuidList, Vector([&] { return Uuid(); }));
        Add(bag, view::kParamTypeList,
            Vector([&] { return Chance(2) ? CoreParameterID::IntRLE : CoreParameterID::ParamType; }));
    }

    void AddMaps(IParameters& bag) {
        Add(bag, view::kMyMap, Map([&] { return Text(); }));
        Add(bag, view::kIntMap, Map([&] { return Integer<int>(); }));
        Add(bag, view::kFlagMap, Map([&] { return Chance(2); }));
        Add(bag, view::kUuidMap, Map([&] { return Uuid(); }));
    }

    void AddStructures(IParameters& bag, int depth) {
        Add(bag, view::kSubBag, BagVal(Bag(depth)));
        Add(bag, view::kMyModel, BagVal(Bag(depth)));
        BagStructureSerializer::Bags items;
        BagStructureSerializer::BagMap byKey;
        BagStructureSerializer::Bags rows;
        for (std::size_t count = Below(3); count > 0; --count) {
            items.push_back(Bag(depth));
            byKey[Key()] = Chance(3) ? RefCntPtr<const IParameters>() : RefCntPtr<const IParameters>(Bag(depth));
            rows.push_back(MakeBag({{view::kRows, Vector([&] { return Text(); })}}));
        }
        Add(bag, view::kItems, Val(std::move(items)));
        Add(bag, view::kByKey, Val(std::move(byKey)));
        Add(bag, view::kRow, BagVal(MakeBag({{view::kRow, Vector([&] { return Text(); })}})));
        Add(bag, view::kRows, Val(std::move(rows)));
    }

    std::mt19937 m_engine;
};

constexpr JSONSerializer::OutputType kReadable[] = {JSONSerializer::Pretty, JSONSerializer::Compact};

}  // namespace

TEST_F(JSONRoundTrip, RandomBagsInEveryReadableForm) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Generator generator(seed);
        const auto bag = generator.Bag(2);
        for (const bool shortNames : {false, true}) {
            for (const bool compressArrays : {false, true}) {
                const TestSession session(shortNames, compressArrays);
                const TString canonical = m_json.ToString(bag, JSONSerializer::Compact);
                for (const auto type : kReadable) {
                    const auto back = m_json.ToParameters(m_json.ToString(bag, type));
                    ASSERT_EQ(BagDescription::Of(*bag), BagDescription::Of(*back))
                        << seed << " " << shortNames << compressArrays << type;
                    // The description is UTF-8; the texts themselves keep every unit.
                    ASSERT_TRUE(canonical == m_json.ToString(back, JSONSerializer::Compact))
                        << seed << " " << shortNames << compressArrays << type;
                }
            }
        }
    }
}

TEST_F(JSONRoundTrip, ABareModelIsAnObjectThatCanBeRead) {
    const auto bag = MakeBag({{view::kMyModel, BagVal(MakeBag({{view::kAB, Val(1)}, {view::kC, Text(L"t")}}))}});
    EXPECT_EQ("a-b=1 c=t", Outcome(Write(bag, JSONSerializer::Bare)));
    EXPECT_EQ("a-b=1 c=t", Outcome(Write(bag, JSONSerializer::BareRawNames)));
}

TEST_F(JSONRoundTrip, IntegersOf32BitsComeBackExactlyPlainAndPacked) {
    const std::vector<Int64> values = {std::numeric_limits<int>::min(),
                                       -1,
                                       0,
                                       134217727,
                                       134217728,
                                       std::numeric_limits<int>::max(),
                                       2147483648,
                                       std::numeric_limits<unsigned int>::max(),
                                       4294967290,
                                       4294967291,
                                       4294967292,
                                       4294967293,
                                       5,
                                       5,
                                       5,
                                       5,
                                       5};
    for (const bool compressArrays : {false, true}) {
        const TestSession session(false, compressArrays);
        const auto back = Read(Write(MakeBag({{view::kInt64List, Val(values)}})));
        EXPECT_EQ(values, GetParameterValue<std::vector<Int64>>(*back, view::kInt64List)) << compressArrays;
    }
}

TEST_F(JSONRoundTrip, WhatDoesNotComeBack) {
    const auto outcome = [&](int id, RefCntPtr<IParameter> value) { return Outcome(Write(MakeBag({{id, value}}))); };
    EXPECT_EQ("secret=********", outcome(view::kSecret, Val(PasswordString(L"x"))));  // the mask is the password now
    EXPECT_EQ("my-map={aB:x}", outcome(view::kMyMap, Val(std::map<TString, TString>{{L"a-b", L"x"}})));
    EXPECT_EQ("big=705032704", outcome(view::kInt64, Val(Int64{5000000000})));
    EXPECT_EQ("text=\\x1f", outcome(view::kText, Text(L"\u001F")));
    EXPECT_EQ("text=\\x1f", outcome(view::kText, Text(L"\u0001f")));
    EXPECT_EQ("text=\\x7f", outcome(view::kText, Text(L"\u007F")));
}

TEST_F(JSONRoundTrip, ThePasswordReadIsTheMask) {
    const auto back = Read(Write(MakeBag({{view::kSecret, Val(PasswordString(L"hunter2"))}})));
    EXPECT_TRUE(PasswordString(L"********") == GetParameterValue<PasswordString>(*back, view::kSecret));
}

TEST_F(JSONRoundTrip, WhatWasReadIsWrittenTheSame) {
    const std::string json = R"({"maxCount": 3,"flag": true,"text": "t","intList":[1,2],"myMap":{"a":"x","b":"y"},)"
                             R"("subBag":{"maxCount": 1},"myModel":{"aB": 1,"c": "t"},"items":[{"n": 1},{"n": 2}],)"
                             R"("byKey":{"a":{"n": 1},"b":null},"row":["p","q"],"rows":[[],["r"]]})";
    EXPECT_EQ(json, m_json.ToString(Read(json), JSONSerializer::Compact).ToUtf8());
}

TEST_F(JSONRoundTrip, TextsWithPairsAndUnpairedSurrogates) {
    const std::u16string texts[] = {u"\U0001F600", {static_cast<char16_t>(0xD800)}, {u'a', u'\0', u'b'}};
    for (const auto& text : texts) {
        for (const auto type : kReadable) {
            const auto bag = MakeBag({{view::kText, Text(text)}, {view::kTextList, Val(std::vector<TString>{text})}});
            const auto back = m_json.ToParameters(m_json.ToString(bag, type));
            EXPECT_TRUE(TString(text) == GetParameterValue<TString>(*back, view::kText));
            EXPECT_TRUE(TString(text) == GetParameterValue<std::vector<TString>>(*back, view::kTextList).at(0));
        }
    }
}
