// An enumeration without its type, its values as numbers: tests over all enumerations are compiled once and run for
// each.
#pragma once

#include <iterator>
#include <limits>
#include <map>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "serializers/EnumTablesData.h"

struct EnumCase {
    std::string name;
    TString first, last;  // the names of the first and the last row
    int firstNumber, lastNumber, defaultNumber;
    int minimum, maximum;  // of the type; maximum is never in use

    RefCntPtr<IParameterSerializer> (*createSerializer)();
    TString (*typeToString)(int);
    int (*typeFromString)(const TString&);
    void (*serializeVector)(SerializeStructure&, int, const std::vector<int>&);

    RefCntPtr<IParameter> (*value)(int);
    RefCntPtr<IParameter> (*list)(const std::vector<int>&);
    RefCntPtr<IParameter> (*map)(const std::map<TString, int>&);
    int (*numberOf)(const IParameter&);
    std::vector<int> (*numbersOf)(const IParameter&);
    std::map<TString, int> (*numberMapOf)(const IParameter&);
};

inline std::ostream& operator<<(std::ostream& out, const EnumCase& c) { return out << c.name; }

template <class E>
struct EnumCaseOf {
    using Serializer = ParameterTypeSerializer<E>;
    using Limits = std::numeric_limits<std::underlying_type_t<E>>;

    static EnumCase Make(const char* name) {
        const auto& firstRow = *std::begin(EnumRows<E>::kRows);
        const auto& lastRow = *std::prev(std::end(EnumRows<E>::kRows));
        return {name,
                firstRow.name,
                lastRow.name,
                firstRow.number,
                lastRow.number,
                static_cast<int>(EnumRows<E>::kDefault),
                Limits::min(),
                Limits::max(),
                CreateParameterSerializer<Serializer>,
                [](int number) { return Serializer::TypeToString(Enum(number)); },
                [](const TString& text) { return static_cast<int>(Serializer::TypeFromString(text)); },
                [](SerializeStructure& stream, int id, const std::vector<int>& numbers) {
                    Serializer().SerializeVector(stream, id, Enums(numbers));
                },
                [](int number) -> RefCntPtr<IParameter> { return MakeRefCnt<ValParameter<E>>(Enum(number)); },
                [](const std::vector<int>& numbers) -> RefCntPtr<IParameter> {
                    return MakeRefCnt<ValParameter<std::vector<E>>>(Enums(numbers));
                },
                MapOf,
                [](const IParameter& value) { return static_cast<int>(GetParameterValue<E>(&value)); },
                NumbersOf,
                NumberMapOf};
    }

private:
    static E Enum(int number) { return static_cast<E>(number); }

    static std::vector<E> Enums(const std::vector<int>& numbers) {
        std::vector<E> values;
        for (const int number : numbers) {
            values.push_back(Enum(number));
        }
        return values;
    }

    static RefCntPtr<IParameter> MapOf(const std::map<TString, int>& numbers) {
        std::map<TString, E> values;
        for (const auto& [key, number] : numbers) {
            values[key] = Enum(number);
        }
        return MakeRefCnt<ValParameter<std::map<TString, E>>>(values);
    }

    static std::vector<int> NumbersOf(const IParameter& value) {
        std::vector<int> numbers;
        for (const E element : GetParameterValue<std::vector<E>>(&value)) {
            numbers.push_back(static_cast<int>(element));
        }
        return numbers;
    }

    static std::map<TString, int> NumberMapOf(const IParameter& value) {
        std::map<TString, int> numbers;
        for (const auto& [key, element] : GetParameterValue<std::map<TString, E>>(&value)) {
            numbers[key] = static_cast<int>(element);
        }
        return numbers;
    }
};

inline std::vector<EnumCase> AllEnumCases() {
    return {
        EnumCaseOf<AggType>::Make("AggType"),
        EnumCaseOf<BoxplotStyle>::Make("BoxplotStyle"),
        EnumCaseOf<DataScaling>::Make("DataScaling"),
        EnumCaseOf<DataType>::Make("DataType"),
        EnumCaseOf<FontWeight>::Make("FontWeight"),
        EnumCaseOf<ForecastModelType>::Make("ForecastModelType"),
        EnumCaseOf<ForecastRangeType>::Make("ForecastRangeType"),
        EnumCaseOf<ForecastStatus>::Make("ForecastStatus"),
        EnumCaseOf<ParserMode>::Make("ParserMode"),
        EnumCaseOf<StyleAttribute>::Make("StyleAttribute"),
        EnumCaseOf<StyleDataClass>::Make("StyleDataClass"),
        EnumCaseOf<StyleElement>::Make("StyleElement"),
        EnumCaseOf<StyleFieldScope>::Make("StyleFieldScope"),
        EnumCaseOf<StyleSwatch>::Make("StyleSwatch"),
        EnumCaseOf<QuorvelFontStyle>::Make("QuorvelFontStyle"),
        EnumCaseOf<TextAlign>::Make("TextAlign"),
        EnumCaseOf<TextBreakMode>::Make("TextBreakMode"),
        EnumCaseOf<TextDecoration>::Make("TextDecoration"),
        EnumCaseOf<TextOrient>::Make("TextOrient"),
        EnumCaseOf<TextWholeLineMode>::Make("TextWholeLineMode"),
        EnumCaseOf<TextWrapMode>::Make("TextWrapMode"),
        EnumCaseOf<WhiskerEnd>::Make("WhiskerEnd"),
    };
}
