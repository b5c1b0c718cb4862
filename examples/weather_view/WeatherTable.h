// Daily weather as typed columns, and the file that it comes from.
#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <vector>

#include <qvcore/TString.h>

namespace weather {

// The columns of the file, in order.
inline constexpr std::array<const wchar_t*, 6> kColumnNames = {L"date",     L"precipitation", L"temp_max",
                                                               L"temp_min", L"wind",          L"weather"};

// One row for each day; all columns have the same length.
struct WeatherTable {
    std::vector<int> dayNumbers;        // days since 1970-01-01: consecutive days pack into a single run
    std::vector<double> precipitation;  // millimetres
    std::vector<double> tempMax;        // degrees Celsius
    std::vector<double> tempMin;        // degrees Celsius
    std::vector<double> wind;           // metres per second
    std::vector<TString> conditions;    // "rain", "sun" and so on

    std::size_t GetDayCount() const noexcept { return dayNumbers.size(); }
};

// Reads comma-separated text with one line of column names, which must be kColumnNames. std::runtime_error naming the
// line when it is anything else.
WeatherTable ReadWeatherTable(std::istream& csv);

// A day number as text, such as "2012-01-31".
TString DateText(int dayNumber);

// The calendar year and the month (0 to 11) of a day number.
int YearOf(int dayNumber);
unsigned int MonthOf(int dayNumber);

}  // namespace weather
