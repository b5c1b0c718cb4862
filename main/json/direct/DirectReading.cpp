#include "main/json/direct/DirectReading.h"

#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include <qvpreslayer/ValParameter.h>

#include "main/json/JSONNumbers.h"

using qvpreslayer::detail::DirectType;

namespace {

bool IsExactThroughText(std::u16string_view real) {
    const std::size_t point = real.find(u'.');
    return point != std::u16string_view::npos && real.size() - point - 1 <= kExactFractionDigits &&
           real.find_first_of(u"eE") == std::u16string_view::npos;
}

// Each answers false when the value takes the serializer.
template <class T>
bool FromInteger(Int64 integer, T& value) {
    if constexpr (std::is_integral_v<T>) {
        if (!std::in_range<T>(integer)) {
            return false;
        }
    }
    value = static_cast<T>(integer);
    return true;
}

template <class T>
bool Read(const JSONDocument& document, JSONDocument::Index node, T& value) {
    const JSONKind kind = document[node].kind;
    if (kind == JSONKind::Integer) {
        return FromInteger(TravellingInteger(document.Text(node)), value);
    }
    if constexpr (std::is_same_v<T, double>) {
        if (kind == JSONKind::Real) {
            const std::u16string_view text = document.Text(node);
            if (!IsExactThroughText(text) || !ParseDouble(text, value)) {
                return false;
            }
            value = value == 0 ? 0 : value;  // the text of a negative zero has no sign
            return true;
        }
    }
    return false;
}

bool Read(const JSONDocument& document, JSONDocument::Index node, bool& value) {
    value = document.Text(node) == u"true";
    return document[node].kind == JSONKind::Bool;
}

bool Read(const JSONDocument& document, JSONDocument::Index node, TString& value) {
    if (document[node].kind != JSONKind::String) {
        return false;
    }
    value = document.Text(node);
    return true;
}

template <class T>
RefCntPtr<IParameter> ReadScalar(const JSONDocument& document, JSONDocument::Index scalar) {
    T value{};
    if (!Read(document, scalar, value)) {
        return {};
    }
    return MakeRefCnt<ValParameter<T>>(std::move(value));
}

template <class T>
RefCntPtr<IParameter> ReadList(const JSONDocument& document, JSONDocument::Index array) {
    const JSONDocument::Index end = document.Next(array);
    std::vector<T> values;
    for (JSONDocument::Index element = array + 1; element != end; ++element) {
        T value{};
        if (!Read(document, element, value)) {  // containers inside too: their nodes follow here
            return {};
        }
        if (values.empty()) {
            values.reserve(end - array - 1);  // not before an element has turned out to fit
        }
        values.push_back(std::move(value));
    }
    return MakeRefCnt<ValParameter<std::vector<T>>>(std::move(values));
}

// Calls read with the type of info's values; an empty pointer when they do not go the short way. 32-bit reals do not:
// they are rounded twice on their way through the text of a 64-bit one.
template <class Reader>
RefCntPtr<IParameter> WithType(const ParameterInfo& info, const Reader& read) {
    switch (info.direct.type) {
        case DirectType::Int:
            return read(std::type_identity<int>());
        case DirectType::UInt:
            return read(std::type_identity<unsigned int>());
        case DirectType::Int64:
            return read(std::type_identity<Int64>());
        case DirectType::UInt64:
            return read(std::type_identity<UInt64>());
        case DirectType::Double:
            return read(std::type_identity<double>());
        case DirectType::Bool:
            return read(std::type_identity<bool>());
        case DirectType::String:
            return read(std::type_identity<TString>());
        default:
            return {};
    }
}

}  // namespace

RefCntPtr<IParameter> ReadScalarDirectly(const ParameterInfo& info, const JSONDocument& document,
                                         JSONDocument::Index scalar) {
    return WithType(info, [&]<class T>(std::type_identity<T>) { return ReadScalar<T>(document, scalar); });
}

RefCntPtr<IParameter> ReadListDirectly(const ParameterInfo& info, const JSONDocument& document,
                                       JSONDocument::Index array) {
    return WithType(info, [&]<class T>(std::type_identity<T>) { return ReadList<T>(document, array); });
}
