// How the values of a field are brought together in one.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API AggType : int {
    // Values of numbers, and of anything that can be counted.
    Sum = 0,
    Average = 1,
    Min = 2,
    Max = 3,
    StdDev = 4,   // of a sample
    StdDevP = 5,  // of the whole population
    Var = 6,      // of a sample
    VarP = 7,     // of the whole population
    Count = 8,    // values that are there
    CountD = 9,   // distinct values
    Median = 10,
    Attr = 11,  // the value that all rows share
    None = 12,  // each row by itself
    Percentile = 13,

    // One part of a date, as a number.
    Year = 14,
    Qtr = 15,  // quarter
    Month = 16,
    Day = 17,
    Hour = 18,
    Minute = 19,
    Second = 20,
    Week = 21,
    Weekday = 22,

    // Several parts of a date together.
    MonthYear = 23,
    Mdy = 24,  // month, day and year

    // The end of a period.
    End = 25,

    // A date cut down to the start of its period.
    TruncYear = 26,
    TruncQtr = 27,
    TruncMonth = 28,
    TruncWeek = 29,
    TruncDay = 30,
    TruncHour = 31,
    TruncMinute = 32,
    TruncSecond = 33,

    // Shape of a distribution.
    Quart1 = 34,  // lower quartile
    Quart3 = 35,  // upper quartile
    Skewness = 36,
    Kurtosis = 37,

    // Membership, sums of squares, and what the host works out itself.
    InOut = 38,    // inside a set or outside
    SumXsqr = 39,  // sum of squared distances
    User = 40,     // as the host defines it
    Collect = 41,  // geometries into one

    // Two fields together.
    Covar = 42,   // of a sample
    Covarp = 43,  // of the whole population
    Corr = 44,    // correlation
};

inline constexpr EnumName<AggType> kAggTypeNames[] = {
    {AggType::Sum, u"sum"},
    {AggType::Average, u"average"},
    {AggType::Min, u"min"},
    {AggType::Max, u"max"},
    {AggType::StdDev, u"std-dev"},
    {AggType::StdDevP, u"std-dev-p"},
    {AggType::Var, u"var"},
    {AggType::VarP, u"var-p"},
    {AggType::Count, u"count"},
    {AggType::CountD, u"count-d"},
    {AggType::Median, u"median"},
    {AggType::Attr, u"attr"},
    {AggType::None, u"none"},
    {AggType::Percentile, u"percentile"},
    {AggType::Year, u"year"},
    {AggType::Qtr, u"qtr"},
    {AggType::Month, u"month"},
    {AggType::Day, u"day"},
    {AggType::Hour, u"hour"},
    {AggType::Minute, u"minute"},
    {AggType::Second, u"second"},
    {AggType::Week, u"week"},
    {AggType::Weekday, u"weekday"},
    {AggType::MonthYear, u"month-year"},
    {AggType::Mdy, u"mdy"},
    {AggType::End, u"end"},
    {AggType::TruncYear, u"trunc-year"},
    {AggType::TruncQtr, u"trunc-qtr"},
    {AggType::TruncMonth, u"trunc-month"},
    {AggType::TruncWeek, u"trunc-week"},
    {AggType::TruncDay, u"trunc-day"},
    {AggType::TruncHour, u"trunc-hour"},
    {AggType::TruncMinute, u"trunc-minute"},
    {AggType::TruncSecond, u"trunc-second"},
    {AggType::Quart1, u"quart1"},
    {AggType::Quart3, u"quart3"},
    {AggType::Skewness, u"skewness"},
    {AggType::Kurtosis, u"kurtosis"},
    {AggType::InOut, u"in-out"},
    {AggType::SumXsqr, u"sum-xsqr"},
    {AggType::User, u"user"},
    {AggType::Collect, u"collect"},
    {AggType::Covar, u"covar"},
    {AggType::Covarp, u"covarp"},
    {AggType::Corr, u"corr"},
};

template <>
struct ParameterTypeTraits<AggType> : EnumTraits<kAggTypeNames, AggType::None> {};

extern template class ParameterTypeSerializer<AggType>;
