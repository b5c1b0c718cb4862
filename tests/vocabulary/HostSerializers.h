// What the host of every-type.json brings along.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

enum class Season : int { Dry = 1, Wet = 2 };

inline constexpr EnumName<Season> kSeasonNames[] = {
    {Season::Dry, u"dry-season"},
    {Season::Wet, u"wet-season"},
};
template <>
struct ParameterTypeTraits<Season> : EnumTraits<kSeasonNames, Season::Dry> {};

class CountingSerializer final : public BagStructureSerializer {};
