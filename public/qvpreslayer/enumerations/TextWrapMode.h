// What happens to a text that is too long for its line.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextWrapMode : int {
    TextWrapOff = 0,       // runs over
    TextWrapTruncate = 1,  // is cut
    TextWrapOn = 2,        // goes on in the next line
    TextWrapAuto = 3,      // as space allows
};

inline constexpr EnumName<TextWrapMode> kTextWrapModeNames[] = {
    {TextWrapMode::TextWrapOff, u"text-wrap-off"},
    {TextWrapMode::TextWrapTruncate, u"text-wrap-truncate"},
    {TextWrapMode::TextWrapOn, u"text-wrap-on"},
    {TextWrapMode::TextWrapAuto, u"text-wrap-auto"},
};

template <>
struct ParameterTypeTraits<TextWrapMode> : EnumTraits<kTextWrapModeNames, TextWrapMode::TextWrapAuto> {};

extern template class ParameterTypeSerializer<TextWrapMode>;
