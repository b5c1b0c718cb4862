// The looks of a box plot. The numbers between are not in use, and have no name.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API BoxplotStyle : int {
    TwoTone = 1,         // halves in two shades
    Modern = 3,          // plain, without outline
    Glass = 4,           // see-through
    Classic = 6,         // outlined
    ClassicTwoTone = 7,  // outlined, halves in two shades
};

inline constexpr EnumName<BoxplotStyle> kBoxplotStyleNames[] = {
    {BoxplotStyle::TwoTone, u"two-tone"},
    {BoxplotStyle::Modern, u"modern"},
    {BoxplotStyle::Glass, u"glass"},
    {BoxplotStyle::Classic, u"classic"},
    {BoxplotStyle::ClassicTwoTone, u"classic-two-tone"},
};

template <>
struct ParameterTypeTraits<BoxplotStyle> : EnumTraits<kBoxplotStyleNames, BoxplotStyle::Modern> {};

extern template class ParameterTypeSerializer<BoxplotStyle>;
