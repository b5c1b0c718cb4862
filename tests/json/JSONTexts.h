// Made-up JSON texts of the namespace "generated", the same ones at every run: documents that a reader accepts, and
// documents with a few characters changed.
//
// Included by the tests that compare the reader with others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include <qvpreslayer/qvpreslayer.h>

#include "support/TestHost.h"

namespace json_texts {

inline constexpr int kText = 1;
inline constexpr int kOtherText = 2;
inline constexpr int kBag = 3;
inline constexpr int kList = 4;
inline constexpr int kMap = 5;

class GeneratedRegistry : public TestRegistry {
public:
    GeneratedRegistry() {
        Add(L"generated", 1, 9, [](AbstractParamAdder& adder) {
            adder.AddSimple(kText, L"t", new TStringSerializer);
            adder.AddSimple(kOtherText, L"u", new TStringSerializer);
            adder.AddBag(kBag, L"o");
            adder.AddList(kList, L"l", new TStringSerializer);
            adder.AddMap(kMap, L"m", new TStringSerializer);
        });
    }
};

// What a document may hold beyond what every parser knows.
enum class Extras { None, WhatTheReaderAccepts };

class TextGenerator {
public:
    explicit TextGenerator(std::uint64_t seed) : m_engine(seed) {}

    std::u16string Document(Extras extras) {
        m_extras = extras == Extras::WhatTheReaderAccepts;
        std::u16string text = Blank();
        AppendBag(text, 4);
        text += Blank();
        if (m_extras && Below(8) == 0) {
            static constexpr std::u16string_view kBehind[] = {u"}",  u" x", u"{}", u"//", u"\0",
                                                              u"\"", u"1",  u",",  u"/"};
            text += kBehind[Below(std::size(kBehind))];
        }
        return text;
    }

    // The text with one to three characters replaced, removed or added.
    std::u16string Changed(std::u16string text) {
        static constexpr std::u16string_view kAlphabet =
            u"{}[]{}[],:,:\"\"\\\\//**--++..eE00123456789 \t\n\rtrufalsn\u0001\u007F\0\u00E9\uFEFF"
            u"\u0085\u2028";
        for (std::size_t changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
            const std::size_t place = Below(4) == 0 ? 0 : Below(text.size());
            const char16_t character =
                Below(40) == 0 ? static_cast<char16_t>(0xD800 + Below(0x800)) : kAlphabet[Below(kAlphabet.size())];
            switch (Below(4)) {
                case 0:
                    text.erase(place, 1);
                    break;
                case 1:
                    text.insert(place, 1, character);
                    break;
                case 2:
                    text[place] = text[Below(text.size())];
                    break;
                default:
                    text[place] = character;
            }
        }
        return text;
    }

private:
    std::size_t Below(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_engine); }

    // Mostly nothing; else blanks, and comments where they may be.
    std::u16string Blank() {
        static constexpr std::u16string_view kBlanks[] = {u" ", u"\n", u"\t", u"\r\n", u"  "};
        static constexpr std::u16string_view kComments[] = {u"/**/",    u"/* * */", u"//x\n",      u"/*\"{[\n*/",
                                                            u"// /*\n", u"/***/",   u"/*\u00E9/*/"};
        std::u16string text;
        while (Below(4) == 0) {
            if (m_extras && Below(2) == 0) {
                text += kComments[Below(std::size(kComments))];
            } else {
                text += kBlanks[Below(std::size(kBlanks))];
            }
        }
        return text;
    }

    template <class Element>
    void AppendSequence(std::u16string& text, char16_t opening, char16_t closing, Element&& appendElement) {
        text += opening;
        const std::size_t count = Below(4);
        for (std::size_t i = 0; i < count; ++i) {
            text += (i == 0 ? u"" : u",") + Blank();
            appendElement();
            text += Blank();
        }
        text += (count == 0 ? Blank() : u"") + closing;
    }

    void AppendBag(std::u16string& text, int depth) {
        AppendSequence(text, u'{', u'}', [&] {
            const char16_t* const names[] = {u"t", u"u", u"o", u"l", u"m", u"\\u0074", u"\\u006D"};
            const std::size_t name = Below(depth > 0 ? std::size(names) : 2);
            text += u"\"" + std::u16string(names[name]) + u"\"" + Blank() + u":" + Blank();
            switch (name) {
                case 2:
                    AppendBag(text, depth - 1);
                    break;
                case 3:
                    AppendSequence(text, u'[', u']', [&] { AppendAny(text, depth - 1); });
                    break;
                case 4:
                case 6:
                    AppendObject(text, depth - 1);
                    break;
                default:
                    AppendScalar(text);
            }
        });
    }

    void AppendObject(std::u16string& text, int depth) {
        AppendSequence(text, u'{', u'}', [&] {
            AppendString(text);
            text += Blank() + u":" + Blank();
            AppendAny(text, depth - 1);
        });
    }

    void AppendAny(std::u16string& text, int depth) {
        if (depth > 0 && Below(5) == 0) {
            AppendObject(text, depth);
        } else if (depth > 0 && Below(4) == 0) {
            AppendSequence(text, u'[', u']', [&] { AppendAny(text, depth - 1); });
        } else {
            AppendScalar(text);
        }
    }

    void AppendScalar(std::u16string& text) {
        static constexpr std::u16string_view kWords[] = {u"true", u"false", u"null"};
        switch (Below(4)) {
            case 0:
                text += kWords[Below(3)];
                break;
            case 1:
                AppendString(text);
                break;
            default:
                AppendNumber(text);
        }
    }

    void AppendString(std::u16string& text) {
        static constexpr std::u16string_view kParts[] = {u"a",
                                                         u"key",
                                                         u" ",
                                                         u"/",
                                                         u"\\\"",
                                                         u"\\\\",
                                                         u"\\/",
                                                         u"\\n",
                                                         u"\\t",
                                                         u"\\b",
                                                         u"\\f",
                                                         u"\\r",
                                                         u"{",
                                                         u"]",
                                                         u"\\u00e9",
                                                         u"//",
                                                         u"\\u0000",
                                                         u"\\u20AC",
                                                         u"\\uD83D\\ude00",
                                                         u"/*",
                                                         u"'",
                                                         u"\u007F",
                                                         u"é",
                                                         u"\u20AC",
                                                         u"\U0001F600",
                                                         u"\\u001f",
                                                         u"\uFFFF",
                                                         u"\\uFFFE"};
        text += u'"';
        while (Below(3) != 0) {
            text += kParts[Below(std::size(kParts))];
            if (m_extras && Below(30) == 0) {
                AppendOddPart(text);
            }
        }
        text += u'"';
    }

    // U+0000 as it is, and surrogates of every sort, with and without a partner.
    void AppendOddPart(std::u16string& text) {
        static constexpr std::u16string_view kEscapes[] = {u"\\ud800", u"\\uDFFF", u"\\uDbfF\\u0041", u"\\uDC00\\ud83d",
                                                           u"\\ud83d\\n"};
        switch (Below(3)) {
            case 0:
                text += u'\0';
                break;
            case 1:
                text += static_cast<char16_t>(0xD800 + Below(0x800));
                break;
            default:
                text += kEscapes[Below(std::size(kEscapes))];
        }
    }

    void AppendDigits(std::u16string& text, std::size_t most) {
        for (std::size_t count = 1 + Below(most); count > 0; --count) {
            text += static_cast<char16_t>(u'0' + Below(10));
        }
    }

    void AppendNumber(std::u16string& text) {
        static constexpr std::u16string_view kEdges[] = {u"0",
                                                         u"-0",
                                                         u"134217727",
                                                         u"134217728",
                                                         u"2147483648",
                                                         u"4294967295",
                                                         u"4294967296",
                                                         u"-2147483649",
                                                         u"0.0",
                                                         u"-0.0",
                                                         u"9223372036854775807",
                                                         u"9223372036854775808",
                                                         u"-9223372036854775808",
                                                         u"-9223372036854775809",
                                                         u"18446744073709551615",
                                                         u"18446744073709551616",
                                                         u"1.7976931348623157e308",
                                                         u"1e308",
                                                         u"5e-324",
                                                         u"1e-400",
                                                         u"2.4703282292062327e-324",
                                                         u"2.4703282292062328e-324",
                                                         u"0e5",
                                                         u"0E-7"};
        if (Below(4) == 0) {
            text += kEdges[Below(std::size(kEdges))];
            return;
        }
        text += Below(3) == 0 ? u"-" : u"";
        if (Below(4) == 0) {
            text += u'0';
        } else {
            text += static_cast<char16_t>(u'1' + Below(9));
            AppendDigits(text, 22);
        }
        if (Below(3) == 0) {
            text += u'.';
            AppendDigits(text, 20);
        }
        if (Below(4) == 0) {
            static constexpr std::u16string_view kExponents[] = {u"e", u"E", u"e+", u"E-", u"e-"};
            text += kExponents[Below(std::size(kExponents))];
            AppendDigits(text, 2);
        }
    }

    std::mt19937_64 m_engine;
    bool m_extras = false;
};

}  // namespace json_texts
