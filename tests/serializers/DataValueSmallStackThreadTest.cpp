// Nested tuples on a thread with a stack of 256 KiB. Not under sanitizers, whose frames are several times as large.
#include <qvpreslayer/DataValueSerializer.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QV_TEST_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QV_TEST_SANITIZED
#endif

#ifndef QV_TEST_SANITIZED

#include <pthread.h>

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "support/Printing.h"
#include "support/TypedValues.h"

using typed::Nested;
using typed::NestedText;

namespace {

constexpr std::size_t kStackBytes = 256 * 1024;
constexpr std::size_t kLimit = 256;
constexpr std::size_t kMillion = 1000000;
const char* const kMalformed = "Malformed serialization of a tuple element";

void* Run(void* work) {
    (*static_cast<std::function<void()>*>(work))();
    return nullptr;
}

// What work does on a thread of its own with the small stack: "done", or the message of its failure.
std::string OutcomeOnSmallStack(const std::function<void()>& work) {
    std::string outcome;
    std::function<void()> guarded = [&] {
        try {
            work();
            outcome = "done";
        } catch (const std::exception& e) {
            outcome = e.what();
        }
    };
    pthread_attr_t attributes;
    EXPECT_EQ(0, pthread_attr_init(&attributes));
    EXPECT_EQ(0, pthread_attr_setstacksize(&attributes, kStackBytes));
    pthread_t thread;
    EXPECT_EQ(0, pthread_create(&thread, &attributes, Run, &guarded));
    EXPECT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
    return outcome;
}

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
