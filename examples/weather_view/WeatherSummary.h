// What the table says in short: what the view shows beside the columns.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include <qvcore/IntegerTypes.h>
#include <qvcore/TString.h>

#include "WeatherTable.h"

namespace weather {

// Some of the days: those of a year, those with the same weather.
struct DayGroup {
    unsigned int days = 0;
    double hottest = 0;  // degrees Celsius
    double coldest = 0;  // degrees Celsius
    Int64 tenths = 0;    // tenths of a millimetre of precipitation: sums of tenths are exact, sums of reals are not
};

struct WeatherSummary {
    DayGroup all;
    std::size_t hottestDay = 0;  // position in the table; the first of equals
    std::size_t wettestDay = 0;  // likewise
    double windiest = 0;         // metres per second
    std::map<int, DayGroup> byYear;
    std::map<TString, DayGroup> byCondition;
    std::vector<Int64> tenthsByMonth;  // January to December, over all years
};

// Requires: the table has a day.
WeatherSummary Summarize(const WeatherTable& table);

}  // namespace weather
