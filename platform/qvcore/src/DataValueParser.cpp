// The texts that stand for a value, by its type. The whole text counts: no blanks, no other case, nothing after it.
//
//   null        %null%; for every type but tuple and spatial
//   integer     optional "+" or "-", decimal digits; the number within 64 bits signed
//   real        optional "+" or "-"; digits, digits with a point somewhere among them or at either end; optionally "e"
//   or
//               "E" and an exponent with optional sign; the number finite
//   cstring     ", the characters, ". Among them \% stands for % and \# for #; everything else stands for itself, a "
//               and any other \ included. A writer that puts \ before every % and # thus gets every text back.
//   datetime    #YYYY-MM-DD HH:MM:SS#, or with "." and 1 to 9 digits before the last #; the day exists, hours are 00 to
//               23, minutes and seconds 00 to 59
//   boolean     true or false
//   date        #YYYY-MM-DD#; the day exists, years are 0001 to 9999
//   tuple       nothing
//   spatial     nothing
//   unknown     nothing but null
#include <qvcore/DataValueParser.h>

#include <chrono>
#include <optional>
#include <string_view>

#include <qvsys/QuorvelException.h>

#include <qvcore/DataValueFormatter.h>

namespace {

constexpr std::size_t kDateLength = 10;      // YYYY-MM-DD
constexpr std::size_t kDateTimeLength = 19;  // YYYY-MM-DD HH:MM:SS
constexpr std::size_t kFractionDigits = 9;

// The answers of the readers below are empty when the text is malformed.

std::optional<DataValue> ReadInteger(const TString& text) {
    bool ok = true;
    const Int64 number = text.toLongLong(&ok);
    return ok ? std::optional<DataValue>(number) : std::nullopt;
}

std::optional<DataValue> ReadReal(const TString& text, std::uint8_t precision, std::uint8_t scale) {
    bool ok = true;
    const double number = text.toDouble(&ok);
    return ok ? std::optional<DataValue>(DataValue(number, precision, scale)) : std::nullopt;
}

std::optional<DataValue> ReadBoolean(std::u16string_view text) {
    if (text == u"true") {
        return DataValue(true);
    }
    return text == u"false" ? std::optional<DataValue>(DataValue(false)) : std::nullopt;
}

// What stands between a delimiter at the start and another one at the end.
std::optional<std::u16string_view> Inside(std::u16string_view text, std::u16string_view delimiter) {
    if (text.size() < 2 * delimiter.size() || !text.starts_with(delimiter) || !text.ends_with(delimiter)) {
        return std::nullopt;
    }
    return text.substr(delimiter.size(), text.size() - 2 * delimiter.size());
}

bool StartsEscape(std::u16string_view text, std::size_t position) {
    return text[position] == u'\\' && position + 1 < text.size() &&
           (text[position + 1] == u'%' || text[position + 1] == u'#');
}

TString Unescape(std::u16string_view text) {
    TString result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (StartsEscape(text, i)) {
            ++i;
        }
        result += text[i];
    }
    return result;
}

std::optional<DataValue> ReadString(std::u16string_view text, const Collation& collation) {
    const auto inside = Inside(text, DataValueFormatter::delimiterString);
    if (!inside) {
        return std::nullopt;
    }
    return DataValue(IndirectString::Lookup(collation, Unescape(*inside)));
}

// The number that the digits form; empty when there are other characters or none at all.
std::optional<unsigned> ReadDigits(std::u16string_view digits) {
    unsigned number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9') {
            return std::nullopt;
        }
        number = number * 10 + (digit - u'0');
    }
    return digits.empty() ? std::nullopt : std::optional<unsigned>(number);
}

// Requires: text is kDateLength long.
std::optional<Date> ReadDay(std::u16string_view text) {
    const auto year = ReadDigits(text.substr(0, 4));
    const auto month = ReadDigits(text.substr(5, 2));
    const auto day = ReadDigits(text.substr(8, 2));
    if (!year || !month || !day || text[4] != u'-' || text[7] != u'-') {
        return std::nullopt;
    }
    const Date date(std::chrono::year(static_cast<int>(*year)), std::chrono::month(*month), std::chrono::day(*day));
    return IsCalendarDate(date) ? std::optional<Date>(date) : std::nullopt;
}

// HH:MM:SS.
std::optional<std::chrono::seconds> ReadClock(std::u16string_view text) {
    const auto hours = ReadDigits(text.substr(0, 2));
    const auto minutes = ReadDigits(text.substr(3, 2));
    const auto seconds = ReadDigits(text.substr(6, 2));
    if (!hours || !minutes || !seconds || text[2] != u':' || text[5] != u':') {
        return std::nullopt;
    }
    if (*hours > 23 || *minutes > 59 || *seconds > 59) {
        return std::nullopt;
    }
    return std::chrono::hours(*hours) + std::chrono::minutes(*minutes) + std::chrono::seconds(*seconds);
}

// Nothing, or "." and 1 to 9 digits.
std::optional<std::chrono::nanoseconds> ReadFraction(std::u16string_view text) {
    if (text.empty()) {
        return std::chrono::nanoseconds(0);
    }
    if (text[0] != u'.' || text.size() > 1 + kFractionDigits) {
        return std::nullopt;
    }
    const auto digits = ReadDigits(text.substr(1));  // at most 999,999,999
    if (!digits) {
        return std::nullopt;
    }
    std::chrono::nanoseconds fraction(*digits);
    for (std::size_t length = text.size() - 1; length < kFractionDigits; ++length) {
        fraction *= 10;
    }
    return fraction;
}

std::optional<DataValue> ReadDate(std::u16string_view text) {
    const auto inside = Inside(text, DataValueFormatter::delimiterDatetime);
    if (!inside || inside->size() != kDateLength) {
        return std::nullopt;
    }
    const auto date = ReadDay(*inside);
    return date ? std::optional<DataValue>(DataValue(*date)) : std::nullopt;
}

std::optional<DataValue> ReadDateTime(std::u16string_view text) {
    const auto inside = Inside(text, DataValueFormatter::delimiterDatetime);
    if (!inside || inside->size() < kDateTimeLength || (*inside)[kDateLength] != u' ') {
        return std::nullopt;
    }
    const auto date = ReadDay(inside->substr(0, kDateLength));
    const auto clock = ReadClock(inside->substr(kDateLength + 1, kDateTimeLength - kDateLength - 1));
    const auto fraction = ReadFraction(inside->substr(kDateTimeLength));
    if (!date || !clock || !fraction) {
        return std::nullopt;
    }
    return DataValue(DateTime(*date, *clock + *fraction));
}

std::optional<DataValue> ReadValue(DataType type, const Collation& collation, std::uint8_t precision,
                                   std::uint8_t scale, const TString& text) {
    switch (type) {
        case DataType::Integer:
            return ReadInteger(text);
        case DataType::Real:
            return ReadReal(text, precision, scale);
        case DataType::CString:
            return ReadString(text, collation);
        case DataType::DateTime:
            return ReadDateTime(text);
        case DataType::Boolean:
            return ReadBoolean(text);
        case DataType::Date:
            return ReadDate(text);
        case DataType::Tuple:
        case DataType::Spatial:
        case DataType::Unknown:
            break;
    }
    return std::nullopt;
}

bool CanBeReadAsNull(DataType type) {
    return type <= DataType::Unknown && type != DataType::Tuple && type != DataType::Spatial;
}

}  // namespace

DataValue DataValueParser::ParseGeneric(DataType type, const Collation& collation, std::uint8_t precision,
                                        std::uint8_t scale, const TString& text, bool /*flag*/) {
    if (CanBeReadAsNull(type) && text == DataValueFormatter::valueNull) {
        return DataValue::Null(type, collation);
    }
    std::optional<DataValue> value = ReadValue(type, collation, precision, scale, text);
    if (!value) {
        throw QuorvelException(u"Data value parse error");
    }
    return *std::move(value);
}
