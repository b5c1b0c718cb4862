// Joining of hash values. Internal to qvcore: included by its source files only.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qvcore::detail {

// Adds value to hash such that order counts and neighbouring values end far apart.
inline std::size_t MixHash(std::size_t hash, std::size_t value) noexcept {
    std::uint64_t mixed = hash * 0x9E3779B97F4A7C15u + value;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return static_cast<std::size_t>(mixed ^ (mixed >> 31));
}

}  // namespace qvcore::detail
