// The 64-bit integers of values and texts.
#pragma once

#include <cstdint>

using Int64 = std::int64_t;
using UInt64 = std::uint64_t;
