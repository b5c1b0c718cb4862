// The brightness that a style is made for.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API StyleSwatch : int {
    ssUnspecified = 0,  // either
    ssLight = 1,        // light surroundings
    ssDark = 2,         // dark surroundings
};

inline constexpr EnumName<StyleSwatch> kStyleSwatchNames[] = {
    {StyleSwatch::ssUnspecified, u"ssUnspecified"},
    {StyleSwatch::ssLight, u"ssLight"},
    {StyleSwatch::ssDark, u"ssDark"},
};

template <>
struct ParameterTypeTraits<StyleSwatch> : EnumTraits<kStyleSwatchNames, StyleSwatch::ssUnspecified> {};

extern template class ParameterTypeSerializer<StyleSwatch>;
