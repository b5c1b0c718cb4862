#include "tools/qvpres/import/ColumnNames.h"

#include <set>

namespace qvpres {

namespace {

bool IsLower(char16_t unit) { return unit >= u'a' && unit <= u'z'; }
bool IsUpper(char16_t unit) { return unit >= u'A' && unit <= u'Z'; }
bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool IsWordUnit(char16_t unit) { return IsLower(unit) || IsUpper(unit) || IsDigit(unit) || unit >= 0xA0; }

// Words begin behind anything that is no part of one, and where a capital follows a small letter or a digit. A dash
// before anything but a small letter would stay in camel case, so that a word that begins otherwise is joined directly.
TString Dashed(std::string_view heading) {
    const TString text = TString::FromUtf8(heading);
    TString name;
    bool wordBegins = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t unit = text[i];
        if (!IsWordUnit(unit)) {
            wordBegins = true;
            continue;
        }
        if (IsUpper(unit)) {
            wordBegins = wordBegins || (i > 0 && (IsLower(text[i - 1]) || IsDigit(text[i - 1])));
            unit = static_cast<char16_t>(unit - u'A' + u'a');
        }
        if (wordBegins && !name.empty() && IsLower(unit)) {
            name.push_back(u'-');
        }
        wordBegins = false;
        name.push_back(unit);
    }
    if (name.empty()) {
        return u"column";
    }
    return IsDigit(name[0]) ? u"column" + name : name;
}

// The name itself when it is free, else with the first number that makes it so.
TString Free(const TString& name, std::set<TString>& taken) {
    TString candidate = name;
    for (unsigned number = 2; !taken.insert(candidate).second; ++number) {
        candidate = name + TString::number(number);
    }
    return candidate;
}

}  // namespace

std::vector<ColumnName> NameColumns(const std::vector<std::string>& headings, const std::vector<TString>& reserved) {
    std::set<TString> taken(reserved.begin(), reserved.end());
    std::vector<ColumnName> names;
    for (const std::string& heading : headings) {
        names.push_back({Free(Dashed(heading), taken), {}});
    }
    unsigned number = 0;
    for (ColumnName& name : names) {
        name.shortName = Free(u"c" + TString::number(++number), taken);
    }
    return names;
}

}  // namespace qvpres
