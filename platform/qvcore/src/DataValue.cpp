#include <qvcore/DataValue.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <qvsys/QuorvelException.h>

#include "HashMix.h"
#include "NeverDestroyed.h"

namespace {

using Values = std::vector<DataValue>;

// A value that was moved from may hold an empty pointer, which counts as a tuple without values.
const Values& ValuesOf(const RefCntPtr<Tuple>& tuple) noexcept {
    static const qvcore::detail::NeverDestroyed<Values> s_none;
    return tuple ? tuple->GetValues() : s_none.Get();
}

// Requires: no NaN, and a DataValue holds none.
std::weak_ordering CompareReals(double left, double right) noexcept {
    if (left == right) {
        return std::weak_ordering::equivalent;
    }
    return left < right ? std::weak_ordering::less : std::weak_ordering::greater;
}

// The order of two values that are neither null nor tuples and have the same type.
std::weak_ordering CompareContent(const DataValue& left, const DataValue& right) {
    switch (left.GetDataType()) {
        case DataType::Integer:
            return left.GetInteger() <=> right.GetInteger();
        case DataType::Real:
            return CompareReals(left.GetReal(), right.GetReal());
        case DataType::CString:
            return left.GetString().GetText() <=> right.GetString().GetText();
        case DataType::DateTime:
            return left.GetDateTime() <=> right.GetDateTime();
        case DataType::Boolean:
            return left.GetBoolean() <=> right.GetBoolean();
        case DataType::Date:
            return left.GetDate() <=> right.GetDate();
        case DataType::Spatial:
            return left.GetSpatial() <=> right.GetSpatial();
        case DataType::Tuple:
        case DataType::Unknown:
            break;
    }
    return std::weak_ordering::equivalent;
}

bool HoldsTuple(const DataValue& value) noexcept {
    return value.GetDataType() == DataType::Tuple && !value.IsSpecial();
}

// The order of two values as far as it can be told without looking into two tuples, which count as equivalent.
std::weak_ordering CompareOutside(const DataValue& left, const DataValue& right) {
    if (left.GetDataType() != right.GetDataType()) {
        return left.GetDataType() <=> right.GetDataType();
    }
    if (left.IsSpecial() || right.IsSpecial()) {
        return right.IsSpecial() <=> left.IsSpecial();  // null first
    }
    return CompareContent(left, right);
}

// Two lists of values that are being compared, up to next.
struct ComparedLists {
    const Values* left;
    const Values* right;
    std::size_t next = 0;
};

// The order of two tuples, however deep: nested tuples go onto a list instead of the stack.
std::weak_ordering CompareTuples(const RefCntPtr<Tuple>& leftTuple, const RefCntPtr<Tuple>& rightTuple) {
    std::vector<ComparedLists> open;
    open.push_back({&ValuesOf(leftTuple), &ValuesOf(rightTuple)});
    while (!open.empty()) {
        ComparedLists& lists = open.back();
        if (lists.next == std::min(lists.left->size(), lists.right->size())) {
            if (lists.left->size() != lists.right->size()) {
                return lists.left->size() <=> lists.right->size();
            }
            open.pop_back();
            continue;
        }
        const DataValue& left = (*lists.left)[lists.next];
        const DataValue& right = (*lists.right)[lists.next];
        ++lists.next;
        if (HoldsTuple(left) && HoldsTuple(right)) {
            if (left.GetTuple() != right.GetTuple()) {
                open.push_back({&ValuesOf(left.GetTuple()), &ValuesOf(right.GetTuple())});
            }
        } else if (const std::weak_ordering order = CompareOutside(left, right); order != 0) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

std::size_t HashOf(const RefCntPtr<Tuple>& tuple) noexcept { return tuple ? tuple->GetHash() : 0; }

bool EqualTuples(const RefCntPtr<Tuple>& left, const RefCntPtr<Tuple>& right) {
    return left == right || (HashOf(left) == HashOf(right) && CompareTuples(left, right) == 0);
}

bool EqualStrings(const IndirectString& left, const IndirectString& right) noexcept {
    return left == right || (left.GetTextHash() == right.GetTextHash() && left.GetText() == right.GetText());
}

std::size_t HashOf(const Date& date) noexcept {
    return static_cast<std::size_t>(static_cast<int>(date.year())) * 512 + static_cast<unsigned>(date.month()) * 32 +
           static_cast<unsigned>(date.day());
}

std::size_t HashOf(const DateTime& dateTime) noexcept {
    return qvcore::detail::MixHash(HashOf(dateTime.GetDate()),
                                   static_cast<std::size_t>(dateTime.GetTimeOfDay().count()));
}

std::size_t HashOfContent(const DataValue& value) {
    switch (value.GetDataType()) {
        case DataType::Integer:
            return static_cast<std::size_t>(value.GetInteger());
        case DataType::Real:
            return std::hash<double>()(value.GetReal() + 0.0);  // makes -0.0, which equals it, 0.0
        case DataType::CString:
            return value.GetString().GetTextHash();
        case DataType::DateTime:
            return HashOf(value.GetDateTime());
        case DataType::Boolean:
            return value.GetBoolean() ? 1 : 0;
        case DataType::Date:
            return HashOf(value.GetDate());
        case DataType::Tuple:
            return HashOf(value.GetTuple());
        case DataType::Spatial:
            return std::hash<TString>()(value.GetSpatial().GetText());
        case DataType::Unknown:
            break;
    }
    return 0;
}

double NumberOf(const DataValue& value) {
    if (value.IsSpecial() || (value.GetDataType() != DataType::Integer && value.GetDataType() != DataType::Real)) {
        throw QuorvelException(u"Data value is not a number");
    }
    return value.GetDataType() == DataType::Real ? value.GetReal() : static_cast<double>(value.GetInteger());
}

bool HoldsInteger(const DataValue& value) noexcept {
    return value.GetDataType() == DataType::Integer && !value.IsSpecial();
}

template <class Operation>
DataValue Calculate(const DataValue& left, const DataValue& right, Operation operation) {
    if (HoldsInteger(left) && HoldsInteger(right)) {
        // Unsigned, so that an overflow wraps.
        return static_cast<Int64>(
            operation(static_cast<UInt64>(left.GetInteger()), static_cast<UInt64>(right.GetInteger())));
    }
    return operation(NumberOf(left), NumberOf(right));
}

}  // namespace

DataValue DataValue::Null(DataType type, const Collation& collation) {
    if (type > DataType::Unknown) {
        throw QuorvelException(u"Data type is not valid");
    }
    DataValue null;
    null.m_type = type;
    if (type == DataType::CString) {
        null.m_value = collation;
    }
    return null;
}

DataValue::DataValue(double value, std::uint8_t precision, std::uint8_t scale) noexcept : m_type(DataType::Real) {
    if (std::isfinite(value)) {
        m_value = value;
        m_precision = precision;
        m_scale = scale;
    }
}

DataValue::DataValue(IndirectString value) noexcept : m_value(std::move(value)), m_type(DataType::CString) {}

DataValue::DataValue(const Date& value) : m_value(value), m_type(DataType::Date) {
    if (!IsCalendarDate(value)) {
        throw QuorvelException(u"Date is not a calendar day of the years 1 to 9999");
    }
}

DataValue::DataValue(const DateTime& value) noexcept : m_value(value), m_type(DataType::DateTime) {}

DataValue::DataValue(RefCntPtr<Tuple> value) noexcept : m_type(DataType::Tuple) {
    if (value) {
        m_value = std::move(value);
    }
}

DataValue::DataValue(Spatial value) noexcept : m_value(std::move(value)), m_type(DataType::Spatial) {}

const Collation& DataValue::GetCollation() const noexcept {
    if (const Collation* collation = std::get_if<Collation>(&m_value)) {
        return *collation;
    }
    const IndirectString* string = std::get_if<IndirectString>(&m_value);
    return string != nullptr ? string->GetCollation() : GetUnknownCollation();
}

bool operator==(const DataValue& left, const DataValue& right) {
    if (left.m_type != right.m_type || left.IsSpecial() != right.IsSpecial()) {
        return false;
    }
    if (left.IsSpecial()) {
        return true;
    }
    switch (left.m_type) {
        case DataType::CString:
            return EqualStrings(left.GetString(), right.GetString());
        case DataType::Tuple:
            return EqualTuples(left.GetTuple(), right.GetTuple());
        default:
            return CompareContent(left, right) == 0;
    }
}

std::weak_ordering operator<=>(const DataValue& left, const DataValue& right) {
    if (HoldsTuple(left) && HoldsTuple(right)) {
        return CompareTuples(left.GetTuple(), right.GetTuple());
    }
    return CompareOutside(left, right);
}

DataValue operator+(const DataValue& left, const DataValue& right) {
    return Calculate(left, right, [](auto a, auto b) { return a + b; });
}

DataValue operator-(const DataValue& left, const DataValue& right) {
    return Calculate(left, right, [](auto a, auto b) { return a - b; });
}

std::size_t DataValue::GetHash() const noexcept {
    const std::size_t kind = static_cast<std::size_t>(m_type) * 2 + (IsSpecial() ? 1 : 0);
    return qvcore::detail::MixHash(kind, IsSpecial() ? 0 : HashOfContent(*this));
}

void DataValue::ThrowOtherContent() { throw QuorvelException(u"Data value does not hold the requested type"); }
