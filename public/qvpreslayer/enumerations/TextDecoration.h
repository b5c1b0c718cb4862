// A line drawn with a text.
#pragma once

#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Export.h>

enum class QVPRESLAYER_API TextDecoration : int {
    TextDecorationNone = 0,           // no line
    TextDecorationUnderline = 1,      // below
    TextDecorationOverline = 2,       // above
    TextDecorationStrikethrough = 3,  // through the middle
};

inline constexpr EnumName<TextDecoration> kTextDecorationNames[] = {
    {TextDecoration::TextDecorationNone, u"text-decoration-none"},
    {TextDecoration::TextDecorationUnderline, u"text-decoration-underline"},
    {TextDecoration::TextDecorationOverline, u"text-decoration-overline"},
    {TextDecoration::TextDecorationStrikethrough, u"text-decoration-strikethrough"},
};

template <>
struct ParameterTypeTraits<TextDecoration> : EnumTraits<kTextDecorationNames, TextDecoration::TextDecorationNone> {};

extern template class ParameterTypeSerializer<TextDecoration>;
