#include <qvcore/QualifiedName.h>

#include <gtest/gtest.h>

#include <qvcore/FieldName.h>
#include <qvsys/QuorvelException.h>

#include "support/Printing.h"

namespace {

using Segments = std::vector<TString>;

TEST(QualifiedName, ReadsSegments) {
    const struct {
        TString text;
        Segments segments;
    } cases[] = {
        {L"[price]", {L"price"}},
        {L"[orders].[price]", {L"orders", L"price"}},
        {L"[a]]b].[c]", {L"a]b", L"c"}},
        {L"[]]]", {L"]"}},
        {L"[[]", {L"["}},  // only the closing bracket is doubled
        {L"[a.b].[ c ]", {L"a.b", L" c "}},
        {L"[a].[b].[c].[d].[e].[f].[g].[h]", {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}},
        {L"price", {L"price"}},  // without brackets, a single segment
        {L"a.b", {L"a.b"}},
        {L" ", {L" "}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        EXPECT_EQ(c.segments, QualifiedName::ParseGlobal(c.text).GetSegments());
    }
}

TEST(QualifiedName, FullValueHasBrackets) {
    EXPECT_EQ(L"[price]", QualifiedName::ParseGlobal(L"price").GetFullValue());
    EXPECT_EQ(L"[a.b]", QualifiedName::ParseGlobal(L"a.b").GetFullValue());
    EXPECT_EQ(L"[orders].[price]", QualifiedName::ParseGlobal(L"[orders].[price]").GetFullValue());
    EXPECT_EQ(L"[a]]b].[c]", QualifiedName::ParseGlobal(L"[a]]b].[c]").GetFullValue());
}

TEST(QualifiedName, FullValueReadsBackToTheSameName) {
    const TString texts[] = {
        L"a",
        L"a.b",
        L"[a].[b]",
        L"[]]]",
        L"[a]]].[[[]",
        L"[\u00E9].[\U0001F600]",
        TString(std::u16string_view(u"[\0]", 3)),
        u"\xD800",
    };
    for (const TString& text : texts) {
        const QualifiedName name = QualifiedName::ParseGlobal(text);
        EXPECT_EQ(name, QualifiedName::ParseGlobal(name.GetFullValue()));
    }
}

TEST(QualifiedName, MalformedTextsAreNamed) {
    const wchar_t* const texts[] = {
        L"",
        L"[]",
        L"[a",
        L"a]",
        L"[a]]",
        L"[a].",
        L".[a]",
        L"[a][b]",
        L"[a]..[b]",
        L"[a].b",
        L"a.[b]",
        L"[a].[]",
        L"[a]b",
        L"a[b]",
        L" [a]",
        L"[a] ",
        L"[a].[b].[c].[d].[e].[f].[g].[h].[i]",  // nine
    };
    for (const wchar_t* const text : texts) {
        SCOPED_TRACE(testing::PrintToString(TString(text)));
        try {
            QualifiedName::ParseGlobal(text);
            FAIL() << "no exception";
        } catch (const QuorvelException& exception) {
            EXPECT_EQ(L"Malformed qualified name: " + TString(text), exception.GetMessageText());
        }
    }
}

TEST(QualifiedName, ComparesByFullValue) {
    const QualifiedName a = QualifiedName::ParseGlobal(L"a");
    EXPECT_EQ(a, QualifiedName::ParseGlobal(L"[a]"));
    EXPECT_NE(a, QualifiedName::ParseGlobal(L"A"));
    EXPECT_LT(a, QualifiedName::ParseGlobal(L"b"));
    EXPECT_LT(QualifiedName::ParseGlobal(L"B"), a);
}

TEST(QualifiedName, IsEmptyAtFirst) {
    EXPECT_EQ(L"", QualifiedName().GetFullValue());
    EXPECT_TRUE(QualifiedName().GetSegments().empty());
}

TEST(FieldName, HasTheFormOfAQualifiedName) {
    const FieldName name = FieldName::ParseGlobal(L"[orders].[price]");
    EXPECT_EQ(L"[orders].[price]", name.GetFullValue());
    EXPECT_EQ((Segments{L"orders", L"price"}), name.GetSegments());
    EXPECT_EQ(name, FieldName::ParseGlobal(name.GetFullValue()));
    EXPECT_NE(name, FieldName::ParseGlobal(L"price"));
    EXPECT_LT(name, FieldName::ParseGlobal(L"price"));
    EXPECT_THROW(FieldName::ParseGlobal(L"[price"), QuorvelException);
}

}  // namespace
