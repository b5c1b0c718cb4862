#include <qvpreslayer/ParameterTypeSerializer.h>

#include <limits>
#include <type_traits>

#include <qvcore/TextNumbers.h>

#include <qvpreslayer/RegistryExceptions.h>
#include <qvpreslayer/detail/NumberText.h>

namespace {

bool Parse(std::u16string_view text, int& value) { return ParseInt32(text, value); }
bool Parse(std::u16string_view text, unsigned int& value) { return ParseUInt32(text, value); }
bool Parse(std::u16string_view text, Int64& value) { return ParseInt64(text, value); }
bool Parse(std::u16string_view text, UInt64& value) { return ParseUInt64(text, value); }
bool Parse(std::u16string_view text, float& value) { return ParseFloat(text, value); }
bool Parse(std::u16string_view text, double& value) { return ParseDouble(text, value); }

}  // namespace

namespace qvpreslayer::detail {

template <class T>
TString NumberTraits<T>::ToText(const T& value) {
    if constexpr (std::is_floating_point_v<T>) {
        char16_t text[kLongestReal];
        return std::u16string_view(text, static_cast<std::size_t>(WriteReal(text, value) - text));
    } else {
        char16_t text[kLongestInteger];
        return std::u16string_view(text, static_cast<std::size_t>(WriteInteger(text, value) - text));
    }
}

template <class T>
T NumberTraits<T>::FromText(const TString& text) {
    if constexpr (std::is_floating_point_v<T>) {
        if (text.view() == u"null") {
            return std::numeric_limits<T>::quiet_NaN();
        }
    }
    T value{};
    if (!Parse(text.view(), value)) {
        throw ParameterParseException(0);  // whose text it is, is not known here
    }
    return value;
}

template struct NumberTraits<int>;
template struct NumberTraits<unsigned int>;
template struct NumberTraits<Int64>;
template struct NumberTraits<UInt64>;
template struct NumberTraits<float>;
template struct NumberTraits<double>;

}  // namespace qvpreslayer::detail

template class ParameterTypeSerializer<int>;
template class ParameterTypeSerializer<unsigned int>;
template class ParameterTypeSerializer<Int64>;
template class ParameterTypeSerializer<UInt64>;
template class ParameterTypeSerializer<float>;
template class ParameterTypeSerializer<double>;
