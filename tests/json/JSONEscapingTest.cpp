// How texts are escaped when they are written, unit by unit.
#include <qvpreslayer/BuildParameterStrings.h>

#include <string>

#include <gtest/gtest.h>

#include "support/Printing.h"

namespace {

// The rule, written out: six short escapes, two backslashes and "x" with plain hexadecimal digits for the other
// controls but NUL, everything else as it stands.
std::u16string EscapedUnit(char16_t unit) {
    switch (unit) {
        case 0x08:
            return u"\\b";
        case 0x09:
            return u"\\t";
        case 0x0A:
            return u"\\n";
        case 0x0C:
            return u"\\f";
        case 0x0D:
            return u"\\r";
        case u'"':
            return u"\\\"";
        case u'\\':
            return u"\\\\";
        default:
            break;
    }
    if ((unit >= 0x01 && unit <= 0x1F) || unit == 0x7F) {
        const char16_t* const digits = u"0123456789abcdef";
        std::u16string text = u"\\\\x";
        if (unit >= 0x10) {
            text += digits[unit / 16];
        }
        return text + digits[unit % 16];
    }
    return std::u16string(1, unit);
}

// A value as it stands between its quotes.
std::u16string EscapedValue(const std::u16string& value) {
    TString out;
    BuildParameterStrings visitor(out, JSONSerializer::Bare, false, false, true);
    visitor.Parameter(L"name", value, PTC_Text);
    visitor.Finish();
    const std::u16string text(out.view());
    if (text.size() < 2 || text.front() != u'"' || text.back() != u'"') {
        ADD_FAILURE() << "not quoted";
        return {};
    }
    return text.substr(1, text.size() - 2);
}

// A raw key as it stands between its quotes.
std::u16string EscapedKey(const std::u16string& key) {
    TString out;
    BuildParameterStrings visitor(out, JSONSerializer::Compact, false, false, false);
    visitor.NullMapItem(key, true);
    const std::u16string text(out.view());
    constexpr std::size_t kAround = 8;  // {" before, ":null behind
    if (text.size() < kAround) {
        ADD_FAILURE() << "no key";
        return {};
    }
    return text.substr(2, text.size() - kAround);
}

}  // namespace

TEST(JSONEscaping, EveryUnitAloneInAValue) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<char16_t>(unit);
        ASSERT_TRUE(EscapedUnit(character) == EscapedValue(std::u16string(1, character))) << std::hex << unit;
    }
}

TEST(JSONEscaping, EveryUnitBetweenOthersInAValue) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<char16_t>(unit);
        const std::u16string value = std::u16string(u"ab") + character + u"c" + character;
        ASSERT_TRUE(u"ab" + EscapedUnit(character) + u"c" + EscapedUnit(character) == EscapedValue(value))
            << std::hex << unit;
    }
}

TEST(JSONEscaping, EveryUnitInARawKey) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<char16_t>(unit);
        ASSERT_TRUE(u"k" + EscapedUnit(character) == EscapedKey(std::u16string(u"k") + character)) << std::hex << unit;
    }
}

TEST(JSONEscaping, EveryPairOfUnitsUpTo0x8F) {
    for (char16_t first = 0; first < 0x90; ++first) {
        for (char16_t second = 0; second < 0x90; ++second) {
            ASSERT_TRUE(EscapedUnit(first) + EscapedUnit(second) == EscapedValue({first, second}))
                << std::hex << +first << " " << +second;
        }
    }
}

TEST(JSONEscaping, AtEveryPlaceOfLongTexts) {
    constexpr std::size_t kLength = 70;  // beyond the blocks that a scan may take at once
    for (std::size_t length = 1; length <= kLength; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::u16string value(length, u'\u0100');  // low byte zero
            value[place] = u'\n';
            std::u16string escaped(length + 1, u'\u0100');
            escaped[place] = u'\\';
            escaped[place + 1] = u'n';
            ASSERT_TRUE(escaped == EscapedValue(value)) << length << " " << place;
        }
    }
}

TEST(JSONEscaping, UnitsThatShareALowByteWithEscapedOnesStay) {
    std::u16string value;
    for (unsigned high = 1; high <= 0xFF; ++high) {
        for (const unsigned low : {0x01U, 0x09U, 0x1FU, 0x22U, 0x5CU, 0x7FU}) {
            value += static_cast<char16_t>(high * 256 + low);
        }
    }
    EXPECT_TRUE(value == EscapedValue(value));
}

TEST(JSONEscaping, Examples) {
    const struct {
        std::u16string value;
        const char16_t* escaped;
    } cases[] = {
        {u"", u""},
        {u"plain", u"plain"},
        {u"\t\"\u0001", u"\\t\\\"\\\\x1"},
        {u"\u001F", u"\\\\x1f"},
        {u"\u0001f", u"\\\\x1f"},  // the same text: it cannot be told apart
        {u"\u007F", u"\\\\x7f"},
        {u"\u0080", u"\u0080"},
        {u"a/b", u"a/b"},
        {u"é\u2028", u"é\u2028"},
        {u"\\n", u"\\\\n"},
        {u"\r\n\b\f", u"\\r\\n\\b\\f"},
        {u"\u000B", u"\\\\xb"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(TString(c.escaped).ToUtf8());
        EXPECT_TRUE(c.escaped == EscapedValue(c.value));
    }
}

TEST(JSONEscaping, NULAndUnpairedSurrogatesStay) {
    const std::u16string value{u'a',
                               u'\0',
                               u'b',
                               static_cast<char16_t>(0xD800),
                               u'c',
                               static_cast<char16_t>(0xDC00),
                               static_cast<char16_t>(0xD83D),
                               u'"'};
    EXPECT_TRUE(value.substr(0, 7) + u"\\\"" == EscapedValue(value));
}

TEST(JSONEscaping, NumbersAndTruthValuesAreEscapedToo) {
    TString out;
    BuildParameterStrings visitor(out, JSONSerializer::Compact, false, false, true);
    visitor.Parameter(L"a", L"1\n", PTC_Number);
    visitor.Parameter(L"b", L"\u007F", PTC_Bool);
    visitor.Finish();
    EXPECT_EQ(TString(LR"({"a": 1\n,"b": \\x7f})"), out);
}
