#include "WeatherSummary.h"

#include <algorithm>
#include <cmath>

namespace weather {

namespace {

void AddDay(DayGroup& group, const WeatherTable& table, std::size_t day) {
    group.hottest = group.days == 0 ? table.tempMax[day] : std::max(group.hottest, table.tempMax[day]);
    group.coldest = group.days == 0 ? table.tempMin[day] : std::min(group.coldest, table.tempMin[day]);
    group.tenths += std::llround(table.precipitation[day] * 10);
    ++group.days;
}

std::size_t PositionOfMaximum(const std::vector<double>& values) {
    return static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
}

}  // namespace

WeatherSummary Summarize(const WeatherTable& table) {
    WeatherSummary summary;
    summary.hottestDay = PositionOfMaximum(table.tempMax);
    summary.wettestDay = PositionOfMaximum(table.precipitation);
    summary.windiest = table.wind[PositionOfMaximum(table.wind)];
    summary.tenthsByMonth.resize(12);
    for (std::size_t day = 0; day < table.GetDayCount(); ++day) {
        AddDay(summary.all, table, day);
        AddDay(summary.byYear[YearOf(table.dayNumbers[day])], table, day);
        AddDay(summary.byCondition[table.conditions[day]], table, day);
        summary.tenthsByMonth[MonthOf(table.dayNumbers[day])] += std::llround(table.precipitation[day] * 10);
    }
    return summary;
}

}  // namespace weather
