// What is said of old texts, against what the reader makes of them.
#include "tools/vocabulary/OldTexts.h"

#include <cmath>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

// 2 to the power of 1000, which no float holds.
const std::string kLargeDouble = ParameterTypeSerializer<double>::TypeToString(std::ldexp(1.0, 1000)).ToUtf8();

// Values of a type as they stand in JSON: some usual ones and those at its ends, all of which the type itself reads
// back as they were.
std::vector<std::string> TextsOf(const ValueType& type) {
    static const std::map<std::u16string_view, std::vector<std::string>> s_texts = {
        {u"text",
         {R"("")", R"("5")", R"("-1")", R"("99999999999")", R"("1.5")", R"("1e300")", R"("true")", R"("a b")",
          R"("[a]")", R"("[a")", R"("6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21")", R"("i:42")", R"("none")",
          R"("int-rle")"}},
        {u"int", {"-2147483648", "-1", "0", "16777217", "2147483647"}},
        {u"unsigned-int", {"0", "16777217", "2147483648", "4294967295"}},
        {u"int64", {"-2147483648", "-1", "0", "16777217", "4294967295"}},
        {u"uint64", {"0", "16777217", "4294967295"}},
        {u"float", {"-2", "0", "0.5", "0.3333333", "1048576"}},
        {u"double", {"-2", "0", "0.1", "0.33333333333333", "100000000000000000000", kLargeDouble}},
        {u"bool", {"true", "false"}},
        {u"field-name", {R"("[a]")", R"("[b].[c]]]")", R"("[i:1]")", R"("[5]")"}},
        {u"qualified-name", {R"("[a]")", R"("[b].[c]]]")", R"("[true]")"}},
        {u"uuid", {R"("6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21")", R"("00000000-0000-0000-0000-000000000001")"}},
        {u"password", {R"("********")"}},
        {u"hours", {R"("-2147483648")", R"("0")", R"("2147483647")"}},
        {u"minutes", {R"("-2147483648")", R"("0")", R"("2147483647")"}},
        {u"seconds", {R"("-9223372036854775808")", R"("0")", R"("9223372036854775807")"}},
        {u"milliseconds", {R"("-9223372036854775808")", R"("5")", R"("9223372036854775807")"}},
        {u"microseconds", {R"("-9223372036854775808")", R"("5")", R"("9223372036854775807")"}},
        {u"nanoseconds", {R"("-9223372036854775808")", R"("5")", R"("9223372036854775807")"}},
        {u"data-value",
         {R"("i:42")", R"("r:::0.5")", R"("s:root:")", R"("s:root:[")", R"("u:null")", R"("b:true")",
          R"("d:2024-02-29")", R"("t:[i:1],[i:2]")"}},
        {u"parameter-id",
         {R"("int-rle")", R"("5")", R"("true")", R"("none")", R"("i:42")", R"("[a]")", R"("[a")",
          R"("6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21")"}},
    };
    if (type.form != TextForm::Enumeration) {
        return s_texts.at(type.name);
    }
    std::vector<std::string> texts;
    for (const std::u16string_view name : type.names) {
        texts.push_back("\"" + TString(name).ToUtf8() + "\"");
    }
    return texts;
}

// A vocabulary with one parameter "value", and a namespace in which parameters have the names above.
std::string DeclarationOf(const std::string& parameter) {
    return R"({"namespaces": [{"name": "view", "firstId": 1000, "lastId": 1999, "parameters": [
        {"id": 1001, "name": "value", )" +
           parameter + R"(}, {"id": 1002, "name": "title", "type": "text"}]}]})";
}
std::string OfType(const std::string& kind, const ValueType& type) {
    return R"("kind": ")" + kind + R"(", "type": ")" + TString(type.name).ToUtf8() + '"';
}

enum class Outcome { Same, Other, Failed };

// What a registry makes of old texts under the member "value". The value that was is told by writing it again.
class Reader {
public:
    explicit Reader(const std::string& parameter) : m_vocabulary(VocabularyOf(DeclarationOf(parameter))) {
        m_vocabulary.Register(m_registry);
        // Names for identifiers as values, which are sought in "qvcore".
        m_registry.RegisterNamespace(
            L"more",
            [](AbstractParamAdder& adder) {
                int id = 2000;
                for (const wchar_t* name :
                     {L"5", L"true", L"none", L"i:42", L"[a]", L"[a", L"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21"}) {
                    adder.AddBag(id++, name);
                }
            },
            2000, 2099, false);
        m_registry.SetFallback(L"qvcore", L"more");
    }

    Outcome Read(const std::string& text) {
        const std::string json = "{\"value\": " + text + "}";
        try {
            const RefCntPtr<IParameters> bag = ReadBag(json);
            return CompactText(bag) == json || CompactText(bag) == "{\"value\":" + text + "}" ? Outcome::Same
                                                                                              : Outcome::Other;
        } catch (const std::exception&) {
            return Outcome::Failed;
        }
    }

    const ParameterDeclaration& Parameter() const { return ParameterOf(m_vocabulary, 1001); }

private:
    Vocabulary m_vocabulary;
    ToolRegistry m_registry;
};

// Whether what happened to all texts is what was said.
testing::AssertionResult Agrees(OldTexts said, const std::set<Outcome>& seen) {
    const bool failed = seen.contains(Outcome::Failed);
    const bool read = seen.contains(Outcome::Same) || seen.contains(Outcome::Other);
    const bool agrees = said == OldTexts::Fail ? failed && !read : said == OldTexts::SomeFail ? failed : !failed;
    if (agrees) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "said: " << TString(ToText(said)).ToUtf8() << ", failed: " << failed
                                       << ", read: " << read;
}

// What one vocabulary's texts are for another, all of them together.
struct Pair {
    std::string older;
    std::string newer;
    std::vector<std::string> texts;
    OldTexts expected;
};

void ExpectOutcome(const Pair& pair) {
    SCOPED_TRACE(pair.older + " -> " + pair.newer);
    ParameterDeclaration before;
    {
        Reader older(pair.older);
        before = older.Parameter();
        for (const std::string& text : pair.texts) {
            EXPECT_NE(Outcome::Failed, older.Read(text)) << text;
        }
    }
    Reader newer(pair.newer);
    std::set<Outcome> seen;
    for (const std::string& text : pair.texts) {
        seen.insert(newer.Read(text));
    }
    EXPECT_EQ(ToText(pair.expected), ToText(ReadAs(before, newer.Parameter())));
    EXPECT_TRUE(Agrees(pair.expected, seen));
}

}  // namespace

TEST(OldTexts, TheSamplesOfEachTypeAreReadByIt) {
    for (const ValueType& type : GetValueTypes()) {
        Reader reader(OfType("value", type));
        for (const std::string& text : TextsOf(type)) {
            EXPECT_EQ(Outcome::Same, reader.Read(text)) << TString(type.name).ToUtf8() << " " << text;
        }
    }
}

// 42 times 42 pairs of types.
TEST(OldTexts, WhatIsSaidOfEveryPairOfTypesHappens) {
    for (const ValueType& newer : GetValueTypes()) {
        Reader reader(OfType("value", newer));
        for (const ValueType& older : GetValueTypes()) {
            SCOPED_TRACE(TString(older.name).ToUtf8() + " -> " + TString(newer.name).ToUtf8());
            std::set<Outcome> seen;
            for (const std::string& text : TextsOf(older)) {
                seen.insert(reader.Read(text));
            }
            EXPECT_TRUE(Agrees(ReadAs(older, newer), seen));
        }
    }
}

TEST(OldTexts, PairsOfTypesByName) {
    const struct {
        const char16_t* older;
        const char16_t* newer;
        OldTexts expected;
    } cases[] = {
        {u"int", u"int", OldTexts::Read},
        {u"int", u"int64", OldTexts::Read},
        {u"int", u"unsigned-int", OldTexts::SomeFail},
        {u"unsigned-int", u"int", OldTexts::SomeFail},
        {u"unsigned-int", u"uint64", OldTexts::Read},
        {u"uint64", u"unsigned-int", OldTexts::Read},  // larger ones are cut on their way in as they were before
        {u"uint64", u"int", OldTexts::SomeFail},
        {u"int64", u"int", OldTexts::SomeFail},
        {u"int", u"double", OldTexts::Read},
        {u"int", u"float", OldTexts::Differ},  // 2 to the power of 24, and 1
        {u"float", u"double", OldTexts::Read},
        {u"double", u"float", OldTexts::SomeFail},  // beyond its range
        {u"double", u"int", OldTexts::SomeFail},
        {u"bool", u"int", OldTexts::Fail},
        {u"int", u"bool", OldTexts::Fail},
        {u"text", u"int", OldTexts::SomeFail},
        {u"int", u"text", OldTexts::Read},
        {u"seconds", u"minutes", OldTexts::Differ},
        {u"seconds", u"int64", OldTexts::Read},
        {u"unsigned-int", u"hours", OldTexts::Differ},  // cut to 32 bits with a sign
        {u"text", u"WhiskerEnd", OldTexts::Differ},     // unknown ones are read as the default
        {u"WhiskerEnd", u"text", OldTexts::Read},
        {u"WhiskerEnd", u"AggType", OldTexts::Differ},
        {u"field-name", u"qualified-name", OldTexts::Read},
        {u"uuid", u"text", OldTexts::Read},
        {u"text", u"uuid", OldTexts::SomeFail},
        {u"data-value", u"int", OldTexts::Fail},
        {u"data-value", u"text", OldTexts::Read},
        {u"password", u"text", OldTexts::Read},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ToText(c.expected), ToText(ReadAs(*FindValueType(c.older), *FindValueType(c.newer))))
            << TString(c.older).ToUtf8() << " -> " << TString(c.newer).ToUtf8();
    }
}

TEST(OldTexts, PairsOfKinds) {
    const std::string text = R"("type": "text")";
    const std::string intList = R"("kind": "list", "type": "int")";
    const std::string doubleList = R"("kind": "list", "type": "double")";
    const std::string textList = R"("kind": "list", "type": "text")";
    const std::string dataList = R"("kind": "list", "type": "data-value")";
    const std::string intMap = R"("kind": "map", "type": "int")";
    const std::string textMap = R"("kind": "map", "type": "text")";
    const std::string bag = R"("kind": "bag")";
    const std::string record = R"("kind": "structure")";
    const std::string texts = R"("kind": "structure", "form": "list")";
    const std::string records = R"("kind": "structure-list")";
    const std::string rows = R"("kind": "structure-list", "form": "list")";
    const std::string byKey = R"("kind": "structure-map")";

    const std::vector<std::string> numbers = {"[1,2]"};
    const std::vector<std::string> packed = {"[9,[1,5,1],[]]"};
    const std::vector<std::string> members = {R"({"title": "a"})", R"({"value":{"title": "a"}})"};
    const std::vector<std::string> entries = {R"({"k":"1"})", R"({"title":"1"})"};
    const std::vector<std::string> structures = {R"([{"title": "a"}])"};
    const std::vector<std::string> structuresByKey = {R"({"k":{"title": "a"}})", R"({"value":{"title": "a"}})"};
    for (const Pair& pair : {
             Pair{text, textList, {R"("a")"}, OldTexts::Fail},
             Pair{text, bag, {R"("a")"}, OldTexts::Fail},
             Pair{text, byKey, {R"("a")"}, OldTexts::Fail},
             Pair{intList, text, numbers, OldTexts::Fail},
             Pair{intList, doubleList, packed, OldTexts::Read},
             Pair{intList, textList, packed, OldTexts::Differ},  // runs are passed over
             Pair{textList, intList, {R"(["5"])", R"(["a"])"}, OldTexts::SomeFail},
             Pair{textList, dataList, {R"(["i:5"])", R"(["a"])"}, OldTexts::SomeFail},
             Pair{intList, intMap, numbers, OldTexts::Fail},
             Pair{intList, texts, numbers, OldTexts::Read},
             Pair{intList, record, numbers, OldTexts::Differ},  // passed over
             Pair{intList, records, numbers, OldTexts::Fail},
             Pair{texts, textList, {R"(["a"])"}, OldTexts::Read},
             Pair{texts, intList, {R"(["a"])", R"(["5"])"}, OldTexts::SomeFail},
             Pair{texts, record, {R"(["a"])"}, OldTexts::Differ},
             Pair{texts, records, {R"(["a"])"}, OldTexts::Fail},
             Pair{texts, bag, {R"(["a"])"}, OldTexts::Fail},
             Pair{record, bag, members, OldTexts::Read},
             Pair{bag, record, members, OldTexts::Read},
             Pair{record, records, members, OldTexts::Fail},
             Pair{record, textMap, members, OldTexts::Differ},
             Pair{record, intMap, {R"({"title": "a"})", R"({"title": "5"})"}, OldTexts::SomeFail},
             Pair{record, byKey, members, OldTexts::SomeFail},
             Pair{textMap, bag, entries, OldTexts::SomeFail},
             Pair{textMap, record, entries, OldTexts::SomeFail},
             Pair{textMap, byKey, entries, OldTexts::Fail},
             Pair{textMap, textList, entries, OldTexts::Fail},
             Pair{textMap, intMap, {R"({"k":"1"})", R"({"k":"a"})"}, OldTexts::SomeFail},
             Pair{records, rows, structures, OldTexts::Fail},
             Pair{rows, records, {R"([["a"]])"}, OldTexts::Fail},
             Pair{records, textList, structures, OldTexts::Differ},
             Pair{records, intList, structures, OldTexts::Fail},
             Pair{rows, intList, {R"([["1","4"],[]])", R"([["a","4"]])"}, OldTexts::SomeFail},
             Pair{records, record, structures, OldTexts::Differ},
             Pair{byKey, textMap, structuresByKey, OldTexts::Differ},
             Pair{byKey, intMap, structuresByKey, OldTexts::Fail},
             Pair{byKey, bag, structuresByKey, OldTexts::SomeFail},
             Pair{byKey, records, structuresByKey, OldTexts::Fail},
         }) {
        ExpectOutcome(pair);
    }
}
