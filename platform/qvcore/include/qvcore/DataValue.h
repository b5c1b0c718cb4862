// Typed values.
//
// Threads: const operations may run at once on several threads; a change needs exclusion. Copies are independent, even
// where they share a text or a tuple.
//
// Exceptions: what throws is strong. Copying, moving, assigning and hashing never throw, and so do comparing and
// ordering but for nested tuples.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <variant>

#include <qvsys/RefCntPtr.h>

#include <qvcore/Collation.h>
#include <qvcore/DataType.h>
#include <qvcore/Date.h>
#include <qvcore/Export.h>
#include <qvcore/IndirectString.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/Spatial.h>
#include <qvcore/Tuple.h>

namespace qvcore::detail {

template <class T>
concept CharacterType = std::same_as<T, char> || std::same_as<T, wchar_t> || std::same_as<T, char8_t> ||
    std::same_as<T, char16_t> || std::same_as<T, char32_t>;

// The integer types that an Int64 holds without loss; characters and bool are no integers.
template <class T>
concept FitsInteger = std::integral<T> && !std::same_as<T, bool> && !CharacterType<T> &&
                      (std::signed_integral<T> || sizeof(T) < sizeof(Int64));

// The other integral types but bool; they would otherwise turn into reals in silence.
template <class T>
concept FitsNothing = std::integral<T> && !std::same_as<T, bool> && !FitsInteger<T>;

}  // namespace qvcore::detail

// A value of one of the types of DataType, or the null of one of them. Null is the only special value, and every type
// has one; the type unknown has nothing else.
//
// At most 40 bytes. Copying allocates nothing: texts and tuples are shared and never change.
class QVCORE_API DataValue {
public:
    // Precision and scale of a real that has none.
    static constexpr std::uint8_t kUnset = 255;

    // The null of type unknown.
    DataValue() noexcept = default;

    // The null of a type. The collation is kept for CString and dropped for every other type. QuorvelException for a
    // number that is no DataType.
    static DataValue Null(DataType type, const Collation& collation = {});

    template <qvcore::detail::FitsInteger T>
    DataValue(T value) noexcept : m_value(static_cast<Int64>(value)), m_type(DataType::Integer) {}

    template <std::same_as<bool> T>
    DataValue(T value) noexcept : m_value(static_cast<bool>(value)), m_type(DataType::Boolean) {}

    // Unsigned 64-bit integers and characters: the caller says what they are to become.
    template <qvcore::detail::FitsNothing T>
    DataValue(T) = delete;

    // A NaN or an infinity becomes the null of type real. Precision and scale are labels: they never change the digits.
    DataValue(double value, std::uint8_t precision = kUnset, std::uint8_t scale = kUnset) noexcept;

    // A text, with the text's collation.
    DataValue(IndirectString value) noexcept;

    // QuorvelException when the date is no calendar day of the years 1 to 9999.
    DataValue(const Date& value);
    DataValue(const DateTime& value) noexcept;

    // Shares the tuple; an empty pointer gives the null of type tuple.
    DataValue(RefCntPtr<Tuple> value) noexcept;
    DataValue(Spatial value) noexcept;

    DataType GetDataType() const noexcept { return m_type; }
    bool IsSpecial() const noexcept { return m_value.index() == 0; }

    // The text's collation, a null text's included; the unknown collation for every other value. Valid until the value
    // changes.
    const Collation& GetCollation() const noexcept;

    // The labels of a real; kUnset for every other value and for a null.
    std::uint8_t GetPrecision() const noexcept { return m_precision; }
    std::uint8_t GetScale() const noexcept { return m_scale; }

    // The content; QuorvelException when the value is of another type or null. Nothing is converted. References are
    // valid until the value changes.
    Int64 GetInteger() const { return Content<Int64>(); }
    double GetReal() const { return Content<double>(); }
    const IndirectString& GetString() const { return Content<IndirectString>(); }
    const DateTime& GetDateTime() const { return Content<DateTime>(); }
    bool GetBoolean() const { return Content<bool>(); }
    const Date& GetDate() const { return Content<Date>(); }
    const RefCntPtr<Tuple>& GetTuple() const { return Content<RefCntPtr<Tuple>>(); }
    const Spatial& GetSpatial() const { return Content<Spatial>(); }

    // Equal: same type, both null or both not, same content. Precision, scale and collation do not count; -0.0 equals
    // 0.0; tuples compare by their values, for which memory is needed (std::bad_alloc).
    friend QVCORE_API bool operator==(const DataValue& left, const DataValue& right);

    // A total order that agrees with ==: by type number, null first, then by content. Texts go by code unit, tuples by
    // their first difference and then by their length. Comparing nested tuples may raise std::bad_alloc.
    friend QVCORE_API std::weak_ordering operator<=>(const DataValue& left, const DataValue& right);

    // Sum and difference of integers and reals: two integers give an integer modulo 2^64, a real among them gives a
    // real without labels (null when it is not finite). QuorvelException for a null and for every other type.
    friend QVCORE_API DataValue operator+(const DataValue& left, const DataValue& right);
    friend QVCORE_API DataValue operator-(const DataValue& left, const DataValue& right);

    // Equal for equal values.
    std::size_t GetHash() const noexcept;

private:
    template <class T>
    const T& Content() const {
        const T* content = std::get_if<T>(&m_value);
        if (content == nullptr) [[unlikely]] {
            ThrowOtherContent();
        }
        return *content;
    }
    [[noreturn]] static void ThrowOtherContent();

    // The first alternative stands for null and keeps its collation.
    std::variant<Collation, Int64, double, bool, Date, DateTime, IndirectString, RefCntPtr<Tuple>, Spatial> m_value;
    DataType m_type = DataType::Unknown;
    std::uint8_t m_precision = kUnset;  // kUnset but for a real that is not null, as is m_scale
    std::uint8_t m_scale = kUnset;
};

static_assert(sizeof(DataValue) <= 40, "lists of typed values are kept by the million");

template <>
struct std::hash<DataValue> {
    std::size_t operator()(const DataValue& value) const noexcept { return value.GetHash(); }
};
