#include <qvcore/SessionContext.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <qvpreslayer/IBuilderVars.h>

#include "support/Printing.h"

namespace {

class TestContext : public SessionContext {
public:
    ~TestContext() override = default;
    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return {}; }
};

TEST(SessionContextThread, ThreadContextIsForItsThreadOnly) {
    TestContext context;
    const SessionContextScope scope(context);
    std::thread([] { EXPECT_FALSE(SessionContext::HasSessionContext()); }).join();
    EXPECT_TRUE(SessionContext::HasSessionContext());
}

TEST(SessionContextThread, ProcessContextIsForEveryThread) {
    TestContext context;
    const SessionContextScope scope(context, SessionContextScope::Process);
    std::thread([&] {
        ASSERT_TRUE(SessionContext::HasSessionContext());
        EXPECT_EQ(&context, &SessionContext::Get());
    }).join();
}

TEST(SessionContextThread, EachThreadHasItsOwn) {
    TestContext ofProcess;
    const SessionContextScope process(ofProcess, SessionContextScope::Process);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            TestContext mine;
            for (int round = 0; round < 1000; ++round) {
                const SessionContextScope scope(mine);
                ASSERT_EQ(&mine, &SessionContext::Get());
            }
            ASSERT_EQ(&ofProcess, &SessionContext::Get());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(&ofProcess, &SessionContext::Get());
}

}  // namespace
