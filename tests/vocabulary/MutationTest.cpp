// Declaration files that somebody has damaged: each is taken or refused with a place, and nothing else happens.
#include <random>

#include <gtest/gtest.h>

#include "tools/vocabulary/CppHeader.h"
#include "tools/vocabulary/JsonSchema.h"
#include "tools/vocabulary/Lint.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

constexpr const char* kPieces[] = {"",
                                   "\"",
                                   "{",
                                   "}",
                                   "[",
                                   "]",
                                   ",",
                                   ":",
                                   "null",
                                   "true",
                                   "0",
                                   "-1",
                                   "1.5",
                                   "\"id\"",
                                   "\\",
                                   "\\ud83d",
                                   "\xf0\x9f",
                                   "\xff",
                                   "/*",
                                   "//",
                                   "\n",
                                   "\"kind\": \"bag\"",
                                   "\"type\": \"int\"",
                                   "\"0x20000002\"",
                                   "\"a-text\"",
                                   "\"shared\"",
                                   "99999999999"};

std::string Damaged(std::string text, std::mt19937& random) {
    for (auto count = random() % 3 + 1; count > 0; --count) {
        const std::size_t at = random() % text.size();
        // Mostly whole tokens: up to the next one that ends something.
        const std::size_t end = random() % 2 == 0 ? at + random() % 4 : text.find_first_of(",:}]", at);
        const std::size_t length = end == std::string::npos ? 1 : end - at;
        text.replace(at, length, kPieces[random() % std::size(kPieces)]);
    }
    return text;
}

void ExpectUsable(const Vocabulary& vocabulary) {
    const std::string written = vocabulary.ToJson();
    EXPECT_EQ(written, VocabularyOf(written).ToJson());
    ToolRegistry registry;
    vocabulary.Register(registry);
    registry.GetNamespaceInfos();
    Lint(vocabulary);
    ToCppHeader(vocabulary, "x.json");
    for (const NamespaceDeclaration& nameSpace : vocabulary.GetNamespaces()) {
        ToJsonSchema(vocabulary, nameSpace.name);
    }
}

}  // namespace

TEST(Mutation, DamagedDeclarationsAreTakenOrRefusedWithAPlace) {
    const std::string whole = ReadText(VOCABULARY_TEST_DATA "/every-type.json");
    std::mt19937 random(20240229);
    int taken = 0;
    int refused = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string text = Damaged(whole, random);
        SCOPED_TRACE(text);
        try {
            const Vocabulary vocabulary = VocabularyOf(text);
            ++taken;
            ExpectUsable(vocabulary);
        } catch (const VocabularyException& failure) {
            ++refused;
            EXPECT_TRUE(failure.GetLocation().IsKnown()) << failure.what();
            const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
            EXPECT_LE(failure.GetLocation().line, lines);
        }
    }
    EXPECT_GT(taken, 20);
    EXPECT_GT(refused, 1000);
}
