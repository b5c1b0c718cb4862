// What nobody can beat by much: copying the text, and formatting the numbers alone.
#pragma once

#include <memory>

#include "Contestant.h"
#include "Workload.h"

namespace compare {

inline constexpr const char* kCopyFloor = "memcpy";
inline constexpr const char* kNumberFloor = "to_chars";

// Copies the text into memory that is there already; the same for writing and reading.
std::unique_ptr<Contestant> MakeCopyFloor();

// The workload's numbers through std::to_chars, in 8-bit characters; writing only.
std::unique_ptr<Contestant> MakeNumberFloor(const Workload& workload);

}  // namespace compare
