// Schemas as texts, and that the tables of wrong texts mean what they say to the reader. Whether schemas and texts
// agree is for a validator to check: check_schemas.py.
#include "tools/vocabulary/JsonSchema.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

TEST(JsonSchema, TheWholeOfASmallOne) {
    const Vocabulary vocabulary = VocabularyOf(R"({"namespaces": [{
        "name": "chart", "firstId": 1000, "lastId": 1999, "description": "Charts", "parameters": [
            {"id": 1001, "name": "sub-title", "short": "st", "type": "text", "description": "below"},
            {"id": 1002, "name": "sizes", "kind": "list", "type": "int"},
            {"id": 1003, "name": "style", "kind": "bag", "members": ["sub-title", "style"]},
            {"id": 1004, "name": "selection", "type": "int", "unserializable": true}]}]})");
    EXPECT_EQ(nlohmann::json::parse(R"({
        "$schema": "https://json-schema.org/draft/2020-12/schema",
        "title": "Parameters of the namespace chart",
        "description": "Charts",
        "$ref": "#/$defs/bag",
        "$defs": {
            "bag": {"type": "object", "additionalProperties": false, "properties": {
                "subTitle": {"$ref": "#/$defs/parameter-1001"},
                "sizes": {"$ref": "#/$defs/parameter-1002"},
                "style": {"$ref": "#/$defs/parameter-1003"}}},
            "parameter-1001": {"description": "below", "$ref": "#/$defs/type-text"},
            "parameter-1002": {"type": "array", "items": {"$ref": "#/$defs/type-int"}},
            "parameter-1003": {"type": "object", "additionalProperties": false, "properties": {
                "subTitle": {"$ref": "#/$defs/parameter-1001"},
                "style": {"$ref": "#/$defs/parameter-1003"}}},
            "type-text": {"type": "string"},
            "type-int": {"type": "integer", "minimum": -2147483648, "maximum": 2147483647}}})"),
              nlohmann::json::parse(ToJsonSchema(vocabulary, L"chart")));
    // Under short names there is one member.
    const auto shortOne = nlohmann::json::parse(ToJsonSchema(vocabulary, L"chart", {true, false}));
    EXPECT_EQ(nlohmann::json::parse(R"({"st": {"$ref": "#/$defs/parameter-1001"}})"),
              shortOne["$defs"]["bag"]["properties"]);
}

TEST(JsonSchema, AnUnknownNamespaceIsAnError) {
    EXPECT_THROW(ToJsonSchema(ViewOf(""), L"chart"), ParameterNamespaceNotFoundException);
}

TEST(JsonSchema, DeclarationsAllowTheTypesThatThereAre) {
    const auto schema = nlohmann::json::parse(ReadText(PROJECT_FOLDER "/tools/vocabulary/declaration.schema.json"));
    std::vector<std::string> types;
    for (const ValueType& type : GetValueTypes()) {
        types.push_back(TString(type.name).ToUtf8());
    }
    EXPECT_EQ(types, schema["$defs"]["type"]["enum"].get<std::vector<std::string>>());
}

TEST(JsonSchema, WrongTextsAreRefusedUnlessTheyAreLenient) {
    const Vocabulary vocabulary = Vocabulary::FromFile(VOCABULARY_TEST_DATA "/every-type.json");
    for (const auto& c : nlohmann::json::parse(ReadText(VOCABULARY_TEST_DATA "/wrong-texts.json"))["texts"]) {
        const std::string text = c["text"].dump();
        SCOPED_TRACE(c["why"].get<std::string>() + ": " + text);
        const ToolSession session(c.value("short", false), c.value("packed", false));
        ToolRegistry registry;
        vocabulary.Register(registry);
        if (c.value("lenient", false)) {
            EXPECT_NO_THROW(ReadBag(text, L"every-type"));
        } else {
            EXPECT_ANY_THROW(ReadBag(text, L"every-type"));
        }
    }
}

TEST(JsonSchema, WrongDeclarationsAreRefused) {
    for (const auto& c :
         nlohmann::json::parse(ReadText(VOCABULARY_TEST_DATA "/wrong-declarations.json"), nullptr, true)) {
        const std::string text = c.contains("declaration")
                                     ? c["declaration"].dump()
                                     : R"({"namespaces": [{"name": "v", "firstId": 0, "lastId": 9, "parameters": [)" +
                                           c["parameter"].dump() + "]}]}";
        EXPECT_THROW(VocabularyOf(text), VocabularyException) << c["why"];
    }
}
