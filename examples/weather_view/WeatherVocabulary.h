// Made from weather.vocabulary.json by qvpres generate --cpp; do not edit.
// clang-format off
//
// The parameters of the weather view; once given out, identifiers and names keep their meaning
#pragma once

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherModel.h"

namespace weather {

inline constexpr const wchar_t* kViewNamespace = L"view";
inline constexpr int kFirstViewID = 0x12000001;
inline constexpr int kLastViewID = 0x12ffffff;

namespace ViewID {
enum : int {
    kTitle = 0x12000001,  // TString
    kFirstDay = 0x12000002,  // int: a day number
    kDayCount = 0x12000003,  // unsigned int
    kPrecipitationTenths = 0x12000004,  // Int64: tenths of a millimetre
    kSourceBytes = 0x12000005,  // UInt64
    kWindiest = 0x12000006,  // float
    kHottest = 0x12000007,  // double
    kColdest = 0x12000008,  // double
    kShowGrid = 0x12000009,  // bool
    kTableKey = 0x1200000a,  // TUUID
    kRefreshInterval = 0x1200000b,  // MinutesDuration
    kColorField = 0x1200000c,  // FieldName
    kSourceTable = 0x1200000d,  // QualifiedName
    kServicePassword = 0x1200000e,  // PasswordString
    kDate = 0x1200000f,  // TString
    kCondition = 0x12000010,  // TString
    kYear = 0x12000011,  // int
    kFields = 0x12000012,  // list of FieldName
    kYears = 0x12000013,  // list of unsigned int
    kTenthsByMonth = 0x12000014,  // list of Int64
    kWeekend = 0x12000015,  // list of bool
    kDaysByCondition = 0x12000016,  // map of unsigned int
    kColors = 0x12000017,  // map of TString
    kSelection = 0x12000018,  // list of int; never written: what the user has selected concerns nobody else
    kStyle = 0x12000019,  // bag
    kAxis = 0x1200001a,  // bag: inside the style
    kFont = 0x1200001b,  // TString
    kFontSize = 0x1200001c,  // int
    kOpacity = 0x1200001d,  // double
    kHottestDay = 0x1200001e,  // structure
    kDateRange = 0x1200001f,  // structure in the form of a list
    kYearTable = 0x12000020,  // list of structures
    kByCondition = 0x12000021,  // map of structures: some of them null
    kDailyWeather = 0x12000022,  // structure: the presentation model
    kDayNumbers = 0x12000023,  // list of int
    kPrecipitation = 0x12000024,  // list of double
    kTempMax = 0x12000025,  // list of double
    kTempMin = 0x12000026,  // list of double
    kWind = 0x12000027,  // list of double
    kConditions = 0x12000028,  // list of TString
    kFontWeight = 0x12000029,  // FontWeight
    kTextAlign = 0x1200002a,  // TextAlign
    kStyledElements = 0x1200002b,  // list of StyleElement
    kAggregations = 0x1200002c,  // map of AggType
    kHeaviestPenguin = 0x1200002d,  // DataValue: an integer
    kLongestBeak = 0x1200002e,  // DataValue: a real
    kNextReview = 0x1200002f,  // DataValue: a date
    kFirstPenguin = 0x12000030,  // map of DataValue
    kUnmeasuredPenguin = 0x12000031,  // map of DataValue
    kPenguinTable = 0x12000032,  // bag; never written: columns of typed values, which cannot be read back: written by itself, not with the view
    kRow = 0x12000033,  // list of DataValue: integers
    kFlipperLength = 0x12000034,  // list of DataValue: integers
    kBeakLength = 0x12000035,  // list of DataValue: reals
    kSpecies = 0x12000036,  // list of DataValue: texts
    kSex = 0x12000037,  // list of DataValue: texts
    kIsMale = 0x12000038,  // list of DataValue: booleans
    kReviewDate = 0x12000039,  // list of DataValue: dates
    kReviewTime = 0x1200003a,  // list of DataValue: dates with times
    kBeak = 0x1200003b,  // list of DataValue: tuples
    kRemark = 0x1200003c,  // list of DataValue: of unknown type
};
}  // namespace ViewID

// The parameters of "view".
inline void AddViewParameters(AbstractParamAdder& adder) {
    adder.AddSimple(ViewID::kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddSimple(ViewID::kFirstDay, L"first-day", L"fd", new ParameterTypeSerializer<int>);
    adder.AddSimple(ViewID::kDayCount, L"day-count", L"dc", new ParameterTypeSerializer<unsigned int>);
    adder.AddSimple(ViewID::kPrecipitationTenths, L"precipitation-tenths", L"pt", new ParameterTypeSerializer<Int64>);
    adder.AddSimple(ViewID::kSourceBytes, L"source-bytes", L"sb", new ParameterTypeSerializer<UInt64>);
    adder.AddSimple(ViewID::kWindiest, L"windiest", L"wi", new ParameterTypeSerializer<float>);
    adder.AddSimple(ViewID::kHottest, L"hottest", L"ho", new ParameterTypeSerializer<double>);
    adder.AddSimple(ViewID::kColdest, L"coldest", L"co", new ParameterTypeSerializer<double>);
    adder.AddSimple(ViewID::kShowGrid, L"show-grid", L"sg", new ParameterTypeSerializer<bool>);
    adder.AddSimple(ViewID::kTableKey, L"table-key", L"tk", new ParameterTypeSerializer<TUUID>);
    adder.AddSimple(ViewID::kRefreshInterval, L"refresh-interval", L"ri", new ParameterTypeSerializer<MinutesDuration>);
    adder.AddSimple(ViewID::kColorField, L"color-field", L"cf", new ParameterTypeSerializer<FieldName>);
    adder.AddSimple(ViewID::kSourceTable, L"source-table", L"st", new ParameterTypeSerializer<QualifiedName>);
    adder.AddSimple(ViewID::kServicePassword, L"service-password", L"sp", new ParameterTypeSerializer<PasswordString>);
    adder.AddSimple(ViewID::kDate, L"date", L"da", new TStringSerializer);
    adder.AddSimple(ViewID::kCondition, L"condition", L"cd", new TStringSerializer);
    adder.AddSimple(ViewID::kYear, L"year", L"ye", new ParameterTypeSerializer<int>);
    adder.AddList(ViewID::kFields, L"fields", L"fi", new ParameterTypeSerializer<FieldName>);
    adder.AddList(ViewID::kYears, L"years", L"ys", new ParameterTypeSerializer<unsigned int>);
    adder.AddList(ViewID::kTenthsByMonth, L"tenths-by-month", L"tm", new ParameterTypeSerializer<Int64>);
    adder.AddList(ViewID::kWeekend, L"weekend", L"we", new ParameterTypeSerializer<bool>);
    adder.AddMap(ViewID::kDaysByCondition, L"days-by-condition", L"db", new ParameterTypeSerializer<unsigned int>);
    adder.AddMap(ViewID::kColors, L"colors", L"cl", new TStringSerializer);
    adder.AddList(ViewID::kSelection, L"selection", L"se", new ParameterTypeSerializer<int>);
    adder.AddBag(ViewID::kStyle, L"style", L"sy");
    adder.AddBag(ViewID::kAxis, L"axis", L"ax");
    adder.AddSimple(ViewID::kFont, L"font", L"fo", new TStringSerializer);
    adder.AddSimple(ViewID::kFontSize, L"font-size", L"fs", new ParameterTypeSerializer<int>);
    adder.AddSimple(ViewID::kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
    adder.AddStructure(ViewID::kHottestDay, L"hottest-day", L"hd", new BagStructureSerializer);
    adder.AddStructure(ViewID::kDateRange, L"date-range", L"dr", new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructureList(ViewID::kYearTable, L"year-table", L"yt", new BagStructureSerializer);
    adder.AddStructureMap(ViewID::kByCondition, L"by-condition", L"bc", new BagStructureSerializer);
    adder.AddStructure(ViewID::kDailyWeather, L"daily-weather", L"dw", new WeatherModelSerializer);
    adder.AddList(ViewID::kDayNumbers, L"day-numbers", L"dn", new ParameterTypeSerializer<int>);
    adder.AddList(ViewID::kPrecipitation, L"precipitation", L"pr", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kTempMax, L"temp-max", L"tx", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kTempMin, L"temp-min", L"tn", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kWind, L"wind", L"wd", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kConditions, L"conditions", L"cs", new TStringSerializer);
    adder.AddSimple(ViewID::kFontWeight, L"font-weight", L"fw", new ParameterTypeSerializer<FontWeight>);
    adder.AddSimple(ViewID::kTextAlign, L"text-align", L"ta", new ParameterTypeSerializer<TextAlign>);
    adder.AddList(ViewID::kStyledElements, L"styled-elements", L"el", new ParameterTypeSerializer<StyleElement>);
    adder.AddMap(ViewID::kAggregations, L"aggregations", L"ag", new ParameterTypeSerializer<AggType>);
    adder.AddSimple(ViewID::kHeaviestPenguin, L"heaviest-penguin", L"hp", new ParameterTypeSerializer<DataValue>);
    adder.AddSimple(ViewID::kLongestBeak, L"longest-beak", L"lb", new ParameterTypeSerializer<DataValue>);
    adder.AddSimple(ViewID::kNextReview, L"next-review", L"nr", new ParameterTypeSerializer<DataValue>);
    adder.AddMap(ViewID::kFirstPenguin, L"first-penguin", L"fp", new ParameterTypeSerializer<DataValue>);
    adder.AddMap(ViewID::kUnmeasuredPenguin, L"unmeasured-penguin", L"up", new ParameterTypeSerializer<DataValue>);
    adder.AddBag(ViewID::kPenguinTable, L"penguin-table", L"pg");
    adder.AddList(ViewID::kRow, L"row", L"ro", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kFlipperLength, L"flipper-length", L"fl", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kBeakLength, L"beak-length", L"bl", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kSpecies, L"species", L"sc", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kSex, L"sex", L"sx", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kIsMale, L"is-male", L"im", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kReviewDate, L"review-date", L"rd", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kReviewTime, L"review-time", L"rt", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kBeak, L"beak", L"be", new ParameterTypeSerializer<DataValue>);
    adder.AddList(ViewID::kRemark, L"remark", L"re", new ParameterTypeSerializer<DataValue>);
}

// Registers all of the above, and the library's own namespace where the registry has none.
inline void RegisterVocabulary(ParametersRegistry& registry) {
    if (!registry.HasNamespace(L"qvcore")) {
        RegisterCoreNamespaceParameters(registry, L"qvcore");
    }
    registry.RegisterNamespace(kViewNamespace, AddViewParameters, kFirstViewID, kLastViewID, false);
    registry.SetFallback(kViewNamespace, L"qvcore");
    registry.AddUnserializable(ViewID::kSelection);
    registry.AddUnserializable(ViewID::kPenguinTable);
}

}  // namespace weather
