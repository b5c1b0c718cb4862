#include <qvcore/Date.h>

#include <qvsys/QuorvelException.h>

namespace {

constexpr std::chrono::year kFirstYear(1);
constexpr std::chrono::year kLastYear(9999);

}  // namespace

bool IsCalendarDate(const Date& date) noexcept {
    return date.ok() && date.year() >= kFirstYear && date.year() <= kLastYear;
}

DateTime::DateTime(const Date& date, std::chrono::nanoseconds timeOfDay) : m_date(date), m_timeOfDay(timeOfDay) {
    if (!IsCalendarDate(date)) {
        throw QuorvelException(u"Date is not a calendar day of the years 1 to 9999");
    }
    if (timeOfDay < std::chrono::nanoseconds::zero() || timeOfDay >= std::chrono::hours(24)) {
        throw QuorvelException(u"Time of day is not within a day");
    }
}
