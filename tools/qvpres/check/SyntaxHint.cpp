#include "tools/qvpres/check/SyntaxHint.h"

#include <cstdint>

#include <qvpreslayer/PresLayerLimits.h>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

constexpr char16_t kByteOrderMark = 0xFEFF;

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r'; }

// What is open at a place, all before it being valid.
struct Surroundings {
    int depth = 0;
    bool inString = false;
    char16_t before = 0;  // the last unit that is no blank and in no comment
};

Surroundings LookAround(std::u16string_view text, std::size_t offset) {
    Surroundings found;
    for (std::size_t i = 0; i < offset; ++i) {
        const char16_t unit = text[i];
        if (found.inString) {
            i += unit == u'\\' ? 1 : 0;
            found.inString = unit != u'"';
            continue;
        }
        if (unit == u'/' && i + 1 < text.size()) {
            const bool line = text[i + 1] == u'/';
            const std::size_t end = line ? text.find(u'\n', i) : text.find(u"*/", i + 2);
            i = end == std::u16string_view::npos ? offset : end + (line ? 0 : 1);
            continue;
        }
        found.inString = unit == u'"';
        found.depth += unit == u'{' || unit == u'[' ? 1 : 0;
        found.depth -= unit == u'}' || unit == u']' ? 1 : 0;
        found.before = IsBlank(unit) ? found.before : unit;
    }
    return found;
}

std::string InString(char16_t unit, char16_t before) {
    if (unit == u'\n' || unit == u'\r') {
        return "a line ends inside a string; its quotation mark is missing, or the line end is to be written \\n";
    }
    if (unit < u' ') {
        return "a control character stands inside a string; it is to be written as an escape";
    }
    return before == u'\\' ? "no escape of JSON begins so" : "the string cannot go on so";
}

std::string UnitName(char16_t unit) {
    if (unit < u' ' || unit == 0x7F) {
        return "control character " + std::to_string(static_cast<unsigned>(unit));
    }
    return Quoted(ToUtf8(std::u16string_view(&unit, 1)));
}

std::string OutsideOfStrings(std::u16string_view rest, const Surroundings& around) {
    const char16_t unit = rest.front();
    if (unit == u'\'') {
        return "texts and names stand in double quotation marks";
    }
    if ((unit == u'}' || unit == u']') && around.before == u',') {
        return "a comma stands before the closing bracket";
    }
    if (rest.starts_with(u"NaN") || rest.starts_with(u"Infinity")) {
        return "NaN and Infinity are no numbers of JSON; null stands for not a number";
    }
    if (unit == u'+' || unit == u'.' || (unit >= u'0' && unit <= u'9')) {
        return "numbers are written as 1, -1, 0.5 or 1e3, without a leading + or 0, and digits on both sides of a "
               "point";
    }
    if (IsLetter(unit) && (around.before == u'{' || around.before == u',')) {
        return "names stand in double quotation marks";
    }
    if (IsLetter(unit)) {
        return "the words of JSON are true, false and null; texts stand in double quotation marks";
    }
    if (unit == u'"') {
        return "a comma is missing before this";
    }
    return UnitName(unit) + " cannot stand here";
}

}  // namespace

std::string SyntaxHint(std::u16string_view text, std::size_t offset) {
    if (text.empty()) {
        return "it is empty";
    }
    if (offset >= text.size()) {
        return "it ends too early";
    }
    if (offset == 0 && text.front() == kByteOrderMark) {
        return "it starts with a byte-order mark, which is to be left out";
    }
    const char16_t unit = text[offset];
    const Surroundings around = LookAround(text, offset);
    if (around.inString) {
        return InString(unit, text[offset - 1]);
    }
    if ((unit == u'{' || unit == u'[') && around.depth >= PresLayerLimits::GetJSONDepth()) {
        return "it is nested more than " + std::to_string(PresLayerLimits::GetJSONDepth()) + " levels deep";
    }
    return OutsideOfStrings(text.substr(offset), around);
}

}  // namespace qvpres
