// Typed values on several threads at once.
#include <qvpreslayer/DataValueSerializer.h>

#include <gtest/gtest.h>

#include "support/Printing.h"
#include "support/Race.h"
#include "support/TypedValues.h"

using typed::Nested;
using typed::NestedText;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 50;

TString Write(const DataValue& value) { return ParameterTypeSerializer<DataValue>::TypeToString(value); }
DataValue Read(const TString& text) { return ParameterTypeSerializer<DataValue>::TypeFromString(text); }

}  // namespace

// Levels are counted for each thread on its own.
TEST(DataValueThreads, TuplesAtTheDepthLimit) {
    const TString text = NestedText(256);
    Race(kThreads, [&](int) {
        for (int i = 0; i < kRounds; ++i) {
            EXPECT_EQ(text, Write(Read(text)));
            EXPECT_THROW(Read(NestedText(257)), QuorvelException);
        }
    });
}

TEST(DataValueThreads, SharedValuesAndTexts) {
    const DataValue shared = typed::TupleOf({typed::String(L"a,b"), 1.5, typed::NullString()});
    Race(kThreads, [&](int) {
        for (int i = 0; i < kRounds * 10; ++i) {
            const TString text = Write(shared);
            EXPECT_EQ(L"t:[s:root:a,b],[r:::1.5],[s:root:%null%]", text);
            EXPECT_EQ(shared, Read(text));
            EXPECT_EQ(L"s:root:common", Write(Read(L"s:root:common")));
        }
    });
}
