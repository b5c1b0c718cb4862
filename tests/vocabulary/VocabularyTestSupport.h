// What the tests of vocabularies share.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/Printing.h"
#include "tools/vocabulary/ToolHost.h"
#include "tools/vocabulary/Vocabulary.h"

inline constexpr const char* kSource = "test.json";

inline qvpres::Vocabulary VocabularyOf(std::string_view text) { return qvpres::Vocabulary::FromText(text, kSource); }

// A vocabulary of one namespace "view", 1000 to 1999, with these parameters.
inline std::string ViewText(const std::string& parameters) {
    return R"({"namespaces": [{"name": "view", "firstId": 1000, "lastId": 1999, "parameters": [)" + parameters + "]}]}";
}
inline qvpres::Vocabulary ViewOf(const std::string& parameters) { return VocabularyOf(ViewText(parameters)); }

// The parameter of the namespace "view" under an identifier.
inline const qvpres::ParameterDeclaration& ParameterOf(const qvpres::Vocabulary& vocabulary, int id) {
    return *vocabulary.FindNamespace(L"view")->FindId(id);
}

inline std::string ReadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The compact text of a bag.
inline std::string CompactText(const RefCntPtr<IParameters>& bag, const TString& nameSpace = L"view") {
    return JSONSerializer(nameSpace).ToString(bag, JSONSerializer::Compact).ToUtf8();
}

inline RefCntPtr<IParameters> ReadBag(std::string_view json, const TString& nameSpace = L"view") {
    return JSONSerializer(nameSpace).ToParameters(TString::FromUtf8(json));
}
