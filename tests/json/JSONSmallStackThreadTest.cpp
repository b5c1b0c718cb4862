// Reading on a thread with a stack of 256 KiB. Not under sanitizers, whose frames are several times as large.
#include <qvpreslayer/JSONSerializer.h>

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

#include "json/JSONTestSupport.h"

namespace {

constexpr std::size_t kStackBytes = 256 * 1024;

void* Run(void* work) {
    (*static_cast<std::function<void()>*>(work))();
    return nullptr;
}

// Runs work on a thread of its own with the small stack.
void OnSmallStack(std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, kStackBytes));
    pthread_t thread;
    ASSERT_EQ(0, pthread_create(&thread, &attributes, Run, &work));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

std::string Nested(const std::string& opening, const std::string& middle, char closing, std::size_t levels) {
    std::string json;
    for (std::size_t level = 0; level < levels; ++level) {
        json += opening;
    }
    return json + middle + std::string(levels, closing);
}

// Reads on the small stack and lets the bag go there: "read", or the failure.
std::string OutcomeOnSmallStack(const std::string& json) {
    const ViewRegistry registry;
    const JSONSerializer serializer(L"view");
    const TString text = TString::FromUtf8(json);
    std::string outcome;
    OnSmallStack([&] {
        try {
            outcome = serializer.ToParameters(text) ? "read" : "no bag";
        } catch (const JSONParseException& e) {
            outcome = e.what();
        } catch (const std::exception& e) {
            outcome = std::string("another failure: ") + e.what();
        }
    });
    return outcome;
}

constexpr std::size_t kLimit = 512;
constexpr std::size_t kMillion = 1000000;
const char* const kNotValid = "The text is not valid JSON.";

}  // namespace

TEST(JSONSmallStack, ReadsBagsAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOnSmallStack(Nested("{\"subBag\":", "{}", '}', kLimit - 1)));
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack(Nested("{\"subBag\":", "{}", '}', kLimit)));
}

TEST(JSONSmallStack, ReadsArraysAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOnSmallStack("{\"textList\":" + Nested("[", "", ']', kLimit - 1) + "}"));
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack("{\"textList\":" + Nested("[", "", ']', kLimit) + "}"));
}

TEST(JSONSmallStack, ReadsStructuresAtTheDepthLimit) {
    EXPECT_EQ("read", OutcomeOnSmallStack(Nested("{\"myModel\":", "{}", '}', kLimit - 1)));
    std::string items;
    std::string closing;
    for (std::size_t level = 0; level + 2 < kLimit; level += 2) {
        items += "{\"items\":[";
        closing += "]}";
    }
    EXPECT_EQ("read", OutcomeOnSmallStack(items + "{}" + closing));
}

TEST(JSONSmallStack, RefusesAMillionLevels) {
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack(Nested("{\"subBag\":", "{}", '}', kMillion)));
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack(std::string(kMillion, '[')));
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack(std::string(kMillion, '{')));
    EXPECT_EQ(kNotValid, OutcomeOnSmallStack("/*\"*/" + Nested("[", "", ']', kMillion)));
}

#endif
