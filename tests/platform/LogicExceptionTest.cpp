#include <qvsys/LogicException.h>

#include <gtest/gtest.h>

#include <type_traits>

#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

// What the operation throws.
template <class Operation>
LogicException Catch(Operation operation) {
    try {
        operation();
    } catch (const LogicException& exception) {
        return exception;
    }
    ADD_FAILURE() << "no exception";
    return LogicException("", 0, "");
}

TEST(ThrowLogicException, TellsExpressionLineAndFile) {
    const LogicException exception = Catch([] { ThrowLogicException("a > b", 42, "folder/Module"); });
    EXPECT_STREQ("a > b", exception.GetExpression());
    EXPECT_STREQ("a > b", exception.what());
    EXPECT_EQ(42, exception.GetLine());
    EXPECT_STREQ("folder/Module", exception.GetFile());
}

TEST(ThrowLogicException, TakesNullTextsAsEmpty) {
    const LogicException exception = Catch([] { ThrowLogicException(nullptr, 0, nullptr); });
    EXPECT_STREQ("", exception.GetExpression());
    EXPECT_STREQ("", exception.GetFile());
}

TEST(LogicException, IsALogicErrorButNoQuorvelException) {
    EXPECT_TRUE((std::is_base_of_v<std::logic_error, LogicException>));
    EXPECT_FALSE((std::is_base_of_v<QuorvelException, LogicException>));
}

TEST(Assert, ReportsTheConditionCharacterForCharacter) {
    const bool m_needInit = false;
    EXPECT_STREQ("m_needInit", Catch([&] { QV_ASSERT(m_needInit, "File"); }).GetExpression());

    const auto FirstID = [] { return 1; };
    const auto LastID = [] { return 9; };
    const int pid = 10;
    const LogicException exception = Catch([&] { QV_ASSERT(pid >= FirstID() && pid <= LastID(), "some/File"); });
    EXPECT_STREQ("pid >= FirstID() && pid <= LastID()", exception.GetExpression());
    EXPECT_STREQ("some/File", exception.GetFile());
}

TEST(Assert, ReportsItsLine) {
    const int line = __LINE__ + 1;
    const LogicException exception = Catch([] { QV_ASSERT(1 > 2, ""); });
    EXPECT_EQ(line, exception.GetLine());
}

TEST(Assert, DoesNothingWhenTheConditionHolds) {
    int evaluations = 0;
    QV_ASSERT(++evaluations == 1, "File");
    EXPECT_EQ(1, evaluations);
}

}  // namespace
