// The direction in which a text runs.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextOrient : int {
    TextOrientAuto = 0,          // as space allows
    TextOrientHorizontal = 1,    // along the line
    TextOrientVerticalUp = 2,    // turned, from the bottom
    TextOrientVerticalDown = 3,  // turned, from the top
};

inline constexpr EnumName<TextOrient> kTextOrientNames[] = {
    {TextOrient::TextOrientAuto, u"text-orient-auto"},
    {TextOrient::TextOrientHorizontal, u"text-orient-horizontal"},
    {TextOrient::TextOrientVerticalUp, u"text-orient-vertical-up"},
    {TextOrient::TextOrientVerticalDown, u"text-orient-vertical-down"},
};

template <>
struct ParameterTypeTraits<TextOrient> : EnumTraits<kTextOrientNames, TextOrient::TextOrientAuto> {};

extern template class ParameterTypeSerializer<TextOrient>;
