#include "WeatherVocabulary.h"

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherModel.h"

namespace weather {

namespace {

// A line for each parameter: identifier, verbose name, short name, serializer. In JSON the verbose names appear in
// camel case: "day-count" as "dayCount".
void AddValues(AbstractParamAdder& adder) {
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
}

// For lists and maps the serializer is that of the elements.
void AddListsAndMaps(AbstractParamAdder& adder) {
    adder.AddList(ViewID::kFields, L"fields", L"fi", new ParameterTypeSerializer<FieldName>);
    adder.AddList(ViewID::kYears, L"years", L"ys", new ParameterTypeSerializer<unsigned int>);
    adder.AddList(ViewID::kTenthsByMonth, L"tenths-by-month", L"tm", new ParameterTypeSerializer<Int64>);
    adder.AddList(ViewID::kWeekend, L"weekend", L"we", new ParameterTypeSerializer<bool>);
    adder.AddMap(ViewID::kDaysByCondition, L"days-by-condition", L"db", new ParameterTypeSerializer<unsigned int>);
    adder.AddMap(ViewID::kColors, L"colors", L"cl", new TStringSerializer);
    adder.AddList(ViewID::kSelection, L"selection", L"se", new ParameterTypeSerializer<int>);
}

void AddBagsAndStructures(AbstractParamAdder& adder) {
    adder.AddBag(ViewID::kStyle, L"style", L"sy");
    adder.AddBag(ViewID::kAxis, L"axis", L"ax");
    adder.AddSimple(ViewID::kFont, L"font", L"fo", new TStringSerializer);
    adder.AddSimple(ViewID::kFontSize, L"font-size", L"fs", new ParameterTypeSerializer<int>);
    adder.AddSimple(ViewID::kOpacity, L"opacity", L"op", new ParameterTypeSerializer<double>);
    adder.AddStructure(ViewID::kHottestDay, L"hottest-day", L"hd", new BagStructureSerializer);
    adder.AddStructure(ViewID::kDateRange, L"date-range", L"dr",
                       new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructureList(ViewID::kYearTable, L"year-table", L"yt", new BagStructureSerializer);
    adder.AddStructureMap(ViewID::kByCondition, L"by-condition", L"bc", new BagStructureSerializer);
}

void AddModel(AbstractParamAdder& adder) {
    adder.AddStructure(ViewID::kDailyWeather, L"daily-weather", L"dw", new WeatherModelSerializer);
    adder.AddList(ViewID::kDayNumbers, L"day-numbers", L"dn", new ParameterTypeSerializer<int>);
    adder.AddList(ViewID::kPrecipitation, L"precipitation", L"pr", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kTempMax, L"temp-max", L"tx", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kTempMin, L"temp-min", L"tn", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kWind, L"wind", L"wd", new ParameterTypeSerializer<double>);
    adder.AddList(ViewID::kConditions, L"conditions", L"cs", new TStringSerializer);
}

// An enumeration is registered as any other type; its texts come from its own table.
void AddEnumerations(AbstractParamAdder& adder) {
    adder.AddSimple(ViewID::kFontWeight, L"font-weight", L"fw", new ParameterTypeSerializer<FontWeight>);
    adder.AddSimple(ViewID::kTextAlign, L"text-align", L"ta", new ParameterTypeSerializer<TextAlign>);
    adder.AddList(ViewID::kStyledElements, L"styled-elements", L"el", new ParameterTypeSerializer<StyleElement>);
    adder.AddMap(ViewID::kAggregations, L"aggregations", L"ag", new ParameterTypeSerializer<AggType>);
}

// One serializer for typed values of every type.
void AddTypedValues(AbstractParamAdder& adder) {
    adder.AddSimple(ViewID::kHeaviestPenguin, L"heaviest-penguin", L"hp", new ParameterTypeSerializer<DataValue>);
    adder.AddSimple(ViewID::kLongestBeak, L"longest-beak", L"lb", new ParameterTypeSerializer<DataValue>);
    adder.AddSimple(ViewID::kNextReview, L"next-review", L"nr", new ParameterTypeSerializer<DataValue>);
    adder.AddMap(ViewID::kFirstPenguin, L"first-penguin", L"fp", new ParameterTypeSerializer<DataValue>);
    adder.AddMap(ViewID::kUnmeasuredPenguin, L"unmeasured-penguin", L"up", new ParameterTypeSerializer<DataValue>);
}

void AddPenguinTable(AbstractParamAdder& adder) {
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

}  // namespace

void RegisterVocabulary(ParametersRegistry& registry) {
    RegisterCoreNamespaceParameters(registry, kCoreNamespace);

    // A namespace may be filled by several functions, one for each module that has parameters in it. They run in this
    // order, at the first lookup.
    for (const auto fill : {AddValues, AddListsAndMaps, AddBagsAndStructures, AddModel, AddEnumerations, AddTypedValues,
                            AddPenguinTable}) {
        registry.RegisterNamespacePart(kViewNamespace, fill, kFirstViewID, kLastViewID);
    }
    registry.SetFallback(kViewNamespace, kCoreNamespace);

    // What the user has selected lives in the bag and concerns nobody else.
    registry.AddUnserializable(ViewID::kSelection);

    // Lists of typed values are written through JSON for readers that know the types of the columns, and cannot be read
    // back from there: the table stays out of the view's text and is written by itself.
    registry.AddUnserializable(ViewID::kPenguinTable);
}

}  // namespace weather
