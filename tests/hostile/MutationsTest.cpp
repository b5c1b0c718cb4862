// A document with every construct, cut after every unit and with every single unit changed: what comes out is a bag or
// one of the failures that the rules name, and whatever was made on the way is gone.
#include <qvpreslayer/JSONSerializer.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "json/JSONTestSupport.h"

namespace {

// Bags that count themselves.
class CountedBag final : public TestBag {
public:
    explicit CountedBag(int& alive) : m_alive(alive) { ++m_alive; }

protected:
    ~CountedBag() override { --m_alive; }
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new CountedBag(m_alive)); }

private:
    int& m_alive;
};

// The namespace "view", with typed values and enumerations besides.
class HostileRegistry final : public ViewRegistry {
public:
    HostileRegistry() {
        RegisterNamespacePart(
            L"view",
            [](AbstractParamAdder& adder) {
                adder.AddSimple(200, L"typed", L"ty", new ParameterTypeSerializer<DataValue>);
                adder.AddList(201, L"typed-list", L"tyl", new ParameterTypeSerializer<DataValue>);
                adder.AddMap(202, L"typed-map", L"tym", new ParameterTypeSerializer<DataValue>);
                adder.AddSimple(203, L"whisker", L"wh", new ParameterTypeSerializer<WhiskerEnd>);
            },
            1, 999);
    }
    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new CountedBag(m_alive)); }

    int Alive() const { return m_alive; }

private:
    int m_alive = 0;
};

const std::u16string kDocument =
    u"// "
    u"c\n/*\"*/{\"text\":\"a\\\"\\\\\\/"
    u"\\b\\f\\n\\r\\t\\u00e9\\uD83D\\ude00\xD83D\xDE00\",\"maxCount\":-12,\"unsigned\":0,"
    u"\"real\":-0.25e+1,\"smallReal\":12.5E-2,\"flag\":true,\"noShort\":null,\"hours\":\"24\",\"field\":\"[a].[b]\","
    u"\"uuid\":\"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21\",\"secret\":\"p\",\"paramType\":\"int-rle\",\"whisker\":"
    u"\"small\","
    u"\"flagList\":[true,false],\"textList\":[ ],\"intList\":[1,[2,4],[9,5,-2],[ ]/**/,7],\"realList\":[1.5,[2,4],[]],"
    u"\"myMap\":{\"k\":\"v\",\"\":\"\"},\"intMap\":{\"x\":1},\"typed\":\"t:[i:1],[s:root:a],[r:5:2:0.5]\","
    u"\"typedList\":[\"i:1\",[\"i:2\",4,1],[]],\"typedMap\":{\"k\":\"d:2024-02-29\"},\"subBag\":{\"subBag\":{}},"
    u"\"myModel\":{\"aB\":1},\"items\":[{},{\"n\":1}],\"byKey\":{\"x\":null,\"y\":{}},\"row\":[\"a\"],\"rows\":[[\"b\"]"
    u",[]]}";

// What a mutation puts in the place of a unit: every mark of the grammar, the letters and digits that mean something,
// blanks, controls, what other languages take for marks, and what is no character.
constexpr char16_t kTelling[] = {
    u'{',  u'}',  u'[', u']', u',', u':',      u'"',      u'\'',     u'\\',  u'/',   u'*',   u'-', u'+',  u'.',
    u'e',  u'E',  u'0', u'1', u'9', u't',      u'f',      u'n',      u'u',   u'x',   u'A',   u' ', u'\n', u'\r',
    u'\t', u'\0', 0x01, 0x1F, 0x7F, u'\u00e9', u'\u2028', u'\uFEFF', 0xD83D, 0xDE00, 0xFFFF, u'%',
};
static_assert(std::size(kTelling) == 40);

class Mutations : public testing::Test {
protected:
    // "bag", the name of a failure that the rules name, or "?" and what it is.
    std::string Outcome(const std::u16string& json) {
        try {
            const RefCntPtr<IParameters> bag = m_json.ToParameters(json);
            return bag ? "bag" : "? no bag";
        } catch (const JSONParseException& e) {
            return e.GetLocation().IsKnown() ? "JSONParseException" : "? JSONParseException without a place";
        } catch (const ParameterNotFoundException& e) {
            return e.GetLocation().IsKnown() ? "ParameterNotFoundException"
                                             : "? ParameterNotFoundException without a place";
        } catch (const ParameterParseException& e) {
            return e.GetLocation().IsKnown() ? "ParameterParseException" : "? ParameterParseException without a place";
        } catch (const QuorvelException& e) {
            return typeid(e) == typeid(QuorvelException) ? "QuorvelException" : std::string("? ") + typeid(e).name();
        } catch (const LogicException& e) {
            const std::string expression = e.GetExpression();
            return expression.find("delimited") != expression.npos || expression.find("uple") != expression.npos ||
                           expression == "index <= values.size()"
                       ? "LogicException"
                       : "? " + expression;
        } catch (const std::out_of_range&) {
            return "std::out_of_range";
        } catch (const std::runtime_error& e) {
            const std::string what = e.what();
            return what.find(", not ") != what.npos ? "std::runtime_error" : "? " + what;
        } catch (const std::exception& e) {
            return std::string("? ") + typeid(e).name();
        }
    }

    // Reads, counts the outcome, and sees that no bag is left.
    void Read(const std::u16string& json) {
        const std::string outcome = Outcome(json);
        ASSERT_NE('?', outcome[0]) << outcome << "\n" << TString(json).ToUtf8();
        ASSERT_EQ(0, m_registry.Alive()) << TString(json).ToUtf8();
        ++m_outcomes[outcome];
    }

    HostileRegistry m_registry;
    JSONSerializer m_json{L"view"};
    std::map<std::string, int> m_outcomes;
};

}  // namespace

TEST_F(Mutations, TheDocumentItselfIsReadAndComesBack) {
    const RefCntPtr<IParameters> bag = m_json.ToParameters(kDocument);
    for (const auto type : {JSONSerializer::Pretty, JSONSerializer::Compact}) {
        const TString text = m_json.ToString(bag, type);
        EXPECT_FALSE(text.empty());
    }
}

TEST_F(Mutations, CutAfterEveryUnit) {
    for (std::size_t length = 0; length < kDocument.size(); ++length) {
        Read(kDocument.substr(0, length));
    }
    EXPECT_EQ(1U, m_outcomes.size());
    EXPECT_EQ(static_cast<int>(kDocument.size()), m_outcomes["JSONParseException"]);
}

TEST_F(Mutations, EveryUnitLeftOutOrDoubled) {
    for (std::size_t at = 0; at < kDocument.size(); ++at) {
        std::u16string json = kDocument;
        json.erase(at, 1);
        Read(json);
        json = kDocument;
        json.insert(at, 1, kDocument[at]);
        Read(json);
    }
    // Each sort of outcome comes up.
    EXPECT_GT(m_outcomes["bag"], 100);
    EXPECT_GT(m_outcomes["JSONParseException"], 100);
    EXPECT_GT(m_outcomes["ParameterNotFoundException"], 100);
    EXPECT_GT(m_outcomes["ParameterParseException"], 20);
}

TEST_F(Mutations, EveryUnitReplacedByEachTellingOne) {
    for (std::size_t at = 0; at < kDocument.size(); ++at) {
        std::u16string json = kDocument;
        for (const char16_t unit : kTelling) {
            json[at] = unit;
            Read(json);
        }
    }
    for (const char* outcome : {"bag", "JSONParseException", "ParameterNotFoundException", "ParameterParseException",
                                "LogicException", "std::out_of_range", "QuorvelException"}) {
        EXPECT_GT(m_outcomes[outcome], 10) << outcome;
    }
}

// Texts of single values, changed in the same ways, for a bag of the caller's that holds something already.
TEST_F(Mutations, TheCallersBagStaysWhenATextDoesNotFit) {
    const struct {
        const wchar_t* name;
        std::u16string text;
    } cases[] = {
        {L"max-count", u"-2147483648"},
        {L"unsigned", u"4294967295"},
        {L"big", u"-9223372036854775808"},
        {L"big-unsigned", u"18446744073709551615"},
        {L"small-real", u"-3.5e+38"},
        {L"real", u"1.25e-308"},
        {L"flag", u"true"},
        {L"uuid", u"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21"},
        {L"hours", u"-24"},
        {L"field", u"[a].[b]]c]"},
        {L"qualified", u"[a].[b]]c]"},
        {L"typed", u"t:[i:1],[s:root:a,b],[r:5:2:0.5],[t:[b:true]]"},
        {L"typed", u"c:2024-02-29 23:59:58.5"},
        {L"param-type", u"int-rle"},
    };
    int refused = 0;
    for (const auto& c : cases) {
        const int id = m_registry.GetID(L"view", c.name, true);
        const auto check = [&](const std::u16string& text) {
            const RefCntPtr<IParameter> before = Text(L"before");
            const auto bag = MakeBag({{id, before}, {999, before}});
            try {
                m_registry.FromString(L"view", bag, c.name, text, true);
                EXPECT_NE(before.Get(), &bag->GetParameter(id));
            } catch (const ParameterParseException& e) {
                ++refused;
                EXPECT_EQ(id, e.GetID());
                EXPECT_EQ(before.Get(), &bag->GetParameter(id)) << TString(text).ToUtf8();
            }
            EXPECT_EQ(before.Get(), &bag->GetParameter(999));
        };
        for (std::size_t at = 0; at < c.text.size(); ++at) {
            check(c.text.substr(0, at));
            std::u16string changed = c.text;
            check(changed.erase(at, 1));
            changed = c.text;
            check(changed.insert(at, 1, c.text[at]));
            for (const char16_t unit : kTelling) {
                changed = c.text;
                changed[at] = unit;
                check(changed);
            }
        }
    }
    EXPECT_GT(refused, 5000);
}
