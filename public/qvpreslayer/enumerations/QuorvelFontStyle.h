// How a font slants.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API QuorvelFontStyle : int {
    FontStyleNormal = 0,  // upright
    FontStyleItalic = 1,  // slanted
};

inline constexpr EnumName<QuorvelFontStyle> kQuorvelFontStyleNames[] = {
    {QuorvelFontStyle::FontStyleNormal, u"font-style-normal"},
    {QuorvelFontStyle::FontStyleItalic, u"font-style-italic"},
};

template <>
struct ParameterTypeTraits<QuorvelFontStyle> : EnumTraits<kQuorvelFontStyleNames, QuorvelFontStyle::FontStyleNormal> {};

extern template class ParameterTypeSerializer<QuorvelFontStyle>;
