// Where lines of text are aligned.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextAlign : int {
    TextAlignStart = 0,   // where reading starts
    TextAlignCenter = 1,  // in the middle
    TextAlignEnd = 2,     // where reading ends
};

inline constexpr EnumName<TextAlign> kTextAlignNames[] = {
    {TextAlign::TextAlignStart, u"text-align-start"},
    {TextAlign::TextAlignCenter, u"text-align-center"},
    {TextAlign::TextAlignEnd, u"text-align-end"},
};

template <>
struct ParameterTypeTraits<TextAlign> : EnumTraits<kTextAlignNames, TextAlign::TextAlignCenter> {};

extern template class ParameterTypeSerializer<TextAlign>;
