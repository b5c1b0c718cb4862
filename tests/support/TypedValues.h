// Typed values as tests write them down, and how failed checks show them.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <qvcore/qvcore.h>

#include "support/Printing.h"

namespace typed {

inline Date Day(int year, unsigned month, unsigned day) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

// 23:59:58 of 2024-02-29, and so many nanoseconds.
inline DateTime LeapEvening(Int64 nanoseconds = 0) {
    using namespace std::chrono;
    return DateTime(Day(2024, 2, 29), hours(23) + minutes(59) + seconds(58) + std::chrono::nanoseconds(nanoseconds));
}

inline DataValue String(const TString& text, const TString& collation = L"root") {
    return IndirectString::Lookup(Collation(collation), text);
}
inline DataValue NullString(const TString& collation = L"root") {
    return DataValue::Null(DataType::CString, Collation(collation));
}
inline DataValue Null(DataType type) { return DataValue::Null(type); }

inline RefCntPtr<Tuple> MakeTuple(std::vector<DataValue> values) { return MakeRefCnt<Tuple>(std::move(values)); }
inline DataValue TupleOf(std::vector<DataValue> values) { return MakeTuple(std::move(values)); }

// The integer 1 inside so many tuples of one element, and the text of that.
inline DataValue Nested(std::size_t levels) {
    DataValue value = 1;
    for (; levels > 0; --levels) {
        value = TupleOf({value});
    }
    return value;
}
inline TString NestedText(std::size_t levels) {
    TString text;
    for (std::size_t level = 0; level < levels; ++level) {
        text += level == 0 ? L"t:" : L"[t:";
    }
    text += levels == 0 ? L"i:1" : L"[i:1";
    text.append(levels, u']');
    return text;
}

// What == does not look at: labels, collations and the sign of zero, in tuples also.
inline bool Identical(const DataValue& left, const DataValue& right) {
    if (left != right || left.GetPrecision() != right.GetPrecision() || left.GetScale() != right.GetScale() ||
        left.GetCollation() != right.GetCollation()) {
        return false;
    }
    if (left.IsSpecial() || (left.GetDataType() != DataType::Real && left.GetDataType() != DataType::Tuple)) {
        return true;
    }
    if (left.GetDataType() == DataType::Real) {
        return std::signbit(left.GetReal()) == std::signbit(right.GetReal());
    }
    const auto& leftValues = left.GetTuple()->GetValues();
    const auto& rightValues = right.GetTuple()->GetValues();
    return std::equal(leftValues.begin(), leftValues.end(), rightValues.begin(), rightValues.end(), Identical);
}

}  // namespace typed

// Type number and content; global, as DataValue is, so that GoogleTest finds it.
inline void PrintTo(const DataValue& value, std::ostream* stream) {
    *stream << static_cast<int>(value.GetDataType()) << ' ';
    if (!value.IsSpecial() && value.GetDataType() == DataType::Tuple) {
        *stream << '(';
        for (const DataValue& element : value.GetTuple()->GetValues()) {
            PrintTo(element, stream);
            *stream << ';';
        }
        *stream << ')';
        return;
    }
    DataValueFormatter::FormatOptions options;
    options.style = 1;
    *stream << printing::ToPrintable(DataValueFormatter::Format(value, options));
}
