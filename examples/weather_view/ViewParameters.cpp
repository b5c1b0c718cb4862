#include "ViewParameters.h"

#include "WeatherVocabulary.h"

namespace weather {

namespace {

using Bag = BagStructureSerializer::Bag;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

RefCntPtr<IParameters> NewBag() { return ParametersRegistry::Get().CreateParameters(); }

// What the legend of the view offers; a weather that the table never shows stands for nothing.
constexpr struct {
    const wchar_t* condition;
    const wchar_t* color;
} kLegend[] = {
    {L"drizzle", L"#7f7f7f"}, {L"fog", L"#c7c7c7"},  {L"hail", L"#5254a3"},
    {L"rain", L"#1f77b4"},    {L"snow", L"#9467bd"}, {L"sun", L"#e7ba52"},
};

// SetParameterValue wraps a value of any type in the holder of that type. Types are what the serializer of the
// parameter expects: a wrong one is found when the bag is written.
void AddValues(IParameters& bag, const WeatherTable& table, const WeatherSummary& summary, std::size_t sourceBytes) {
    SetParameterValue<TString>(bag, ViewID::kTitle, L"Weather in \"Seattle\" \u2013 day by day");
    SetParameterValue<int>(bag, ViewID::kFirstDay, table.dayNumbers.front());
    SetParameterValue<unsigned int>(bag, ViewID::kDayCount, summary.all.days);
    SetParameterValue<Int64>(bag, ViewID::kPrecipitationTenths, summary.all.tenths);
    SetParameterValue<UInt64>(bag, ViewID::kSourceBytes, sourceBytes);
    SetParameterValue<float>(bag, ViewID::kWindiest, static_cast<float>(summary.windiest));
    SetParameterValue<double>(bag, ViewID::kHottest, summary.all.hottest);
    SetParameterValue<double>(bag, ViewID::kColdest, summary.all.coldest);
    SetParameterValue<bool>(bag, ViewID::kShowGrid, true);
    SetParameterValue<TUUID>(bag, ViewID::kTableKey, TUUID(L"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21"));
    SetParameterValue<MinutesDuration>(bag, ViewID::kRefreshInterval, MinutesDuration(90));
    SetParameterValue<FieldName>(bag, ViewID::kColorField, FieldName::ParseGlobal(L"[weather]"));
    SetParameterValue<QualifiedName>(bag, ViewID::kSourceTable, QualifiedName::ParseGlobal(L"[daily].[weather]"));
    SetParameterValue<PasswordString>(bag, ViewID::kServicePassword, PasswordString(L"never to be written"));

    // A parameter of the core namespace: "view" finds it through its fallback.
    const int paramType = static_cast<int>(CoreParameterID::ParamType);
    SetParameterValue<CoreParameterID>(bag, paramType, CoreParameterID::FloatRLE);
}

void AddListsAndMaps(IParameters& bag, const WeatherSummary& summary) {
    std::vector<FieldName> fields;
    for (const wchar_t* name : kColumnNames) {
        fields.push_back(FieldName::ParseGlobal(name));
    }
    std::vector<unsigned int> years;
    for (const auto& [year, days] : summary.byYear) {
        years.push_back(static_cast<unsigned int>(year));
    }
    std::map<TString, unsigned int> daysByCondition;
    for (const auto& [condition, days] : summary.byCondition) {
        daysByCondition.emplace(condition, days.days);
    }
    std::map<TString, TString> colors;
    for (const auto& row : kLegend) {
        colors.emplace(row.condition, row.color);
    }
    SetParameterValue(bag, ViewID::kFields, std::move(fields));
    SetParameterValue(bag, ViewID::kYears, std::move(years));
    SetParameterValue(bag, ViewID::kTenthsByMonth, summary.tenthsByMonth);
    SetParameterValue(bag, ViewID::kWeekend, std::vector<bool>{false, false, false, false, false, true, true});
    SetParameterValue(bag, ViewID::kDaysByCondition, std::move(daysByCondition));
    SetParameterValue(bag, ViewID::kColors, std::move(colors));
    SetParameterValue(bag, ViewID::kSelection, std::vector<int>{3, 14, 15});  // never written, see the vocabulary
}

void AddEnumerations(IParameters& style) {
    SetParameterValue(style, ViewID::kFontWeight, FontWeight::FontWeightBold);
    SetParameterValue(style, ViewID::kTextAlign, TextAlign::TextAlignEnd);
    SetParameterValue(
        style, ViewID::kStyledElements,
        std::vector<StyleElement>{StyleElement::elementAxis, StyleElement::elementTitle, StyleElement::elementTooltip});
    SetParameterValue(style, ViewID::kAggregations,
                      std::map<TString, AggType>{{L"precipitation", AggType::Sum},
                                                 {L"temp_max", AggType::Max},
                                                 {L"temp_min", AggType::Min},
                                                 {L"wind", AggType::Average}});
}

// A bag in a bag in the bag.
Bag MakeStyle() {
    const RefCntPtr<IParameters> axis = NewBag();
    SetParameterValue<TString>(*axis, ViewID::kTitle, L"Degrees\tCelsius");
    SetParameterValue<bool>(*axis, ViewID::kShowGrid, false);

    const RefCntPtr<IParameters> style = NewBag();
    SetParameterValue<TString>(*style, ViewID::kFont, L"Serif");
    SetParameterValue<int>(*style, ViewID::kFontSize, 11);
    SetParameterValue<double>(*style, ViewID::kOpacity, 0.85);
    SetParameterValue<Bag>(*style, ViewID::kAxis, axis);
    AddEnumerations(*style);
    return style;
}

Bag MakeHottestDay(const WeatherTable& table, std::size_t day) {
    const RefCntPtr<IParameters> record = NewBag();
    SetParameterValue<TString>(*record, ViewID::kDate, DateText(table.dayNumbers[day]));
    SetParameterValue<double>(*record, ViewID::kHottest, table.tempMax[day]);
    SetParameterValue<TString>(*record, ViewID::kCondition, table.conditions[day]);
    return record;
}

// A structure in the form of a list: its bag holds the texts under the structure's own identifier.
Bag MakeDateRange(const WeatherTable& table) {
    const RefCntPtr<IParameters> range = NewBag();
    SetParameterValue(*range, ViewID::kDateRange,
                      std::vector<TString>{DateText(table.dayNumbers.front()), DateText(table.dayNumbers.back())});
    return range;
}

RefCntPtr<IParameters> MakeGroup(const DayGroup& group) {
    const RefCntPtr<IParameters> record = NewBag();
    SetParameterValue<unsigned int>(*record, ViewID::kDayCount, group.days);
    SetParameterValue<Int64>(*record, ViewID::kPrecipitationTenths, group.tenths);
    SetParameterValue<double>(*record, ViewID::kHottest, group.hottest);
    SetParameterValue<double>(*record, ViewID::kColdest, group.coldest);
    return record;
}

Bags MakeYearTable(const WeatherSummary& summary) {
    Bags table;
    for (const auto& [year, days] : summary.byYear) {
        const RefCntPtr<IParameters> record = MakeGroup(days);
        SetParameterValue<int>(*record, ViewID::kYear, year);
        table.push_back(record);
    }
    return table;
}

BagMap MakeConditionTable(const WeatherSummary& summary) {
    BagMap table;
    for (const auto& row : kLegend) {
        const auto found = summary.byCondition.find(row.condition);
        table[row.condition] = found == summary.byCondition.end() ? Bag() : Bag(MakeGroup(found->second));
    }
    return table;
}

}  // namespace

RefCntPtr<IParameters> MakeViewParameters(const RefCntPtr<WeatherModel>& model, const WeatherSummary& summary,
                                          std::size_t sourceBytes) {
    const WeatherTable& table = model->GetTable();
    const RefCntPtr<IParameters> bag = model->AsIParameters();  // holds the model, and nothing else yet
    AddValues(*bag, table, summary, sourceBytes);
    AddListsAndMaps(*bag, summary);
    SetParameterValue<Bag>(*bag, ViewID::kStyle, MakeStyle());
    SetParameterValue<Bag>(*bag, ViewID::kHottestDay, MakeHottestDay(table, summary.hottestDay));
    SetParameterValue<Bag>(*bag, ViewID::kDateRange, MakeDateRange(table));
    SetParameterValue<Bags>(*bag, ViewID::kYearTable, MakeYearTable(summary));
    SetParameterValue<BagMap>(*bag, ViewID::kByCondition, MakeConditionTable(summary));
    return bag;
}

}  // namespace weather
