#include <qvcore/TString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/Printing.h"

namespace {

using namespace std::string_view_literals;

// The text of these code units.
TString Units(std::initializer_list<char16_t> units) { return std::u16string(units); }

TEST(TString, IsEmptyAtFirst) {
    EXPECT_TRUE(TString().empty());
    EXPECT_EQ(0, TString().length());
    EXPECT_EQ(TString(L""), TString());
}

TEST(TString, NullPointersGiveTheEmptyText) {
    EXPECT_EQ(TString(), TString(static_cast<const wchar_t*>(nullptr)));
    EXPECT_EQ(TString(), TString(static_cast<const char16_t*>(nullptr)));
}

TEST(TString, WideCharactersBecomeOneOrTwoUnits) {
    const struct {
        char32_t character;
        TString text;
    } cases[] = {
        {U'a', Units({u'a'})},
        {0xFFFF, Units({0xFFFF})},
        {0xD800, Units({0xD800})},  // surrogates stay as they are
        {0xDFFF, Units({0xDFFF})},
        {0x10000, Units({0xD800, 0xDC00})},
        {0x1F600, Units({0xD83D, 0xDE00})},
        {0x10FFFF, Units({0xDBFF, 0xDFFF})},
        {0x110000, Units({0xFFFD})},  // beyond Unicode
        {0x7FFFFFFF, Units({0xFFFD})},
        {0xFFFFFFFF, Units({0xFFFD})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<std::uint32_t>(c.character));
        const wchar_t wide[] = {static_cast<wchar_t>(c.character), L'\0'};
        EXPECT_EQ(c.text, TString(wide));
        EXPECT_EQ(c.text, TString(std::wstring_view(wide, 1)));
        EXPECT_EQ(c.text, TString::FromStdWString(std::wstring(wide, 1)));
    }
}

TEST(TString, TextsBeyondWhatMemoryCanHoldFailAndChangeNothing) {
    constexpr std::size_t kTooLong = static_cast<std::size_t>(-1) / 4;
    for (TString text : {TString(L"short"), TString(100, u'x')}) {
        const TString before = text;
        EXPECT_THROW(text.reserve(kTooLong), std::length_error);
        EXPECT_THROW(text.append(kTooLong, u'x'), std::length_error);
        EXPECT_EQ(before, text);
    }
}

TEST(TString, AssignedToItselfStaysAsItIs) {
    for (TString text : {TString(L"short"), TString(100, u'x')}) {
        const TString before = text;
        TString& same = text;
        text = same;
        EXPECT_EQ(before, text);
        text = std::move(same);
        EXPECT_EQ(before, text);
    }
}

TEST(TString, ShrinkingKeepsTheText) {
    TString text(100'000, u'x');
    text.resize(1000);
    text.shrink_to_fit();
    EXPECT_EQ(TString(1000, u'x'), text);
    EXPECT_LT(text.capacity(), 2000U);
    text.shrink_to_fit();  // again: there is nothing to give back
    EXPECT_EQ(TString(1000, u'x'), text);
    TString shortText(L"short");
    shortText.shrink_to_fit();
    EXPECT_EQ(L"short", shortText);
}

TEST(TString, StandardTextsAreAppended) {
    TString text(L"a");
    text += std::u16string(u"bc");
    EXPECT_EQ(L"abc", text);
}

// No character begins with these bytes, nor do those that may follow others.
TEST(TString, BytesThatNeverStandInUtf8) {
    EXPECT_EQ(TString(5, 0xFFFD), TString::FromUtf8("\xF8\x88\x80\x80\x80"));
    EXPECT_EQ(TString(3, 0xFFFD), TString::FromUtf8("\xF5\x80\xFF"));
}

TEST(TString, HoldsNuls) {
    const TString text(u"a\0b"sv);
    EXPECT_EQ(3, text.length());
    EXPECT_EQ(u'\0', text[1]);
    EXPECT_EQ(text, TString(L"a\0b"sv));
    EXPECT_NE(text, TString(L"a"));
    EXPECT_EQ(TString(u"a\0ba\0b"sv), text + text);
}

TEST(TString, CopiesAreIndependent) {
    const TString source(L"source");
    TString copy(source);
    copy += L"!";
    EXPECT_EQ(L"source", source);
    EXPECT_EQ(L"source!", copy);
    TString moved(std::move(copy));
    EXPECT_EQ(L"source!", moved);
}

TEST(TString, Concatenates) {
    TString text(L"a");
    text += TString(L"b");
    text += u"c";
    text += L"d";
    text += u'e';
    text += u"f"sv;
    EXPECT_EQ(L"abcdef", text);
    EXPECT_EQ(L"<abcdef>", L"<" + text + u">");
    text += text;
    EXPECT_EQ(L"abcdefabcdef", text);
}

// A view of nothing may have no address: nothing is read and nothing changes, in a text of any size.
TEST(TString, EmptyViewsAppendNothing) {
    for (const std::size_t size : {0U, 1U, 13U, 14U, 15U, 100U}) {
        SCOPED_TRACE(size);
        const TString before(size, u'x');
        TString text = before;
        text.append(std::u16string_view());
        text += std::u16string_view();
        text.append(std::u16string_view(u"abc").substr(3));
        text.append(text.view().substr(size));
        text.append(0, u'y');
        text += TString();
        EXPECT_EQ(before, text);
        text = std::u16string_view();
        EXPECT_TRUE(text.empty());
    }
    TString reserved;
    reserved.reserve(100);
    reserved.append(std::u16string_view());
    EXPECT_TRUE(reserved.empty());
    EXPECT_EQ(TString(), TString(std::u16string_view()));
}

// What is appended may be a part of the text itself, also when the text has to move for it.
TEST(TString, PartsOfItselfMayBeAppended) {
    for (const std::size_t size : {1U, 7U, 14U, 15U, 127U, 128U, 1000U}) {
        SCOPED_TRACE(size);
        std::u16string expected;
        for (std::size_t i = 0; i < size; ++i) {
            expected += static_cast<char16_t>(u'a' + i % 26);
        }
        TString text(expected);
        text.append(text.view().substr(size / 2));
        expected += std::u16string(expected.substr(size / 2));
        EXPECT_EQ(TString(expected), text);
        text += text;
        expected += std::u16string(expected);
        EXPECT_EQ(TString(expected), text);
    }
}

TEST(TString, EditsInPlace) {
    TString text(3, u'x');
    text.append(2, u'-');
    text.append(u"end"sv);
    text.push_back(u'.');
    EXPECT_EQ(L"xxx--end.", text);
    text.resize(4);
    text.mutable_data()[0] = u'y';
    EXPECT_EQ(L"yxx-", text);
    text.clear();
    EXPECT_TRUE(text.empty());
}

TEST(TString, OrdersByCodeUnit) {
    // Ascending; U+1F600 begins with a surrogate, hence it stands before U+E000.
    const TString ordered[] = {L"",       TString(u"\0"sv),        L"-",           L"B",
                               L"a",      TString(u"a\0"sv),       L"aB",          L"ab",
                               L"\u00E9", Units({0xD83D, 0xDE00}), Units({0xE000})};
    for (std::size_t i = 0; i < std::size(ordered); ++i) {
        for (std::size_t j = 0; j < std::size(ordered); ++j) {
            SCOPED_TRACE(testing::Message() << i << " " << j);
            EXPECT_EQ(i <=> j, ordered[i] <=> ordered[j]);
            EXPECT_EQ(i == j, ordered[i] == ordered[j]);
        }
    }
}

TEST(TString, EqualTextsHashAlike) {
    const std::hash<TString> hash;
    EXPECT_EQ(hash(TString(L"some text")), hash(TString(u"some ") + L"text"));
    EXPECT_NE(hash(TString(u"a"sv)), hash(TString(u"a\0"sv)));
}

TEST(TString, WideStringsComeBackUnitByUnit) {
    const TString texts[] = {
        L"", L"plain", TString(u"a\0b"sv), Units({0xD83D, 0xDE00}), Units({0xD800}), Units({0xDC00, 0xD800}), L"\xFFFE",
    };
    for (const TString& text : texts) {
        const std::wstring wide = text.ToStdWString();
        EXPECT_EQ(text.size(), wide.size());
        EXPECT_TRUE(std::equal(wide.begin(), wide.end(), text.data(), text.data() + text.size(),
                               [](wchar_t left, char16_t right) { return left == static_cast<wchar_t>(right); }));
        EXPECT_EQ(text, TString::FromStdWString(wide));
    }
}

TEST(TString, WellFormedUtf8ComesBack) {
    const struct {
        std::string_view utf8;
        TString text;
    } cases[] = {
        {"", L""},
        {"a\0b"sv, TString(u"a\0b"sv)},
        {"\x7F", Units({0x7F})},
        {"\xC2\x80", Units({0x80})},
        {"\xDF\xBF", Units({0x7FF})},
        {"\xE0\xA0\x80", Units({0x800})},
        {"\xED\x9F\xBF", Units({0xD7FF})},
        {"\xEE\x80\x80", Units({0xE000})},
        {"\xEF\xBF\xBF", Units({0xFFFF})},
        {"\xF0\x90\x80\x80", Units({0xD800, 0xDC00})},
        {"\xF4\x8F\xBF\xBF", Units({0xDBFF, 0xDFFF})},
        {"\xEF\xBB\xBFx", Units({0xFEFF, u'x'})},  // a byte-order mark is a character like any other
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, TString::FromUtf8(c.utf8));
        EXPECT_EQ(c.utf8, c.text.ToUtf8());
    }
}

TEST(TString, IllFormedUtf8IsReplacedPartByPart) {
    const struct {
        std::string_view utf8;
        TString text;
    } cases[] = {
        {"\x80", u"\uFFFD"},  // no first byte
        {"\xFF"
         "a",
         u"\uFFFDa"},                                       // never a byte of UTF-8
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong: neither byte begins anything
        {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},            // overlong
        {"\xF0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
        {"\xF4\x91\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond U+10FFFF
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF"
         "A",
         u"\uFFFD\uFFFD\uFFFD\uFFFDA"},  // four beginnings
        {"a\xE2\x82", u"a\uFFFD"},       // cut at the end
        {"a\xF0\x9F\x98", u"a\uFFFD"},   // cut at the end
        {"\xC3"
         "b\xC3\xA9",
         u"\uFFFDb\u00E9"},  // what follows is read again
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        EXPECT_EQ(c.text, TString::FromUtf8(c.utf8));
    }
}

TEST(TString, UnpairedSurrogatesAreReplacedInUtf8) {
    EXPECT_EQ("\xEF\xBF\xBD", Units({0xD800}).ToUtf8());
    EXPECT_EQ(
        "a\xEF\xBF\xBD"
        "b",
        Units({u'a', 0xDFFF, u'b'}).ToUtf8());
    EXPECT_EQ("\xEF\xBF\xBD\xF0\x9F\x98\x80", Units({0xD83D, 0xD83D, 0xDE00}).ToUtf8());
}

}  // namespace
