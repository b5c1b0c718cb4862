// Calendar days and points in time, without time zones.
//
// Exceptions: making a DateTime is strong; all else never throws.
#pragma once

#include <chrono>
#include <compare>

#include <qvcore/Export.h>

// A day of the proleptic Gregorian calendar. The type itself accepts anything; whatever takes one in here checks it.
using Date = std::chrono::year_month_day;

// Whether date is a day that exists, in the years 1 to 9999.
QVCORE_API bool IsCalendarDate(const Date& date) noexcept;

// A day and the time since its midnight. Always valid: a day by IsCalendarDate and a time of less than 24 hours.
class QVCORE_API DateTime {
public:
    // Midnight of the first day, 0001-01-01.
    DateTime() noexcept = default;

    // QuorvelException when the day is none or the time is negative or not within a day.
    explicit DateTime(const Date& date, std::chrono::nanoseconds timeOfDay = std::chrono::nanoseconds::zero());

    const Date& GetDate() const noexcept { return m_date; }
    std::chrono::nanoseconds GetTimeOfDay() const noexcept { return m_timeOfDay; }

    friend bool operator==(const DateTime&, const DateTime&) noexcept = default;
    friend std::strong_ordering operator<=>(const DateTime&, const DateTime&) noexcept = default;

private:
    Date m_date{std::chrono::year(1), std::chrono::month(1), std::chrono::day(1)};
    std::chrono::nanoseconds m_timeOfDay{0};
};
