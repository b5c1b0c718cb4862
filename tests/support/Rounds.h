// How long tests on random data run.
#pragma once

#include <cstdint>
#include <cstdlib>

// The ordinary number of rounds, or as many times more as the environment variable QV_TEST_ROUNDS says: scripts/oracles
// runs the same tests for hours where the ordinary run takes a second.
inline int Rounds(int ordinary) {
    const char* const factor = std::getenv("QV_TEST_ROUNDS");
    return factor == nullptr ? ordinary : ordinary * std::atoi(factor);
}

// The seed of an ordinary run, or another one for each value of QV_TEST_SEED.
inline std::uint64_t Seed(std::uint64_t ordinary) {
    const char* const offset = std::getenv("QV_TEST_SEED");
    return offset == nullptr ? ordinary : ordinary + 1000003 * static_cast<std::uint64_t>(std::atoll(offset));
}
