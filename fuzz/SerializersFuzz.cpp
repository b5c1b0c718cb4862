// Each scalar serializer, on any text and on any value. Promised:
//
//   - a text is taken or refused as its type's grammar says, by the exception that its header names, and its value is
//     the exact one (integers by wide arithmetic, reals by the C library's correctly rounding conversion);
//   - a value's text is the slow model's, and comes back where it can;
//   - lists and maps are the same, element by element.
//
// The last byte chooses the type, the one before it whether the others are a text (UTF-8, or units) or make a value.
#include <cstring>
#include <map>
#include <vector>

#include "fuzz/support/RandomBag.h"
#include "fuzz/support/ScalarModels.h"

using namespace fuzz;

namespace {

template <class E>
requires std::is_enum_v<E> E RandomEnum(Bytes& bytes) {
    const auto lines = GetEnumValues<E>();
    return lines[bytes.Raw<std::uint16_t>() % lines.size()].value;
}

template <class T>
T RandomOf(Bytes& bytes) {
    if constexpr (std::is_enum_v<T>) {
        return RandomEnum<T>(bytes);
    } else if constexpr (std::is_same_v<T, QualifiedName>) {
        return Random<FieldName>::Of(bytes);
    } else {
        return Random<T>::Of(bytes);
    }
}

template <class T>
bool IsSame(const T& left, const T& right) {
    if constexpr (std::is_floating_point_v<T>) {
        return (left != left && right != right) || (left == right && std::signbit(left) == std::signbit(right));
    } else {
        return left == right;
    }
}

template <class T>
void CheckReading(const TString& text) {
    using Model = scalar_model::Model<T>;
    SerializerOf<T> serializer;
    const std::optional<T> expected = Model::Read(text);
    const auto checkRefused = [&](auto&& reading) {
        try {
            reading();
        } catch (const std::exception& failure) {
            Require(!expected && Model::IsRefusal(failure), "a text is refused as its grammar says");
            return true;
        }
        return false;
    };
    const bool refused = checkRefused([&] {
        const RefCntPtr<IParameter> value = serializer.FromString(text);
        Require(expected.has_value(), "a text that is no value is refused");
        Require(IsSame(*expected, GetParameterValue<T>(value.Get())), "the value of a text");
        RequireEqual(Model::Write(*expected), serializer.ToString(value), "the text of a value that was read");
    });
    Require(refused == checkRefused([&] {
                const RefCntPtr<IParameter> list = serializer.FromStringList({text, text}, {});
                const auto& values = GetParameterValue<std::vector<T>>(list.Get());
                Require(values.size() == 2 && IsSame<T>(values[0], *expected) && IsSame<T>(values[1], *expected),
                        "a list is read element by element");
            }),
            "lists refuse what single values do");
    Require(refused == checkRefused([&] {
                const RefCntPtr<IParameter> map = serializer.FromStringMap({{text, text}});
                Require(IsSame<T>(GetParameterValue<std::map<TString, T>>(map.Get()).at(text), *expected),
                        "a map is read element by element");
            }),
            "maps refuse what single values do");
}

template <class T>
void CheckWriting(const T& value) {
    using Model = scalar_model::Model<T>;
    SerializerOf<T> serializer;
    const TString expected = Model::Write(value);
    RequireEqual(expected, serializer.ToString(Val<T>(value)), "the text of a value");
    Require(serializer.ToStringList(Val(std::vector<T>(3, value))) == std::vector<TString>(3, expected),
            "the texts of a list");
    Require(serializer.ToStringMap(Val(std::map<TString, T>{{L"k", value}})) ==
                std::map<TString, TString>{{L"k", expected}},
            "the texts of a map");
    if (Model::ComesBack(value)) {
        const RefCntPtr<IParameter> back = serializer.FromString(expected);
        Require(IsSame(value, GetParameterValue<T>(back.Get())), "a value comes back from its text");
    }
}

template <class T>
void CheckOne(Bytes& bytes) {
    switch (bytes.LastByte() % 3) {
        case 0:
            return CheckWriting<T>(RandomOf<T>(bytes));
        case 1:
            return CheckReading<T>(bytes.RestAsText(false));
        default:
            return CheckReading<T>(bytes.RestAsText(true));
    }
}

template <class... T>
void CheckChosen(Bytes& bytes) {
    constexpr void (*kChecks[])(Bytes&) = {&CheckOne<T>...};
    const std::size_t chosen = bytes.LastByte() % std::size(kChecks);
    kChecks[chosen](bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    CheckChosen<int, unsigned int, Int64, UInt64, float, double, bool, TString, TUUID, FieldName, QualifiedName,
                PasswordString, HoursDuration, MinutesDuration, SecondsDuration, MillisecondsDuration,
                MicrosecondsDuration, NanosecondsDuration, AggType, BoxplotStyle, DataScaling, DataType, FontWeight,
                ForecastModelType, ForecastRangeType, ForecastStatus, ParserMode, QuorvelFontStyle, StyleAttribute,
                StyleDataClass, StyleElement, StyleFieldScope, StyleSwatch, TextAlign, TextBreakMode, TextDecoration,
                TextOrient, TextWholeLineMode, TextWrapMode, WhiskerEnd>(bytes);
    return 0;
}
