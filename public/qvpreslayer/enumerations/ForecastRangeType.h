// How far a forecast reaches.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API ForecastRangeType : int {
    Auto = 0,   // as far as the data carries
    Next = 1,   // a number of periods
    EndOf = 2,  // to the end of a period
};

inline constexpr EnumName<ForecastRangeType> kForecastRangeTypeNames[] = {
    {ForecastRangeType::Auto, u"auto"},
    {ForecastRangeType::Next, u"next"},
    {ForecastRangeType::EndOf, u"end-of"},
};

template <>
struct ParameterTypeTraits<ForecastRangeType> : EnumTraits<kForecastRangeTypeNames, ForecastRangeType::Auto> {};

extern template class ParameterTypeSerializer<ForecastRangeType>;
