#include <qvcore/CaseConversion.h>

namespace {

bool IsLower(char16_t unit) { return unit >= u'a' && unit <= u'z'; }
bool IsUpper(char16_t unit) { return unit >= u'A' && unit <= u'Z'; }

constexpr char16_t kCaseDistance = u'a' - u'A';

}  // namespace

TString DashedToCamel(const TString& dashed) {
    TString camel;
    camel.Accept(WriteCamel(camel.Extend(dashed.size()), dashed));
    return camel;
}

char16_t* WriteCamel(char16_t* to, std::u16string_view dashed) noexcept {
    const char16_t* const end = dashed.data() + dashed.size();
    for (const char16_t* at = dashed.data(); at != end; ++at) {
        if (*at == u'-' && at + 1 != end && IsLower(at[1])) [[unlikely]] {
            ++at;
            *to++ = static_cast<char16_t>(*at - kCaseDistance);
        } else {
            *to++ = *at;
        }
    }
    return to;
}

TString CamelToDashed(const TString& camel) {
    TString dashed;
    dashed.reserve(camel.size());
    for (const char16_t unit : camel.view()) {
        if (IsUpper(unit)) {
            dashed.push_back(u'-');
            dashed.push_back(static_cast<char16_t>(unit + kCaseDistance));
        } else {
            dashed.push_back(unit);
        }
    }
    return dashed;
}
