// Random bags of a vocabulary: every kind and type, values at the ends of their ranges, nested a few levels deep.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "tools/vocabulary/ToolHost.h"
#include "tools/vocabulary/Vocabulary.h"

namespace randombags {

using qvpres::DeclaredKind;
using qvpres::ParameterDeclaration;
using qvpres::ValueType;

// The same on every machine: distributions of the standard library are not.
class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}

    std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(m_engine() % bound); }
    bool OneIn(std::uint32_t bound) { return Below(bound) == 0; }
    std::uint64_t Bits() { return (std::uint64_t{m_engine()} << 32) | m_engine(); }

private:
    std::mt19937 m_engine;
};

// Units of any sort but U+0000, which no other reader of JSON takes, and halves of surrogate pairs, which UTF-8 has
// not.
inline TString AnyText(Random& random) {
    static const TString s_pieces[] = {L"a", L"Z", L" ", L"\"", L"\\",   L"/", L"\n",     L"\x1f",    L"\x7f", L"-b",
                                       L"[", L"]", L",", L"{",  L"null", L"ä", L"\x2028", L"\x1F600", L":"};
    TString text;
    for (std::uint32_t i = random.Below(6); i > 0; --i) {
        text += s_pieces[random.Below(std::size(s_pieces))];
    }
    return text;
}

template <class T>
T AnyInteger(Random& random) {
    switch (random.Below(5)) {
        case 0:
            return std::numeric_limits<T>::min();
        case 1:
            return std::numeric_limits<T>::max();
        case 2:
            return static_cast<T>(random.Bits());
        default:
            return static_cast<T>(random.Below(10));
    }
}

template <class T>
T AnyReal(Random& random) {
    switch (random.Below(6)) {
        case 0:
            return std::numeric_limits<T>::quiet_NaN();
        case 1:
            return random.OneIn(2) ? std::numeric_limits<T>::infinity() : -std::numeric_limits<T>::max();
        case 2:
            return static_cast<T>(
                std::ldexp(static_cast<double>(random.Below(1000)), static_cast<int>(random.Below(80)) - 40));
        default:
            return static_cast<T>(random.Below(4)) - T(1);
    }
}

inline TString AnyName(Random& random) {
    TString name;
    for (std::uint32_t i = random.Below(8) + 1; i > 0; --i) {
        name += (name.empty() ? L"[" : L".[") + AnyText(random).replace(L"]", L"]]") + L"x]";
    }
    return random.OneIn(3) ? TString(L"plain") : name;
}

inline DataValue AnyDataValue(Random& random, DataType type, int depth = 0) {
    if (type == DataType::Unknown || random.OneIn(8)) {
        return DataValue::Null(type);
    }
    const Date date(std::chrono::year(static_cast<int>(random.Below(9999)) + 1),
                    std::chrono::month(random.Below(12) + 1), std::chrono::day(random.Below(28) + 1));
    switch (type) {
        case DataType::Integer:
            return AnyInteger<Int64>(random);
        case DataType::Real:
            return random.OneIn(3) ? DataValue(AnyReal<double>(random), 10, 2) : DataValue(AnyReal<double>(random));
        case DataType::Boolean:
            return random.OneIn(2);
        case DataType::Date:
            return date;
        case DataType::DateTime:
            return DateTime(date, std::chrono::nanoseconds(static_cast<Int64>(random.Bits() % 86400000000000U)));
        case DataType::Tuple: {
            std::vector<DataValue> values;
            for (std::uint32_t i = random.Below(3); i > 0 && depth < 3; --i) {
                values.push_back(
                    AnyDataValue(random, random.OneIn(2) ? DataType::Tuple : DataType::Integer, depth + 1));
            }
            return MakeRefCnt<Tuple>(std::move(values));
        }
        default:
            return IndirectString::Lookup(Collation(L"root"), AnyText(random));
    }
}

constexpr DataType kWritableTypes[] = {DataType::Integer, DataType::Real, DataType::CString, DataType::DateTime,
                                       DataType::Boolean, DataType::Date, DataType::Tuple,   DataType::Unknown};

inline DataType AnyDataType(Random& random) { return kWritableTypes[random.Below(std::size(kWritableTypes))]; }

// A value of T; by type, so that lists and maps follow.
template <class T>
T AnyValue(Random& random) {
    if constexpr (std::is_same_v<T, TString>) {
        return AnyText(random);
    } else if constexpr (std::is_same_v<T, bool>) {
        return random.OneIn(2);
    } else if constexpr (std::is_integral_v<T>) {
        return AnyInteger<T>(random);
    } else if constexpr (std::is_floating_point_v<T>) {
        return AnyReal<T>(random);
    } else if constexpr (std::is_same_v<T, FieldName> || std::is_same_v<T, QualifiedName>) {
        return random.OneIn(9) ? T() : T::ParseGlobal(AnyName(random));
    } else if constexpr (std::is_same_v<T, PasswordString>) {
        return PasswordString(AnyText(random));
    } else if constexpr (std::is_same_v<T, TUUID>) {
        return TUUID(L"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e2" + TString::number(random.Below(10)));
    } else if constexpr (std::is_same_v<T, DataValue>) {
        return AnyDataValue(random, AnyDataType(random));
    } else if constexpr (std::is_same_v<T, CoreParameterID>) {
        return random.OneIn(2) ? CoreParameterID::FloatRLE : CoreParameterID::ParamType;
    } else if constexpr (std::is_enum_v<T>) {
        return GetEnumValues<T>()[random.Below(static_cast<std::uint32_t>(GetEnumValues<T>().size()))].value;
    } else {
        return T(AnyInteger<typename T::rep>(random));  // a duration
    }
}

// Lists with runs in them.
template <class T>
std::vector<T> AnyList(Random& random) {
    std::vector<T> list;
    const DataType column = AnyDataType(random);
    for (std::uint32_t i = random.Below(4); i > 0; --i) {
        T value = AnyValue<T>(random);
        if constexpr (std::is_same_v<T, DataValue>) {
            value = AnyDataValue(random, random.OneIn(20) ? AnyDataType(random) : column);
        }
        list.insert(list.end(), random.OneIn(2) ? 1 : 5, value);
        if constexpr (std::is_same_v<T, int> || std::is_same_v<T, UInt64>) {
            for (T j = 0; j < 5; ++j) {
                list.push_back(T(100) - T(3) * j);
            }
        }
    }
    return list;
}

template <class T>
void SetAny(IParameters& bag, const ParameterDeclaration& parameter, Random& random) {
    if (parameter.kind == DeclaredKind::Value) {
        SetParameterValue<T>(bag, parameter.id, AnyValue<T>(random));
    } else if (parameter.kind == DeclaredKind::List) {
        SetParameterValue<std::vector<T>>(bag, parameter.id, AnyList<T>(random));
    } else {
        std::map<TString, T> map;
        for (const wchar_t* key : {L"", L"a", L"b-c", L"ä"}) {
            if (random.OneIn(2)) {
                map.emplace(key, AnyValue<T>(random));
            }
        }
        SetParameterValue<std::map<TString, T>>(bag, parameter.id, std::move(map));
    }
}

using Setter = void (*)(IParameters&, const ParameterDeclaration&, Random&);

inline Setter SetterOf(const ValueType& type) {
#define SETTER(Name, T) \
    { Name, SetAny<T> }
#define ENUMERATION(E) \
    { u## #E, SetAny<E> }
    static const std::map<std::u16string_view, Setter> s_setters = {
        SETTER(u"text", TString),
        SETTER(u"int", int),
        SETTER(u"unsigned-int", unsigned int),
        SETTER(u"int64", Int64),
        SETTER(u"uint64", UInt64),
        SETTER(u"float", float),
        SETTER(u"double", double),
        SETTER(u"bool", bool),
        SETTER(u"field-name", FieldName),
        SETTER(u"qualified-name", QualifiedName),
        SETTER(u"uuid", TUUID),
        SETTER(u"password", PasswordString),
        SETTER(u"hours", HoursDuration),
        SETTER(u"minutes", MinutesDuration),
        SETTER(u"seconds", SecondsDuration),
        SETTER(u"milliseconds", MillisecondsDuration),
        SETTER(u"microseconds", MicrosecondsDuration),
        SETTER(u"nanoseconds", NanosecondsDuration),
        SETTER(u"data-value", DataValue),
        SETTER(u"parameter-id", CoreParameterID),
        ENUMERATION(AggType),
        ENUMERATION(BoxplotStyle),
        ENUMERATION(DataScaling),
        ENUMERATION(DataType),
        ENUMERATION(FontWeight),
        ENUMERATION(ForecastModelType),
        ENUMERATION(ForecastRangeType),
        ENUMERATION(ForecastStatus),
        ENUMERATION(ParserMode),
        ENUMERATION(QuorvelFontStyle),
        ENUMERATION(StyleAttribute),
        ENUMERATION(StyleDataClass),
        ENUMERATION(StyleElement),
        ENUMERATION(StyleFieldScope),
        ENUMERATION(StyleSwatch),
        ENUMERATION(TextAlign),
        ENUMERATION(TextBreakMode),
        ENUMERATION(TextDecoration),
        ENUMERATION(TextOrient),
        ENUMERATION(TextWholeLineMode),
        ENUMERATION(TextWrapMode),
        ENUMERATION(WhiskerEnd),
    };
#undef SETTER
#undef ENUMERATION
    return s_setters.at(type.name);
}

// Makes bags of a namespace. accepts says which parameters may be used.
template <class Accepts>
class Maker {
public:
    Maker(const qvpres::Vocabulary& vocabulary, const qvpres::NamespaceDeclaration& nameSpace, bool shortNames,
          Accepts accepts, std::uint32_t seed)
        : m_vocabulary(vocabulary),
          m_nameSpace(nameSpace),
          m_reachable(vocabulary.GetReachable(nameSpace, shortNames)),
          m_accepts(accepts),
          m_random(seed) {}

    RefCntPtr<IParameters> Make() { return MakeOf(m_reachable, 0); }

private:
    using Bags = BagStructureSerializer::Bags;
    using BagMap = BagStructureSerializer::BagMap;

    static constexpr int kDepth = 3;

    RefCntPtr<IParameters> MakeOf(const std::vector<const ParameterDeclaration*>& parameters, int depth) {
        const RefCntPtr<IParameters> bag = MakeRefCnt<qvpres::ToolBag>();
        // A few of many, and most of a few.
        const std::uint32_t oneIn = parameters.size() < 5 ? 2 : depth == 0 ? 4 : 12;
        for (const ParameterDeclaration* parameter : parameters) {
            if (m_accepts(*parameter) && m_random.OneIn(oneIn)) {
                Set(*bag, *parameter, depth);
            }
        }
        return bag;
    }

    void Set(IParameters& bag, const ParameterDeclaration& parameter, int depth) {
        if (parameter.HasType()) {
            SetterOf (*parameter.type)(bag, parameter, m_random);
        } else if (depth < kDepth) {
            SetBags(bag, parameter, depth + 1);
        }
    }

    void SetBags(IParameters& bag, const ParameterDeclaration& parameter, int depth) {
        const auto make = [&] { return RefCntPtr<const IParameters>(MakeInside(parameter, depth)); };
        if (parameter.kind == DeclaredKind::StructureList) {
            Bags bags;
            for (std::uint32_t i = m_random.Below(3); i > 0; --i) {
                bags.push_back(make());
            }
            SetParameterValue<Bags>(bag, parameter.id, std::move(bags));
        } else if (parameter.kind == DeclaredKind::StructureMap) {
            SetParameterValue<BagMap>(bag, parameter.id, {{L"a", make()}, {L"b-c", nullptr}, {L"d", make()}});
        } else {
            SetParameterValue<RefCntPtr<const IParameters>>(bag, parameter.id, make());
        }
    }

    RefCntPtr<IParameters> MakeInside(const ParameterDeclaration& parameter, int depth) {
        if (parameter.listForm) {
            const RefCntPtr<IParameters> texts = MakeRefCnt<qvpres::ToolBag>();
            SetParameterValue<std::vector<TString>>(*texts, parameter.id, AnyList<TString>(m_random));
            return texts;
        }
        if (!parameter.members) {
            return MakeOf(m_reachable, depth);
        }
        std::vector<const ParameterDeclaration*> members;
        for (const TString& name : *parameter.members) {
            members.push_back(m_vocabulary.Resolve(m_nameSpace, name));
        }
        return MakeOf(members, depth);
    }

    const qvpres::Vocabulary& m_vocabulary;
    const qvpres::NamespaceDeclaration& m_nameSpace;
    std::vector<const ParameterDeclaration*> m_reachable;
    Accepts m_accepts;
    Random m_random;
};

}  // namespace randombags
