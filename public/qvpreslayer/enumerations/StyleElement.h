// What a style is meant for.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API StyleElement : int {
    // Parts of a table or chart.
    elementAxis = 0,
    elementCell = 1,
    elementDatalabel = 2,
    elementDropspot = 3,
    elementHeader = 4,
    elementFieldLabel = 5,
    elementFieldLabelDecoration = 6,
    elementFieldLabelSpanner = 7,
    elementLabel = 8,
    elementMark = 9,
    elementPane = 10,
    elementTable = 11,

    // Whole sheets.
    elementWorksheet = 12,
    elementBasesheet = 13,
    elementDashboard = 14,
    elementStoryboard = 15,

    // Captions, lines and bands over the data.
    elementCaption = 16,
    elementDropline = 17,
    elementRefline = 18,
    elementRefBand = 19,
    elementRefBoxplot = 20,
    elementGridline = 21,
    elementZeroline = 22,
    elementTrendline = 23,

    // Dividers, images and actions.
    elementTableDiv = 24,
    elementHeaderDiv = 25,
    elementMappedImage = 26,
    elementAction = 27,

    // Titles and legends.
    elementTitle = 28,
    elementLegend = 29,
    elementLegendTitle = 30,
    elementLegendTitleText = 31,
    elementAxisTitle = 32,
    elementAnnotation = 33,

    // Parts of a dashboard.
    elementDashTitle = 34,
    elementDashSubtitle = 35,
    elementDashText = 36,
    elementDashZone = 37,
    elementDashContainer = 38,

    // Scrollbars and maps.
    elementScrollbar = 39,
    elementMapLayer = 40,
    elementMap = 41,
    elementMapDataLayer = 42,

    // Controls that the user works with.
    elementQuickFilter = 43,
    elementQuickFilterTitle = 44,
    elementParameterCtrl = 45,
    elementParameterCtrlTitle = 46,
    elementPageCardTitle = 47,

    // Parts of a story, and tooltips.
    elementStoryDescription = 48,
    elementStoryPointCaption = 49,
    elementStoryTitle = 50,
    elementTooltip = 51,

    // Everything at once.
    elementAll = 52,

    // More controls, numbered later.
    elementPageCardBody = 53,
    elementDataHighlighter = 54,
    elementDataHighlighterTitle = 55,

    // No element, whichever there is, and the outermost.
    elementNone = 56,
    elementAny = 57,
    elementRoot = 58,
};

inline constexpr EnumName<StyleElement> kStyleElementNames[] = {
    {StyleElement::elementAxis, u"elementAxis"},
    {StyleElement::elementCell, u"elementCell"},
    {StyleElement::elementDatalabel, u"elementDatalabel"},
    {StyleElement::elementDropspot, u"elementDropspot"},
    {StyleElement::elementHeader, u"elementHeader"},
    {StyleElement::elementFieldLabel, u"elementFieldLabel"},
    {StyleElement::elementFieldLabelDecoration, u"elementFieldLabelDecoration"},
    {StyleElement::elementFieldLabelSpanner, u"elementFieldLabelSpanner"},
    {StyleElement::elementLabel, u"elementLabel"},
    {StyleElement::elementMark, u"elementMark"},
    {StyleElement::elementPane, u"elementPane"},
    {StyleElement::elementTable, u"elementTable"},
    {StyleElement::elementWorksheet, u"elementWorksheet"},
    {StyleElement::elementBasesheet, u"elementBasesheet"},
    {StyleElement::elementDashboard, u"elementDashboard"},
    {StyleElement::elementStoryboard, u"elementStoryboard"},
    {StyleElement::elementCaption, u"elementCaption"},
    {StyleElement::elementDropline, u"elementDropline"},
    {StyleElement::elementRefline, u"elementRefline"},
    {StyleElement::elementRefBand, u"elementRefBand"},
    {StyleElement::elementRefBoxplot, u"elementRefBoxplot"},
    {StyleElement::elementGridline, u"elementGridline"},
    {StyleElement::elementZeroline, u"elementZeroline"},
    {StyleElement::elementTrendline, u"elementTrendline"},
    {StyleElement::elementTableDiv, u"elementTableDiv"},
    {StyleElement::elementHeaderDiv, u"elementHeaderDiv"},
    {StyleElement::elementMappedImage, u"elementMappedImage"},
    {StyleElement::elementAction, u"elementAction"},
    {StyleElement::elementTitle, u"elementTitle"},
    {StyleElement::elementLegend, u"elementLegend"},
    {StyleElement::elementLegendTitle, u"elementLegendTitle"},
    {StyleElement::elementLegendTitleText, u"elementLegendTitleText"},
    {StyleElement::elementAxisTitle, u"elementAxisTitle"},
    {StyleElement::elementAnnotation, u"elementAnnotation"},
    {StyleElement::elementDashTitle, u"elementDashTitle"},
    {StyleElement::elementDashSubtitle, u"elementDashSubtitle"},
    {StyleElement::elementDashText, u"elementDashText"},
    {StyleElement::elementDashZone, u"elementDashZone"},
    {StyleElement::elementDashContainer, u"elementDashContainer"},
    {StyleElement::elementScrollbar, u"elementScrollbar"},
    {StyleElement::elementMapLayer, u"elementMapLayer"},
    {StyleElement::elementMap, u"elementMap"},
    {StyleElement::elementMapDataLayer, u"elementMapDataLayer"},
    {StyleElement::elementQuickFilter, u"elementQuickFilter"},
    {StyleElement::elementQuickFilterTitle, u"elementQuickFilterTitle"},
    {StyleElement::elementParameterCtrl, u"elementParameterCtrl"},
    {StyleElement::elementParameterCtrlTitle, u"elementParameterCtrlTitle"},
    {StyleElement::elementPageCardTitle, u"elementPageCardTitle"},
    {StyleElement::elementStoryDescription, u"elementStoryDescription"},
    {StyleElement::elementStoryPointCaption, u"elementStoryPointCaption"},
    {StyleElement::elementStoryTitle, u"elementStoryTitle"},
    {StyleElement::elementTooltip, u"elementTooltip"},
    {StyleElement::elementAll, u"elementAll"},
    {StyleElement::elementPageCardBody, u"elementPageCardBody"},
    {StyleElement::elementDataHighlighter, u"elementDataHighlighter"},
    {StyleElement::elementDataHighlighterTitle, u"elementDataHighlighterTitle"},
    {StyleElement::elementNone, u"elementNone"},
    {StyleElement::elementAny, u"elementAny"},
    {StyleElement::elementRoot, u"elementRoot"},
};

template <>
struct ParameterTypeTraits<StyleElement> : EnumTraits<kStyleElementNames, StyleElement::elementNone> {};

extern template class ParameterTypeSerializer<StyleElement>;
