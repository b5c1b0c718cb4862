// The program's allocator, counted and made to fail. Included by the fault tests, whose program brings its own malloc.
//
// All of malloc, calloc, realloc and the aligned functions are replaced, and operator new with them; under a sanitizer,
// which has a malloc of its own, operator new alone. Small blocks that the library keeps would hide allocations: the
// tests run with KeepNoBlocks.
#pragma once

namespace allocations {

// Blocks that are allocated and not freed, of the whole program.
long Live() noexcept;

// Lets the allocations of the calling thread fail: once, or from there on.
enum class Mode { Once, FromThereOn };

// The allocation number (from 0) fails, and in the second mode all after it. In force until Disarm.
void Arm(long number, Mode mode) noexcept;

// Counts without failing.
void ArmToCount() noexcept;

struct Tally {
    long asked;   // allocations since arming, failed ones included
    long failed;  // of them
};
Tally Disarm() noexcept;

}  // namespace allocations
