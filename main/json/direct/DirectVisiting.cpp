// The short way of BuildParameterStrings: typed values go straight into the text, in the form that the events
// Parameter, StartList, ListItem and EndList would have given them.
#include <qvpreslayer/BuildParameterStrings.h>

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <vector>

#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/DirectTypes.h>
#include <qvpreslayer/detail/NumberText.h>

#include "main/json/JSONEscaping.h"

using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::Exactly;

namespace {

template <class T>
constexpr std::size_t kLongestText =
    std::is_floating_point_v<T> ? qvpreslayer::detail::kLongestReal : qvpreslayer::detail::kLongestInteger;

// What a number hardly ever exceeds.
constexpr std::size_t kUsualText = 24;

char16_t* Copy(char16_t* to, std::u16string_view text) { return std::copy(text.begin(), text.end(), to); }

template <class T>
char16_t* WriteNumber(char16_t* to, const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return Copy(to, value ? u"true" : u"false");
    } else if constexpr (std::is_floating_point_v<T>) {
        return qvpreslayer::detail::WriteReal(to, value);
    } else {
        return qvpreslayer::detail::WriteInteger(to, value);
    }
}

void AppendValue(TString& out, const TString& text) {
    out.push_back(u'"');
    AppendEscaped(out, text);
    out.push_back(u'"');
}

template <class T>
void AppendValue(TString& out, const T& value) {
    out.Accept(WriteNumber(out.Extend(kLongestText<T>), value));
}

// Elements with separator before each but the first.
template <class T>
void AppendElements(TString& out, const std::vector<T>& values, std::u16string_view separator) {
    // One question for room serves a block of elements; reals are long only in theory, so that theirs are smaller.
    constexpr std::size_t kBlock = std::is_floating_point_v<T> ? 8 : 128;
    const std::size_t room = kLongestText<T> + separator.size();
    const std::size_t start = out.size();
    for (std::size_t i = 0; i < values.size();) {
        const std::size_t end = std::min(values.size(), i + kBlock);
        char16_t* to = out.Extend((end - i) * room);
        for (; i < end; ++i) {
            if (i != 0) {
                to = Copy(to, separator);
            }
            to = WriteNumber<T>(to, values[i]);
        }
        out.Accept(to);
        // What the first block took tells about what all will take, and saves growing step by step; a few long numbers
        // at the start do not make it ask for more than numbers usually take.
        if (i == kBlock && i < values.size()) {
            const std::size_t each = std::min((out.size() - start) / kBlock + 1, kUsualText + separator.size());
            out.Extend((values.size() - i) * each);
        }
    }
}

void AppendElements(TString& out, const std::vector<TString>& values, std::u16string_view separator) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i != 0) {
            out.append(separator);
        }
        AppendValue(out, values[i]);
    }
}

}  // namespace

bool BuildParameterStrings::WriteDirectly(const ParameterInfo& info, bool useVerboseNames, const IParameter& value) {
    const auto write = [&]<class T>(std::type_identity<T>) {
        return info.kind == PTC_List ? WriteDirectList<T>(info, useVerboseNames, value)
                                     : WriteDirectScalar<T>(info, useVerboseNames, value);
    };
    switch (info.direct.type) {
        case DirectType::Int:
            return write(std::type_identity<int>());
        case DirectType::UInt:
            return write(std::type_identity<unsigned int>());
        case DirectType::Int64:
            return write(std::type_identity<Int64>());
        case DirectType::UInt64:
            return write(std::type_identity<UInt64>());
        case DirectType::Float:
            return write(std::type_identity<float>());
        case DirectType::Double:
            return write(std::type_identity<double>());
        case DirectType::Bool:
            return write(std::type_identity<bool>());
        case DirectType::String:
            return write(std::type_identity<TString>());
        default:
            return false;
    }
}

template <class T>
bool BuildParameterStrings::WriteDirectScalar(const ParameterInfo& info, bool useVerboseNames,
                                              const IParameter& value) {
    const T* content = Exactly<T>(value);
    if (content == nullptr) {
        return false;
    }
    Separate();
    WriteKnownName(info, useVerboseNames, u": ");
    AppendValue(m_out, *content);
    return true;
}

template <class T>
bool BuildParameterStrings::WriteDirectList(const ParameterInfo& info, bool useVerboseNames, const IParameter& value) {
    const auto* content = Exactly<std::vector<T>>(value);
    if (content == nullptr) {
        return false;
    }
    Separate();
    WriteKnownName(info, useVerboseNames, m_pretty ? u": " : u":");
    m_out.append(m_pretty ? u"[\n" : u"[");
    ++m_depth;
    TString separator = m_pretty ? u", \n" : u",";
    if (m_pretty && m_depth > 0) {
        const std::size_t indentation = 2 * static_cast<std::size_t>(m_depth);
        separator.append(indentation, u' ');
        if (!content->empty()) {
            m_out.append(indentation, u' ');
        }
    }
    AppendElements(m_out, *content, separator);
    --m_depth;
    SeparateClosing();
    m_out.push_back(u']');
    return true;
}

// As WriteName; the camel-case form of a registered verbose name has been made once and needs no escaping.
void BuildParameterStrings::WriteKnownName(const ParameterInfo& info, bool useVerboseNames, const char16_t* colon) {
    const TString& name = useVerboseNames ? info.verboseName : info.shortName;
    if (!useVerboseNames || m_suppressNextName || m_frame.inList || !m_camelCaseNames || m_shortNames) {
        if (WriteName(name, false)) {
            m_out.append(colon);
        }
        return;
    }
    const std::u16string_view camel = info.camelName;
    char16_t* to = m_out.Extend(camel.size() + 4);
    if (m_quoteNames) {
        *to++ = u'"';
    }
    to = Copy(to, camel);
    if (m_quoteNames) {
        *to++ = u'"';
    }
    m_out.Accept(Copy(to, colon));
}
