// docs/vocabulary.md against the code: nothing is left out of its tables.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tools/vocabulary/Lint.h"
#include "tools/vocabulary/OldTexts.h"
#include "vocabulary/VocabularyTestSupport.h"

using namespace qvpres;

namespace {

class VocabularyDocument : public testing::Test {
protected:
    void ExpectInTable(std::u16string_view name) const { ExpectInTable(TString(name).ToUtf8()); }
    void ExpectInTable(const std::string& name) const {
        const std::string quoted = "`" + name + "`";
        const bool found = m_document.find("\n| " + quoted) != std::string::npos ||
                           m_document.find(", " + quoted) != std::string::npos;
        EXPECT_TRUE(found) << name;
    }

private:
    std::string m_document = ReadText(PROJECT_FOLDER "/docs/vocabulary.md");
};

}  // namespace

TEST_F(VocabularyDocument, HasEveryType) {
    for (const ValueType& type : GetValueTypes()) {
        ExpectInTable(type.name);
    }
}

TEST_F(VocabularyDocument, HasEveryKind) {
    for (int kind = 0; kind <= static_cast<int>(DeclaredKind::StructureMap); ++kind) {
        ExpectInTable(ToText(static_cast<DeclaredKind>(kind)));
    }
}

TEST_F(VocabularyDocument, HasEveryRuleAndEveryAnswer) {
    for (int rule = 0; rule <= static_cast<int>(Rule::LossyType); ++rule) {
        ExpectInTable(ToText(static_cast<Rule>(rule)));
    }
    for (int answer = 0; answer <= static_cast<int>(OldTexts::Fail); ++answer) {
        ExpectInTable(ToText(static_cast<OldTexts>(answer)));
    }
}

TEST_F(VocabularyDocument, HasEveryMemberOfTheFormat) {
    const auto schema = nlohmann::json::parse(ReadText(PROJECT_FOLDER "/tools/vocabulary/declaration.schema.json"));
    for (const auto& object : {schema, schema["$defs"]["namespace"], schema["$defs"]["parameter"]}) {
        for (const auto& [name, member] : object["properties"].items()) {
            ExpectInTable(name);
        }
    }
}
