// What programs exchange: every enumerator of every enumeration with its number and its text, and what an unknown text
// reads as.
#pragma once

#include <qvpreslayer/Enumerations.h>

template <class E>
struct EnumRow {
    E value;
    int number;
    const char16_t* name;
};

// For each enumeration: kRows, upwards by number, and kDefault.
template <class E>
struct EnumRows;

template <>
struct EnumRows<AggType> {
    static constexpr AggType kDefault{12};
    static constexpr EnumRow<AggType> kRows[] = {
        {AggType::Sum, 0, u"sum"},
        {AggType::Average, 1, u"average"},
        {AggType::Min, 2, u"min"},
        {AggType::Max, 3, u"max"},
        {AggType::StdDev, 4, u"std-dev"},
        {AggType::StdDevP, 5, u"std-dev-p"},
        {AggType::Var, 6, u"var"},
        {AggType::VarP, 7, u"var-p"},
        {AggType::Count, 8, u"count"},
        {AggType::CountD, 9, u"count-d"},
        {AggType::Median, 10, u"median"},
        {AggType::Attr, 11, u"attr"},
        {AggType::None, 12, u"none"},
        {AggType::Percentile, 13, u"percentile"},
        {AggType::Year, 14, u"year"},
        {AggType::Qtr, 15, u"qtr"},
        {AggType::Month, 16, u"month"},
        {AggType::Day, 17, u"day"},
        {AggType::Hour, 18, u"hour"},
        {AggType::Minute, 19, u"minute"},
        {AggType::Second, 20, u"second"},
        {AggType::Week, 21, u"week"},
        {AggType::Weekday, 22, u"weekday"},
        {AggType::MonthYear, 23, u"month-year"},
        {AggType::Mdy, 24, u"mdy"},
        {AggType::End, 25, u"end"},
        {AggType::TruncYear, 26, u"trunc-year"},
        {AggType::TruncQtr, 27, u"trunc-qtr"},
        {AggType::TruncMonth, 28, u"trunc-month"},
        {AggType::TruncWeek, 29, u"trunc-week"},
        {AggType::TruncDay, 30, u"trunc-day"},
        {AggType::TruncHour, 31, u"trunc-hour"},
        {AggType::TruncMinute, 32, u"trunc-minute"},
        {AggType::TruncSecond, 33, u"trunc-second"},
        {AggType::Quart1, 34, u"quart1"},
        {AggType::Quart3, 35, u"quart3"},
        {AggType::Skewness, 36, u"skewness"},
        {AggType::Kurtosis, 37, u"kurtosis"},
        {AggType::InOut, 38, u"in-out"},
        {AggType::SumXsqr, 39, u"sum-xsqr"},
        {AggType::User, 40, u"user"},
        {AggType::Collect, 41, u"collect"},
        {AggType::Covar, 42, u"covar"},
        {AggType::Covarp, 43, u"covarp"},
        {AggType::Corr, 44, u"corr"},
    };
};

template <>
struct EnumRows<BoxplotStyle> {
    static constexpr BoxplotStyle kDefault{3};
    static constexpr EnumRow<BoxplotStyle> kRows[] = {
        {BoxplotStyle::TwoTone, 1, u"two-tone"},
        {BoxplotStyle::Modern, 3, u"modern"},
        {BoxplotStyle::Glass, 4, u"glass"},
        {BoxplotStyle::Classic, 6, u"classic"},
        {BoxplotStyle::ClassicTwoTone, 7, u"classic-two-tone"},
    };
};

template <>
struct EnumRows<DataScaling> {
    static constexpr DataScaling kDefault{0};
    static constexpr EnumRow<DataScaling> kRows[] = {
        {DataScaling::None, 0, u"none"},
        {DataScaling::Standardized, 1, u"standardized"},
        {DataScaling::Normalized, 2, u"normalized"},
    };
};

template <>
struct EnumRows<DataType> {
    static constexpr DataType kDefault{8};
    static constexpr EnumRow<DataType> kRows[] = {
        {DataType::Integer, 0, u"integer"},   {DataType::Real, 1, u"real"},       {DataType::CString, 2, u"cstring"},
        {DataType::DateTime, 3, u"datetime"}, {DataType::Boolean, 4, u"boolean"}, {DataType::Date, 5, u"date"},
        {DataType::Tuple, 6, u"tuple"},       {DataType::Spatial, 7, u"spatial"}, {DataType::Unknown, 8, u"unknown"},
    };
};

template <>
struct EnumRows<FontWeight> {
    static constexpr FontWeight kDefault{0};
    static constexpr EnumRow<FontWeight> kRows[] = {
        {FontWeight::FontWeightNormal, 0, u"font-weight-normal"},
        {FontWeight::FontWeightBold, 1, u"font-weight-bold"},
    };
};

template <>
struct EnumRows<ForecastModelType> {
    static constexpr ForecastModelType kDefault{0};
    static constexpr EnumRow<ForecastModelType> kRows[] = {
        {ForecastModelType::AutoSeason, 0, u"auto-season"},
        {ForecastModelType::Auto, 1, u"auto"},
        {ForecastModelType::Custom, 2, u"custom"},
    };
};

template <>
struct EnumRows<ForecastRangeType> {
    static constexpr ForecastRangeType kDefault{0};
    static constexpr EnumRow<ForecastRangeType> kRows[] = {
        {ForecastRangeType::Auto, 0, u"auto"},
        {ForecastRangeType::Next, 1, u"next"},
        {ForecastRangeType::EndOf, 2, u"end-of"},
    };
};

template <>
struct EnumRows<ForecastStatus> {
    static constexpr ForecastStatus kDefault{0};
    static constexpr EnumRow<ForecastStatus> kRows[] = {
        {ForecastStatus::FsValid, 0, u"fs-valid"},
        {ForecastStatus::FsInvalidDatetime, 1, u"fs-invalid-datetime"},
        {ForecastStatus::FsInvalidResponse, 2, u"fs-invalid-response"},
        {ForecastStatus::FsNeedMoreData, 3, u"fs-need-more-data"},
        {ForecastStatus::FsTimeSeriesTooShort, 4, u"fs-time-series-too-short"},
        {ForecastStatus::FsTimeSeriesIrregular, 5, u"fs-time-series-irregular"},
        {ForecastStatus::FsNullDatetime, 6, u"fs-null-datetime"},
        {ForecastStatus::FsNullResponse, 7, u"fs-null-response"},
        {ForecastStatus::FsMetadataInvalid, 8, u"fs-metadata-invalid"},
        {ForecastStatus::FsNoResponse, 9, u"fs-no-response"},
        {ForecastStatus::FsExcessData, 10, u"fs-excess-data"},
        {ForecastStatus::FsExcessPartitions, 11, u"fs-excess-partitions"},
        {ForecastStatus::FsDimensionInvalid, 12, u"fs-dimension-invalid"},
        {ForecastStatus::FsTablecalcInvalid, 13, u"fs-tablecalc-invalid"},
        {ForecastStatus::FsTimeSeriesTooIrregular, 14, u"fs-time-series-too-irregular"},
        {ForecastStatus::FsAggregateFilter, 15, u"fs-aggregate-filter"},
        {ForecastStatus::FsDisaggregateResponse, 16, u"fs-disaggregate-response"},
        {ForecastStatus::FsPercentageInvalid, 17, u"fs-percentage-invalid"},
        {ForecastStatus::FsTotalInvalid, 18, u"fs-total-invalid"},
        {ForecastStatus::FsExcessDatetime, 19, u"fs-excess-datetime"},
        {ForecastStatus::FsDateAggIncompatible, 20, u"fs-date-agg-incompatible"},
        {ForecastStatus::FsTimeSeriesNotPositive, 21, u"fs-time-series-not-positive"},
        {ForecastStatus::FsRequestedModelInvalid, 22, u"fs-requested-model-invalid"},
        {ForecastStatus::FsTooShortForSeason, 23, u"fs-too-short-for-season"},
        {ForecastStatus::FsRequestedModelUnstable, 24, u"fs-requested-model-unstable"},
        {ForecastStatus::FsUndefined, 25, u"fs-undefined"},
    };
};

template <>
struct EnumRows<ParserMode> {
    static constexpr ParserMode kDefault{0};
    static constexpr EnumRow<ParserMode> kRows[] = {
        {ParserMode::ParserValidation, 0, u"parser-validation"},
        {ParserMode::ParserWithout, 1, u"parser-without"},
    };
};

template <>
struct EnumRows<StyleAttribute> {
    static constexpr StyleAttribute kDefault{162};
    static constexpr EnumRow<StyleAttribute> kRows[] = {
        {StyleAttribute::saAlternateText, 0, u"saAlternateText"},
        {StyleAttribute::saAltMarkColor, 1, u"saAltMarkColor"},
        {StyleAttribute::saAspect, 2, u"saAspect"},
        {StyleAttribute::saAutoSubtitle, 3, u"saAutoSubtitle"},
        {StyleAttribute::saBackgroundColor, 4, u"saBackgroundColor"},
        {StyleAttribute::saBackgroundTransparency, 5, u"saBackgroundTransparency"},
        {StyleAttribute::saBandSize, 6, u"saBandSize"},
        {StyleAttribute::saBandColor, 7, u"saBandColor"},
        {StyleAttribute::saBandLevel, 8, u"saBandLevel"},
        {StyleAttribute::saBodyType, 9, u"saBodyType"},
        {StyleAttribute::saBorderColor, 10, u"saBorderColor"},
        {StyleAttribute::saBorderColorTop, 11, u"saBorderColorTop"},
        {StyleAttribute::saBorderColorRight, 12, u"saBorderColorRight"},
        {StyleAttribute::saBorderColorBottom, 13, u"saBorderColorBottom"},
        {StyleAttribute::saBorderColorLeft, 14, u"saBorderColorLeft"},
        {StyleAttribute::saBorderStyle, 15, u"saBorderStyle"},
        {StyleAttribute::saBorderStyleTop, 16, u"saBorderStyleTop"},
        {StyleAttribute::saBorderStyleRight, 17, u"saBorderStyleRight"},
        {StyleAttribute::saBorderStyleBottom, 18, u"saBorderStyleBottom"},
        {StyleAttribute::saBorderStyleLeft, 19, u"saBorderStyleLeft"},
        {StyleAttribute::saBorderWidth, 20, u"saBorderWidth"},
        {StyleAttribute::saBorderWidthTop, 21, u"saBorderWidthTop"},
        {StyleAttribute::saBorderWidthRight, 22, u"saBorderWidthRight"},
        {StyleAttribute::saBorderWidthBottom, 23, u"saBorderWidthBottom"},
        {StyleAttribute::saBorderWidthLeft, 24, u"saBorderWidthLeft"},
        {StyleAttribute::saBoxplotStyle, 25, u"saBoxplotStyle"},
        {StyleAttribute::saBreakOnSpecial, 26, u"saBreakOnSpecial"},
        {StyleAttribute::saCell, 27, u"saCell"},
        {StyleAttribute::saCellW, 28, u"saCellW"},
        {StyleAttribute::saCellH, 29, u"saCellH"},
        {StyleAttribute::saCellQ, 30, u"saCellQ"},
        {StyleAttribute::saCellQMark, 31, u"saCellQMark"},
        {StyleAttribute::saColor, 32, u"saColor"},
        {StyleAttribute::saColorMode, 33, u"saColorMode"},
        {StyleAttribute::saColLevels, 34, u"saColLevels"},
        {StyleAttribute::saColVertLevels, 35, u"saColVertLevels"},
        {StyleAttribute::saColHorizHeight, 36, u"saColHorizHeight"},
        {StyleAttribute::saColVertHeight, 37, u"saColVertHeight"},
        {StyleAttribute::saColHeight, 38, u"saColHeight"},
        {StyleAttribute::saColWidth, 39, u"saColWidth"},
        {StyleAttribute::saContent, 40, u"saContent"},
        {StyleAttribute::saDisplayFieldLabels, 41, u"saDisplayFieldLabels"},
        {StyleAttribute::saDisplayHeader, 42, u"saDisplayHeader"},
        {StyleAttribute::saDisplayAlternateText, 43, u"saDisplayAlternateText"},
        {StyleAttribute::saDivLevel, 44, u"saDivLevel"},
        {StyleAttribute::saEnabled, 45, u"saEnabled"},
        {StyleAttribute::saFillAboveColor, 46, u"saFillAboveColor"},
        {StyleAttribute::saFillBelowColor, 47, u"saFillBelowColor"},
        {StyleAttribute::saFillColor, 48, u"saFillColor"},
        {StyleAttribute::saFogBGColor, 49, u"saFogBGColor"},
        {StyleAttribute::saFogDesaturationWithoutSelection, 50, u"saFogDesaturationWithoutSelection"},
        {StyleAttribute::saFogDesaturationWithSelection, 51, u"saFogDesaturationWithSelection"},
        {StyleAttribute::saFont, 52, u"saFont"},
        {StyleAttribute::saFontFamily, 53, u"saFontFamily"},
        {StyleAttribute::saFontSize, 54, u"saFontSize"},
        {StyleAttribute::saFontStyle, 55, u"saFontStyle"},
        {StyleAttribute::saFontWeight, 56, u"saFontWeight"},
        {StyleAttribute::saGeographicAreaType, 57, u"saGeographicAreaType"},
        {StyleAttribute::saHAlign, 58, u"saHAlign"},
        {StyleAttribute::saHaloColor, 59, u"saHaloColor"},
        {StyleAttribute::saHaloColorSelected, 60, u"saHaloColorSelected"},
        {StyleAttribute::saHasFill, 61, u"saHasFill"},
        {StyleAttribute::saHasHalo, 62, u"saHasHalo"},
        {StyleAttribute::saHasLabel, 63, u"saHasLabel"},
        {StyleAttribute::saHasStroke, 64, u"saHasStroke"},
        {StyleAttribute::saHeight, 65, u"saHeight"},
        {StyleAttribute::saHeightHeader, 66, u"saHeightHeader"},
        {StyleAttribute::saHighlightLegend, 67, u"saHighlightLegend"},
        {StyleAttribute::saHnaxis, 68, u"saHnaxis"},
        {StyleAttribute::saHnlabel, 69, u"saHnlabel"},
        {StyleAttribute::saInTooltip, 70, u"saInTooltip"},
        {StyleAttribute::saLineEnd, 71, u"saLineEnd"},
        {StyleAttribute::saLineEndSize, 72, u"saLineEndSize"},
        {StyleAttribute::saLineInterpolation, 73, u"saLineInterpolation"},
        {StyleAttribute::saLineMarkerPosition, 74, u"saLineMarkerPosition"},
        {StyleAttribute::saLinePattern, 75, u"saLinePattern"},
        {StyleAttribute::saLinePatternOnly, 76, u"saLinePatternOnly"},
        {StyleAttribute::saLineVisibility, 77, u"saLineVisibility"},
        {StyleAttribute::saMap, 78, u"saMap"},
        {StyleAttribute::saMapStyle, 79, u"saMapStyle"},
        {StyleAttribute::saMargin, 80, u"saMargin"},
        {StyleAttribute::saMarginTop, 81, u"saMarginTop"},
        {StyleAttribute::saMarginRight, 82, u"saMarginRight"},
        {StyleAttribute::saMarginBottom, 83, u"saMarginBottom"},
        {StyleAttribute::saMarginLeft, 84, u"saMarginLeft"},
        {StyleAttribute::saMarkColor, 85, u"saMarkColor"},
        {StyleAttribute::saMarkTransparency, 86, u"saMarkTransparency"},
        {StyleAttribute::saMarkLabelsShow, 87, u"saMarkLabelsShow"},
        {StyleAttribute::saRunningOrderLabelsShow, 88, u"saRunningOrderLabelsShow"},
        {StyleAttribute::saMarkLabelsMode, 89, u"saMarkLabelsMode"},
        {StyleAttribute::saMarkLabelsCull, 90, u"saMarkLabelsCull"},
        {StyleAttribute::saMarkLabelsLineEndFirst, 91, u"saMarkLabelsLineEndFirst"},
        {StyleAttribute::saMarkLabelsLineEndLast, 92, u"saMarkLabelsLineEndLast"},
        {StyleAttribute::saMarkLabelsRangeMin, 93, u"saMarkLabelsRangeMin"},
        {StyleAttribute::saMarkLabelsRangeMax, 94, u"saMarkLabelsRangeMax"},
        {StyleAttribute::saMarkLabelsRangeScope, 95, u"saMarkLabelsRangeScope"},
        {StyleAttribute::saMarkLabelsRangeField, 96, u"saMarkLabelsRangeField"},
        {StyleAttribute::saMarkMarkersMode, 97, u"saMarkMarkersMode"},
        {StyleAttribute::saMaxHeight, 98, u"saMaxHeight"},
        {StyleAttribute::saMaxFontSize, 99, u"saMaxFontSize"},
        {StyleAttribute::saMaxStrokeWidth, 100, u"saMaxStrokeWidth"},
        {StyleAttribute::saMaxWidth, 101, u"saMaxWidth"},
        {StyleAttribute::saMidStrokeWidth, 102, u"saMidStrokeWidth"},
        {StyleAttribute::saMinHeight, 103, u"saMinHeight"},
        {StyleAttribute::saMinFontSize, 104, u"saMinFontSize"},
        {StyleAttribute::saMinLength, 105, u"saMinLength"},
        {StyleAttribute::saMinMapSize, 106, u"saMinMapSize"},
        {StyleAttribute::saMinSize, 107, u"saMinSize"},
        {StyleAttribute::saMinStrokeWidth, 108, u"saMinStrokeWidth"},
        {StyleAttribute::saMinWidth, 109, u"saMinWidth"},
        {StyleAttribute::saNonhighlightColor, 110, u"saNonhighlightColor"},
        {StyleAttribute::saOmitOnSpecial, 111, u"saOmitOnSpecial"},
        {StyleAttribute::saOpacity, 112, u"saOpacity"},
        {StyleAttribute::saOrientation, 113, u"saOrientation"},
        {StyleAttribute::saPadding, 114, u"saPadding"},
        {StyleAttribute::saPaddingTop, 115, u"saPaddingTop"},
        {StyleAttribute::saPaddingRight, 116, u"saPaddingRight"},
        {StyleAttribute::saPaddingBottom, 117, u"saPaddingBottom"},
        {StyleAttribute::saPaddingLeft, 118, u"saPaddingLeft"},
        {StyleAttribute::saPalette, 119, u"saPalette"},
        {StyleAttribute::saRenderFoldReversed, 120, u"saRenderFoldReversed"},
        {StyleAttribute::saReversePalette, 121, u"saReversePalette"},
        {StyleAttribute::saRounding, 122, u"saRounding"},
        {StyleAttribute::saRowHorizLevels, 123, u"saRowHorizLevels"},
        {StyleAttribute::saRowHorizWidth, 124, u"saRowHorizWidth"},
        {StyleAttribute::saRowLevels, 125, u"saRowLevels"},
        {StyleAttribute::saRowVertWidth, 126, u"saRowVertWidth"},
        {StyleAttribute::saSeparator, 127, u"saSeparator"},
        {StyleAttribute::saShape, 128, u"saShape"},
        {StyleAttribute::saShowLabels, 129, u"saShowLabels"},
        {StyleAttribute::saSize, 130, u"saSize"},
        {StyleAttribute::saSizeBar, 131, u"saSizeBar"},
        {StyleAttribute::saSmartAutoAlignment, 132, u"saSmartAutoAlignment"},
        {StyleAttribute::saSpace, 133, u"saSpace"},
        {StyleAttribute::saStrokeColor, 134, u"saStrokeColor"},
        {StyleAttribute::saStrokeSize, 135, u"saStrokeSize"},
        {StyleAttribute::saSubtitle, 136, u"saSubtitle"},
        {StyleAttribute::saTextAlign, 137, u"saTextAlign"},
        {StyleAttribute::saTextAlignDefault, 138, u"saTextAlignDefault"},
        {StyleAttribute::saTextDecoration, 139, u"saTextDecoration"},
        {StyleAttribute::saTextIndent, 140, u"saTextIndent"},
        {StyleAttribute::saTextOrientation, 141, u"saTextOrientation"},
        {StyleAttribute::saTextFormat, 142, u"saTextFormat"},
        {StyleAttribute::saTickColor, 143, u"saTickColor"},
        {StyleAttribute::saTickLength, 144, u"saTickLength"},
        {StyleAttribute::saTickSpacing, 145, u"saTickSpacing"},
        {StyleAttribute::saTitle, 146, u"saTitle"},
        {StyleAttribute::saTotalLabel, 147, u"saTotalLabel"},
        {StyleAttribute::saVAlign, 148, u"saVAlign"},
        {StyleAttribute::saVerticalAlign, 149, u"saVerticalAlign"},
        {StyleAttribute::saVerticalAlignDefault, 150, u"saVerticalAlignDefault"},
        {StyleAttribute::saVnaxis, 151, u"saVnaxis"},
        {StyleAttribute::saVnlabel, 152, u"saVnlabel"},
        {StyleAttribute::saWarnOnSpecial, 153, u"saWarnOnSpecial"},
        {StyleAttribute::saWashout, 154, u"saWashout"},
        {StyleAttribute::saWhiskerEnd, 155, u"saWhiskerEnd"},
        {StyleAttribute::saWhiskerStrokeColor, 156, u"saWhiskerStrokeColor"},
        {StyleAttribute::saWhiskerStrokeSize, 157, u"saWhiskerStrokeSize"},
        {StyleAttribute::saWidth, 158, u"saWidth"},
        {StyleAttribute::saWidthHeader, 159, u"saWidthHeader"},
        {StyleAttribute::saWrap, 160, u"saWrap"},
        {StyleAttribute::saZoom, 161, u"saZoom"},
        {StyleAttribute::saNone, 162, u"saNone"},
        {StyleAttribute::saAny, 163, u"saAny"},
    };
};

template <>
struct EnumRows<StyleDataClass> {
    static constexpr StyleDataClass kDefault{0};
    static constexpr EnumRow<StyleDataClass> kRows[] = {
        {StyleDataClass::dcNormal, 0, u"dcNormal"},
        {StyleDataClass::dcTotal, 1, u"dcTotal"},
        {StyleDataClass::dcSubtotal, 2, u"dcSubtotal"},
        {StyleDataClass::dcCOUNT, 3, u"dcCOUNT"},
    };
};

template <>
struct EnumRows<StyleElement> {
    static constexpr StyleElement kDefault{56};
    static constexpr EnumRow<StyleElement> kRows[] = {
        {StyleElement::elementAxis, 0, u"elementAxis"},
        {StyleElement::elementCell, 1, u"elementCell"},
        {StyleElement::elementDatalabel, 2, u"elementDatalabel"},
        {StyleElement::elementDropspot, 3, u"elementDropspot"},
        {StyleElement::elementHeader, 4, u"elementHeader"},
        {StyleElement::elementFieldLabel, 5, u"elementFieldLabel"},
        {StyleElement::elementFieldLabelDecoration, 6, u"elementFieldLabelDecoration"},
        {StyleElement::elementFieldLabelSpanner, 7, u"elementFieldLabelSpanner"},
        {StyleElement::elementLabel, 8, u"elementLabel"},
        {StyleElement::elementMark, 9, u"elementMark"},
        {StyleElement::elementPane, 10, u"elementPane"},
        {StyleElement::elementTable, 11, u"elementTable"},
        {StyleElement::elementWorksheet, 12, u"elementWorksheet"},
        {StyleElement::elementBasesheet, 13, u"elementBasesheet"},
        {StyleElement::elementDashboard, 14, u"elementDashboard"},
        {StyleElement::elementStoryboard, 15, u"elementStoryboard"},
        {StyleElement::elementCaption, 16, u"elementCaption"},
        {StyleElement::elementDropline, 17, u"elementDropline"},
        {StyleElement::elementRefline, 18, u"elementRefline"},
        {StyleElement::elementRefBand, 19, u"elementRefBand"},
        {StyleElement::elementRefBoxplot, 20, u"elementRefBoxplot"},
        {StyleElement::elementGridline, 21, u"elementGridline"},
        {StyleElement::elementZeroline, 22, u"elementZeroline"},
        {StyleElement::elementTrendline, 23, u"elementTrendline"},
        {StyleElement::elementTableDiv, 24, u"elementTableDiv"},
        {StyleElement::elementHeaderDiv, 25, u"elementHeaderDiv"},
        {StyleElement::elementMappedImage, 26, u"elementMappedImage"},
        {StyleElement::elementAction, 27, u"elementAction"},
        {StyleElement::elementTitle, 28, u"elementTitle"},
        {StyleElement::elementLegend, 29, u"elementLegend"},
        {StyleElement::elementLegendTitle, 30, u"elementLegendTitle"},
        {StyleElement::elementLegendTitleText, 31, u"elementLegendTitleText"},
        {StyleElement::elementAxisTitle, 32, u"elementAxisTitle"},
        {StyleElement::elementAnnotation, 33, u"elementAnnotation"},
        {StyleElement::elementDashTitle, 34, u"elementDashTitle"},
        {StyleElement::elementDashSubtitle, 35, u"elementDashSubtitle"},
        {StyleElement::elementDashText, 36, u"elementDashText"},
        {StyleElement::elementDashZone, 37, u"elementDashZone"},
        {StyleElement::elementDashContainer, 38, u"elementDashContainer"},
        {StyleElement::elementScrollbar, 39, u"elementScrollbar"},
        {StyleElement::elementMapLayer, 40, u"elementMapLayer"},
        {StyleElement::elementMap, 41, u"elementMap"},
        {StyleElement::elementMapDataLayer, 42, u"elementMapDataLayer"},
        {StyleElement::elementQuickFilter, 43, u"elementQuickFilter"},
        {StyleElement::elementQuickFilterTitle, 44, u"elementQuickFilterTitle"},
        {StyleElement::elementParameterCtrl, 45, u"elementParameterCtrl"},
        {StyleElement::elementParameterCtrlTitle, 46, u"elementParameterCtrlTitle"},
        {StyleElement::elementPageCardTitle, 47, u"elementPageCardTitle"},
        {StyleElement::elementStoryDescription, 48, u"elementStoryDescription"},
        {StyleElement::elementStoryPointCaption, 49, u"elementStoryPointCaption"},
        {StyleElement::elementStoryTitle, 50, u"elementStoryTitle"},
        {StyleElement::elementTooltip, 51, u"elementTooltip"},
        {StyleElement::elementAll, 52, u"elementAll"},
        {StyleElement::elementPageCardBody, 53, u"elementPageCardBody"},
        {StyleElement::elementDataHighlighter, 54, u"elementDataHighlighter"},
        {StyleElement::elementDataHighlighterTitle, 55, u"elementDataHighlighterTitle"},
        {StyleElement::elementNone, 56, u"elementNone"},
        {StyleElement::elementAny, 57, u"elementAny"},
        {StyleElement::elementRoot, 58, u"elementRoot"},
    };
};

template <>
struct EnumRows<StyleFieldScope> {
    static constexpr StyleFieldScope kDefault{0};
    static constexpr EnumRow<StyleFieldScope> kRows[] = {
        {StyleFieldScope::fsNone, 0, u"fsNone"},
        {StyleFieldScope::fsRows, 1, u"fsRows"},
        {StyleFieldScope::fsCols, 2, u"fsCols"},
    };
};

template <>
struct EnumRows<StyleSwatch> {
    static constexpr StyleSwatch kDefault{0};
    static constexpr EnumRow<StyleSwatch> kRows[] = {
        {StyleSwatch::ssUnspecified, 0, u"ssUnspecified"},
        {StyleSwatch::ssLight, 1, u"ssLight"},
        {StyleSwatch::ssDark, 2, u"ssDark"},
    };
};

template <>
struct EnumRows<QuorvelFontStyle> {
    static constexpr QuorvelFontStyle kDefault{0};
    static constexpr EnumRow<QuorvelFontStyle> kRows[] = {
        {QuorvelFontStyle::FontStyleNormal, 0, u"font-style-normal"},
        {QuorvelFontStyle::FontStyleItalic, 1, u"font-style-italic"},
    };
};

template <>
struct EnumRows<TextAlign> {
    static constexpr TextAlign kDefault{1};
    static constexpr EnumRow<TextAlign> kRows[] = {
        {TextAlign::TextAlignStart, 0, u"text-align-start"},
        {TextAlign::TextAlignCenter, 1, u"text-align-center"},
        {TextAlign::TextAlignEnd, 2, u"text-align-end"},
    };
};

template <>
struct EnumRows<TextBreakMode> {
    static constexpr TextBreakMode kDefault{1};
    static constexpr EnumRow<TextBreakMode> kRows[] = {
        {TextBreakMode::TextBreakWsOnly, 0, u"text-break-ws-only"},
        {TextBreakMode::TextBreakAuto, 1, u"text-break-auto"},
    };
};

template <>
struct EnumRows<TextDecoration> {
    static constexpr TextDecoration kDefault{0};
    static constexpr EnumRow<TextDecoration> kRows[] = {
        {TextDecoration::TextDecorationNone, 0, u"text-decoration-none"},
        {TextDecoration::TextDecorationUnderline, 1, u"text-decoration-underline"},
        {TextDecoration::TextDecorationOverline, 2, u"text-decoration-overline"},
        {TextDecoration::TextDecorationStrikethrough, 3, u"text-decoration-strikethrough"},
    };
};

template <>
struct EnumRows<TextOrient> {
    static constexpr TextOrient kDefault{0};
    static constexpr EnumRow<TextOrient> kRows[] = {
        {TextOrient::TextOrientAuto, 0, u"text-orient-auto"},
        {TextOrient::TextOrientHorizontal, 1, u"text-orient-horizontal"},
        {TextOrient::TextOrientVerticalUp, 2, u"text-orient-vertical-up"},
        {TextOrient::TextOrientVerticalDown, 3, u"text-orient-vertical-down"},
    };
};

template <>
struct EnumRows<TextWholeLineMode> {
    static constexpr TextWholeLineMode kDefault{2};
    static constexpr EnumRow<TextWholeLineMode> kRows[] = {
        {TextWholeLineMode::TextWholeLineOff, 0, u"text-whole-line-off"},
        {TextWholeLineMode::TextWholeLineOn, 1, u"text-whole-line-on"},
        {TextWholeLineMode::TextWholeLineAuto, 2, u"text-whole-line-auto"},
    };
};

template <>
struct EnumRows<TextWrapMode> {
    static constexpr TextWrapMode kDefault{3};
    static constexpr EnumRow<TextWrapMode> kRows[] = {
        {TextWrapMode::TextWrapOff, 0, u"text-wrap-off"},
        {TextWrapMode::TextWrapTruncate, 1, u"text-wrap-truncate"},
        {TextWrapMode::TextWrapOn, 2, u"text-wrap-on"},
        {TextWrapMode::TextWrapAuto, 3, u"text-wrap-auto"},
    };
};

template <>
struct EnumRows<WhiskerEnd> {
    static constexpr WhiskerEnd kDefault{2};
    static constexpr EnumRow<WhiskerEnd> kRows[] = {
        {WhiskerEnd::None, 0, u"none"},
        {WhiskerEnd::Small, 1, u"small"},
        {WhiskerEnd::Large, 2, u"large"},
    };
};
