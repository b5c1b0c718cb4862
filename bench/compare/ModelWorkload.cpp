// A description of a view, as a presentation layer sends one: styles, marks, fonts, identifiers and maps.
#include <map>
#include <random>
#include <utility>

#include "BenchHost.h"
#include "Workload.h"

namespace compare {

namespace {

using Random = std::mt19937_64;
using Bag = RefCntPtr<const IParameters>;

constexpr int kFirst = 40000;

enum ModelID : int {
    kTitle = kFirst,
    kModelKey,
    kShowGrid,
    kZoom,
    kStyles,
    kStyleElement,
    kStyleAttribute,
    kStyleScope,
    kStyleValue,
    kMarks,
    kMarkField,
    kMarkAggregation,
    kMarkType,
    kMarkSize,
    kMarkOpacity,
    kMarkVisible,
    kFonts,
    kFontFamily,
    kFontSize,
    kFontWeight,
    kFontStyle,
    kTextAlign,
    kTupleIDs,
    kAxisTicks,
    kColors,
    kCaptions,
};

template <class E>
E Pick(Random& random) {
    const auto values = GetEnumValues<E>();
    return values[random() % values.size()].value;
}

TString MakeColor(Random& random) {
    return u"#" + TString::number(static_cast<int>(random() % 0x1000000), 16, 6, u'0');
}

std::vector<Field> MakeFields() {
    return {
        MakeValue<TString>(kTitle, L"title", L"ti"),
        MakeValue<TUUID>(kModelKey, L"model-key", L"mk"),
        MakeValue<bool>(kShowGrid, L"show-grid", L"sg"),
        MakeValue<double>(kZoom, L"zoom-level", L"zl"),
        MakeRecordList(kStyles, L"style-rules", L"sr",
                       {
                           MakeValue<StyleElement>(kStyleElement, L"element", L"el"),
                           MakeValue<StyleAttribute>(kStyleAttribute, L"attribute", L"at"),
                           MakeValue<StyleFieldScope>(kStyleScope, L"field-scope", L"fs"),
                           MakeValue<TString>(kStyleValue, L"value", L"va"),
                       }),
        MakeRecordList(kMarks, L"marks", L"ma",
                       {
                           MakeValue<FieldName>(kMarkField, L"field-name", L"fn"),
                           MakeValue<AggType>(kMarkAggregation, L"aggregation", L"ag"),
                           MakeValue<DataType>(kMarkType, L"data-type", L"dt"),
                           MakeValue<int>(kMarkSize, L"mark-size", L"ms"),
                           MakeValue<double>(kMarkOpacity, L"opacity", L"op"),
                           MakeValue<bool>(kMarkVisible, L"is-visible", L"iv"),
                       }),
        MakeRecordMap(kFonts, L"fonts", L"fo",
                      {
                          MakeValue<TString>(kFontFamily, L"font-family", L"ff"),
                          MakeValue<int>(kFontSize, L"font-size", L"fz"),
                          MakeValue<FontWeight>(kFontWeight, L"font-weight", L"fw"),
                          MakeValue<QuorvelFontStyle>(kFontStyle, L"font-style", L"ft"),
                          MakeValue<TextAlign>(kTextAlign, L"text-align", L"ta"),
                      }),
        MakeList<int>(kTupleIDs, L"tuple-ids", L"tu"),
        MakeList<double>(kAxisTicks, L"axis-ticks", L"ax"),
        MakeTextMap(kColors, L"color-map", L"cm"),
        MakeTextMap(kCaptions, L"captions", L"ca"),
    };
}

Bag MakeStyle(Random& random) {
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue(*bag, kStyleElement, Pick<StyleElement>(random));
    SetParameterValue(*bag, kStyleAttribute, Pick<StyleAttribute>(random));
    SetParameterValue(*bag, kStyleScope, Pick<StyleFieldScope>(random));
    SetParameterValue(*bag, kStyleValue, MakeColor(random));
    return bag;
}

Bag MakeMark(Random& random) {
    static const wchar_t* const fields[] = {L"[orders].[sales]", L"[orders].[ship date]", L"[people].[region]",
                                            L"[returns].[quantity]"};
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue(*bag, kMarkField, FieldName::ParseGlobal(fields[random() % 4]));
    SetParameterValue(*bag, kMarkAggregation, Pick<AggType>(random));
    SetParameterValue(*bag, kMarkType, Pick<DataType>(random));
    SetParameterValue(*bag, kMarkSize, static_cast<int>(random() % 64));
    SetParameterValue(*bag, kMarkOpacity, static_cast<double>(random() % 101) / 100);
    SetParameterValue(*bag, kMarkVisible, random() % 4 != 0);
    return bag;
}

Bag MakeFont(Random& random) {
    static const wchar_t* const families[] = {L"DejaVu Sans", L"Liberation Serif", L"Noto Sans"};
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue<TString>(*bag, kFontFamily, families[random() % 3]);
    SetParameterValue(*bag, kFontSize, static_cast<int>(8 + random() % 20));
    SetParameterValue(*bag, kFontWeight, Pick<FontWeight>(random));
    SetParameterValue(*bag, kFontStyle, Pick<QuorvelFontStyle>(random));
    SetParameterValue(*bag, kTextAlign, Pick<TextAlign>(random));
    return bag;
}

template <class Make>
std::vector<Bag> MakeRecords(std::size_t count, Random& random, Make make) {
    std::vector<Bag> records;
    for (std::size_t i = 0; i < count; ++i) {
        records.push_back(make(random));
    }
    return records;
}

std::map<TString, Bag> MakeFonts(Random& random) {
    std::map<TString, Bag> fonts;
    for (const wchar_t* place : {L"title", L"header", L"pane", L"cell", L"tooltip", L"axis-title", L"axis-label",
                                 L"legend", L"caption", L"field-label", L"reference-line", L"annotation"}) {
        fonts[place] = MakeFont(random);
    }
    return fonts;
}

// A text for each of count members of a field.
template <class Make>
std::map<TString, TString> MakeTexts(int count, const wchar_t* prefix, Make make) {
    std::map<TString, TString> texts;
    for (int i = 0; i < count; ++i) {
        texts[prefix + TString::number(i)] = make(i);
    }
    return texts;
}

void SetLists(IParameters& bag, Random& random) {
    std::vector<int> ids;
    for (int i = 0; i < 400; ++i) {
        ids.push_back(1000 + i * 3 + static_cast<int>(random() % 3));
    }
    SetParameterValue(bag, kTupleIDs, std::move(ids));
    std::vector<double> ticks;
    for (int i = 0; i < 60; ++i) {
        ticks.push_back(i * 12.5);
    }
    SetParameterValue(bag, kAxisTicks, std::move(ticks));
}

}  // namespace

Workload MakeViewModel(ParametersRegistry& registry, Scale /*scale*/) {
    Workload workload{"W7", "a presentation model", {}, MakeFields(), {}, 0};
    Random random(7);
    const auto bag = MakeRefCnt<BenchBag>();
    SetParameterValue<TString>(*bag, kTitle, L"Sales and returns by region, this year and last");
    SetParameterValue(*bag, kModelKey, TUUID(L"3f2b8c1e-6a0d-4c55-9e17-0b9d4f8a7c21"));
    SetParameterValue(*bag, kShowGrid, true);
    SetParameterValue(*bag, kZoom, 1.25);
    SetParameterValue(*bag, kStyles, MakeRecords(70, random, MakeStyle));
    SetParameterValue(*bag, kMarks, MakeRecords(35, random, MakeMark));
    SetParameterValue(*bag, kFonts, MakeFonts(random));
    SetLists(*bag, random);
    SetParameterValue(*bag, kColors, MakeTexts(60, L"region-", [&](int) { return MakeColor(random); }));
    SetParameterValue(*bag, kCaptions, MakeTexts(30, L"panel-", [](int number) {
        return L"Panel " + TString::number(number) + TString(L": profit against plan");
    }));
    workload.bags.push_back(bag);
    Complete(workload, registry, kFirst);
    return workload;
}

}  // namespace compare
