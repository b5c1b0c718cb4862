// What came of a forecast: valid, or why there is none.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API ForecastStatus : int {
    // There is a forecast.
    FsValid = 0,

    // The fields do not fit.
    FsInvalidDatetime = 1,
    FsInvalidResponse = 2,

    // The series does not carry a forecast.
    FsNeedMoreData = 3,
    FsTimeSeriesTooShort = 4,
    FsTimeSeriesIrregular = 5,

    // Values are missing, or what is known of the fields is.
    FsNullDatetime = 6,
    FsNullResponse = 7,
    FsMetadataInvalid = 8,
    FsNoResponse = 9,  // no field to forecast

    // There is too much.
    FsExcessData = 10,
    FsExcessPartitions = 11,

    // The view does not allow it.
    FsDimensionInvalid = 12,
    FsTablecalcInvalid = 13,
    FsTimeSeriesTooIrregular = 14,
    FsAggregateFilter = 15,
    FsDisaggregateResponse = 16,
    FsPercentageInvalid = 17,  // shares of a whole
    FsTotalInvalid = 18,       // totals

    // Too many dates, or the wrong steps between them.
    FsExcessDatetime = 19,
    FsDateAggIncompatible = 20,

    // The model that was asked for does not fit.
    FsTimeSeriesNotPositive = 21,
    FsRequestedModelInvalid = 22,
    FsTooShortForSeason = 23,  // fewer than two seasons
    FsRequestedModelUnstable = 24,

    // Nothing is known.
    FsUndefined = 25,
};

inline constexpr EnumName<ForecastStatus> kForecastStatusNames[] = {
    {ForecastStatus::FsValid, u"fs-valid"},
    {ForecastStatus::FsInvalidDatetime, u"fs-invalid-datetime"},
    {ForecastStatus::FsInvalidResponse, u"fs-invalid-response"},
    {ForecastStatus::FsNeedMoreData, u"fs-need-more-data"},
    {ForecastStatus::FsTimeSeriesTooShort, u"fs-time-series-too-short"},
    {ForecastStatus::FsTimeSeriesIrregular, u"fs-time-series-irregular"},
    {ForecastStatus::FsNullDatetime, u"fs-null-datetime"},
    {ForecastStatus::FsNullResponse, u"fs-null-response"},
    {ForecastStatus::FsMetadataInvalid, u"fs-metadata-invalid"},
    {ForecastStatus::FsNoResponse, u"fs-no-response"},
    {ForecastStatus::FsExcessData, u"fs-excess-data"},
    {ForecastStatus::FsExcessPartitions, u"fs-excess-partitions"},
    {ForecastStatus::FsDimensionInvalid, u"fs-dimension-invalid"},
    {ForecastStatus::FsTablecalcInvalid, u"fs-tablecalc-invalid"},
    {ForecastStatus::FsTimeSeriesTooIrregular, u"fs-time-series-too-irregular"},
    {ForecastStatus::FsAggregateFilter, u"fs-aggregate-filter"},
    {ForecastStatus::FsDisaggregateResponse, u"fs-disaggregate-response"},
    {ForecastStatus::FsPercentageInvalid, u"fs-percentage-invalid"},
    {ForecastStatus::FsTotalInvalid, u"fs-total-invalid"},
    {ForecastStatus::FsExcessDatetime, u"fs-excess-datetime"},
    {ForecastStatus::FsDateAggIncompatible, u"fs-date-agg-incompatible"},
    {ForecastStatus::FsTimeSeriesNotPositive, u"fs-time-series-not-positive"},
    {ForecastStatus::FsRequestedModelInvalid, u"fs-requested-model-invalid"},
    {ForecastStatus::FsTooShortForSeason, u"fs-too-short-for-season"},
    {ForecastStatus::FsRequestedModelUnstable, u"fs-requested-model-unstable"},
    {ForecastStatus::FsUndefined, u"fs-undefined"},
};

template <>
struct ParameterTypeTraits<ForecastStatus> : EnumTraits<kForecastStatusNames, ForecastStatus::FsValid> {};

extern template class ParameterTypeSerializer<ForecastStatus>;
