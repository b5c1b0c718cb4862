// The vocabulary of examples/weather_view: a declaration file, and the header that was made of it.
#include <gtest/gtest.h>

#include "tools/vocabulary/CppHeader.h"
#include "tools/vocabulary/Lint.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

constexpr const char* kDeclaration = PROJECT_FOLDER "/examples/weather_view/weather.vocabulary.json";
constexpr const char* kHeader = PROJECT_FOLDER "/examples/weather_view/WeatherVocabulary.h";

}  // namespace

// When this fails: qvpres generate --cpp examples/weather_view/weather.vocabulary.json
//                      -o examples/weather_view/WeatherVocabulary.h
TEST(WeatherExample, TheHeaderIsWhatTheDeclarationGenerates) {
    EXPECT_EQ(ReadText(kHeader), ToCppHeader(Vocabulary::FromFile(kDeclaration), "weather.vocabulary.json"));
}

TEST(WeatherExample, LintFindsNothingButWhatTheExampleShowsOnPurpose) {
    for (const Finding& finding : Lint(Vocabulary::FromFile(kDeclaration))) {
        EXPECT_EQ(Rule::LossyType, finding.rule) << finding.message.ToUtf8();
    }
}
