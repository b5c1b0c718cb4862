#include <qvcore/CaseConversion.h>

#include <gtest/gtest.h>

#include <random>

#include "support/Printing.h"

namespace {

TEST(CaseConversion, DashedToCamel) {
    const struct {
        const wchar_t* dashed;
        const wchar_t* camel;
    } cases[] = {
        {L"", L""},           {L"title", L"title"},       {L"int-rle", L"intRle"}, {L"a-b-c", L"aBC"},
        {L"-a", L"A"},        {L"a--b", L"a-B"},           // the first dash is followed by a dash
        {L"a-1", L"a-1"},                                  // a digit has no upper case
        {L"a-B", L"a-B"},                                  // nor has an upper-case letter
        {L"a-", L"a-"},                                    // nothing follows
        {L"-", L"-"},         {L"a-\u00E9", L"a-\u00E9"},  // only the letters a to z
        {L"a-`-{", L"a-`-{"},                              // the neighbours of these letters
        {L"x-z-a", L"xZA"},   {L"a_b c", L"a_b c"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.camel, DashedToCamel(c.dashed));
        char16_t room[16];
        const char16_t* const end = WriteCamel(room, TString(c.dashed));
        EXPECT_EQ(c.camel, TString(std::u16string_view(room, static_cast<std::size_t>(end - room))));
    }
}

TEST(CaseConversion, CamelToDashed) {
    const struct {
        const wchar_t* camel;
        const wchar_t* dashed;
    } cases[] = {
        {L"", L""},
        {L"title", L"title"},
        {L"intRle", L"int-rle"},
        {L"aBC", L"a-b-c"},
        {L"A", L"-a"},
        {L"a-B", L"a--b"},
        {L"a-1", L"a-1"},
        {L"aB", L"a-b"},
        {L"fooBar", L"foo-bar"},
        {L"foo-bar", L"foo-bar"},
        {L"@AZ[", L"@-a-z["},  // the neighbours of the letters A to Z
        {L"\u00C9", L"\u00C9"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.dashed, CamelToDashed(c.camel));
    }
}

TEST(CaseConversion, HoldsNulsAndSurrogates) {
    const TString text(std::u16string_view(u"\0-\0\xD83D\xDE00-\xD800", 7));
    EXPECT_EQ(text, DashedToCamel(text));
    EXPECT_EQ(text, CamelToDashed(text));
}

// Texts of up to 12 out of the given units, the same ones in every run.
class RandomTexts {
public:
    explicit RandomTexts(std::u16string_view units) : m_units(units) {}

    TString Next() {
        TString text;
        for (std::size_t length = m_random() % 13; length > 0; --length) {
            text.push_back(m_units[m_random() % m_units.size()]);
        }
        return text;
    }

private:
    std::u16string_view m_units;
    std::minstd_rand m_random{20240229};
};

TEST(CaseConversion, TextsWithoutUpperCaseComeBack) {
    RandomTexts texts(u"--az19.\u00E9");
    for (int i = 0; i < 20000; ++i) {
        const TString text = texts.Next();
        ASSERT_EQ(text, CamelToDashed(DashedToCamel(text)));
    }
}

TEST(CaseConversion, TextsWithoutADashBeforeLowerCaseComeBack) {
    RandomTexts texts(u"--abAZ9\u00C9");
    int tried = 0;
    for (int i = 0; i < 20000; ++i) {
        const TString text = texts.Next();
        if (text.indexOf(L"-a") < 0 && text.indexOf(L"-b") < 0) {
            ++tried;
            ASSERT_EQ(text, DashedToCamel(CamelToDashed(text)));
        }
    }
    EXPECT_GT(tried, 5000);
}

}  // namespace
