// How members begin and where texts end: names of every length, first and later members, the last units of a text; and
// lists of integers that share digits with their neighbours.
#include <qvpreslayer/qvpreslayer.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/EventsOnly.h"
#include "support/TestHost.h"

namespace {

constexpr int kFirst = 1000;
constexpr int kNames = 60;
constexpr int kBag = kFirst + kNames;

// Names of one to sixty letters, which camel case leaves as they are; short names too.
std::wstring NameOf(int index) { return std::wstring(static_cast<std::size_t>(index) + 1, L'a'); }
std::wstring ShortNameOf(int index) { return L"s" + NameOf(index); }

template <class T>
class DerivedValue final : public ValParameter<T> {
public:
    using ValParameter<T>::ValParameter;
};

class DirectMembers : public testing::Test {
protected:
    DirectMembers() {
        m_registry.Add(L"view", kFirst, kBag, [](AbstractParamAdder& adder) {
            for (int i = 0; i < kNames; ++i) {
                adder.AddSimple(kFirst + i, NameOf(i).c_str(), ShortNameOf(i).c_str(),
                                i % 2 == 0 ? static_cast<IParameterSerializer*>(new ParameterTypeSerializer<int>)
                                           : new TStringSerializer);
            }
            adder.AddBag(kBag, L"zz", L"zz");
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    static void Set(IParameters& bag, int index) {
        if (index % 2 == 0) {
            SetParameterValue<int>(bag, kFirst + index, -index);
        } else {
            SetParameterValue<TString>(bag, kFirst + index, TString(NameOf(index)));
        }
    }

    // A member as the compact form spells it.
    static std::wstring MemberOf(int index, bool shortName) {
        const std::wstring name = shortName ? ShortNameOf(index) : NameOf(index);
        const std::wstring value = index % 2 == 0 ? std::to_wstring(-index) : L'"' + NameOf(index) + L'"';
        return L'"' + name + L"\": " + value;
    }

    static void ExpectValue(const IParameters& bag, int index) {
        if (index % 2 == 0) {
            EXPECT_EQ(-index, GetParameterValue<int>(bag, kFirst + index));
        } else {
            EXPECT_EQ(TString(NameOf(index)), GetParameterValue<TString>(bag, kFirst + index));
        }
    }

    void ExpectBothWays(bool shortNames) {
        m_session.Vars().shortNames = shortNames;
        for (int first = 0; first < kNames; ++first) {
            // The last member ends close to the end of the text, whatever the length of its name.
            const int second = (first + 7) % kNames;
            const auto bag = MakeBag();
            Set(*bag, first);
            Set(*bag, second);
            const std::wstring lower = MemberOf(std::min(first, second), shortNames);
            const std::wstring upper = MemberOf(std::max(first, second), shortNames);
            const TString text = L'{' + lower + L',' + upper + L'}';
            EXPECT_EQ(text, m_json.ToString(bag, JSONSerializer::Compact));

            for (const TString& read :
                 {text, TString(L'{' + upper + L',' + lower + L'}'), TString(L"{ " + lower + L" , " + upper + L" }")}) {
                const auto made = m_json.ToParameters(read);
                ExpectValue(*made, first);
                ExpectValue(*made, second);
            }
        }
    }

    TestRegistry m_registry;
    TestSession m_session;
    JSONSerializer m_json{L"view"};
};

TEST_F(DirectMembers, NamesOfEveryLength) { ExpectBothWays(false); }
TEST_F(DirectMembers, ShortNamesOfEveryLength) { ExpectBothWays(true); }

// What a thread remembers of a document in one form is of no use in the other.
TEST_F(DirectMembers, FormsTakeTurns) {
    const auto bag = MakeBag();
    Set(*bag, 2);
    Set(*bag, 4);
    for (int turn = 0; turn < 4; ++turn) {
        const bool shortNames = turn % 2 != 0;
        m_session.Vars().shortNames = shortNames;
        const TString text(L'{' + MemberOf(2, shortNames) + L',' + MemberOf(4, shortNames) + L'}');
        EXPECT_EQ(text, m_json.ToString(bag, JSONSerializer::Compact)) << turn;
        const auto read = m_json.ToParameters(text);
        ExpectValue(*read, 2);
        ExpectValue(*read, 4);
    }
}

// Short names may hold anything; some have to be escaped, first and later.
TEST_F(DirectMembers, ShortNamesThatAreEscaped) {
    m_registry.Add(L"marks", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(1, L"one", L"q\"1", new ParameterTypeSerializer<int>);
        adder.AddSimple(2, L"two", L"plain", new ParameterTypeSerializer<int>);
        adder.AddSimple(3, L"three", L"b\\3", new TStringSerializer);
    });
    m_session.Vars().shortNames = true;
    const JSONSerializer json(L"marks");
    const auto bag = MakeBag();
    SetParameterValue<int>(*bag, 1, 5);
    SetParameterValue<int>(*bag, 2, 6);
    SetParameterValue<TString>(*bag, 3, L"x");
    const TString text = u"{\"q\\\"1\": 5,\"plain\": 6,\"b\\\\3\": \"x\"}";
    EXPECT_EQ(text, json.ToString(bag, JSONSerializer::Compact));
    EXPECT_EQ(text, json.ToString(json.ToParameters(text), JSONSerializer::Compact));
}

// "aaaaa" begins as "aaa" does: neither is taken for the other, in any order.
TEST_F(DirectMembers, NamesThatBeginAlike) {
    std::wstring all;
    for (int i = kNames - 1; i >= 0; --i) {
        all += (all.empty() ? L"{" : L",") + MemberOf(i, false);
    }
    const auto bag = m_json.ToParameters(TString(all + L'}'));
    for (int i = 0; i < kNames; ++i) {
        ExpectValue(*bag, i);
    }
}

// Nothing of a bag is lost where what is inside it holds nothing.
TEST_F(DirectMembers, EmptyBagBesideValues) {
    const auto bag = m_json.ToParameters(u"{\"a\": 5,\"aaa\": 7,\"zz\":{}}");
    EXPECT_EQ(5, GetParameterValue<int>(*bag, kFirst));
    EXPECT_EQ(7, GetParameterValue<int>(*bag, kFirst + 2));
    const auto inside = GetParameterValue<RefCntPtr<const IParameters>>(*bag, kBag);
    ASSERT_TRUE(inside);
    EXPECT_EQ(u"{}", m_json.ToString(inside, JSONSerializer::Compact));
}

TEST_F(DirectMembers, NullBesideValues) {
    const auto bag = m_json.ToParameters(u"{\"a\": 5,\"aaa\": null,\"aaaaa\": 7}");
    EXPECT_EQ(u"{\"a\": 5,\"aaaaa\": 7}", m_json.ToString(bag, JSONSerializer::Compact));
}

// Texts that fit where room is asked for once, and those that do not; the buffer grows in the middle of a member.
TEST_F(DirectMembers, TextsOfEveryLength) {
    const auto expectText = [&](std::size_t size) {
        const std::wstring text(size, L'x');
        const auto bag = MakeBag();
        SetParameterValue<int>(*bag, kFirst, 7);
        SetParameterValue<TString>(*bag, kFirst + 1, TString(text));
        SetParameterValue<int>(*bag, kFirst + 2, 8);
        const TString expected(L"{\"a\": 7,\"aa\": \"" + text + L"\",\"aaa\": 8}");
        EXPECT_EQ(expected, m_json.ToString(bag, JSONSerializer::Compact)) << size;
        const auto read = m_json.ToParameters(expected);
        EXPECT_EQ(TString(text), GetParameterValue<TString>(*read, kFirst + 1)) << size;
    };
    for (std::size_t size = 0; size <= 40; ++size) {
        expectText(size);
    }
    for (std::size_t size = 320; size <= 370; ++size) {
        expectText(size);
    }
    for (std::size_t size = 1500; size <= 2100; ++size) {
        expectText(size);
    }
    expectText(100000);
}

// Many members of usual values in a row, beyond any room that was asked for at the start.
TEST_F(DirectMembers, ManyTextsInARow) {
    std::wstring expected = L"{";
    const auto bag = MakeBag();
    for (int i = 1; i < kNames; i += 2) {
        const std::wstring text(300, static_cast<wchar_t>(L'a' + i % 26));
        SetParameterValue<TString>(*bag, kFirst + i, TString(text));
        expected += (i == 1 ? L"\"" : L",\"") + NameOf(i) + L"\": \"" + text + L'"';
    }
    EXPECT_EQ(TString(expected + L'}'), m_json.ToString(bag, JSONSerializer::Compact));
}

// A value of another type than registered stands between usual ones, first and later.
TEST_F(DirectMembers, UnusualValuesBetweenUsualOnes) {
    class Derived final : public ValParameter<int> {
    public:
        using ValParameter::ValParameter;
    };
    for (int unusual = 0; unusual < 3; ++unusual) {
        const auto bag = MakeBag();
        for (int i = 0; i < 3; ++i) {
            const int id = kFirst + 2 * i;
            if (i == unusual) {
                bag->SetParameter(id, MakeRefCnt<Derived>(-5));
            } else {
                SetParameterValue<int>(*bag, id, i);
            }
        }
        std::wstring expected;
        for (int i = 0; i < 3; ++i) {
            expected +=
                (i == 0 ? L"{" : L",") + (L'"' + NameOf(2 * i)) + L"\": " + std::to_wstring(i == unusual ? -5 : i);
        }
        EXPECT_EQ(TString(expected + L'}'), m_json.ToString(bag, JSONSerializer::Compact)) << unusual;
    }
}

// A parameter of each type that most members have.
class DirectKinds : public testing::Test {
protected:
    DirectKinds() {
        m_registry.Add(L"kinds", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(1, L"b", L"b", new ParameterTypeSerializer<bool>);
            adder.AddSimple(2, L"d", L"d", new ParameterTypeSerializer<double>);
            adder.AddSimple(3, L"e", L"e", new ParameterTypeSerializer<TextAlign>);
            adder.AddSimple(4, L"i", L"i", new ParameterTypeSerializer<int>);
            adder.AddSimple(5, L"s", L"s", new TStringSerializer);
            adder.AddSimple(6, L"t", L"t", new ParameterTypeSerializer<NanosecondsDuration>);
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    TestRegistry m_registry;
    JSONSerializer m_json{L"kinds"};
};

// Reals of every number of digits before and behind the point, in the middle of a text.
TEST_F(DirectKinds, RealsOfEveryShape) {
    std::mt19937 random(17);
    const auto digitsOf = [&random](std::size_t count, int kind) {
        std::string digits(count, kind == 0 ? '0' : '9');
        for (char& digit : digits) {
            digit = kind == 2 ? static_cast<char>('0' + random() % 10) : digit;
        }
        return digits;
    };
    for (std::size_t whole = 1; whole <= 9; ++whole) {
        for (std::size_t fraction = 1; fraction <= 9; ++fraction) {
            for (int kind = 0; kind < 20; ++kind) {
                std::string token =
                    digitsOf(whole, std::min(kind, 2)) + "." + digitsOf(fraction, std::min(kind / 3, 2));
                token[0] = whole > 1 && token[0] == '0' ? '1' : token[0];
                for (const std::string& number : {token, "-" + token}) {
                    const auto read = m_json.ToParameters(TString::FromUtf8(
                        "{\"b\": true,\"d\": " + number + ",\"s\": \"" + std::string(40, 's') + "\"}"));
                    const double expected = std::strtod(number.c_str(), nullptr);
                    ASSERT_EQ(expected, GetParameterValue<double>(*read, 2)) << number;
                    ASSERT_FALSE(std::signbit(GetParameterValue<double>(*read, 2)) && expected == 0) << number;
                }
            }
        }
    }
}

// Texts that never need an escape: as many digits as there may be, with and without a sign.
TEST_F(DirectKinds, DurationsOfEveryLength) {
    std::string digits;
    for (int count = 1; count <= 18; ++count) {
        digits += static_cast<char>('0' + count % 10);
        for (const std::string& text : {digits, "-" + digits}) {
            const auto bag = MakeBag();
            SetParameterValue<TString>(*bag, 5, L"a");
            SetParameterValue(*bag, 6, NanosecondsDuration(std::stoll(text)));
            const std::string document = R"({"s": "a","t": ")" + text + R"("})";
            const auto other = MakeBag();  // memory that is kept must not hold what is to be written
            SetParameterValue<TString>(*other, 5, TString(100, u'x'));
            m_json.ToString(other, JSONSerializer::Compact);
            EXPECT_EQ(document, m_json.ToString(bag, JSONSerializer::Compact).ToUtf8());
            const auto read = m_json.ToParameters(TString::FromUtf8(document));
            EXPECT_EQ(std::stoll(text), GetParameterValue<NanosecondsDuration>(*read, 6).count());
        }
    }
}

// What looks like a real and is none, in the middle of a text.
TEST_F(DirectKinds, NumbersThatAreNone) {
    for (const char* token : {"00.5", "01.25", ".5", "5.", "1.2.3", "1,5", "--1.5", "1.5-", "1.-5", "+1.5", "1 .5"}) {
        const std::string text =
            std::string("{\"b\": true,\"d\": ") + token + ",\"s\": \"" + std::string(40, 's') + "\"}";
        EXPECT_THROW(m_json.ToParameters(TString::FromUtf8(text)), JSONParseException) << token;
    }
}

// Words that begin like those of truth, in the middle of a text and at its end.
TEST_F(DirectKinds, WordsThatAreNone) {
    for (const char* word : {"tru", "True", "trux", "falsy", "fals", "False", "xalse", "tals", "falsee", "truee"}) {
        for (const char* behind : {"}", ",\"s\": \"some text that goes on\"}"}) {
            const std::string text = std::string("{\"b\": ") + word + behind;
            EXPECT_THROW(m_json.ToParameters(TString::FromUtf8(text)), JSONParseException) << text;
        }
    }
}

// Each kind of value, in a class of the host's own derived from the library's: it goes the long way, to the same text,
// as the first member and behind another one.
TEST_F(DirectKinds, ValuesOfDerivedClasses) {
    const TextAlign align = GetEnumValues<TextAlign>()[0].value;
    const TString name = GetEnumValues<TextAlign>()[0].name;
    const auto set = [&]<template <class> class Holder>(IParameters& bag, int id) {
        switch (id) {
            case 1:
                return bag.SetParameter(1, MakeRefCnt<Holder<bool>>(true));
            case 2:
                return bag.SetParameter(2, MakeRefCnt<Holder<double>>(0.5));
            case 3:
                return bag.SetParameter(3, MakeRefCnt<Holder<TextAlign>>(align));
            case 4:
                return bag.SetParameter(4, MakeRefCnt<Holder<int>>(-7));
            default:
                return bag.SetParameter(5, MakeRefCnt<Holder<TString>>(TString(L"t")));
        }
    };
    const TString texts[] = {L"\"b\": true", L"\"d\": 0.5", L"\"e\": \"" + name + L"\"", L"\"i\": -7", L"\"s\": \"t\""};
    for (int unusual = 0; unusual <= 5; ++unusual) {
        const auto bag = MakeBag();
        TString expected = L"{";
        for (int id = 1; id <= 5; ++id) {
            if (id == unusual) {
                set.template operator()<DerivedValue>(*bag, id);
            } else {
                set.template operator()<ValParameter>(*bag, id);
            }
            expected += (id == 1 ? TString() : TString(L",")) + texts[id - 1];
        }
        EXPECT_EQ(expected + L"}", m_json.ToString(bag, JSONSerializer::Compact)) << unusual;
    }
    // What has no name cannot be written, wherever it stands.
    for (const bool first : {true, false}) {
        const auto bag = MakeBag();
        if (!first) {
            SetParameterValue<bool>(*bag, 1, true);
        }
        SetParameterValue<TextAlign>(*bag, 3, static_cast<TextAlign>(99));
        EXPECT_THROW(m_json.ToString(bag, JSONSerializer::Compact), QuorvelException);
    }
}

// A value of another type than its parameter's is never taken for one: it fails as it does in
// the pretty form, wherever it stands.
TEST_F(DirectKinds, ValuesOfOtherTypes) {
    const RefCntPtr<IParameter> values[] = {MakeRefCnt<ValParameter<bool>>(true), MakeRefCnt<ValParameter<double>>(0.5),
                                            MakeRefCnt<ValParameter<TextAlign>>(GetEnumValues<TextAlign>()[0].value),
                                            MakeRefCnt<ValParameter<int>>(-7),
                                            MakeRefCnt<ValParameter<TString>>(TString(L"t"))};
    for (int id = 1; id <= 5; ++id) {
        for (int held = 1; held <= 5; ++held) {
            for (const bool alone : {true, false}) {
                if (held == id) {
                    continue;
                }
                const auto bag = MakeBag();
                bag->SetParameter(id, values[held - 1]);
                if (!alone) {  // a usual one before it, or behind
                    const int other = id == 1 ? 2 : 1;
                    bag->SetParameter(other, values[other - 1]);
                }
                EXPECT_THROW(m_json.ToString(bag, JSONSerializer::Pretty), std::exception) << id << ' ' << held;
                EXPECT_THROW(m_json.ToString(bag, JSONSerializer::Compact), std::exception) << id << ' ' << held;
            }
        }
    }
}

// The last string of a text is closer to its end than a block: what has to be looked at is found in every place, and
// nothing before the string counts.
TEST_F(DirectMembers, LastStringsWithSpecialUnits) {
    for (std::size_t size = 1; size <= 24; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            std::u16string text(size, u'y');
            text[place] = u'"';
            std::u16string spelled = text;
            spelled.insert(place, 1, u'\\');
            const auto bag = m_json.ToParameters(TString(u"{\"aa\": \"" + spelled + u"\"}"));
            EXPECT_EQ(TString(text), GetParameterValue<TString>(*bag, kFirst + 1)) << size << ' ' << place;

            spelled = text;
            spelled[place] = u'\n';  // control characters have to be escaped
            EXPECT_THROW(m_json.ToParameters(TString(u"{\"aa\": \"" + spelled + u"\"}")), JSONParseException)
                << size << ' ' << place;
            // One that is not closed, behind another one.
            const std::u16string open = u"{\"aa\": \"y\",\"aaaa\": \"" + std::u16string(size, u'y');
            EXPECT_THROW(m_json.ToParameters(TString(open)), JSONParseException) << size;
            EXPECT_THROW(m_json.ToParameters(TString(open + u"}")), JSONParseException) << size;
        }
    }
}

// Strings of every length with one unit that is escaped, in every place; in every distance from the end of the text.
TEST_F(DirectMembers, StringsWithSpecialUnitsInEveryPlace) {
    for (std::size_t size = 0; size <= 70; ++size) {
        for (std::size_t place = 0; place <= size; ++place) {
            std::u16string text(size, u'y');
            std::u16string spelled = text;
            if (place < size) {
                text[place] = u'"';
                spelled.replace(place, 1, u"\\\"");
            }
            const std::u16string last(place % 24, u'z');
            const TString document(u"{\"a\": 7,\"aa\": \"" + spelled + u"\",\"aaaa\": \"" + last + u"\"}");
            const auto bag = MakeBag();
            SetParameterValue<int>(*bag, kFirst, 7);
            SetParameterValue<TString>(*bag, kFirst + 1, TString(text));
            SetParameterValue<TString>(*bag, kFirst + 3, TString(last));
            ASSERT_EQ(document, m_json.ToString(bag, JSONSerializer::Compact)) << size << ' ' << place;
            const auto read = m_json.ToParameters(document);
            ASSERT_EQ(TString(text), GetParameterValue<TString>(*read, kFirst + 1)) << size << ' ' << place;
            ASSERT_EQ(TString(last), GetParameterValue<TString>(*read, kFirst + 3)) << size << ' ' << place;
        }
    }
}

// A bag that a factory fills in advance keeps what it has.
TEST_F(DirectMembers, FactoryThatFillsItsBags) {
    class FillingRegistry final : public TestRegistry {
    public:
        RefCntPtr<IParameters> CreateParameters() override {
            const RefCntPtr<IParameters> bag = MakeBag();
            SetParameterValue<int>(*bag, kFirst + 4, 1);
            return bag;
        }
    };
    FillingRegistry registry;
    registry.Add(L"filled", kFirst, kFirst + 9, [](AbstractParamAdder& adder) {
        adder.AddSimple(kFirst, L"a", L"a", new ParameterTypeSerializer<int>);
        adder.AddSimple(kFirst + 4, L"e", L"e", new ParameterTypeSerializer<int>);
        adder.AddSimple(kFirst + 8, L"i", L"i", new ParameterTypeSerializer<int>);
    });
    const JSONSerializer json(L"filled");
    EXPECT_EQ(u"{\"a\": 2,\"e\": 1,\"i\": 3}",
              json.ToString(json.ToParameters(u"{\"a\": 2,\"i\": 3}"), JSONSerializer::Compact));
    EXPECT_EQ(u"{\"e\": 6,\"i\": 3}",
              json.ToString(json.ToParameters(u"{\"e\": 6,\"i\": 3}"), JSONSerializer::Compact));
}

template <class T>
class NearIntegerLists : public testing::Test {
protected:
    NearIntegerLists() {
        m_registry.Add(L"view", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddList(1, L"list", L"l", new ParameterTypeSerializer<T>);
        });
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    void ExpectTextsOfEach(const std::vector<T>& values) {
        std::wstring expected = L"{\"list\":[";
        for (std::size_t i = 0; i < values.size(); ++i) {
            expected += (i == 0 ? L"" : L",") + std::to_wstring(values[i]);
        }
        const auto bag = MakeBag();
        SetParameterValue(*bag, 1, values);
        EXPECT_EQ(TString(expected + L"]}"), JSONSerializer(L"view").ToString(bag, JSONSerializer::Compact));
    }

    TestRegistry m_registry;
};

using IntegerTypes = testing::Types<int, unsigned int, Int64, UInt64>;
TYPED_TEST_SUITE(NearIntegerLists, IntegerTypes);

// Steps of one over every power of ten, over both ends of the type, and over zero; one block and several.
TYPED_TEST(NearIntegerLists, AcrossPowersOfTen) {
    using Limits = std::numeric_limits<TypeParam>;
    for (const int size : {7, 8, 9, 127, 128, 129, 300}) {
        std::vector<TypeParam> starts = {0, Limits::min(), static_cast<TypeParam>(Limits::max() - size)};
        TypeParam power = 1;
        for (int digit = 0; digit < Limits::digits10; ++digit) {
            power = static_cast<TypeParam>(power * 10);
            starts.push_back(static_cast<TypeParam>(power - static_cast<TypeParam>(size / 2)));
        }
        for (const TypeParam start : starts) {
            std::vector<TypeParam> values;
            std::vector<TypeParam> negative;
            for (int i = 0; i < size; ++i) {
                values.push_back(static_cast<TypeParam>(start + static_cast<TypeParam>(i)));
                negative.push_back(static_cast<TypeParam>(TypeParam{0} - values.back()));
            }
            this->ExpectTextsOfEach(values);
            this->ExpectTextsOfEach(negative);
        }
    }
}

// Neighbours far from each other between near ones, also such that differ by whole powers of two of their type.
TYPED_TEST(NearIntegerLists, WithOthersBetween) {
    std::vector<TypeParam> values;
    for (int i = 0; i < 400; ++i) {
        const auto near = static_cast<TypeParam>(123450000 + i * 10);
        values.push_back(i % 9 == 4    ? static_cast<TypeParam>(std::uint64_t{0x80000000} * static_cast<unsigned>(i))
                         : i % 31 == 7 ? static_cast<TypeParam>(i)
                                       : near);
    }
    this->ExpectTextsOfEach(values);
    for (TypeParam& value : values) {
        value = static_cast<TypeParam>(value / 10000);
    }
    this->ExpectTextsOfEach(values);
}

}  // namespace
