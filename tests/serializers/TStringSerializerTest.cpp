#include <qvpreslayer/TStringSerializer.h>  // first: the header stands alone

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Failures.h"
#include "support/ListHost.h"
#include "support/Printing.h"

namespace {

// Texts that an eager hand would quote, trim, split or cut.
std::vector<TString> AwkwardTexts() {
    return {L"plain",
            L"",
            L" padded ",
            L"a,b",
            L"[1,2]",
            L"say \"x\"",
            L"back\\slash",
            L"line\nfeed",
            L"null",
            L"true",
            TString(std::u16string_view(u"a\0b", 3)),    // a NUL inside
            TString(std::u16string_view(u"\xd800", 1)),  // half a pair
            L"\U0001f600"};
}

}  // namespace

static_assert(std::is_copy_constructible_v<TStringSerializer> && std::is_default_constructible_v<TStringSerializer>);
static_assert(std::is_base_of_v<IParameterSerializer, TStringSerializer>);

TEST(TStringSerializer, KindIsText) { EXPECT_EQ(PTC_Text, TStringSerializer().GetType()); }

TEST(TStringSerializer, TextIsUnchangedBothWays) {
    for (const TString& text : AwkwardTexts()) {
        EXPECT_EQ(text, TStringSerializer().ToString(Text(text)));
        EXPECT_EQ(text, GetParameterValue<TString>(TStringSerializer().FromString(text).Get()));
    }
}

TEST(TStringSerializer, ListIsUnchangedBothWays) {
    const std::vector<TString> texts = AwkwardTexts();
    EXPECT_EQ(texts, TStringSerializer().ToStringList(Val(texts)));
    EXPECT_EQ(texts, GetParameterValue<std::vector<TString>>(TStringSerializer().FromStringList(texts, {}).Get()));
}

TEST(TStringSerializer, RunsAreIgnored) {
    const std::vector<TString> texts = {L"5", L"6"};
    const std::vector<RunRecord> runs = {{0, {L"5", L"4"}}, {99, {L"5", L"4", L"1"}}, {1, {}}};
    EXPECT_EQ(texts, GetParameterValue<std::vector<TString>>(TStringSerializer().FromStringList(texts, runs).Get()));
}

TEST(TStringSerializer, MapIsUnchangedBothWays) {
    std::map<TString, TString> texts;
    for (const TString& text : AwkwardTexts()) {
        texts[text] = text;
    }
    EXPECT_EQ(texts, TStringSerializer().ToStringMap(Val(texts)));
    using Map = std::map<TString, TString>;
    EXPECT_EQ(texts, GetParameterValue<Map>(TStringSerializer().FromStringMap(texts).Get()));
}

TEST(TStringSerializer, ListOnTheStream) {
    ListHost<TString> host;
    EXPECT_EQ("values:1[a b b b b b]", host.Packed({L"a", L"b", L"b", L"b", L"b", L"b"}));
    EXPECT_EQ("values:1[a]", host.Plain({L"a"}));
    EXPECT_EQ("values:1[]", host.Plain({}));
}

TEST(TStringSerializer, CopyWorksLikeItsSource) {
    TStringSerializer original;
    TStringSerializer copy(original);
    EXPECT_EQ(L"a", copy.ToString(Text(L"a")));
    EXPECT_EQ(PTC_Text, copy.GetType());
}
