// Whether a line of text is left out when it fits only in part.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextWholeLineMode : int {
    TextWholeLineOff = 0,   // shown in part
    TextWholeLineOn = 1,    // left out
    TextWholeLineAuto = 2,  // as space allows
};

inline constexpr EnumName<TextWholeLineMode> kTextWholeLineModeNames[] = {
    {TextWholeLineMode::TextWholeLineOff, u"text-whole-line-off"},
    {TextWholeLineMode::TextWholeLineOn, u"text-whole-line-on"},
    {TextWholeLineMode::TextWholeLineAuto, u"text-whole-line-auto"},
};

template <>
struct ParameterTypeTraits<TextWholeLineMode>
    : EnumTraits<kTextWholeLineModeNames, TextWholeLineMode::TextWholeLineAuto> {};

extern template class ParameterTypeSerializer<TextWholeLineMode>;
