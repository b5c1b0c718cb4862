// Random choices, the same in every run with the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_random(seed) {}

    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(m_random() % bound); }
    template <class V>
    const typename V::value_type& Of(const V& choices) {
        return choices[Below(choices.size())];
    }
    std::uint64_t Bits() { return m_random(); }

private:
    std::mt19937_64 m_random;
};
