// What a declaration file says, and that writing it says it again.
#include <gtest/gtest.h>

#include "vocabulary/VocabularyTestSupport.h"

namespace {

using namespace qvpres;

constexpr const char* kEverything = R"(// Comments may stand wherever blanks may.
{
  "$schema": "declaration.schema.json",
  "description": "All that can be said",
  "cpp": {"namespace": "acme::charts", "includes": ["ChartModel.h", "sub/Other.h"]},
  "namespaces": [
    {
      "name": "chart", "firstId": "0x12000001", "lastId": "0x12ffffff", "fallback": "common",
      "description": "Charts", "cppIds": "ChartIds",
      "parameters": [
        {"id": "0x12000001", "name": "title", "short": "ti", "type": "text", "description": "What stands above"},
        {"id": 301989890, "name": "sizes", "kind": "list", "type": "double", "unserializable": true},
        {"id": 301989891, "name": "colors", "short": "co", "kind": "map", "type": "StyleElement"},
        {"id": 301989892, "name": "style", "kind": "bag"},
        {"id": 301989893, "name": "day", "kind": "structure", "members": ["title", "year"]},
        {"id": 301989894, "name": "range", "kind": "structure", "form": "list"},
        {"id": 301989895, "name": "days", "kind": "structure-list", "form": "record", "members": []},
        {"id": 301989896, "name": "model", "kind": "structure-map", "cppSerializer": "acme::ModelSerializer<int>"}
      ]
    },
    {"name": "common", "firstId": -20, "lastId": -10, "parameters": [{"id": -11, "name": "year", "type": "int"}]}
  ],
  "unserializable": [5, -7]
}
)";

void ExpectEverything(const Vocabulary& vocabulary) {
    EXPECT_EQ(L"All that can be said", vocabulary.GetDescription());
    EXPECT_EQ("acme::charts", vocabulary.GetCpp().nameSpace);
    EXPECT_EQ((std::vector<std::string>{"ChartModel.h", "sub/Other.h"}), vocabulary.GetCpp().includes);
    EXPECT_EQ((std::vector<int>{5, -7}), vocabulary.GetUnserializable());
    ASSERT_EQ(2U, vocabulary.GetNamespaces().size());

    const NamespaceDeclaration& chart = vocabulary.GetNamespaces()[0];
    EXPECT_EQ(L"chart", chart.name);
    EXPECT_EQ(0x12000001, chart.firstId);
    EXPECT_EQ(0x12ffffff, chart.lastId);
    EXPECT_EQ(L"common", chart.fallback);
    EXPECT_EQ(L"Charts", chart.description);
    EXPECT_EQ(L"ChartIds", chart.cppIds);
    ASSERT_EQ(8U, chart.parameters.size());

    const ParameterDeclaration& title = chart.parameters[0];
    EXPECT_EQ(0x12000001, title.id);
    EXPECT_EQ(L"title", title.name);
    EXPECT_EQ(L"ti", title.shortName);
    EXPECT_EQ(DeclaredKind::Value, title.kind);
    EXPECT_EQ(FindValueType(u"text"), title.type);
    EXPECT_EQ(L"What stands above", title.description);
    EXPECT_FALSE(title.unserializable);
    EXPECT_FALSE(title.members);
    EXPECT_EQ(PTC_Text, title.Category());

    const ParameterDeclaration& sizes = chart.parameters[1];
    EXPECT_EQ(L"", sizes.shortName);
    EXPECT_EQ(DeclaredKind::List, sizes.kind);
    EXPECT_EQ(FindValueType(u"double"), sizes.type);
    EXPECT_TRUE(sizes.unserializable);
    EXPECT_EQ(PTC_List, sizes.Category());

    EXPECT_EQ(FindValueType(u"StyleElement"), chart.parameters[2].type);
    EXPECT_EQ(PTC_Map, chart.parameters[2].Category());
    EXPECT_EQ(PTC_Bag, chart.parameters[3].Category());
    EXPECT_EQ(nullptr, chart.parameters[3].type);
    EXPECT_EQ((std::vector<TString>{L"title", L"year"}), chart.parameters[4].members);
    EXPECT_EQ(PTC_Structure, chart.parameters[4].Category());
    EXPECT_FALSE(chart.parameters[4].listForm);
    EXPECT_TRUE(chart.parameters[5].listForm);
    EXPECT_EQ(PTC_StructureList, chart.parameters[6].Category());
    EXPECT_FALSE(chart.parameters[6].listForm);
    EXPECT_EQ((std::vector<TString>{}), chart.parameters[6].members);
    EXPECT_EQ(PTC_StructureMap, chart.parameters[7].Category());
    EXPECT_EQ(L"acme::ModelSerializer<int>", chart.parameters[7].cppSerializer);

    const NamespaceDeclaration& common = vocabulary.GetNamespaces()[1];
    EXPECT_EQ(-20, common.firstId);
    EXPECT_EQ(-11, common.parameters.at(0).id);
    EXPECT_EQ(PTC_Number, common.parameters[0].Category());
}

}  // namespace

TEST(DeclarationReading, Everything) { ExpectEverything(VocabularyOf(kEverything)); }

TEST(DeclarationReading, WhatIsWrittenSaysTheSame) {
    const std::string written = VocabularyOf(kEverything).ToJson();
    ExpectEverything(VocabularyOf(written));
    EXPECT_EQ(written, VocabularyOf(written).ToJson());
}

TEST(DeclarationReading, ALineIsWrittenForEachParameter) {
    const Vocabulary vocabulary = VocabularyOf(
        R"({"namespaces": [{"name": "view", "firstId": 1000, "lastId": 1999, "fallback": "qvcore", "parameters": [
            {"id": 1000, "name": "title", "short": "ti", "type": "text"},
            {"id": 1001, "name": "day", "kind": "structure", "members": ["title", "param-type"], "description": "\"ä\""}
        ]}], "unserializable": [7]})");
    EXPECT_EQ(
        R"({
  "namespaces": [
    {
      "name": "view",
      "firstId": 1000,
      "lastId": 1999,
      "fallback": "qvcore",
      "parameters": [
        {"id": 1000, "name": "title", "short": "ti", "type": "text"},
        {"id": 1001, "name": "day", "kind": "structure", "members": ["title", "param-type"], "description": "\"ä\""}
      ]
    }
  ],
  "unserializable": [7]
}
)",
        vocabulary.ToJson());
    EXPECT_EQ("{\n  \"namespaces\": []\n}\n", VocabularyOf("{\"namespaces\": []}").ToJson());
}

TEST(DeclarationReading, AByteOrderMarkIsPassedOver) {
    EXPECT_EQ(1U, VocabularyOf("\xef\xbb\xbf" + ViewText("")).GetNamespaces().size());
}

TEST(DeclarationReading, ACommentMayEndTheFile) {
    EXPECT_EQ(1U, VocabularyOf(ViewText("") + " // the end").GetNamespaces().size());
}

TEST(DeclarationReading, PlacesOfDeclarationsAreKept) {
    const Vocabulary vocabulary = ViewOf("\n\n  {\"id\": 1000, \"name\": \"a\", \"type\": \"int\"}");
    EXPECT_EQ(1U, vocabulary.GetNamespaces()[0].location.line);
    EXPECT_EQ(17U, vocabulary.GetNamespaces()[0].location.column);
    const TextLocation& place = ParameterOf(vocabulary, 1000).location;
    EXPECT_EQ(3U, place.line);
    EXPECT_EQ(3U, place.column);
    EXPECT_EQ(L"/namespaces/0/parameters/0", place.path);
}

TEST(DeclarationReading, HexadecimalIdentifiersHaveThirtyTwoBits) {
    const Vocabulary vocabulary = VocabularyOf(
        R"({"namespaces": [{"name": "a", "firstId": "0x80000000", "lastId": "0x7fffffff", "parameters": [
            {"id": "0xFFFFFFFE", "name": "b", "type": "int"}]}]})");
    EXPECT_EQ(std::numeric_limits<int>::min(), vocabulary.GetNamespaces()[0].firstId);
    EXPECT_EQ(std::numeric_limits<int>::max(), vocabulary.GetNamespaces()[0].lastId);
    EXPECT_EQ(-2, vocabulary.GetNamespaces()[0].parameters[0].id);
}

TEST(VocabularyLookups, NamesAreSoughtAlongTheFallbacks) {
    const Vocabulary vocabulary = VocabularyOf(R"({"namespaces": [
        {"name": "near", "firstId": 1, "lastId": 9, "fallback": "far", "parameters": [
            {"id": 1, "name": "a", "short": "s", "type": "int"}, {"id": 2, "name": "b", "type": "int"}]},
        {"name": "far", "firstId": 11, "lastId": 19, "fallback": "qvcore", "parameters": [
            {"id": 11, "name": "b", "short": "t", "type": "int"}, {"id": 12, "name": "c", "short": "s", "type": "int"}]}
    ]})");
    const NamespaceDeclaration& near = *vocabulary.FindNamespace(L"near");
    EXPECT_EQ(2, vocabulary.Resolve(near, L"b")->id);
    EXPECT_EQ(12, vocabulary.Resolve(near, L"c")->id);
    EXPECT_EQ(static_cast<int>(CoreParameterID::ParamType), vocabulary.Resolve(near, L"param-type")->id);
    EXPECT_EQ(nullptr, vocabulary.Resolve(near, L"d"));

    const auto ids = [&](bool shortNames) {
        std::vector<int> result;
        for (const ParameterDeclaration* parameter : vocabulary.GetReachable(near, shortNames)) {
            result.push_back(parameter->id);
        }
        return result;
    };
    const std::vector<int> core = {285398425, 297868712, 291551623, 299054276};
    std::vector<int> verbose = {1, 2, 12};
    verbose.insert(verbose.end(), core.begin(), core.end());
    EXPECT_EQ(verbose, ids(false));
    std::vector<int> shortOnes = {1, 11};
    shortOnes.insert(shortOnes.end(), core.begin(), core.end());
    EXPECT_EQ(shortOnes, ids(true));
}

TEST(VocabularyLookups, TheNamespaceWhoseNameSortsFirstCovers) {
    const Vocabulary vocabulary = VocabularyOf(R"({"namespaces": [
        {"name": "b", "firstId": 1, "lastId": 20, "parameters": []},
        {"name": "a", "firstId": 11, "lastId": 30, "parameters": []}]})");
    EXPECT_EQ(L"b", vocabulary.FindCovering(10)->name);
    EXPECT_EQ(L"a", vocabulary.FindCovering(11)->name);
    EXPECT_EQ(L"a", vocabulary.FindCovering(30)->name);
    EXPECT_EQ(nullptr, vocabulary.FindCovering(31));
    EXPECT_EQ(L"qvcore", vocabulary.FindCovering(kCoreNamespaceLastID)->name);
    EXPECT_EQ(L"param-type", vocabulary.FindId(static_cast<int>(CoreParameterID::ParamType))->name);
    EXPECT_EQ(nullptr, vocabulary.FindId(11));
    EXPECT_EQ(nullptr, vocabulary.FindId(31));
}
