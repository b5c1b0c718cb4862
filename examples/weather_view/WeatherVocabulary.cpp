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

}  // namespace

void RegisterVocabulary(ParametersRegistry& registry) {
    RegisterCoreNamespaceParameters(registry, kCoreNamespace);

    // A namespace may be filled by several functions, one for each module that has parameters in it. They run in this
    // order, at the first lookup.
    for (const auto fill : {AddValues, AddListsAndMaps, AddBagsAndStructures, AddModel}) {
        registry.RegisterNamespacePart(kViewNamespace, fill, kFirstViewID, kLastViewID);
    }
    registry.SetFallback(kViewNamespace, kCoreNamespace);

    // What the user has selected lives in the bag and concerns nobody else.
    registry.AddUnserializable(ViewID::kSelection);
}

}  // namespace weather
