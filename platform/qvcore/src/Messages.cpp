#include <qvcore/Messages.h>

namespace {

// The text of id, or a null pointer.
const char16_t* FindText(StringId id) {
    switch (id) {
        case Messages::kJSONNotValid:
            return u"The text is not valid JSON.";
        case Messages::kJSONKindMismatch:
            return u"The value of member \"%1\" does not fit its parameter.";
        case Messages::kEnumValueUnknown:
            return u"The enumeration value is not recognised.";
        default:
            return nullptr;
    }
}

}  // namespace

TString LookupTStr(StringId id) {
    if (const char16_t* const text = FindText(id)) {
        return text;
    }
    return u"Unknown message " + TString::number(id) + u".";
}

TString LookupTFmtStr(StringId id, std::initializer_list<TString> arguments) {
    const TString pattern = LookupTStr(id);
    TString text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char16_t next = i + 1 < pattern.size() ? pattern[i + 1] : u'\0';
        const bool isPlace = pattern[i] == u'%' && next >= u'1' && next <= u'9';
        if (isPlace && static_cast<std::size_t>(next - u'1') < arguments.size()) {
            text += arguments.begin()[next - u'1'];
            ++i;
        } else {
            text.push_back(pattern[i]);
        }
    }
    return text;
}
