// The text of a value, by its type:
//
//   null        %null%, of every type
//   integer     decimal digits, "-" before a negative number; grouped: "," before every third digit from the right
//   real        decimal digits with or without a point and an exponent, whichever is shorter: 0.1, 12, -0, 1e+300
//   cstring     the characters as they are; delimited: " on both sides
//   datetime    YYYY-MM-DD HH:MM:SS, then, unless the second is whole, "." and 1 to 9 digits, the last of them not 0;
//               delimited: # on both sides
//   boolean     true or false
//   date        YYYY-MM-DD; delimited: # on both sides
//   tuple       its values, each by these rules, joined by ","
//   spatial     its text as it is
//   unknown     always null
#include <qvcore/DataValueFormatter.h>

#include <charconv>
#include <chrono>
#include <iterator>
#include <string_view>
#include <vector>

#include <qvsys/QuorvelException.h>

const TString DataValueFormatter::delimiterString(u"\"");
const TString DataValueFormatter::delimiterDatetime(u"#");
const TString DataValueFormatter::delimiterSpecial(u"%");
const TString DataValueFormatter::valueNull(u"%null%");

namespace {

using FormatOptions = DataValueFormatter::FormatOptions;

constexpr int kStylePeople = 0;
constexpr int kStyleInvariant = 1;
constexpr int kExactDigits = 17;
constexpr std::size_t kFractionDigits = 9;

void AppendAscii(TString& text, std::string_view ascii) {
    const std::size_t start = text.size();
    text.resize(start + ascii.size());
    char16_t* out = text.mutable_data() + start;
    for (const char character : ascii) {
        *out++ = static_cast<char16_t>(character);
    }
}

void AppendGrouped(TString& text, std::string_view digits) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            text += u',';
        }
        text += static_cast<char16_t>(digits[i]);
    }
}

void AppendInteger(TString& text, Int64 value, bool grouped) {
    char buffer[20];  // "-9223372036854775808"
    const char* end = std::to_chars(std::begin(buffer), std::end(buffer), value).ptr;
    std::string_view digits(buffer, static_cast<std::size_t>(end - buffer));
    if (!grouped) {
        AppendAscii(text, digits);
        return;
    }
    if (value < 0) {
        text += u'-';
        digits.remove_prefix(1);
    }
    AppendGrouped(text, digits);
}

void AppendReal(TString& text, double value, bool shortest) {
    char buffer[32];
    const std::to_chars_result result =
        shortest ? std::to_chars(std::begin(buffer), std::end(buffer), value)
                 : std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::general, kExactDigits);
    AppendAscii(text, std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer)));
}

// The number in exactly width digits, zeros first.
void AppendPadded(TString& text, Int64 number, std::size_t width) {
    const std::size_t start = text.size();
    text.resize(start + width);
    char16_t* out = text.mutable_data() + start;
    for (std::size_t i = width; i-- > 0; number /= 10) {
        out[i] = static_cast<char16_t>(u'0' + number % 10);
    }
}

void AppendDate(TString& text, const Date& date) {
    AppendPadded(text, static_cast<int>(date.year()), 4);
    text += u'-';
    AppendPadded(text, static_cast<unsigned>(date.month()), 2);
    text += u'-';
    AppendPadded(text, static_cast<unsigned>(date.day()), 2);
}

void AppendTime(TString& text, std::chrono::nanoseconds timeOfDay) {
    const std::chrono::hh_mm_ss<std::chrono::nanoseconds> time(timeOfDay);
    AppendPadded(text, time.hours().count(), 2);
    text += u':';
    AppendPadded(text, time.minutes().count(), 2);
    text += u':';
    AppendPadded(text, time.seconds().count(), 2);
    if (time.subseconds().count() != 0) {
        text += u'.';
        AppendPadded(text, time.subseconds().count(), kFractionDigits);
        const std::size_t kept = text.view().find_last_not_of(u'0') + 1;
        text.resize(kept);
    }
}

void AppendDateTime(TString& text, const DateTime& dateTime) {
    AppendDate(text, dateTime.GetDate());
    text += u' ';
    AppendTime(text, dateTime.GetTimeOfDay());
}

void AppendDelimited(TString& text, bool delimited, const TString& delimiter, const auto& append) {
    if (delimited) {
        text += delimiter;
    }
    append();
    if (delimited) {
        text += delimiter;
    }
}

// Everything but tuples that are not null.
void AppendScalar(TString& text, const DataValue& value, const FormatOptions& options) {
    if (value.IsSpecial()) {
        text += DataValueFormatter::valueNull;
        return;
    }
    switch (value.GetDataType()) {
        case DataType::Integer:
            AppendInteger(text, value.GetInteger(),
                          options.groupDigits && (options.style == kStyleInvariant || options.localize));
            break;
        case DataType::Real:
            AppendReal(text, value.GetReal(), options.shortestReals);
            break;
        case DataType::CString:
            AppendDelimited(text, options.delimitStrings, DataValueFormatter::delimiterString,
                            [&] { text += value.GetString().GetText(); });
            break;
        case DataType::DateTime:
            AppendDelimited(text, options.delimitDatetimes, DataValueFormatter::delimiterDatetime,
                            [&] { AppendDateTime(text, value.GetDateTime()); });
            break;
        case DataType::Boolean:
            AppendAscii(text, value.GetBoolean() ? "true" : "false");
            break;
        case DataType::Date:
            AppendDelimited(text, options.delimitDatetimes, DataValueFormatter::delimiterDatetime,
                            [&] { AppendDate(text, value.GetDate()); });
            break;
        case DataType::Spatial:
            text += value.GetSpatial().GetText();
            break;
        case DataType::Tuple:
        case DataType::Unknown:
            break;
    }
}

bool HoldsTuple(const DataValue& value) { return value.GetDataType() == DataType::Tuple && !value.IsSpecial(); }

// The values of one tuple from next on are still to be written.
struct OpenTuple {
    const std::vector<DataValue>* values;
    std::size_t next = 0;
};

// Nested tuples go onto a list instead of the stack, so that their depth does not matter.
void AppendTuple(TString& text, const Tuple& tuple, const FormatOptions& options) {
    std::vector<OpenTuple> open{{&tuple.GetValues()}};
    while (!open.empty()) {
        OpenTuple& current = open.back();
        if (current.next == current.values->size()) {
            open.pop_back();
            continue;
        }
        if (current.next > 0) {
            text += u',';
        }
        const DataValue& value = (*current.values)[current.next++];
        if (HoldsTuple(value)) {
            open.push_back({&value.GetTuple()->GetValues()});
        } else {
            AppendScalar(text, value, options);
        }
    }
}

}  // namespace

TString DataValueFormatter::Format(const DataValue& value, const FormatOptions& options) {
    TString text;
    Append(text, value, options);
    return text;
}

void DataValueFormatter::Append(TString& text, const DataValue& value, const FormatOptions& options) {
    if (options.style != kStylePeople && options.style != kStyleInvariant) {
        throw QuorvelException(u"Data value format style is not valid");
    }
    if (HoldsTuple(value)) {
        AppendTuple(text, *value.GetTuple(), options);
    } else {
        AppendScalar(text, value, options);
    }
}
