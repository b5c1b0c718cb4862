#include <qvpreslayer/PresModelBuilderSupport.h>

#include <thread>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

void ExpectDefaults() {
    EXPECT_TRUE(PresModelBuilderSupport::UseVerboseNames());
    EXPECT_FALSE(PresModelBuilderSupport::CompressArrays());
    EXPECT_FALSE(PresModelBuilderSupport::LossyEncodeImages());
}

}  // namespace

TEST(PresModelBuilderSupport, HasDefaultsWithoutASession) {
    ASSERT_FALSE(SessionContext::HasSessionContext());
    ExpectDefaults();
}

TEST(PresModelBuilderSupport, HasDefaultsWithoutOptions) {
    const OptionsSession session(nullptr);
    ASSERT_TRUE(SessionContext::HasSessionContext());
    ExpectDefaults();
}

TEST(PresModelBuilderSupport, VerboseNamesAreTheOppositeOfShortOnes) {
    {
        const TestSession session(true);
        EXPECT_FALSE(PresModelBuilderSupport::UseVerboseNames());
    }
    const TestSession session(false);
    EXPECT_TRUE(PresModelBuilderSupport::UseVerboseNames());
}

TEST(PresModelBuilderSupport, TheOtherOptionsPassUnchanged) {
    TestSession session;
    for (const bool answer : {true, false, true}) {
        session.Vars().compressArrays = answer;
        session.Vars().lossyEncodeImages = !answer;
        EXPECT_EQ(answer, PresModelBuilderSupport::CompressArrays());
        EXPECT_EQ(!answer, PresModelBuilderSupport::LossyEncodeImages());
    }
}

TEST(PresModelBuilderSupport, EachOptionIsItsOwn) {
    TestSession session;
    session.Vars().shortNames = true;
    EXPECT_FALSE(PresModelBuilderSupport::CompressArrays());
    EXPECT_FALSE(PresModelBuilderSupport::LossyEncodeImages());
    session.Vars().shortNames = false;
    session.Vars().lossyEncodeImages = true;
    EXPECT_TRUE(PresModelBuilderSupport::UseVerboseNames());
    EXPECT_FALSE(PresModelBuilderSupport::CompressArrays());
    EXPECT_TRUE(PresModelBuilderSupport::LossyEncodeImages());
}

TEST(PresModelBuilderSupport, OptionsAreAskedAtEveryCall) {
    TestSession session;
    EXPECT_TRUE(PresModelBuilderSupport::UseVerboseNames());
    session.Vars().shortNames = true;
    EXPECT_FALSE(PresModelBuilderSupport::UseVerboseNames());
    session.Vars().shortNames = false;
    EXPECT_TRUE(PresModelBuilderSupport::UseVerboseNames());
    EXPECT_EQ(3, session.Vars().nameQuestions);
}

TEST(PresModelBuilderSupport, DefaultsComeBackWithTheEndOfTheSession) {
    {
        TestSession session(true, true);
        session.Vars().lossyEncodeImages = true;
        EXPECT_FALSE(PresModelBuilderSupport::UseVerboseNames());
    }
    ExpectDefaults();
}

TEST(PresModelBuilderSupport, AnInnerSessionCoversTheOuterOne) {
    const TestSession outer(true, true);
    {
        const OptionsSession inner(nullptr);
        ExpectDefaults();
    }
    EXPECT_FALSE(PresModelBuilderSupport::UseVerboseNames());
    EXPECT_TRUE(PresModelBuilderSupport::CompressArrays());
}

TEST(PresModelBuilderSupport, ASessionBelongsToItsThread) {
    const TestSession session(true, true);
    std::thread([] { ExpectDefaults(); }).join();
    EXPECT_TRUE(PresModelBuilderSupport::CompressArrays());
}
