// The texts of the kinds of typed values. The enumeration itself belongs to the platform.
#pragma once

#include <qvcore/DataType.h>

#include <qvpreslayer/EnumTable.h>

inline constexpr EnumName<DataType> kDataTypeNames[] = {
    {DataType::Integer, u"integer"},   {DataType::Real, u"real"},       {DataType::CString, u"cstring"},
    {DataType::DateTime, u"datetime"}, {DataType::Boolean, u"boolean"}, {DataType::Date, u"date"},
    {DataType::Tuple, u"tuple"},       {DataType::Spatial, u"spatial"}, {DataType::Unknown, u"unknown"},
};

template <>
struct ParameterTypeTraits<DataType> : EnumTraits<kDataTypeNames, DataType::Unknown> {};

extern template class ParameterTypeSerializer<DataType>;
