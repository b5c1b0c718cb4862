#include <qvpreslayer/ParameterTypeSerializer.h>

#include <qvpreslayer/RegistryExceptions.h>

namespace {

constexpr std::u16string_view kTrue = u"true";
constexpr std::u16string_view kFalse = u"false";

}  // namespace

TString ParameterTypeTraits<bool>::ToText(const bool& value) { return value ? kTrue : kFalse; }

bool ParameterTypeTraits<bool>::FromText(const TString& text) {
    if (text.view() == kTrue) {
        return true;
    }
    if (text.view() != kFalse) {
        throw ParameterParseException(0);
    }
    return false;
}

template class ParameterTypeSerializer<bool>;
