#include <qvcore/SessionContext.h>

#include <gtest/gtest.h>

#include <optional>

#include <qvpreslayer/IBuilderVars.h>

#include <qvsys/LogicException.h>

#include "support/Printing.h"

namespace {

class TestContext : public SessionContext {
public:
    ~TestContext() override = default;
    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return {}; }
};

TEST(SessionContext, NoneIsInForceAtFirst) {
    EXPECT_FALSE(SessionContext::HasSessionContext());
    EXPECT_EQ(nullptr, SessionContext::Find());
}

TEST(SessionContext, GetWithoutOneIsALogicError) {
    try {
        SessionContext::Get();
        FAIL() << "no exception";
    } catch (const LogicException& exception) {
        EXPECT_STREQ("HasSessionContext()", exception.GetExpression());
        EXPECT_STREQ("SessionContext", exception.GetFile());
        EXPECT_GT(exception.GetLine(), 0);
    }
}

TEST(SessionContext, ThreadScopePutsOneInForce) {
    TestContext context;
    {
        const SessionContextScope scope(context);
        EXPECT_TRUE(SessionContext::HasSessionContext());
        EXPECT_EQ(&context, &SessionContext::Get());
        EXPECT_EQ(&context, SessionContext::Find());
        EXPECT_EQ(nullptr, SessionContext::Get().GetIBuilderVars());
    }
    EXPECT_FALSE(SessionContext::HasSessionContext());
}

TEST(SessionContext, ProcessScopePutsOneInForce) {
    TestContext context;
    {
        const SessionContextScope scope(context, SessionContextScope::Process);
        EXPECT_TRUE(SessionContext::HasSessionContext());
        EXPECT_EQ(&context, &SessionContext::Get());
    }
    EXPECT_FALSE(SessionContext::HasSessionContext());
}

TEST(SessionContext, ThreadContextGoesBeforeProcessContext) {
    TestContext ofThread;
    TestContext ofProcess;
    std::optional<SessionContextScope> thread;
    thread.emplace(ofThread);
    const SessionContextScope process(ofProcess, SessionContextScope::Process);
    EXPECT_EQ(&ofThread, &SessionContext::Get());
    thread.reset();
    EXPECT_EQ(&ofProcess, &SessionContext::Get());
}

TEST(SessionContext, ScopesNest) {
    for (const auto kind : {SessionContextScope::Thread, SessionContextScope::Process}) {
        TestContext outer;
        TestContext inner;
        const SessionContextScope outerScope(outer, kind);
        {
            const SessionContextScope innerScope(inner, kind);
            EXPECT_EQ(&inner, &SessionContext::Get());
        }
        EXPECT_EQ(&outer, &SessionContext::Get());
    }
    EXPECT_FALSE(SessionContext::HasSessionContext());
}

TEST(SessionContext, ScopeEndsWithAnException) {
    TestContext context;
    try {
        const SessionContextScope scope(context);
        throw 1;
    } catch (int) {
        EXPECT_FALSE(SessionContext::HasSessionContext());
    }
}

}  // namespace
