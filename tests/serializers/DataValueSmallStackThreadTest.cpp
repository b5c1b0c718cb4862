// Nested tuples on a thread with a stack of 256 KiB. Not under sanitizers, whose frames are several times as large.
#include <qvpreslayer/DataValueSerializer.h>

#include "support/Sanitized.h"

#if !QV_TEST_SANITIZED

#include <string>

#include <gtest/gtest.h>

#include "support/Printing.h"
#include "support/SmallStack.h"
#include "support/TypedValues.h"

using typed::Nested;
using typed::NestedText;

namespace {

constexpr std::size_t kLimit = 256;
constexpr std::size_t kMillion = 1000000;
const char* const kMalformed = "Malformed serialization of a tuple element";

std::string OutcomeOfReading(std::size_t levels) {
    const TString text = NestedText(levels);
    return OutcomeOnSmallStack([&] {
        const DataValue value = ParameterTypeSerializer<DataValue>::TypeFromString(text);
        EXPECT_TRUE(Nested(levels) == value);
    });
}

std::string OutcomeOfWriting(std::size_t levels) {
    const DataValue value = Nested(levels);
    return OutcomeOnSmallStack([&] {
        const TString text = ParameterTypeSerializer<DataValue>::TypeToString(value);
        EXPECT_TRUE(NestedText(levels) == text);
    });
}

}  // namespace

TEST(DataValueSmallStack, ReadsTuplesAtTheDepthLimit) {
    EXPECT_EQ("done", OutcomeOfReading(kLimit));
    EXPECT_EQ(kMalformed, OutcomeOfReading(kLimit + 1));
    EXPECT_EQ(kMalformed, OutcomeOfReading(kMillion));
}

TEST(DataValueSmallStack, WritesTuplesAtTheDepthLimit) {
    EXPECT_EQ("done", OutcomeOfWriting(kLimit));
    EXPECT_EQ(kMalformed, OutcomeOfWriting(kLimit + 1));
    EXPECT_EQ(kMalformed, OutcomeOfWriting(kMillion));
}

TEST(DataValueSmallStack, FreesDeepTuples) {
    EXPECT_EQ("done", OutcomeOnSmallStack([] { Nested(kMillion); }));
}

#endif
