#include <qvcore/CaseConversion.h>

namespace {

bool IsLower(char16_t unit) { return unit >= u'a' && unit <= u'z'; }
bool IsUpper(char16_t unit) { return unit >= u'A' && unit <= u'Z'; }

constexpr char16_t kCaseDistance = u'a' - u'A';

}  // namespace

TString DashedToCamel(const TString& dashed) {
    TString camel;
    camel.reserve(dashed.size());
    for (std::size_t i = 0; i < dashed.size(); ++i) {
        if (dashed[i] == u'-' && i + 1 < dashed.size() && IsLower(dashed[i + 1])) {
            camel.push_back(static_cast<char16_t>(dashed[++i] - kCaseDistance));
        } else {
            camel.push_back(dashed[i]);
        }
    }
    return camel;
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
