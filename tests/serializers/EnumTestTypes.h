// The enumerations that the typed tests run over, and what they share.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Failures.h"

using AllEnumerations =
    testing::Types<AggType, BoxplotStyle, DataScaling, DataType, FontWeight, ForecastModelType, ForecastRangeType,
                   ForecastStatus, ParserMode, StyleAttribute, StyleDataClass, StyleElement, StyleFieldScope,
                   StyleSwatch, QuorvelFontStyle, TextAlign, TextBreakMode, TextDecoration, TextOrient,
                   TextWholeLineMode, TextWrapMode, WhiskerEnd>;

// What a value without a name, or a strict look-up of an unknown name, throws.
inline auto ThrowsUnknownEnumValue() { return ThrowsMessageText(LookupTStr(1237050406)); }
