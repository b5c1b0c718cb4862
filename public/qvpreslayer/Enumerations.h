// The presentation enumerations that travel as texts, a header for each.
//
// Reading is lenient: a text that names no enumerator reads as the enumeration's default. Writing is strict: a value
// without a name raises QuorvelException. Hosts add enumerations of their own as EnumTable.h shows.
#pragma once

#include <qvpreslayer/EnumTable.h>

// Data and how it is brought together.
#include <qvpreslayer/enumerations/AggType.h>
#include <qvpreslayer/enumerations/DataScaling.h>
#include <qvpreslayer/enumerations/DataType.h>
#include <qvpreslayer/enumerations/ParserMode.h>

// Forecasts.
#include <qvpreslayer/enumerations/ForecastModelType.h>
#include <qvpreslayer/enumerations/ForecastRangeType.h>
#include <qvpreslayer/enumerations/ForecastStatus.h>

// Box plots.
#include <qvpreslayer/enumerations/BoxplotStyle.h>
#include <qvpreslayer/enumerations/WhiskerEnd.h>

// Styles: what is set, and for what.
#include <qvpreslayer/enumerations/StyleAttribute.h>
#include <qvpreslayer/enumerations/StyleDataClass.h>
#include <qvpreslayer/enumerations/StyleElement.h>
#include <qvpreslayer/enumerations/StyleFieldScope.h>
#include <qvpreslayer/enumerations/StyleSwatch.h>

// Fonts and texts.
#include <qvpreslayer/enumerations/FontWeight.h>
#include <qvpreslayer/enumerations/QuorvelFontStyle.h>
#include <qvpreslayer/enumerations/TextAlign.h>
#include <qvpreslayer/enumerations/TextBreakMode.h>
#include <qvpreslayer/enumerations/TextDecoration.h>
#include <qvpreslayer/enumerations/TextOrient.h>
#include <qvpreslayer/enumerations/TextWholeLineMode.h>
#include <qvpreslayer/enumerations/TextWrapMode.h>
