// Where a field has to stand for a style to apply.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API StyleFieldScope : int {
    fsNone = 0,  // anywhere
    fsRows = 1,  // on the rows
    fsCols = 2,  // on the columns
};

inline constexpr EnumName<StyleFieldScope> kStyleFieldScopeNames[] = {
    {StyleFieldScope::fsNone, u"fsNone"},
    {StyleFieldScope::fsRows, u"fsRows"},
    {StyleFieldScope::fsCols, u"fsCols"},
};

template <>
struct ParameterTypeTraits<StyleFieldScope> : EnumTraits<kStyleFieldScopeNames, StyleFieldScope::fsNone> {};

extern template class ParameterTypeSerializer<StyleFieldScope>;
