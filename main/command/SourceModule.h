// The name under which broken invariants of the registry are reported. Included by the registry's .cpp files.
#pragma once

inline constexpr const char* kSourceModule = "main/command/ParametersRegistry";
