#include <qvpreslayer/JSONParseException.h>  // first: the header stands alone

#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

TString MessageOf(const QuorvelException& e) { return TString(e.GetMessageText()); }

}  // namespace

TEST(JSONParseException, OfANumberHasItsText) {
    const JSONParseException e(Messages::kJSONNotValid);
    EXPECT_EQ(TString(L"The text is not valid JSON."), MessageOf(e));
    EXPECT_EQ(MessageOf(e), LookupTStr(1732813050));
    EXPECT_STREQ("The text is not valid JSON.", e.what());
    EXPECT_EQ(1732813050U, e.GetStringId());
}

TEST(JSONParseException, OfANumberAndOneArgumentPutsItIn) {
    const JSONParseException e(Messages::kJSONKindMismatch, L"foo-bar");
    EXPECT_EQ(TString(L"The value of member \"foo-bar\" does not fit its parameter."), MessageOf(e));
    EXPECT_EQ(178195976U, e.GetStringId());
}

TEST(JSONParseException, AnArgumentIsNotExpandedAgain) {
    EXPECT_EQ(TString(L"The value of member \"%1%1%2\" does not fit its parameter."),
              MessageOf(JSONParseException(178195976, L"%1%1%2")));
    EXPECT_EQ(TString(L"The value of member \"%2\" does not fit its parameter."),
              MessageOf(JSONParseException(178195976, L"%2", L"second")));
}

TEST(JSONParseException, OfANumberAndTwoArgumentsPutsBothIn) {
    EXPECT_EQ(LookupTFmtStr(178195976, {L"a", L"b"}), MessageOf(JSONParseException(178195976, L"a", L"b")));
    EXPECT_EQ(TString(L"The value of member \"a\" does not fit its parameter."),
              MessageOf(JSONParseException(178195976, L"a", L"b")));
    EXPECT_EQ(LookupTFmtStr(4711, {L"a", L"b"}), MessageOf(JSONParseException(4711, L"a", L"b")));
}

TEST(JSONParseException, OfAnUnknownNumberNamesIt) {
    const JSONParseException e(4711);
    EXPECT_EQ(LookupTStr(4711), MessageOf(e));
    EXPECT_NE(std::string::npos, std::string(e.what()).find("4711"));
}

TEST(JSONParseException, HoldsNothingElseAtFirst) {
    const JSONParseException e(Messages::kJSONKindMismatch, L"a");
    EXPECT_EQ(0, e.GetID());
    EXPECT_EQ(PTC_None, e.GetExpectedKind());
    EXPECT_EQ(JSONKind::Null, e.GetFoundKind());
    EXPECT_FALSE(e.GetLocation().IsKnown());
}

TEST(JSONParseException, CopiesKeepEverything) {
    JSONParseException e(Messages::kJSONKindMismatch, L"a");
    e.SetMismatch(7, PTC_List, JSONKind::Bool);
    e.SetLocation({2, 3, 10, L"/a"});

    const auto check = [](const JSONParseException& copy) {
        EXPECT_EQ(TString(L"The value of member \"a\" does not fit its parameter."), MessageOf(copy));
        EXPECT_EQ(178195976U, copy.GetStringId());
        EXPECT_EQ(7, copy.GetID());
        EXPECT_EQ(PTC_List, copy.GetExpectedKind());
        EXPECT_EQ(JSONKind::Bool, copy.GetFoundKind());
        EXPECT_EQ(2U, copy.GetLocation().line);
        EXPECT_EQ(3U, copy.GetLocation().column);
        EXPECT_EQ(10U, copy.GetLocation().offset);
        EXPECT_EQ(TString(L"/a"), copy.GetLocation().path);
    };
    check(JSONParseException(e));

    JSONParseException assigned(Messages::kJSONNotValid);
    assigned = e;
    check(assigned);

    const QuorvelException& base = e;
    const std::unique_ptr<QuorvelException> clone(base.Clone());
    ASSERT_NE(nullptr, dynamic_cast<JSONParseException*>(clone.get()));
    check(dynamic_cast<JSONParseException&>(*clone));

    try {
        base.Throw();
        FAIL() << "nothing thrown";
    } catch (const JSONParseException& thrown) {
        check(thrown);
    }
}

TEST(JSONParseException, IsAQuorvelException) {
    static_assert(std::is_base_of_v<QuorvelException, JSONParseException>);
    static_assert(std::has_virtual_destructor_v<JSONParseException>);
    EXPECT_THROW(JSONParseException(Messages::kJSONNotValid).Throw(), QuorvelException);
}

TEST(JSONParseException, KindsHaveAFixedOrder) {
    EXPECT_EQ(0, static_cast<int>(JSONKind::Object));
    EXPECT_EQ(1, static_cast<int>(JSONKind::Array));
    EXPECT_EQ(2, static_cast<int>(JSONKind::String));
    EXPECT_EQ(3, static_cast<int>(JSONKind::Bool));
    EXPECT_EQ(4, static_cast<int>(JSONKind::Integer));
    EXPECT_EQ(5, static_cast<int>(JSONKind::Real));
    EXPECT_EQ(6, static_cast<int>(JSONKind::Null));
}
