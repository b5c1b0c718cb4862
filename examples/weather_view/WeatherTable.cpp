#include "WeatherTable.h"

#include <chrono>
#include <stdexcept>
#include <string>

namespace weather {

namespace {

using Fields = std::array<TString, kColumnNames.size()>;

[[noreturn]] void Refuse(int lineNumber, const std::string& why) {
    throw std::runtime_error("weather table, line " + std::to_string(lineNumber) + ": " + why);
}

std::string Quoted(const TString& text) {
    std::string quoted = "\"";
    quoted += text.ToUtf8();
    quoted += '"';
    return quoted;
}

Fields SplitLine(const std::string& line, int lineNumber) {
    const std::vector<TString> parts = TString::FromUtf8(line).split(L",");
    Fields fields;
    if (parts.size() != fields.size()) {
        Refuse(lineNumber, std::to_string(parts.size()) + " fields instead of " + std::to_string(fields.size()));
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = parts[i];
    }
    return fields;
}

double Number(const TString& text, int lineNumber) {
    bool ok = true;
    const double number = text.toDouble(&ok);
    if (!ok) {
        Refuse(lineNumber, Quoted(text) + " is no number");
    }
    return number;
}

// "2012-01-31" to the number of that day.
int DayNumber(const TString& text, int lineNumber) {
    const std::vector<TString> parts = text.split(L"-");
    if (parts.size() == 3) {
        const std::chrono::year_month_day date{std::chrono::year(parts[0].toInt()),
                                               std::chrono::month(parts[1].toUInt()),
                                               std::chrono::day(parts[2].toUInt())};
        if (date.ok()) {
            return static_cast<int>(std::chrono::sys_days(date).time_since_epoch().count());
        }
    }
    Refuse(lineNumber, Quoted(text) + " is no date");
}

std::chrono::year_month_day DateOf(int dayNumber) {
    return std::chrono::year_month_day(std::chrono::sys_days(std::chrono::days(dayNumber)));
}

bool ReadLine(std::istream& csv, std::string& line) {
    if (!std::getline(csv, line)) {
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

void CheckColumnNames(const Fields& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] != TString(kColumnNames[i])) {
            Refuse(1, Quoted(names[i]) + " instead of " + Quoted(kColumnNames[i]));
        }
    }
}

}  // namespace

WeatherTable ReadWeatherTable(std::istream& csv) {
    std::string line;
    if (!ReadLine(csv, line)) {
        Refuse(1, "there is no line of column names");
    }
    CheckColumnNames(SplitLine(line, 1));

    WeatherTable table;
    for (int lineNumber = 2; ReadLine(csv, line); ++lineNumber) {
        const Fields fields = SplitLine(line, lineNumber);
        table.dayNumbers.push_back(DayNumber(fields[0], lineNumber));
        table.precipitation.push_back(Number(fields[1], lineNumber));
        table.tempMax.push_back(Number(fields[2], lineNumber));
        table.tempMin.push_back(Number(fields[3], lineNumber));
        table.wind.push_back(Number(fields[4], lineNumber));
        table.conditions.push_back(fields[5]);
    }
    if (table.GetDayCount() == 0) {
        Refuse(2, "there are no days");
    }
    return table;
}

TString DateText(int dayNumber) {
    const std::chrono::year_month_day date = DateOf(dayNumber);
    TString text = TString::number(static_cast<int>(date.year()), 10, 4, u'0');
    text += u'-';
    text += TString::number(static_cast<unsigned int>(date.month()), 10, 2, u'0');
    text += u'-';
    text += TString::number(static_cast<unsigned int>(date.day()), 10, 2, u'0');
    return text;
}

int YearOf(int dayNumber) { return static_cast<int>(DateOf(dayNumber).year()); }

unsigned int MonthOf(int dayNumber) { return static_cast<unsigned int>(DateOf(dayNumber).month()) - 1; }

}  // namespace weather
