#include "tools/qvpres/import/TypeInference.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

namespace qvpres {

namespace {

using Reading = std::optional<DataValue> (*)(std::string_view text);

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::optional<DataValue> Boolean(std::string_view text) {
    if (text == "true" || text == "True" || text == "TRUE") {
        return DataValue(true);
    }
    if (text == "false" || text == "False" || text == "FALSE") {
        return DataValue(false);
    }
    return std::nullopt;
}

// Digits such as 007 are the name of something.
bool HasLeadingZero(std::string_view text) {
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    return text.size() > 1 && text[0] == '0' && IsDigit(text[1]);
}

std::optional<DataValue> Integer(std::string_view text) {
    Int64 value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || HasLeadingZero(text)) {
        return std::nullopt;
    }
    return DataValue(value);
}

bool IsDigits(std::string_view text) {
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::optional<DataValue> Real(std::string_view text) {
    const std::size_t start = text.starts_with('-') ? 1 : 0;
    // Neither inf nor nan; and digits that are too many for an integer would lose some.
    if (start >= text.size() || !(IsDigit(text[start]) || text[start] == '.') || HasLeadingZero(text) ||
        (IsDigits(text) && !Integer(text))) {
        return std::nullopt;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return DataValue(value);
}

// Takes a fixed number of digits from the front of a text.
std::optional<unsigned> TakeDigits(std::string_view& text, std::size_t count) {
    unsigned value = 0;
    if (text.size() < count) {
        return std::nullopt;
    }
    const auto result = std::from_chars(text.data(), text.data() + count, value);
    if (result.ec != std::errc() || result.ptr != text.data() + count) {
        return std::nullopt;
    }
    text.remove_prefix(count);
    return value;
}

bool Take(std::string_view& text, char expected) {
    if (!text.starts_with(expected)) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

std::optional<Date> TakeDate(std::string_view& text) {
    const auto year = TakeDigits(text, 4);
    const char separator = text.starts_with('/') ? '/' : '-';
    if (!year || !Take(text, separator)) {
        return std::nullopt;
    }
    const auto month = TakeDigits(text, 2);
    if (!month || !Take(text, separator)) {
        return std::nullopt;
    }
    const auto day = TakeDigits(text, 2);
    if (!day) {
        return std::nullopt;
    }
    const Date date(std::chrono::year(static_cast<int>(*year)), std::chrono::month(*month), std::chrono::day(*day));
    return IsCalendarDate(date) ? std::optional<Date>(date) : std::nullopt;
}

std::optional<DataValue> Day(std::string_view text) {
    const auto date = TakeDate(text);
    return date && text.empty() ? std::optional<DataValue>(DataValue(*date)) : std::nullopt;
}

// The digits behind the point of the seconds, up to nine.
std::optional<std::chrono::nanoseconds> Fraction(std::string_view text) {
    std::string digits(text);
    const auto count = digits.size();
    digits.resize(9, '0');
    std::string_view rest = digits;
    const auto value = TakeDigits(rest, 9);
    return value && count > 0 && count <= 9 ? std::optional(std::chrono::nanoseconds(*value)) : std::nullopt;
}

std::optional<DataValue> PointInTime(std::string_view text) {
    const auto date = TakeDate(text);
    if (date && text.empty()) {
        return DataValue(DateTime(*date));
    }
    if (!date || !(Take(text, ' ') || Take(text, 'T'))) {
        return std::nullopt;
    }
    const auto hours = TakeDigits(text, 2);
    const auto minutes = hours && Take(text, ':') ? TakeDigits(text, 2) : std::nullopt;
    const auto seconds = minutes && Take(text, ':') ? TakeDigits(text, 2) : std::optional<unsigned>(0);
    if (!minutes || !seconds || *hours > 23 || *minutes > 59 || *seconds > 59) {
        return std::nullopt;
    }
    std::chrono::nanoseconds time =
        std::chrono::hours(*hours) + std::chrono::minutes(*minutes) + std::chrono::seconds(*seconds);
    if (Take(text, '.')) {
        const auto fraction = Fraction(text);
        if (!fraction) {
            return std::nullopt;
        }
        time += *fraction;
        text = {};
    }
    return text.empty() ? std::optional<DataValue>(DataValue(DateTime(*date, time))) : std::nullopt;
}

std::optional<DataValue> Text(std::string_view text) {
    return DataValue(IndirectString::Lookup(GetUnknownCollation(), TString::FromUtf8(text)));
}

// The types in order, the first that suits all cells being taken, and which cells of typed tables may have them.
constexpr struct {
    DataType type;
    Reading read;
    Cell::Kind kind;
} kTypes[] = {
    {DataType::Boolean, Boolean, Cell::Kind::Bool},      {DataType::Integer, Integer, Cell::Kind::Number},
    {DataType::Real, Real, Cell::Kind::Number},          {DataType::Date, Day, Cell::Kind::Text},
    {DataType::DateTime, PointInTime, Cell::Kind::Text},
};

// The column read as one type, or nothing when a cell is none of it.
std::optional<std::vector<DataValue>> ReadAs(const Column& column, DataType type, Reading read,
                                             const std::function<bool(const Cell&)>& suits) {
    std::vector<DataValue> values;
    values.reserve(column.cells.size());
    for (const Cell& cell : column.cells) {
        if (cell.kind == Cell::Kind::Null) {
            values.push_back(DataValue::Null(type));
            continue;
        }
        auto value = suits(cell) ? read(cell.text) : std::nullopt;
        if (!value) {
            return std::nullopt;
        }
        values.push_back(std::move(*value));
    }
    return values;
}

}  // namespace

TypedColumn InferColumn(const Column& column, bool typed) {
    TypedColumn result;
    result.name = column.name;
    result.nulls = static_cast<std::size_t>(std::count_if(
        column.cells.begin(), column.cells.end(), [](const Cell& cell) { return cell.kind == Cell::Kind::Null; }));
    if (result.nulls < column.cells.size()) {
        for (const auto& candidate : kTypes) {
            const auto suits = [&](const Cell& cell) { return !typed || cell.kind == candidate.kind; };
            if (auto values = ReadAs(column, candidate.type, candidate.read, suits)) {
                result.type = candidate.type;
                result.values = std::move(*values);
                return result;
            }
        }
    }
    result.values = *ReadAs(column, DataType::CString, Text, [](const Cell&) { return true; });
    return result;
}

std::string TypeWord(DataType type) {
    switch (type) {
        case DataType::Integer:
            return "integer";
        case DataType::Real:
            return "real";
        case DataType::Boolean:
            return "boolean";
        case DataType::Date:
            return "date";
        case DataType::DateTime:
            return "date-time";
        default:
            return "text";
    }
}

}  // namespace qvpres
