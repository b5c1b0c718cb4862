#include <qvcore/Date.h>

#include <gtest/gtest.h>

#include <qvsys/QuorvelException.h>

namespace {

using std::chrono::hours;
using std::chrono::nanoseconds;

Date Day(int year, unsigned month, unsigned day) {
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

TEST(Date, KnowsWhichDaysExist) {
    const struct {
        Date date;
        bool exists;
    } cases[] = {
        {Day(1, 1, 1), true},      {Day(9999, 12, 31), true}, {Day(2024, 2, 29), true}, {Day(2000, 2, 29), true},
        {Day(2023, 2, 29), false}, {Day(1900, 2, 29), false},  // a century that is no leap year
        {Day(2024, 2, 30), false}, {Day(2024, 4, 31), false}, {Day(2024, 0, 1), false}, {Day(2024, 13, 1), false},
        {Day(2024, 1, 0), false},  {Day(2024, 1, 32), false}, {Day(0, 12, 31), false},  {Day(10000, 1, 1), false},
        {Day(-1, 1, 1), false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.date.year()) * 10000 +
                     static_cast<int>(static_cast<unsigned>(c.date.month())) * 100 +
                     static_cast<int>(static_cast<unsigned>(c.date.day())));
        EXPECT_EQ(c.exists, IsCalendarDate(c.date));
    }
}

TEST(DateTime, IsEqualWhereDayAndTimeAre) {
    const DateTime dateTime(Day(2024, 2, 29), hours(1));
    EXPECT_EQ(DateTime(Day(2024, 2, 29), hours(1)), dateTime);
    EXPECT_NE(DateTime(Day(2024, 2, 28), hours(1)), dateTime);
    EXPECT_NE(DateTime(Day(2024, 2, 29), hours(2)), dateTime);
}

TEST(DateTime, KeepsDayAndTime) {
    const DateTime dateTime(Day(2024, 2, 29), hours(23) + nanoseconds(1));
    EXPECT_EQ(Day(2024, 2, 29), dateTime.GetDate());
    EXPECT_EQ(hours(23) + nanoseconds(1), dateTime.GetTimeOfDay());
    EXPECT_EQ(nanoseconds(0), DateTime(Day(2024, 2, 29)).GetTimeOfDay());
}

TEST(DateTime, DefaultIsTheFirstMidnight) { EXPECT_EQ(DateTime(Day(1, 1, 1), nanoseconds(0)), DateTime()); }

TEST(DateTime, RefusesDaysThatDoNotExist) {
    EXPECT_THROW(DateTime(Day(2023, 2, 29)), QuorvelException);
    EXPECT_THROW(DateTime(Day(10000, 1, 1)), QuorvelException);
}

TEST(DateTime, RefusesTimesOutsideTheDay) {
    EXPECT_NO_THROW(DateTime(Day(2024, 1, 1), hours(24) - nanoseconds(1)));
    EXPECT_THROW(DateTime(Day(2024, 1, 1), hours(24)), QuorvelException);
    EXPECT_THROW(DateTime(Day(2024, 1, 1), nanoseconds(-1)), QuorvelException);
}

TEST(DateTime, OrdersByDayThenTime) {
    EXPECT_LT(DateTime(Day(2024, 1, 1), hours(23)), DateTime(Day(2024, 1, 2), hours(1)));
    EXPECT_LT(DateTime(Day(2024, 1, 1), hours(1)), DateTime(Day(2024, 1, 1), hours(2)));
    EXPECT_EQ(DateTime(Day(2024, 1, 1), hours(1)), DateTime(Day(2024, 1, 1), hours(1)));
}

}  // namespace
