// The elements that a run stands for. Not for callers.
#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

namespace qvpreslayer::detail {

// The value one step further. Integers count modulo 2^n, so that a falling step is a rising one in the unsigned type.
template <class T, class Step>
T NextOfRun(T value, Step step) {
    if constexpr (std::is_integral_v<T>) {
        using Unsigned = std::make_unsigned_t<T>;
        return static_cast<T>(static_cast<Unsigned>(static_cast<Unsigned>(value) + static_cast<Unsigned>(step)));
    } else {
        return value + step;
    }
}

// Appends length values from first on, each one step further.
template <class T, class Step>
void AppendRun(std::vector<T>& values, T first, std::size_t length, Step step) {
    if (step == 0) {
        values.insert(values.end(), length, first);
        return;
    }
    const std::size_t start = values.size();
    values.resize(start + length);
    T value = first;
    for (T *at = values.data() + start, *end = at + length; at != end; ++at) {
        *at = value;
        value = NextOfRun(value, step);
    }
}

}  // namespace qvpreslayer::detail
