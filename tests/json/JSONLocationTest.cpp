// Where failures of reading say that they lie.
#include <qvpreslayer/JSONParseException.h>
#include <qvpreslayer/JSONSerializer.h>
#include <qvpreslayer/TextLocation.h>

#include <memory>
#include <string>

#include "json/JSONTestSupport.h"

namespace {

using JSONLocation = JSONTest;

// "line:column offset path".
std::string Shown(const TextLocation& location) {
    return std::to_string(location.line) + ":" + std::to_string(location.column) + " " +
           std::to_string(location.offset) + " " + location.path.ToUtf8();
}

// What reads the namespace "view", and where its failures lie.
class Place {
public:
    explicit Place(const JSONSerializer& json) : m_json(json) {}

    std::string Of(const TString& text) const {
        try {
            m_json.ToParameters(text);
        } catch (const QuorvelException& e) {
            const auto* located = dynamic_cast<const TextLocated*>(&e);
            return located ? Shown(located->GetLocation()) : "no location";
        }
        return "no failure";
    }
    std::string Of(std::string_view text) const { return Of(TString::FromUtf8(text)); }

private:
    const JSONSerializer& m_json;
};

// The offset of the first unit that makes the text no JSON.
std::size_t OffsetOf(const JSONSerializer& json, std::string_view text) {
    const auto e = Caught<JSONParseException>([&] { json.ToParameters(TString::FromUtf8(text)); });
    return e ? e->GetLocation().offset : std::string::npos;
}

TEST_F(JSONLocation, EscapedNamesStandInThePathAsTheyRead) {
    const auto e = Caught<JSONParseException>([&] { Read("{\"a\\u0062\":x}"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(TString(L"/ab"), e->GetLocation().path);
}

}  // namespace

TEST_F(JSONLocation, FirstUnitThatDoesNotBelong) {
    const struct {
        const char* json;
        const char* place;
    } cases[] = {
        {R"({"a":{"b":[1,x]}})", "1:14 13 /a/b/1"},
        {"x", "1:1 0 "},
        {"  x", "1:3 2 "},
        {"}", "1:1 0 "},
        {"{x", "1:2 1 "},
        {"{'a':1}", "1:2 1 "},
        {R"({"a":x})", "1:6 5 /a"},
        {R"({"a":.5})", "1:6 5 /a"},
        {R"({"a":+5})", "1:6 5 /a"},
        {R"({"a":NaN})", "1:6 5 /a"},
        {R"({"a":-})", "1:7 6 /a"},
        {R"({"a":1.})", "1:8 7 /a"},
        {R"({"a":1e})", "1:8 7 /a"},
        {R"({"a":nul})", "1:9 8 /a"},
        {R"({"a":trux})", "1:9 8 /a"},
        {R"({"a":"\q"})", "1:8 7 /a"},
        {R"({"a":"\u12G4"})", "1:11 10 /a"},
        {"{\"a\":\"x\ty\"}", "1:8 7 /a"},
        {R"({"a":true,})", "1:11 10 "},
        {R"({"a":true]})", "1:10 9 "},
        {R"({"a":true "b":1})", "1:11 10 "},
        {R"({"a":{"b":true;}})", "1:15 14 /a"},
        {R"({"a":[true}})", "1:11 10 /a"},
        {R"({"a":[true false]})", "1:12 11 /a"},
        {R"({"a":[[],[null,[x]]]})", "1:17 16 /a/1/1/0"},
        {R"({"a":[],"b":{"c":{},"d":x}})", "1:25 24 /b/d"},
        {"[x]", "1:2 1 /0"},
        {"[[1],[2,3],x]", "1:12 11 /2"},
        {"*/{}", "1:1 0 "},
        {"/x", "1:2 1 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.place, Place(m_json).Of(c.json));
    }
}

TEST_F(JSONLocation, EndOfACutOffText) {
    const struct {
        const char* json;
        const char* place;
    } cases[] = {
        {"", "1:1 0 "},
        {"   ", "1:4 3 "},
        {"{", "1:2 1 "},
        {"/* x", "1:5 4 "},
        {"//", "1:3 2 "},
        {R"({"a":"xy)", "1:9 8 /a"},
        {R"({"a":"x\)", "1:9 8 /a"},
        {R"({"a":tr)", "1:8 7 /a"},
        {R"({"a":)", "1:6 5 /a"},
        {R"({"a":true)", "1:10 9 "},
        {R"({"a":true,)", "1:11 10 "},
        {R"({"a":{"b":[true )", "1:17 16 /a/b"},
        {R"({"a":[null,"x)", "1:14 13 /a/1"},
        {"{\n\"a\":\n\"x", "3:3 9 /a"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.place, Place(m_json).Of(c.json));
    }
}

TEST_F(JSONLocation, LinesEndWithALineFeed) {
    const struct {
        const char* json;
        const char* place;
    } cases[] = {
        {"\nx", "2:1 1 "},
        {"\n\n\nx", "4:1 3 "},
        {"\r\nx", "2:1 2 "},  // a carriage return before it belongs to the line's end
        {"\r\n\r\n  x", "3:3 6 "},
        {"\rx", "1:2 1 "},  // alone it ends no line
        {"\n\rx", "2:2 2 "},
        {"{\n  \"a\": 1,\n  \"b\": x\n}", "3:8 19 /b"},
        {"/*\n\n*/x", "3:3 6 "},
        {"//\nx", "2:1 3 "},
        {"{\"a\":1,\n\"b\":[\n1,\n2,\nx]}", "5:1 20 /b/2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.place, Place(m_json).Of(c.json));
    }
}

TEST_F(JSONLocation, ColumnsAndOffsetsCountUTF16Units) {
    EXPECT_EQ("1:8 7 ", Place(m_json).Of(TString(L"{\"é\":1 x")));
    EXPECT_EQ("1:9 8 ", Place(m_json).Of(TString(L"{\"\U0001F600\":1 x")));
    EXPECT_EQ("2:10 11 ", Place(m_json).Of(TString(L"{\n\"\U0001F600\" : 1 x")));
    const std::u16string surrogate(1, static_cast<char16_t>(0xDC00));
    EXPECT_EQ("1:8 7 ", Place(m_json).Of(TString(u"{\"" + surrogate + u"\":1 x")));
    const std::u16string nul(1, u'\0');
    EXPECT_EQ("1:8 7 ", Place(m_json).Of(TString(u"{\"" + nul + u"\":1 x")));
    EXPECT_EQ("1:9 8 /\xF0\x9F\x98\x80", Place(m_json).Of(TString(L"{ \"\U0001F600\": x")));
}

TEST_F(JSONLocation, TooDeepNestingLiesAtTheBracketTooMany) {
    std::string json = "{\"textList\":";
    json += std::string(511, '[');
    const std::size_t offset = json.size();
    EXPECT_EQ(offset, OffsetOf(m_json, json + "[[[[]"));
    EXPECT_EQ(offset, OffsetOf(m_json, json + "{}"));
}

TEST_F(JSONLocation, NumbersOutOfRangeLieAtTheirMember) {
    const auto e = Caught<JSONParseException>([&] { Read("{\n\"a\":[0,1e400]}"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(2U, e->GetLocation().line);
    EXPECT_EQ(TString(L"/a/1"), e->GetLocation().path);
}

TEST_F(JSONLocation, WhatFollowsTheFirstBadUnitDoesNotMatter) {
    // The place is where the text stops being the beginning of any JSON text.
    const char* const texts[] = {
        R"({"a":{"b":[1,x]}})", R"({"a":1.})", R"({"a":nul})", R"({"a":"\u12G4"})", R"({"a":true,})", "{'a':1}",
        R"({"a":true "b":1})",  "/x",          R"({"a":01})",  R"({"a":1e+})",      R"([1,2}])",      "{\"a\" 1}",
    };
    for (const std::string text : texts) {
        SCOPED_TRACE(text);
        const std::size_t offset = OffsetOf(m_json, text);
        ASSERT_LT(offset, text.size());
        for (const char* const rest : {"", "}", "]", "\"", "0", " ", "x", "*/", "\n"}) {
            EXPECT_EQ(offset, OffsetOf(m_json, text.substr(0, offset + 1) + rest)) << rest;
        }
        for (std::size_t length = 0; length <= offset; ++length) {
            EXPECT_EQ(length, OffsetOf(m_json, text.substr(0, length))) << length;
        }
    }
}

TEST_F(JSONLocation, MismatchLiesAtTheValue) {
    const struct {
        const char* json;
        const char* place;
    } cases[] = {
        {R"({"maxCount":[1]})", "1:13 12 /maxCount"},
        {R"({"subBag":{"intList":5}})", "1:22 21 /subBag/intList"},
        {"{\n  \"max-count\" : {}\n}", "2:17 18 /max-count"},  // the name as it stands in the text
        {R"({"items":[{},{"n":[]}]})", "1:19 18 /items/1/n"},
        {R"({"byKey":{"a-k":{"n":{}}}})", "1:22 21 /byKey/a-k/n"},
        {R"({"myModel":/* x */"s"})", "1:19 18 /myModel"},
        {R"({"n":1,"intList":true})", "1:18 17 /intList"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.place, Place(m_json).Of(c.json));
    }
}

TEST_F(JSONLocation, UnknownNamesTellTheirPath) {
    const auto e = Caught<ParameterNotFoundException>([&] { Read("{\n\"subBag\":\n{\"noSuchName\":1}}"); });
    ASSERT_TRUE(e);
    EXPECT_TRUE(e->GetLocation().IsKnown());
    EXPECT_EQ(3U, e->GetLocation().line);
    EXPECT_EQ(2U, e->GetLocation().column);  // the name's own place
    EXPECT_EQ(TString(L"/subBag/noSuchName"), e->GetLocation().path);
}

TEST_F(JSONLocation, UnreadableScalarsTellTheirPath) {
    const auto e = Caught<ParameterParseException>([&] { Read("{\"items\":[\n{\"n\":1},\n{\"n\":\"x\"}]}"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(view::kN, e->GetID());
    EXPECT_EQ(3U, e->GetLocation().line);
    EXPECT_EQ(TString(L"/items/1/n"), e->GetLocation().path);
}

TEST_F(JSONLocation, UnreadableListsAndMapsTellTheirMember) {
    const auto list = Caught<ParameterParseException>([&] { Read("{\n\"intList\":[1,\"x\"]}"); });
    ASSERT_TRUE(list);
    EXPECT_EQ(0, list->GetID());
    EXPECT_EQ(2U, list->GetLocation().line);
    EXPECT_TRUE(list->GetLocation().path.startsWith(L"/intList")) << list->GetLocation().path.ToUtf8();

    const auto map = Caught<ParameterParseException>([&] { Read("{\n\"intMap\":{\"a\":\"x\"}}"); });
    ASSERT_TRUE(map);
    EXPECT_EQ(2U, map->GetLocation().line);
    EXPECT_TRUE(map->GetLocation().path.startsWith(L"/intMap")) << map->GetLocation().path.ToUtf8();
}

TEST_F(JSONLocation, UnknownNamespacesTellTheMember) {
    const auto e =
        Caught<ParameterNamespaceNotFoundException>([&] { JSONSerializer(L"nowhere").ToParameters(LR"({"a":1})"); });
    ASSERT_TRUE(e);
    EXPECT_EQ(TString(L"/a"), e->GetLocation().path);
}

TEST_F(JSONLocation, OutsideOfReadingItIsNotKnown) {
    const auto e = Caught<ParameterNotFoundException>([&] { m_registry.GetID(L"view", L"zzz", true); });
    ASSERT_TRUE(e);
    EXPECT_FALSE(e->GetLocation().IsKnown());
    EXPECT_TRUE(e->GetLocation().path.empty());
}

TEST_F(JSONLocation, CopiesKeepIt) {
    const auto e = Caught<JSONParseException>([&] { Read(R"({"a":x})"); });
    ASSERT_TRUE(e);
    const std::unique_ptr<QuorvelException> clone(e->Clone());
    const auto* copy = dynamic_cast<const JSONParseException*>(clone.get());
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ("1:6 5 /a", Shown(copy->GetLocation()));
}

namespace {

// Refuses to make a structure of a bag, a list of two elements, or a map without entries.
class RefusingSerializer final : public BagStructureSerializer {
public:
    RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const override {
        if (bag && bag->HasParameter(view::kN)) {
            throw ParameterParseException(id);
        }
        return BagStructureSerializer::FromParameters(id, bag);
    }
    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const override {
        if (elements.size() != 1) {
            throw ParameterParseException(0);
        }
        return BagStructureSerializer::MakeList(elements);
    }
    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const override {
        if (entries.empty()) {
            throw ParameterParseException(0);
        }
        return BagStructureSerializer::MakeMap(entries);
    }
};

class JSONLocationOfStructures : public JSONTest {
protected:
    JSONLocationOfStructures() {
        m_registry.Add(L"host", 2000, 2099, [](AbstractParamAdder& adder) {
            adder.AddStructureList(2001, L"list", L"li", new RefusingSerializer);
            adder.AddStructureMap(2002, L"map", L"ma", new RefusingSerializer);
        });
        m_registry.SetFallback(L"host", L"view");
        m_json = JSONSerializer(L"host");
    }

    std::string PlaceOf(std::string_view text) { return Place(m_json).Of(text); }
};

TEST_F(JSONLocationOfStructures, AnElementThatItsSerializerRefuses) {
    EXPECT_EQ("1:15 14 /list/1", PlaceOf(R"({"list": [{}, {"n": 1}]})"));
    EXPECT_EQ("1:11 10 /list/0", PlaceOf(R"({"list":[ {"n": 1}]})"));
}

TEST_F(JSONLocationOfStructures, AnEntryThatItsSerializerRefuses) {
    EXPECT_EQ("1:23 22 /map/b", PlaceOf(R"({"map":{"a": {}, "b": {"n": 1}}})"));
}

// At the last element that was read, or at the list itself.
TEST_F(JSONLocationOfStructures, AListThatItsSerializerRefuses) {
    EXPECT_EQ("1:9 8 /list", PlaceOf(R"({"list":[]})"));
    EXPECT_EQ("no failure", PlaceOf(R"({"list":[{}]})"));
    EXPECT_EQ("1:13 12 /list/1", PlaceOf(R"({"list":[{},{}]})"));
    EXPECT_EQ("1:8 7 /map", PlaceOf(R"({"map":{}})"));
}

// A failure that knows its place already, since it comes out of another text.
TEST(JSONLocationOfTexts, InsideTexts) {
    class Inner final : public TStringSerializer {
        RefCntPtr<IParameter> FromString(const TString& text) const override {
            JSONSerializer(L"view").ToParameters(text);
            return TStringSerializer::FromString(text);
        }
    };
    class InnerModel final : public BagStructureSerializer {
        RefCntPtr<IParameter> FromParameters(int, RefCntPtr<IParameters>) const override {
            JSONSerializer(L"view").ToParameters(L"{\n  \"zzz\": 1}");
            return {};
        }
    };
    ViewRegistry registry;
    registry.Add(L"host", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddStructure(2001, L"model", L"mo", new InnerModel);
        adder.AddSimple(2002, L"text", L"te", new Inner);
    });
    const JSONSerializer json(L"host");
    EXPECT_EQ("2:3 4 /zzz", Place(json).Of(R"({"model": {}})"));
    EXPECT_EQ("1:10 9 /text", Place(json).Of(R"({"text": "{"})")) << "the registry's own failure takes its place";
}

}  // namespace
