// The bars at the ends of a whisker.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API WhiskerEnd : int {
    None = 0,   // no bars
    Small = 1,  // narrow
    Large = 2,  // wide
};

inline constexpr EnumName<WhiskerEnd> kWhiskerEndNames[] = {
    {WhiskerEnd::None, u"none"},
    {WhiskerEnd::Small, u"small"},
    {WhiskerEnd::Large, u"large"},
};

template <>
struct ParameterTypeTraits<WhiskerEnd> : EnumTraits<kWhiskerEndNames, WhiskerEnd::Large> {};

extern template class ParameterTypeSerializer<WhiskerEnd>;
