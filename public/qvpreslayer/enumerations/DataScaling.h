// How numbers are scaled before they are compared.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API DataScaling : int {
    None = 0,          // as they are
    Standardized = 1,  // mean 0, deviation 1
    Normalized = 2,    // from 0 to 1
};

inline constexpr EnumName<DataScaling> kDataScalingNames[] = {
    {DataScaling::None, u"none"},
    {DataScaling::Standardized, u"standardized"},
    {DataScaling::Normalized, u"normalized"},
};

template <>
struct ParameterTypeTraits<DataScaling> : EnumTraits<kDataScalingNames, DataScaling::None> {};

extern template class ParameterTypeSerializer<DataScaling>;
