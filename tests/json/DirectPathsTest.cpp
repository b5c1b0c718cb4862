// The short ways between typed values and text against the long ones, which go through the serializers and the events:
// both must give the same texts, the same values and the same failures.
#include <qvpreslayer/qvpreslayer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "support/EventsOnly.h"
#include "support/Printing.h"
#include "support/TestHost.h"

namespace {

// A host's own class is never taken for the library's, so that its values go the long way.
template <class Base>
class LongWay : public Base {};

constexpr int kScalars = 100;  // and the lists of the same types ten further on
constexpr int kLists = 110;
constexpr int kTypes = 8;
constexpr int kBag = 120;

constexpr const wchar_t* kScalarNames[] = {L"an-int",  L"an-unsigned", L"a-long", L"an-unsigned-long",
                                           L"a-float", L"a-double",    L"a-flag", L"a-text"};
constexpr const wchar_t* kListNames[] = {L"int-list",   L"unsigned-list", L"long-list", L"unsigned-long-list",
                                         L"float-list", L"double-list",   L"flag-list", L"text-list"};

template <template <class> class Wrap>
void AddAll(AbstractParamAdder& adder) {
    IParameterSerializer* const serializers[] = {
        new Wrap<ParameterTypeSerializer<int>>,   new Wrap<ParameterTypeSerializer<unsigned int>>,
        new Wrap<ParameterTypeSerializer<Int64>>, new Wrap<ParameterTypeSerializer<UInt64>>,
        new Wrap<ParameterTypeSerializer<float>>, new Wrap<ParameterTypeSerializer<double>>,
        new Wrap<ParameterTypeSerializer<bool>>,  new Wrap<TStringSerializer>};
    for (int i = 0; i < kTypes; ++i) {
        const RefCntPtr<IParameterSerializer> keep(serializers[i]);
        const std::wstring index = std::to_wstring(i);
        adder.AddSimple(kScalars + i, kScalarNames[i], (L"s" + index).c_str(), serializers[i]);
        adder.AddList(kLists + i, kListNames[i], (L"l" + index).c_str(), serializers[i]);
    }
    adder.AddBag(kBag, L"sub-bag", L"b");
}

template <class T>
using Plain = T;

class DirectPaths : public testing::Test {
protected:
    DirectPaths() {
        m_registry.Add(L"short", 100, 199, AddAll<Plain>);
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
    }

    template <class T>
    T Number() {
        const auto bits = m_random();
        switch (m_random() % 4) {
            case 0:
                return static_cast<T>(bits % 200);
            case 1:
                return static_cast<T>(static_cast<int>(bits));
            default:
                if constexpr (std::is_floating_point_v<T>) {
                    return static_cast<T>(static_cast<double>(bits % 2000000) / 1000.0 - 1000.0);
                } else {
                    return static_cast<T>(bits);
                }
        }
    }

    TString Characters() {
        constexpr char16_t kAlphabet[] = {u'a', u'"', u'\\', u'\n', 0, 0x1F, 0x7F, 0xD800, 0x416, u'/', u'z', u' '};
        TString text;
        for (auto n = m_random() % 40; n > 0; --n) {
            text.push_back(m_random() % 3 == 0 ? kAlphabet[m_random() % std::size(kAlphabet)] : u'x');
        }
        return text;
    }

    template <class T>
    T Value() {
        if constexpr (std::is_same_v<T, TString>) {
            return Characters();
        } else if constexpr (std::is_same_v<T, bool>) {
            return m_random() % 2 == 0;
        } else {
            return Number<T>();
        }
    }

    template <class T>
    void Fill(IParameters& bag, int type) {
        SetParameterValue<T>(bag, kScalars + type, Value<T>());
        std::vector<T> values;
        for (auto n = m_random() % 20; n > 0; --n) {
            values.push_back(Value<T>());
        }
        SetParameterValue(bag, kLists + type, values);
    }

    RefCntPtr<TestBag> RandomBag(int depth) {
        RefCntPtr<TestBag> bag = MakeBag();
        Fill<int>(*bag, 0);
        Fill<unsigned int>(*bag, 1);
        Fill<Int64>(*bag, 2);
        Fill<UInt64>(*bag, 3);
        Fill<float>(*bag, 4);
        Fill<double>(*bag, 5);
        Fill<bool>(*bag, 6);
        Fill<TString>(*bag, 7);
        for (int id = kScalars; id < kLists + kTypes; ++id) {
            if (m_random() % 4 == 0) {
                bag->RemoveOptionalParameter(id);
            }
        }
        if (depth > 0) {
            bag->SetParameter(kBag, BagVal(RandomBag(depth - 1)));
        }
        return bag;
    }

    // What reading a text answers: the values by name, or the failure.
    std::string Outcome(const TString& text) {
        try {
            return JSONSerializer(L"short")
                .ToString(JSONSerializer(L"short").ToParameters(text), JSONSerializer::Pretty)
                .ToUtf8();
        } catch (const ParameterParseException& e) {
            return std::string(e.what()) + " " + std::to_string(e.GetID()) + " " + e.GetLocation().path.ToUtf8();
        } catch (const JSONParseException& e) {
            return std::string(e.what()) + " " + std::to_string(e.GetLocation().offset);
        } catch (const std::exception& e) {
            return std::string(typeid(e).name()) + " " + e.what();
        }
    }

    TestRegistry m_registry;
    std::mt19937_64 m_random{20240229};
};

TEST_F(DirectPaths, WritingGivesWhatTheEventsGive) {
    for (int round = 0; round < 300; ++round) {
        const RefCntPtr<const IParameters> bag = RandomBag(round % 3);
        const TestSession session(round % 2 == 1, round % 5 == 0);
        for (int type = 0; type < 5; ++type) {
            const auto form = static_cast<JSONSerializer::OutputType>(type);
            TString direct;
            BuildParameterStrings directVisitor(direct, form, false, false, round % 2 == 1);
            VisitParametersStructure(L"", bag, directVisitor);
            TString events;
            BuildParameterStrings eventVisitor(events, form, false, false, round % 2 == 1);
            EventsOnly eventsOnly(eventVisitor);
            VisitParametersStructure(L"", bag, eventsOnly);
            ASSERT_EQ(events, direct) << "form " << type << ", round " << round;
        }
    }
}

TEST_F(DirectPaths, WritingUnderAChangedOptionGivesWhatTheEventsGive) {
    // A visitor that was told of short names while the walk uses verbose ones, and the other way round.
    const RefCntPtr<const IParameters> bag = RandomBag(1);
    for (const bool shortWalk : {false, true}) {
        const TestSession session(shortWalk);
        TString direct;
        BuildParameterStrings directVisitor(direct, JSONSerializer::Compact, false, false, !shortWalk);
        VisitParametersStructure(L"", bag, directVisitor);
        TString events;
        BuildParameterStrings eventVisitor(events, JSONSerializer::Compact, false, false, !shortWalk);
        EventsOnly eventsOnly(eventVisitor);
        VisitParametersStructure(L"", bag, eventsOnly);
        EXPECT_EQ(events, direct);
    }
}

TEST_F(DirectPaths, AValueOfAnotherTypeFailsAsTheEventsFail) {
    for (int id = kScalars; id < kLists + kTypes; id += (id == kScalars + kTypes - 1 ? kLists - id : 1)) {
        const RefCntPtr<const IParameters> bag = MakeBag({{id, Val<std::vector<HoursDuration>>({})}});
        EXPECT_THROW(JSONSerializer(L"short").ToString(bag, JSONSerializer::Compact), TypeMismatchCommandException)
            << id;
    }
}

TEST_F(DirectPaths, ReadingGivesWhatTheSerializersGive) {
    const char* const kTokens[] = {"0",
                                   "-0",
                                   "7",
                                   "-5",
                                   "134217727",
                                   "134217728",
                                   "2147483647",
                                   "2147483648",
                                   "4294967295",
                                   "4294967296",
                                   "-2147483648",
                                   "-2147483649",
                                   "9223372036854775807",
                                   "18446744073709551615",
                                   "-9223372036854775808",
                                   "18446744073709551616",
                                   "1e3",
                                   "1.5",
                                   "-2.25",
                                   "0.1",
                                   "123456.789",
                                   "0.123456789012345",
                                   "0.12345678901234",
                                   "46.00000000000001",
                                   "1.7976931348623157e308",
                                   "5e-324",
                                   "1e-15",
                                   "3.0",
                                   "true",
                                   "false",
                                   "\"5\"",
                                   "\"x\"",
                                   "\"\"",
                                   "\"true\"",
                                   "\"a\\u0041\\n\"",
                                   "null",
                                   "[]",
                                   "[1,4]",
                                   "[1,4,1]",
                                   "{}"};
    for (int type = 0; type < kTypes; ++type) {
        for (const char* token : kTokens) {
            const TString name = DashedToCamel(kScalarNames[type]);
            const TString listName = DashedToCamel(kListNames[type]);
            const TString value = TString::FromUtf8(token);
            const TString texts[] = {u"{\"" + name + u"\":" + value + u"}", u"{\"" + listName + u"\":[" + value + u"]}",
                                     u"{\"" + listName + u"\":[1," + value + u",2]}"};
            for (const TString& text : texts) {
                const std::string shortWay = Outcome(text);
                std::string longWay;
                {
                    TestRegistry slow;
                    slow.Add(L"short", 100, 199, AddAll<LongWay>);
                    RegisterCoreNamespaceParameters(slow, L"qvcore");
                    longWay = Outcome(text);
                }
                ParametersRegistry::SetInstance(&m_registry);
                ASSERT_EQ(longWay, shortWay) << text.ToUtf8();
            }
        }
    }
}

TEST_F(DirectPaths, RealsOfFewDigitsComeOutAsThroughTheirText) {
    for (int round = 0; round < 20000; ++round) {
        const int digits = static_cast<int>(m_random() % 17);
        std::string token = std::to_string(m_random() % 1000000);
        if (digits > 0) {
            token += ".";
            for (int i = 0; i < digits; ++i) {
                token += static_cast<char>('0' + m_random() % 10);
            }
        } else {
            token += ".0";
        }
        const TString text = TString::FromUtf8("{\"aDouble\":" + token + "}");
        const double read = GetParameterValue<double>(*JSONSerializer(L"short").ToParameters(text), kScalars + 5);
        const double parsed = TString::FromUtf8(token).toDouble();
        const auto throughText =
            ParameterTypeSerializer<double>::TypeFromString(ParameterTypeSerializer<double>::TypeToString(parsed));
        ASSERT_EQ(throughText, read) << token;
    }
}

TEST_F(DirectPaths, ListsOfAnyLengthAreWrittenWholly) {
    for (const int length : {0, 1, 7, 8, 9, 127, 128, 129, 257, 1000}) {
        std::vector<int> integers;
        std::vector<double> reals;
        TString expected = u"{\"intList\":[";
        for (int i = 0; i < length; ++i) {
            integers.push_back(i);
            reals.push_back(i);
            expected += (i == 0 ? TString() : TString(u",")) + TString::number(i);
        }
        const TString reversed = expected + u"]}";
        const auto bag = MakeBag({{kLists, Val(integers)}});
        EXPECT_EQ(reversed, JSONSerializer(L"short").ToString(bag, JSONSerializer::Compact)) << length;
        const auto realBag = MakeBag({{kLists + 5, Val(reals)}});
        const TString text = JSONSerializer(L"short").ToString(realBag, JSONSerializer::Compact);
        EXPECT_EQ(TString(reversed).replace(u"intList", u"doubleList"), text) << length;
    }
}

TEST_F(DirectPaths, AFewLongNumbersDoNotAskForRoomForAll) {
    std::vector<double> values(100000, 0.0);
    std::fill_n(values.begin(), 8, 1e308);
    const auto bag = MakeBag({{kLists + 5, Val(values)}});
    const TString text = JSONSerializer(L"short").ToString(bag, JSONSerializer::Compact);
    EXPECT_LT(text.size(), 210000U);
    EXPECT_LT(text.capacity(), 3000000U);
}

TEST_F(DirectPaths, NegativeZeroLosesItsSignAsItsTextDoes) {
    for (const wchar_t* token : {L"-0.0", L"-0.00", L"-0", L"-0.0e0"}) {
        const TString text = u"{\"aDouble\":" + TString(token) + u",\"doubleList\":[" + token + u"]}";
        const auto bag = JSONSerializer(L"short").ToParameters(text);
        EXPECT_FALSE(std::signbit(GetParameterValue<double>(*bag, kScalars + 5))) << text.ToUtf8();
        EXPECT_FALSE(std::signbit(GetParameterValue<std::vector<double>>(*bag, kLists + 5)[0])) << text.ToUtf8();
    }
}

TEST_F(DirectPaths, AFormWithoutANameIsCompact) {
    const auto bag = MakeBag({{kScalars, Val(1)}});
    for (const int form : {5, 6, 7}) {
        EXPECT_EQ(L"{\"anInt\": 1}",
                  JSONSerializer(L"short").ToString(bag, static_cast<JSONSerializer::OutputType>(form)));
    }
}

// A bag that refuses what it is given.
class RefusingBag final : public BaseParameters {
public:
    void SetParameter(int, RefCntPtr<IParameter>) override { throw std::runtime_error("refused"); }

protected:
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new RefusingBag); }
};

class RefusingRegistry final : public TestRegistry {
public:
    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new RefusingBag); }
};

TEST_F(DirectPaths, AFailureWhileStoringAScalarIsAParseFailure) {
    RefusingRegistry registry;
    registry.Add(L"short", 100, 199, AddAll<Plain>);
    try {
        JSONSerializer(L"short").ToParameters(L"{\"anInt\":1}");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ParameterParseException& e) {
        EXPECT_EQ(kScalars, e.GetID());
    }
}

TEST_F(DirectPaths, ATextWithoutMembersLeavesTheNamespaceUnfilled) {
    int fills = 0;
    m_registry.Add(L"lazy", 200, 299, [&fills](AbstractParamAdder&) { ++fills; });
    JSONSerializer(L"lazy").ToParameters(L"{}");
    EXPECT_THROW(JSONSerializer(L"lazy").ToParameters(L"[]"), std::runtime_error);
    EXPECT_EQ(0, fills);
}

TEST_F(DirectPaths, NamesLeadWhereTheRegistryLeads) {
    m_registry.Add(L"names", 300, 309, [](AbstractParamAdder& adder) {
        adder.AddSimple(301, L"old-name", new ParameterTypeSerializer<int>);
        adder.AddSimple(301, L"new-name", new ParameterTypeSerializer<int>);  // the old name still leads here
        adder.AddSimple(302, L"twice", new ParameterTypeSerializer<int>);
        adder.AddSimple(303, L"twice", new ParameterTypeSerializer<int>);  // the later one has the name
        adder.AddSimple(304, L"aB", new ParameterTypeSerializer<int>);     // not found from its camel-case form
    });
    m_registry.Add(L"names-zero", -5, 5,
                   [](AbstractParamAdder& adder) { adder.AddSimple(0, L"twice", new TStringSerializer); });
    m_registry.Add(L"a-cover", 302, 303, [](AbstractParamAdder&) {});
    m_registry.SetFallback(L"names-zero", L"names");
    const auto idOf = [](const wchar_t* space, const wchar_t* text) {
        const auto bag = JSONSerializer(space).ToParameters(text);
        for (int id = 300; id < 310; ++id) {
            if (bag->HasParameter(id)) {
                return id;
            }
        }
        return 0;
    };
    EXPECT_EQ(301, idOf(L"names", L"{\"oldName\":1}"));
    EXPECT_EQ(301, idOf(L"names", L"{\"newName\":1}"));
    EXPECT_THROW(idOf(L"names", L"{\"twice\":1}"), ParameterNotFoundException);  // covered by a namespace before it
    EXPECT_THROW(idOf(L"names", L"{\"aB\":1}"), ParameterNotFoundException);     // sought as "a-b"
    m_registry.Clear(L"a-cover");
    EXPECT_EQ(303, idOf(L"names", L"{\"twice\":1}"));
    EXPECT_EQ(303, idOf(L"names-zero", L"{\"twice\":1}"));  // identifier 0 is not found by name
}

}  // namespace
