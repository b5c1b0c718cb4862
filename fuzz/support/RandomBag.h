// Values and bags made from bytes. Included by the targets that write.
#pragma once

#include <chrono>
#include <concepts>
#include <limits>
#include <map>
#include <type_traits>
#include <vector>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/ViewHost.h"

namespace fuzz {

// A value of one type; specialised for all that travel.
template <class T>
struct Random;

// Numbers around which the rules change, and all others.
template <std::integral T>
struct Random<T> {
    static T Of(Bytes& bytes) {
        constexpr Int64 kEdges[] = {134217727,  134217728,  500000000,          999999999,
                                    2147483647, 4294967295, 500000000000000000, 5000000000000000000};
        const auto more = static_cast<T>(bytes.Below(4));
        switch (bytes.Below(5)) {
            case 0:
                return more;
            case 1:
                return static_cast<T>(bytes.Of(kEdges) + static_cast<Int64>(more));
            case 2:
                return static_cast<T>(-bytes.Of(kEdges) - static_cast<Int64>(more));
            case 3:
                return static_cast<T>(bytes.Coin() ? std::numeric_limits<T>::max() - more
                                                   : std::numeric_limits<T>::min() + more);
            default:
                return bytes.Raw<T>();
        }
    }
};

template <>
struct Random<bool> {
    static bool Of(Bytes& bytes) { return bytes.Coin(); }
};

template <std::floating_point T>
struct Random<T> {
    static T Of(Bytes& bytes) {
        constexpr T kEdges[] = {T(0),
                                T(-0.0),
                                T(1),
                                T(-2.5),
                                T(0.1),
                                T(1) / T(3),
                                T(0.5e-14),
                                T(4294967295.0),
                                T(1e15),
                                T(1e20),
                                T(-1e30),
                                T(0.99999999),
                                T(63.7),
                                std::numeric_limits<T>::infinity(),
                                std::numeric_limits<T>::quiet_NaN(),
                                std::numeric_limits<T>::max(),
                                std::numeric_limits<T>::denorm_min()};
        switch (bytes.Below(3)) {
            case 0:
                return bytes.Of(kEdges);
            case 1:
                return static_cast<T>(bytes.Raw<std::int16_t>()) / T(256);
            default:
                return bytes.Raw<T>();
        }
    }
};

template <>
struct Random<TString> {
    static TString Of(Bytes& bytes) { return bytes.Text(12); }
};

template <>
struct Random<TUUID> {
    static TUUID Of(Bytes& bytes) {
        TString text(L"00000000-0000-4000-8000-000000000000");
        for (const std::size_t at : {0u, 7u, 9u, 35u}) {
            text.mutable_data()[at] = static_cast<char16_t>(u"0123456789abcdef"[bytes.Below(16)]);
        }
        return TUUID(text);
    }
};

template <>
struct Random<FieldName> {
    static FieldName Of(Bytes& bytes) {
        TString text;
        for (std::size_t segments = bytes.Below(4); segments > 0; --segments) {
            const TString segment = TString(u"n") + bytes.Text(4).replace(u"]", u"]]");
            text += (text.empty() ? u"[" : u".[") + std::u16string(segment.view()) + u"]";
        }
        return text.empty() ? FieldName() : FieldName::ParseGlobal(text);
    }
};

template <>
struct Random<PasswordString> {
    static PasswordString Of(Bytes& bytes) { return PasswordString(bytes.Text(4)); }
};

template <>
struct Random<WhiskerEnd> {
    static WhiskerEnd Of(Bytes& bytes) { return static_cast<WhiskerEnd>(bytes.Below(3)); }
};

template <class Rep, class Period>
struct Random<std::chrono::duration<Rep, Period>> {
    static auto Of(Bytes& bytes) { return std::chrono::duration<Rep, Period>(Random<Rep>::Of(bytes)); }
};

inline Date RandomDate(Bytes& bytes) {
    using namespace std::chrono;
    const Date date(year(1 + bytes.Raw<std::uint16_t>() % 9999), month(1 + static_cast<unsigned>(bytes.Below(12))),
                    day(1 + static_cast<unsigned>(bytes.Below(31))));
    return date.ok() ? date : Date(date.year(), date.month(), day(28));
}

// Every type but spatial, which has no text. Up to depth levels of tuples.
inline DataValue RandomTyped(Bytes& bytes, int depth) {
    constexpr const wchar_t* kCollations[] = {L"root", L"unknown", L"", L"de_DE-1"};
    switch (bytes.Below(10)) {
        case 0:
        case 1:
            return Random<Int64>::Of(bytes);
        case 2:
            return {Random<double>::Of(bytes), bytes.Coin() ? bytes.Byte() : DataValue::kUnset,
                    bytes.Coin() ? bytes.Byte() : DataValue::kUnset};
        case 3:
            return bytes.Coin();
        case 4:
            return RandomDate(bytes);
        case 5: {
            const std::chrono::nanoseconds time(bytes.Raw<std::uint64_t>() % 86400000000000);
            return DateTime(RandomDate(bytes), bytes.Coin() ? time : std::chrono::floor<std::chrono::seconds>(time));
        }
        case 6:
            return DataValue::Null(static_cast<DataType>(bytes.Below(6)), Collation(bytes.Of(kCollations)));
        case 7:
            if (depth > 0) {
                std::vector<DataValue> values;
                for (std::size_t count = bytes.Below(4); count > 0; --count) {
                    values.push_back(RandomTyped(bytes, depth - 1));
                }
                return MakeRefCnt<Tuple>(std::move(values));
            }
            return DataValue();
        default:
            return IndirectString::Lookup(Collation(bytes.Of(kCollations)), bytes.Text(8));
    }
}

template <>
struct Random<DataValue> {
    static DataValue Of(Bytes& bytes) { return RandomTyped(bytes, 1); }
};

// Single values, repetitions and, of integers, progressions that wrap at the end of the type.
template <class T>
std::vector<T> RandomList(Bytes& bytes) {
    std::vector<T> values;
    for (std::size_t pieces = bytes.Below(8); pieces > 0; --pieces) {
        T value = Random<T>::Of(bytes);
        const std::size_t count = 1 + bytes.Below(7);
        if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            const auto step = static_cast<UInt64>(bytes.Coin() ? Random<T>::Of(bytes) : T(bytes.Below(3)));
            if (!values.empty() && bytes.Coin()) {
                value = values.back();
            }
            for (std::size_t i = 0; i < count; ++i) {
                values.push_back(value);
                value = static_cast<T>(static_cast<UInt64>(value) + step);
            }
        } else {
            values.insert(values.end(), count, value);
        }
    }
    return values;
}

// Letters that names and keys hold, and any others.
inline TString RandomKey(Bytes& bytes) {
    constexpr const wchar_t* kKeys[] = {L"a", L"a-b", L"aB", L"b", L"-x", L"A", L"1", L""};
    return bytes.Coin() ? bytes.Of(kKeys) : bytes.Text(4);
}

template <class T>
std::map<TString, T> RandomMap(Bytes& bytes) {
    std::map<TString, T> values;
    for (std::size_t count = bytes.Below(5); count > 0; --count) {
        TString key = RandomKey(bytes);
        values.insert_or_assign(std::move(key), Random<T>::Of(bytes));
    }
    return values;
}

// Bags of the namespace "view", or with the offset kLong of "long": from the same bytes the same values.
class BagMaker {
public:
    BagMaker(Bytes& bytes, int offset) : m_bytes(bytes), m_offset(offset) {}

    RefCntPtr<IParameters> Bag(int depth) {
        const RefCntPtr<TestBag> bag = MakeBag();
        for (std::size_t entries = m_bytes.Below(6); entries > 0; --entries) {
            if (depth > 0 && m_bytes.Below(4) == 0) {
                AddStructured(*bag, depth - 1);
            } else {
                AddTyped(*bag);
            }
        }
        return bag;
    }

private:
    void AddTyped(IParameters& bag) {
        const int chosen = 10 * (1 + static_cast<int>(m_bytes.Below(15)));
        ForEachType([&]<class T>(int id, const wchar_t*, const wchar_t*) {
            if (id != chosen) {
                return;
            }
            switch (m_bytes.Below(3)) {
                case 0:
                    return SetParameterValue(bag, m_offset + id, Random<T>::Of(m_bytes));
                case 1:
                    return SetParameterValue(bag, m_offset + id + 1, RandomList<T>(m_bytes));
                default:
                    return SetParameterValue(bag, m_offset + id + 2, RandomMap<T>(m_bytes));
            }
        });
    }

    BagStructureSerializer::Bag Row(int id) { return MakeBag({{m_offset + id, Val(RandomList<TString>(m_bytes))}}); }

    void AddStructured(IParameters& bag, int depth) {
        BagStructureSerializer::Bags bags;
        BagStructureSerializer::BagMap map;
        switch (m_bytes.Below(6)) {
            case 0:
                return bag.SetParameter(m_offset + kBag, BagVal(Bag(depth)));
            case 1:
                return bag.SetParameter(m_offset + kRecord, BagVal(Bag(depth)));
            case 2:
                return bag.SetParameter(m_offset + kRow, MakeRefCnt<BagParameter>(Row(kRow)));
            case 3:
                for (std::size_t count = m_bytes.Below(4); count > 0; --count) {
                    bags.push_back(Bag(depth));
                }
                return SetParameterValue(bag, m_offset + kRecords, bags);
            case 4:
                for (std::size_t count = m_bytes.Below(4); count > 0; --count) {
                    bags.push_back(Row(kRows));
                }
                return SetParameterValue(bag, m_offset + kRows, bags);
            default:
                for (std::size_t count = m_bytes.Below(4); count > 0; --count) {
                    const TString key = RandomKey(m_bytes);
                    map[key] = m_bytes.Coin() ? BagStructureSerializer::Bag(Bag(depth)) : nullptr;
                }
                return SetParameterValue(bag, m_offset + kRecordsByKey, map);
        }
    }

    Bytes& m_bytes;
    int m_offset;
};

}  // namespace fuzz
