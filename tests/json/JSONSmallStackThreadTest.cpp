// Reading on a thread with a stack of 256 KiB. Not under sanitizers, whose frames are several times as large.
#include <qvpreslayer/JSONSerializer.h>

#include "support/Sanitized.h"

#if !QV_TEST_SANITIZED

#include <string>

#include "json/JSONTestSupport.h"
#include "support/SmallStack.h"

namespace {

std::string Nested(const std::string& opening, const std::string& middle, char closing, std::size_t levels) {
    std::string json;
    for (std::size_t level = 0; level < levels; ++level) {
        json += opening;
    }
    return json + middle + std::string(levels, closing);
}

// Reads on the small stack and lets the bag go there: "read", or the failure.
std::string OutcomeOfReading(const std::string& json) {
    const ViewRegistry registry;
    const JSONSerializer serializer(L"view");
    const TString text = TString::FromUtf8(json);
    const std::string outcome = OutcomeOnSmallStack([&] { EXPECT_TRUE(serializer.ToParameters(text)); });
    return outcome == "done" ? "read" : outcome;
}

constexpr std::size_t kLimit = 512;
constexpr std::size_t kMillion = 1000000;
const char* const kNotValid = "The text is not valid JSON.";

}  // namespace

TEST(JSONSmallStack, ReadsBagsAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOfReading(Nested("{\"subBag\":", "{}", '}', kLimit - 1)));
    EXPECT_EQ(kNotValid, OutcomeOfReading(Nested("{\"subBag\":", "{}", '}', kLimit)));
}

TEST(JSONSmallStack, ReadsArraysAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOfReading("{\"textList\":" + Nested("[", "", ']', kLimit - 1) + "}"));
    EXPECT_EQ(kNotValid, OutcomeOfReading("{\"textList\":" + Nested("[", "", ']', kLimit) + "}"));
}

TEST(JSONSmallStack, ReadsStructuresAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOfReading(Nested("{\"myModel\":", "{}", '}', kLimit - 1)));
    std::string items;
    std::string closing;
    for (std::size_t level = 0; level + 2 < kLimit; level += 2) {
        items += "{\"items\":[";
        closing += "]}";
    }
    EXPECT_EQ("read", OutcomeOfReading(items + "{}" + closing));
}

TEST(JSONSmallStack, RefusesAMillionLevels) {
    EXPECT_EQ(kNotValid, OutcomeOfReading(Nested("{\"subBag\":", "{}", '}', kMillion)));
    EXPECT_EQ(kNotValid, OutcomeOfReading(std::string(kMillion, '[')));
    EXPECT_EQ(kNotValid, OutcomeOfReading(std::string(kMillion, '{')));
    EXPECT_EQ(kNotValid, OutcomeOfReading("/*\"*/" + Nested("[", "", ']', kMillion)));
}

#endif
