#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/convert/Conversion.h"

using qvpres::Conversion;
using qvpres::Convert;
using qvpres::ConvertOptions;
using qvpres::Failure;

namespace {

class ConversionTest : public testing::Test {
protected:
    Conversion Make(const std::string& json, const ConvertOptions& options) const {
        return Convert(TString::FromUtf8(json), m_host.Loaded(), L"chart", options, "test");
    }

    std::string Compact(const std::string& json, const std::string& names = "same", bool packed = false,
                        JSONSerializer::OutputType layout = JSONSerializer::Compact) const {
        ConvertOptions options;
        options.writtenNames = names;
        options.packed = packed;
        options.layout = layout;
        const Conversion result = Make(json, options);
        EXPECT_TRUE(result.losses.differences.empty());
        EXPECT_TRUE(result.readable);
        return result.utf8;
    }

    // What of a text would be lost, as PATH: LEFT -> RIGHT.
    std::vector<std::string> Losses(const std::string& json) const {
        ConvertOptions options;
        options.layout = JSONSerializer::Compact;
        std::vector<std::string> losses;
        for (const auto& loss : Make(json, options).losses.differences) {
            losses.push_back(loss.path + ": " + loss.left + " -> " + loss.right);
        }
        return losses;
    }

    std::string FailureOf(const std::string& json, const ConvertOptions& options = {}) const {
        try {
            Make(json, options);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "none";
    }

    ChartHost m_host;
};

}  // namespace

TEST_F(ConversionTest, NamesLayoutsAndArrays) {
    const std::string json = R"({"days": [1, 2, 3, 4, 9], "title": "a"})";
    EXPECT_EQ(Compact(json), R"({"title": "a","days":[1,2,3,4,9]})");
    EXPECT_EQ(Compact(json, "short"), R"({"ti": "a","da":[1,2,3,4,9]})");
    EXPECT_EQ(Compact(R"({"ti": "a"})"), R"({"ti": "a"})") << "the names of the text stay";
    EXPECT_EQ(Compact(R"({"ti": "a"})", "verbose"), R"({"title": "a"})");
    EXPECT_EQ(Compact(json, "same", true), R"({"title": "a","days":[[1,4,1],9,[]]})");
    EXPECT_EQ(Compact(R"({"days": [[1, 4, 1], 9, []]})"), R"({"days":[1,2,3,4,9]})");
    EXPECT_EQ(Compact(json, "same", false, JSONSerializer::Bare), R"("a","days":[1,2,3,4,9])");
    EXPECT_EQ(Compact(R"({"fontSize": 1, "mark-sizes": [1]})", "same", false, JSONSerializer::BareRawNames),
              R"([1],"font-size": 1)");
    EXPECT_EQ(Compact(json, "same", false, JSONSerializer::UnquotedNames), R"({title: "a",days:[1,2,3,4,9]})");
    EXPECT_EQ(Compact(R"({"title": "a"})", "same", false, JSONSerializer::Pretty), "{\n  \"title\": \"a\"\n}");
}

TEST_F(ConversionTest, WhatWouldBeLostIsTold) {
    using testing::ElementsAre;
    EXPECT_THAT(Losses(R"({"title": "a", "days": [1], "totalCents": "5"})"), ElementsAre());
    EXPECT_THAT(Losses(R"({"totalCents": 5000000000})"), ElementsAre("/totalCents: 5000000000 -> 705032704"));
    EXPECT_THAT(Losses(R"({"style": {"fontWeight": "heavy"}})"),
                ElementsAre("/style/fontWeight: \"heavy\" -> \"font-weight-normal\""));
    EXPECT_THAT(Losses(R"({"colors": {"a-b": "c"}})"), ElementsAre("/colors/a-b: \"c\" -> ", "/colors/aB:  -> \"c\""));
    EXPECT_THAT(Losses(R"({"markSizes": [1e-20]})"), ElementsAre("/markSizes: 1e-20 -> 0"));
    EXPECT_THAT(Losses(R"({"selection": [1]})"), ElementsAre("/selection: [1] -> "));
    EXPECT_THAT(Losses(R"({"readings": ["i:1"]})"), ElementsAre("/readings: \"i:1\" -> 1"));
    EXPECT_THAT(Losses(R"({"title": "\u0001"})"), ElementsAre("/title: \"\\u0001\" -> \"\\\\x1\""));
}

TEST_F(ConversionTest, LossIsAllowedWhenAskedFor) {
    ConvertOptions options;
    options.lossy = true;
    options.layout = JSONSerializer::Compact;
    EXPECT_EQ(Make(R"({"totalCents": 5000000000})", options).utf8, R"({"totalCents": 705032704})");
}

TEST_F(ConversionTest, TextsThatCannotBeRead) {
    EXPECT_EQ(FailureOf(R"({"title": "a", "nobody": 1})"), "test:1:16: /nobody: unknown name \"nobody\"");
    EXPECT_EQ(FailureOf("{"), "test:1:2: the text is not valid JSON: it ends too early");
    EXPECT_EQ(FailureOf("[]"), "test:1:1: expected object, found array");
}

TEST_F(ConversionTest, AParameterWithoutAShortNameCannotBeWrittenShort) {
    ConvertOptions options;
    options.writtenNames = "short";
    const qvpres::LoadedVocabulary loaded(
        qvpres::Vocabulary::FromText(ViewText(R"({"id": 1001, "name": "title", "type": "text"})"), "test"));
    try {
        Convert(u"{\"title\": \"a\"}", loaded, L"view", options, "test");
        ADD_FAILURE();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "test: cannot be written so: Error finding command parameter: 1001");
    }
}
