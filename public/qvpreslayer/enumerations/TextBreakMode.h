// Where a line of text may break.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextBreakMode : int {
    TextBreakWsOnly = 0,  // at white space only
    TextBreakAuto = 1,    // wherever it helps
};

inline constexpr EnumName<TextBreakMode> kTextBreakModeNames[] = {
    {TextBreakMode::TextBreakWsOnly, u"text-break-ws-only"},
    {TextBreakMode::TextBreakAuto, u"text-break-auto"},
};

template <>
struct ParameterTypeTraits<TextBreakMode> : EnumTraits<kTextBreakModeNames, TextBreakMode::TextBreakAuto> {};

extern template class ParameterTypeSerializer<TextBreakMode>;
