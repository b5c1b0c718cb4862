// Programming errors: broken invariants, empty pointers, ranges that do not match.
//
// Exceptions: making one is strong. std::bad_alloc comes in its place where there is no memory for its text.
#pragma once

#include <stdexcept>
#include <string>

#include <qvsys/Export.h>

// What ThrowLogicException throws. It stands apart from QuorvelException on purpose: a handler for failures that a
// caller can cause does not swallow a bug.
class QVSYS_API LogicException : public std::logic_error {
public:
    LogicException(const char* expression, int line, const char* file);
    LogicException(const LogicException&) = default;
    LogicException& operator=(const LogicException&) = default;
    ~LogicException() override;

    // The failed condition, or the sentence that stands for it; the same text as what().
    const char* GetExpression() const noexcept { return what(); }

    // The line and the source module of the check.
    int GetLine() const noexcept { return m_line; }
    const char* GetFile() const noexcept { return m_file.c_str(); }

private:
    int m_line;
    std::string m_file;
};

// The logic-error routine. Always throws LogicException; null texts count as empty.
[[noreturn]] QVSYS_API void ThrowLogicException(const char* expression, int line, const char* file);

// Reports the condition's own text, character for character, when it does not hold.
#define QV_ASSERT(expression, file)                             \
    do {                                                        \
        if (!(expression)) {                                    \
            ::ThrowLogicException(#expression, __LINE__, file); \
        }                                                       \
    } while (false)
