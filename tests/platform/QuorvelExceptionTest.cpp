#include <qvsys/QuorvelException.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>

#include <qvsys/Utf8.h>

#include "support/Printing.h"

namespace {

class SpecialException : public QuorvelException {
public:
    explicit SpecialException(int number) : QuorvelException(u"special"), m_number(number) {}
    SpecialException* Clone() const override { return new SpecialException(*this); }
    [[noreturn]] void Throw() const override { throw *this; }
    int GetNumber() const { return m_number; }

private:
    int m_number;
};

TEST(QuorvelException, KeepsItsMessageCodeUnitByCodeUnit) {
    const std::u16string message(u"a\0\xD800\u00E9", 4);
    EXPECT_EQ(message, QuorvelException(message).GetMessageText());
}

TEST(QuorvelException, WhatIsTheMessageInUtf8) {
    const struct {
        const char16_t* message;
        const char* utf8;
    } cases[] = {
        {u"", ""},
        {u"plain", "plain"},
        {u"\u00E9\u20AC", "\xC3\xA9\xE2\x82\xAC"},
        {u"\U0001F600", "\xF0\x9F\x98\x80"},
        {u"\xD83D!", "\xEF\xBF\xBD!"},                  // a first half alone
        {u"\xDE00\xD83D", "\xEF\xBF\xBD\xEF\xBF\xBD"},  // halves in the wrong order
        {u"\xFFFE", "\xEF\xBF\xBE"},                    // no character, yet a code point
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.utf8, QuorvelException(c.message).what());
    }
}

TEST(ToUtf8, KeepsNuls) { EXPECT_EQ(std::string("a\0b", 3), ToUtf8(std::u16string_view(u"a\0b", 3))); }

TEST(QuorvelException, IsAStandardExceptionButNoLogicError) {
    EXPECT_TRUE((std::is_base_of_v<std::exception, QuorvelException>));
    EXPECT_FALSE((std::is_base_of_v<std::logic_error, QuorvelException>));
}

TEST(QuorvelException, CloneKeepsTheMessage) {
    const std::unique_ptr<QuorvelException> clone(QuorvelException(u"text").Clone());
    EXPECT_EQ(u"text", clone->GetMessageText());
    const QuorvelException& copy = *clone;
    EXPECT_EQ(typeid(QuorvelException), typeid(copy));
}

TEST(QuorvelException, CloneHasTheDynamicType) {
    const SpecialException special(5);
    const QuorvelException& base = special;
    const std::unique_ptr<QuorvelException> clone(base.Clone());
    const auto* copy = dynamic_cast<const SpecialException*>(clone.get());
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(5, copy->GetNumber());
}

TEST(QuorvelException, ThrowThrowsACopy) {
    const QuorvelException exception(u"text");
    try {
        exception.Throw();
    } catch (const QuorvelException& thrown) {
        EXPECT_NE(&exception, &thrown);
        EXPECT_EQ(u"text", thrown.GetMessageText());
    }
}

TEST(QuorvelException, ThrowHasTheDynamicType) {
    const SpecialException special(6);
    const QuorvelException& base = special;
    try {
        base.Throw();
    } catch (const SpecialException& thrown) {
        EXPECT_EQ(6, thrown.GetNumber());
        EXPECT_STREQ("special", thrown.what());
    }
}

TEST(QuorvelException, CopiesOutliveTheSourceAndDoNotThrow) {
    auto source = std::make_unique<QuorvelException>(u"text");
    const QuorvelException copy(*source);
    QuorvelException assigned(u"");
    assigned = *source;
    source.reset();
    EXPECT_STREQ("text", copy.what());
    EXPECT_STREQ("text", assigned.what());
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<QuorvelException>);
}

}  // namespace
