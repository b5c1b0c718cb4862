// Every form of a member's name, under every choice of names: which parameter it leads to, or how it is called where it
// leads nowhere.
#include <qvpreslayer/JSONSerializer.h>

#include <map>
#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

struct Names {
    std::u16string verbose;
    std::u16string brief;  // empty without one
};

// Of parameters that take the text "5".
const Names kNames[] = {
    {u"max-count", u"mc"}, {u"dashed-name", u"d-n"}, {u"a-1", u"a-2"}, {u"no-short", u""}, {u"%1%1", u"%1%1"},
    {u"text", u"tx"},      {u"a-b", u"ab"},          {u"c", u"cc"},    {u"n", u"nn"},
};

std::u16string Capitals(std::u16string name) {
    for (char16_t& unit : name) {
        unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
    }
    return name;
}

std::u16string CamelCase(const std::u16string& name) {
    std::u16string camel;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool joins = name[i] == u'-' && i + 1 < name.size() && name[i + 1] >= u'a' && name[i + 1] <= u'z';
        camel += joins ? static_cast<char16_t>(name[++i] - 32) : name[i];
    }
    return camel;
}

std::u16string Dashed(const std::u16string& name) {
    std::u16string dashed;
    for (const char16_t unit : name) {
        if (unit >= u'A' && unit <= u'Z') {
            dashed += {u'-', static_cast<char16_t>(unit + 32)};
        } else {
            dashed += unit;
        }
    }
    return dashed;
}

// What may be made of a name by those who mistype it, or mean harm.
std::vector<std::u16string> FormsOf(const std::u16string& name) {
    std::u16string first = name;
    first[0] = Capitals(first.substr(0, 1))[0];
    std::u16string cyrillic = name;
    cyrillic[0] = u'\u0430';
    return {name,
            CamelCase(name),
            Dashed(name),
            first,
            Capitals(name),
            CamelCase(first),
            name + u"-",
            u"-" + name,
            u"-" + CamelCase(name),
            name + u"--",
            name + u" ",
            u" " + name,
            name + u"\u00A0",
            name + u'\0',
            std::u16string(1, u'\0') + name,
            name + u"x",
            name.substr(1),
            name.substr(0, name.size() - 1),
            name + name,
            name + u"\"",
            u"\\" + name,
            name + u"/" + name,
            name + u"\u0301",
            u"\uFEFF" + name,
            name + u'\xD83D',
            std::u16string(1, u'\xDE00') + name,
            name + u"\U0001F600",
            u"\u200B" + name,
            cyrillic};
}

// The name as a JSON string, as it stands where that is allowed, or with every unit escaped.
std::u16string Quoted(const std::u16string& name, bool escapeAll) {
    std::u16string json = u"\"";
    for (const char16_t unit : name) {
        if (escapeAll || unit == u'"' || unit == u'\\') {
            json += u"\\u";
            for (int shift = 12; shift >= 0; shift -= 4) {
                json += u"0123456789abcdef"[(unit >> shift) & 0xF];
            }
        } else {
            json += unit;
        }
    }
    return json + u'"';
}

// The verbose name of the parameter that a name leads to; empty for none.
std::u16string Target(const std::u16string& sought, bool verbose) {
    for (const Names& names : kNames) {
        if (sought == (verbose ? names.verbose : names.brief) && !sought.empty()) {
            return names.verbose;
        }
    }
    return {};
}

class MemberNames : public JSONTest {
protected:
    // Reads one member of that name under these choices, and compares with the rules.
    void Check(const std::u16string& name, bool shortNames, bool lookupFlag, bool shortOption) {
        const TestSession session(shortOption);
        const std::u16string sought = shortNames ? name : Dashed(name);
        const std::u16string target = Target(sought, lookupFlag || !shortOption);
        const std::string expected =
            target.empty() ? "not found: " + TString(sought).ToUtf8() : TString(target).ToUtf8() + "=5";
        for (const bool escaped : {false, true}) {
            const TString json = u"{" + Quoted(name, escaped) + u":\"5\"}";
            ASSERT_EQ(expected, OutcomeOf([&] { return m_json.ToParameters(json, shortNames, lookupFlag); }))
                << json.ToUtf8() << shortNames << lookupFlag << shortOption;
        }
    }
};

}  // namespace

TEST_F(MemberNames, EveryFormUnderEveryChoice) {
    for (const Names& names : kNames) {
        for (const std::u16string& name : {names.verbose, names.brief}) {
            if (name.empty()) {
                continue;
            }
            for (const std::u16string& form : FormsOf(name)) {
                for (int choice = 0; choice < 8; ++choice) {
                    Check(form, (choice & 1) != 0, (choice & 2) != 0, (choice & 4) != 0);
                }
            }
        }
    }
}

TEST_F(MemberNames, TheOneArgumentFormFollowsTheOption) {
    for (const Names& names : kNames) {
        for (const std::u16string& form : FormsOf(names.verbose)) {
            for (const bool shortOption : {false, true}) {
                const TestSession session(shortOption);
                const TString json = u"{" + Quoted(form, false) + u":\"5\"}";
                EXPECT_EQ(OutcomeOf([&] { return m_json.ToParameters(json, shortOption, false); }),
                          OutcomeOf([&] { return m_json.ToParameters(json); }));
            }
        }
    }
}

TEST_F(MemberNames, AnEmptyNameAndAHugeOneLeadNowhere) {
    EXPECT_EQ("not found: ", Outcome(R"({"":1})"));
    const std::string huge(1'000'000, 'x');
    EXPECT_EQ("not found: " + huge, Outcome("{\"" + huge + "\":1}"));
}

// Names of fallbacks are names too, in each form.
TEST_F(MemberNames, FormsOfAFallbacksName) {
    EXPECT_EQ("param-type=int-rle", Outcome(R"({"paramType":"int-rle"})"));
    EXPECT_EQ("param-type=int-rle", Outcome(R"({"param-type":"int-rle"})"));
    EXPECT_EQ("not found: -param-type", Outcome(R"({"ParamType":"int-rle"})"));
    EXPECT_EQ("not found: paramtype", Outcome(R"({"paramtype":"int-rle"})"));
    EXPECT_EQ("not found: -k-q-p01", Outcome(R"({"KQP01":"int-rle"})"));
    const TestSession session(true);
    EXPECT_EQ("param-type=pSA01", Outcome(R"({"KQP01":"pSA01"})"));  // the value is shown under short names too
}

// Of several members that lead to one parameter, the one whose own name is last counts; of equal names the last one.
TEST_F(MemberNames, FormsOfOneNameInOneObject) {
    EXPECT_EQ("max-count=2", Outcome(R"({"max-count":1,"maxCount":2})"));
    EXPECT_EQ("max-count=2", Outcome(R"({"maxCount":2,"max-count":1})"));
    EXPECT_EQ("max-count=3", Outcome(R"({"maxCount":1,"maxCount":2,"m\u0061xCount":3})"));
}
