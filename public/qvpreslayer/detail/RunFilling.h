// The elements that a run stands for. Not for callers.
#pragma once

#include <compare>
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace qvpreslayer::detail {

// A place in a run of integers, which count modulo 2^n, so that a falling step is a rising one in the unsigned type.
// With it the elements of a vector are made as what they are: it would clear them first if it was lengthened and then
// filled.
template <class T, class Step>
class PlaceInRun {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = T;

    PlaceInRun() = default;
    PlaceInRun(T value, Step step, std::size_t position) : m_value(value), m_step(step), m_position(position) {}

    T operator*() const { return m_value; }
    T operator[](difference_type steps) const { return *(*this + steps); }
    PlaceInRun& operator++() { return *this += 1; }
    PlaceInRun& operator--() { return *this += -1; }
    PlaceInRun& operator+=(difference_type steps) {
        const auto distance = static_cast<Magnitude>(static_cast<Magnitude>(m_step) * static_cast<Magnitude>(steps));
        m_value = static_cast<T>(static_cast<Magnitude>(m_value) + distance);
        m_position += static_cast<std::size_t>(steps);
        return *this;
    }
    PlaceInRun& operator-=(difference_type steps) { return *this += -steps; }
    PlaceInRun operator++(int) { return std::exchange(*this, *this + 1); }
    PlaceInRun operator--(int) { return std::exchange(*this, *this - 1); }
    friend PlaceInRun operator+(PlaceInRun place, difference_type steps) { return place += steps; }
    friend PlaceInRun operator+(difference_type steps, PlaceInRun place) { return place += steps; }
    friend PlaceInRun operator-(PlaceInRun place, difference_type steps) { return place -= steps; }
    difference_type operator-(const PlaceInRun& other) const {
        return static_cast<difference_type>(m_position - other.m_position);
    }
    bool operator==(const PlaceInRun& other) const { return m_position == other.m_position; }
    auto operator<=>(const PlaceInRun& other) const { return m_position <=> other.m_position; }

private:
    using Magnitude = std::make_unsigned_t<T>;

    T m_value{};
    Step m_step{};
    std::size_t m_position = 0;
};

// Appends length values from first on, each one step further.
template <class T, class Step>
void AppendRun(std::vector<T>& values, T first, std::size_t length, Step step) {
    if constexpr (std::is_integral_v<T>) {
        using Place = PlaceInRun<T, Step>;
        values.insert(values.end(), Place(first, step, 0), Place(first, step, length));
    } else if (step == 0) {  // zeros keep their sign
        values.insert(values.end(), length, first);
    } else {
        for (T value = first; length != 0; --length, value += step) {
            values.push_back(value);
        }
    }
}

}  // namespace qvpreslayer::detail
