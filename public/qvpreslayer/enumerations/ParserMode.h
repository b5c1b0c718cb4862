// Whether what is read is also checked.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API ParserMode : int {
    ParserValidation = 0,  // checked
    ParserWithout = 1,     // taken as it is
};

inline constexpr EnumName<ParserMode> kParserModeNames[] = {
    {ParserMode::ParserValidation, u"parser-validation"},
    {ParserMode::ParserWithout, u"parser-without"},
};

template <>
struct ParameterTypeTraits<ParserMode> : EnumTraits<kParserModeNames, ParserMode::ParserValidation> {};

extern template class ParameterTypeSerializer<ParserMode>;
