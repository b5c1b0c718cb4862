// Who chooses the model of a forecast.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API ForecastModelType : int {
    AutoSeason = 0,  // chosen, with seasons considered
    Auto = 1,        // chosen, without seasons
    Custom = 2,      // set by the user
};

inline constexpr EnumName<ForecastModelType> kForecastModelTypeNames[] = {
    {ForecastModelType::AutoSeason, u"auto-season"},
    {ForecastModelType::Auto, u"auto"},
    {ForecastModelType::Custom, u"custom"},
};

template <>
struct ParameterTypeTraits<ForecastModelType> : EnumTraits<kForecastModelTypeNames, ForecastModelType::AutoSeason> {};

extern template class ParameterTypeSerializer<ForecastModelType>;
