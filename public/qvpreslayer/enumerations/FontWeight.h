// How heavy a font is.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API FontWeight : int {
    FontWeightNormal = 0,  // regular
    FontWeightBold = 1,    // heavy
};

inline constexpr EnumName<FontWeight> kFontWeightNames[] = {
    {FontWeight::FontWeightNormal, u"font-weight-normal"},
    {FontWeight::FontWeightBold, u"font-weight-bold"},
};

template <>
struct ParameterTypeTraits<FontWeight> : EnumTraits<kFontWeightNames, FontWeight::FontWeightNormal> {};

extern template class ParameterTypeSerializer<FontWeight>;
