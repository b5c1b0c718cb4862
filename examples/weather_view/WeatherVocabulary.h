// The parameters of the weather view: identifiers and names.
#pragma once

#include <qvpreslayer/ParametersRegistry.h>

namespace weather {

// The namespaces of this host, by name.
inline constexpr const wchar_t* kViewNamespace = L"view";
inline constexpr const wchar_t* kCoreNamespace = L"qvcore";

// The range that the namespace "view" covers.
inline constexpr int kFirstViewID = 0x12000001;
inline constexpr int kLastViewID = 0x12ffffff;

// The identifiers. They are part of what travels between programs: once given out, they keep their meaning.
namespace ViewID {
enum : int {
    // Single values.
    kTitle = kFirstViewID,  // text
    kFirstDay,              // int: a day number
    kDayCount,              // unsigned int
    kPrecipitationTenths,   // Int64: tenths of a millimetre
    kSourceBytes,           // UInt64
    kWindiest,              // float
    kHottest,               // double
    kColdest,               // double
    kShowGrid,              // bool
    kTableKey,              // TUUID
    kRefreshInterval,       // MinutesDuration
    kColorField,            // FieldName
    kSourceTable,           // QualifiedName
    kServicePassword,       // PasswordString
    kDate,                  // text
    kCondition,             // text
    kYear,                  // int

    // Lists and maps.
    kFields,           // list of FieldName
    kYears,            // list of unsigned int
    kTenthsByMonth,    // list of Int64
    kWeekend,          // list of bool
    kDaysByCondition,  // map of unsigned int
    kColors,           // map of text
    kSelection,        // list of int; never written

    // Nested bags and structures.
    kStyle,         // bag
    kAxis,          // bag, inside the style
    kFont,          // text
    kFontSize,      // int
    kOpacity,       // double
    kHottestDay,    // structure
    kDateRange,     // structure in the form of a list
    kYearTable,     // list of structures
    kByCondition,   // map of structures, some of them null
    kDailyWeather,  // structure: the presentation model

    // The columns of the model.
    kDayNumbers,     // list of int
    kPrecipitation,  // list of double
    kTempMax,        // list of double
    kTempMin,        // list of double
    kWind,           // list of double
    kConditions,     // list of text

    // Enumerations, in the style.
    kFontWeight,      // FontWeight
    kTextAlign,       // TextAlign
    kStyledElements,  // list of StyleElement
    kAggregations,    // map of AggType

    // Typed values: single ones and maps.
    kHeaviestPenguin,    // DataValue: an integer
    kLongestBeak,        // DataValue: a real
    kNextReview,         // DataValue: a date
    kFirstPenguin,       // map of DataValue
    kUnmeasuredPenguin,  // map of DataValue

    // A table of them: a bag that is never written with the view, and its columns, which are lists of DataValue.
    kPenguinTable,   // bag
    kRow,            // integers
    kFlipperLength,  // integers
    kBeakLength,     // reals
    kSpecies,        // texts
    kSex,            // texts
    kIsMale,         // booleans
    kReviewDate,     // dates
    kReviewTime,     // dates with times
    kBeak,           // tuples
    kRemark,         // of unknown type
};
}  // namespace ViewID

// Registers "qvcore", which the library needs, and "view", which falls back to it: a name that "view" does not know is
// sought there.
void RegisterVocabulary(ParametersRegistry& registry);

}  // namespace weather
