// Which values a style is meant for.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API StyleDataClass : int {
    dcNormal = 0,    // values themselves
    dcTotal = 1,     // grand totals
    dcSubtotal = 2,  // totals of a part
    dcCOUNT = 3,     // how many classes there are
};

inline constexpr EnumName<StyleDataClass> kStyleDataClassNames[] = {
    {StyleDataClass::dcNormal, u"dcNormal"},
    {StyleDataClass::dcTotal, u"dcTotal"},
    {StyleDataClass::dcSubtotal, u"dcSubtotal"},
    {StyleDataClass::dcCOUNT, u"dcCOUNT"},
};

template <>
struct ParameterTypeTraits<StyleDataClass> : EnumTraits<kStyleDataClassNames, StyleDataClass::dcNormal> {};

extern template class ParameterTypeSerializer<StyleDataClass>;
