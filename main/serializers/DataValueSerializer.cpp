// The text of a typed value, field by field; ":" stands between fields:
//
//   letter       one of i r s c b d t u; a spatial value has none
//   then "null" for a null of any type but string, and nothing more
//   real         precision, decimal, empty when not set; scale, likewise; the number
//   string       the name of the collation; the characters, nothing escaped, ":" included
//   tuple        the tuple's text
//   others       the value as the formatter writes it
#include <qvpreslayer/DataValueSerializer.h>

#include <array>
#include <stdexcept>

#include <qvcore/DataValueFormatter.h>
#include <qvcore/DataValueParser.h>

#include "main/serializers/DataValueText.h"

namespace {

constexpr char16_t kDelimiter = u':';
constexpr std::u16string_view kNull = u"null";

// By DataType; 0 for the type that has no letter.
constexpr std::array<char16_t, 9> kLetters = {u'i', u'r', u's', u'c', u'b', u'd', u't', 0, u'u'};

[[noreturn]] void ThrowUnknownKey() { throw std::out_of_range("invalid map<K, T> key"); }

char16_t LetterOf(DataType type) {
    const auto index = static_cast<std::size_t>(type);
    if (index >= kLetters.size() || kLetters[index] == 0) {
        ThrowUnknownKey();
    }
    return kLetters[index];
}

DataType TypeOf(std::u16string_view letter) {
    for (std::size_t type = 0; letter.size() == 1 && type < kLetters.size(); ++type) {
        if (kLetters[type] == letter[0] && letter[0] != 0) {
            return static_cast<DataType>(type);
        }
    }
    ThrowUnknownKey();
}

DataValueFormatter::FormatOptions BareOptions() {
    DataValueFormatter::FormatOptions options;
    options.style = 1;
    options.delimitStrings = false;
    options.delimitDatetimes = false;
    options.groupDigits = false;
    options.localize = false;
    return options;
}

void AppendLabel(TString& out, std::uint8_t label) {
    if (label != DataValue::kUnset) {
        out.append(TString::number(static_cast<unsigned int>(label)));
    }
    out.push_back(kDelimiter);
}

// An empty field is not set; a field that is no number counts as 0, and a large one keeps its low 8 bits.
std::uint8_t LabelOf(std::u16string_view field) {
    return field.empty() ? DataValue::kUnset : static_cast<std::uint8_t>(TString(field).toInt());
}

DataValue Parse(DataType type, const Collation& collation, std::uint8_t precision, std::uint8_t scale,
                const TString& text) {
    return DataValueParser::ParseGeneric(type, collation, precision, scale, text, false);
}

DataValue Parse(DataType type, const TString& text) {
    return Parse(type, GetUnknownCollation(), DataValue::kUnset, DataValue::kUnset, text);
}

// The position of the next delimiter from a position on; a text without it is reported by message.
std::size_t NextDelimiter(std::u16string_view text, std::size_t from, const char* message, int line) {
    const std::size_t at = text.find(kDelimiter, from);
    if (at == std::u16string_view::npos) {
        ThrowLogicException(message, line, kSerializersModule);
    }
    return at;
}

// first is the position of the first delimiter. What follows a further delimiter behind the number is not looked at.
DataValue RealFromText(std::u16string_view text, std::size_t first) {
    constexpr const char* kMessage =
        "Serialized DataValue is not properly delimited, unable to parse real scale and precision values";
    const std::size_t second = NextDelimiter(text, first + 1, kMessage, __LINE__);
    const std::size_t third = NextDelimiter(text, second + 1, kMessage, __LINE__);
    const std::u16string_view number = text.substr(third + 1, text.find(kDelimiter, third + 1) - (third + 1));
    return Parse(DataType::Real, GetUnknownCollation(), LabelOf(text.substr(first + 1, second - first - 1)),
                 LabelOf(text.substr(second + 1, third - second - 1)), number);
}

DataValue StringFromText(std::u16string_view text, std::size_t first) {
    constexpr const char* kMessage = "Serialized DataValue is not properly delimited, unable to parse string collation";
    const std::size_t second = NextDelimiter(text, first + 1, kMessage, __LINE__);
    const Collation collation(text.substr(first + 1, second - first - 1), 0);
    TString value = text.substr(second + 1);
    if (value != DataValueFormatter::valueNull) {
        // The parser takes both marks for escapes of its own unless a backslash stands before them.
        value.replace(u"%", u"\\%").replace(u"#", u"\\#");
        value = DataValueFormatter::delimiterString + value + DataValueFormatter::delimiterString;
    }
    return Parse(DataType::CString, collation, DataValue::kUnset, DataValue::kUnset, value);
}

}  // namespace

void AppendBareText(TString& out, const DataValue& value) {
    static const DataValueFormatter::FormatOptions s_options = BareOptions();
    DataValueFormatter::Append(out, value, s_options);
}

void AppendTypedText(TString& out, const DataValue& value) {
    const DataType type = value.GetDataType();
    out.push_back(LetterOf(type));
    out.push_back(kDelimiter);
    if (type == DataType::CString) {
        out.append(value.GetCollation().GetName());
        out.push_back(kDelimiter);
        AppendBareText(out, value);
    } else if (value.IsSpecial()) {
        out.append(kNull);
    } else if (type == DataType::Tuple) {
        AppendTupleText(out, *value.GetTuple());
    } else {
        if (type == DataType::Real) {
            AppendLabel(out, value.GetPrecision());
            AppendLabel(out, value.GetScale());
        }
        AppendBareText(out, value);
    }
}

DataValue FromTypedText(std::u16string_view text) {
    const std::size_t first = text.find(kDelimiter);
    if (first == std::u16string_view::npos || first == 0) {
        ThrowLogicException("Serialized DataValue is not properly delimited", __LINE__, kSerializersModule);
    }
    const DataType type = TypeOf(text.substr(0, first));
    const std::u16string_view rest = text.substr(first + 1);
    if (type == DataType::Tuple) {
        return FromTupleText(rest);  // "null" too, which is no tuple's text: a null tuple is not read back
    }
    if (rest == kNull) {
        return Parse(type, DataValueFormatter::valueNull);
    }
    switch (type) {
        case DataType::Real:
            return RealFromText(text, first);
        case DataType::CString:
            return StringFromText(text, first);
        case DataType::DateTime:
        case DataType::Date:
            return Parse(type, DataValueFormatter::delimiterDatetime + rest + DataValueFormatter::delimiterDatetime);
        default:
            return Parse(type, rest);
    }
}

TString ParameterTypeTraits<DataValue>::ToText(const DataValue& value) {
    TString text;
    AppendTypedText(text, value);
    return text;
}

DataValue ParameterTypeTraits<DataValue>::FromText(const TString& text) { return FromTypedText(text); }

TString ContextualDataValueSerializerCore::ToString(const DataValue& value) {
    if (value.IsSpecial() && value.GetDataType() != DataType::CString) {
        return kNull;
    }
    TString text;
    AppendBareText(text, value);
    return text;
}

template class ParameterTypeSerializer<DataValue>;
