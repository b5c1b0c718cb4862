// Finding runs in numeric lists, in one pass without looking ahead. Not for callers.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace qvpreslayer::detail {

// A run: length values from first on, each one step further up, or down.
template <class T>
struct Run {
    using Magnitude =
        typename std::conditional_t<std::is_integral_v<T>, std::make_unsigned<T>, std::type_identity<T>>::type;

    T first{};
    std::size_t length = 0;
    Magnitude step = 0;  // magnitude; 0 for equal values
    bool descending = false;

    // The value at index; wraps around in integer types.
    T At(std::size_t index) const {
        if constexpr (std::is_integral_v<T>) {
            const auto distance = static_cast<Magnitude>(step * static_cast<Magnitude>(index));
            const auto start = static_cast<Magnitude>(first);
            return static_cast<T>(descending ? start - distance : start + distance);
        } else {
            return first;
        }
    }
};

// Elements that are compared at once where a run goes on: as many as fill 16 bytes, in one operation of the compiler's
// own vectors.
template <class T>
struct Elements {
    static constexpr std::ptrdiff_t kCount = 16 / sizeof(T);
    typedef T Vector [[gnu::vector_size(16)]];

    static Vector At(const void* at) noexcept {
        Vector vector;
        std::memcpy(&vector, at, sizeof(vector));
        return vector;
    }

    // From first on, each one step further.
    static Vector Upwards(T first, T step) noexcept {
        Vector vector{};
        for (std::ptrdiff_t i = 0; i < kCount; ++i) {
            vector[i] = static_cast<T>(first + step * static_cast<T>(i));
        }
        return vector;
    }

    template <class V>
    static bool IsZero(V vector) noexcept {
        const auto words = std::bit_cast<std::array<std::uint64_t, 2>>(vector);
        return (words[0] | words[1]) == 0;
    }
};

// Runs of equal values, for reals. Equality is ==: a NaN is a run of its own, zeros of both signs are equal.
template <class T>
class EqualRuns {
public:
    // Takes the next element; calls emit(run) for each run that it ends.
    template <class Emit>
    void Add(T value, Emit&& emit) {
        if (m_run.length != 0 && value == m_run.first) {
            ++m_run.length;
            return;
        }
        End(emit);
        m_run = {value, 1, 0, false};
    }

    // Takes as many elements from at on as belong to the open run; answers the first that does not.
    const T* Continue(const T* at, const T* end) noexcept {
        const T* const begin = at;
        using Block = Elements<T>;
        const auto first = Block::Upwards(m_run.first, 0);
        while (end - at >= 2 * Block::kCount &&
               Block::IsZero((Block::At(at) != first) | (Block::At(at + Block::kCount) != first))) {
            at += 2 * Block::kCount;
        }
        while (at != end && *at == m_run.first) {
            ++at;
        }
        m_run.length += m_run.length == 0 ? 0 : static_cast<std::size_t>(at - begin);
        return m_run.length == 0 ? begin : at;
    }

    // Ends the open run, if there is one.
    template <class Emit>
    void End(Emit&& emit) {
        if (m_run.length != 0) {
            emit(m_run);
            m_run.length = 0;
        }
    }

private:
    Run<T> m_run;
};

// Runs of a fixed step, for integers. A run of two or three gives its last element to the next run when the step
// changes; a longer one keeps all it has.
template <class T>
class StepRuns {
public:
    using Magnitude = typename Run<T>::Magnitude;

    template <class Emit>
    void Add(T value, Emit&& emit) {
        if (m_run.length == 0) {
            Open(value);
        } else if (!IsStepUsable(m_last, value)) {
            emit(m_run);
            Open(value);
        } else {
            AddStep(value, emit);
        }
    }

    // Takes as many elements from at on as go on with the open run, as far as one comparison each can tell; answers the
    // first that does not.
    const T* Continue(const T* at, const T* end) noexcept {
        if (m_run.length == 1) {
            at = ContinueFirst(at, end);
        }
        // A small step is usable between any two neighbours, as long as values do not wrap.
        if (m_run.length < kLongEnough || m_run.step >= kHalfBound) {
            return at;
        }
        const auto step = static_cast<Magnitude>(m_run.descending ? 0 - m_run.step : m_run.step);
        const std::size_t count = std::min(static_cast<std::size_t>(end - at), StepsToTheLimit());
        const T* const begin = at;
        auto expected = static_cast<Magnitude>(static_cast<Magnitude>(m_last) + step);
        using Block = Elements<Magnitude>;
        const auto stride = Block::Upwards(static_cast<Magnitude>(step * Block::kCount), 0);
        for (auto next = Block::Upwards(expected, step); begin + count - at >= 2 * Block::kCount; next += 2 * stride) {
            if (!Block::IsZero((Block::At(at) ^ next) | (Block::At(at + Block::kCount) ^ (next + stride)))) {
                break;
            }
            at += 2 * Block::kCount;
        }
        expected = static_cast<Magnitude>(expected + step * static_cast<Magnitude>(at - begin));
        while (at != begin + count && static_cast<Magnitude>(*at) == expected) {
            ++at;
            expected = static_cast<Magnitude>(expected + step);
        }
        m_run.length += static_cast<std::size_t>(at - begin);
        m_last = at == begin ? m_last : at[-1];
        return at;
    }

    template <class Emit>
    void End(Emit&& emit) {
        if (m_run.length != 0) {
            emit(m_run);
            m_run.length = 0;
        }
    }

    // Whether the step between two neighbours may be used: their halves differ by less than half a power of ten of as
    // many digits as the type always holds. Halving first keeps the difference within the type.
    static bool IsStepUsable(T previous, T value) {
        const T half = static_cast<T>(previous / 2);
        const T otherHalf = static_cast<T>(value / 2);
        return Distance(half, otherHalf) < kHalfBound;
    }

private:
    static constexpr std::size_t kLongEnough = 4;  // from here on a run shares nothing

    // 10^digits10 / 2
    static constexpr Magnitude kHalfBound = [] {
        Magnitude bound = 5;
        for (int digit = 1; digit < std::numeric_limits<T>::digits10; ++digit) {
            bound = static_cast<Magnitude>(bound * 10);
        }
        return bound;
    }();

    // Three elements that make a run of the one there is, at once: most long runs begin so.
    const T* ContinueFirst(const T* at, const T* end) noexcept {
        if (end - at < 3) {
            return at;
        }
        const Magnitude step = Distance(m_last, at[0]);
        const bool descending = at[0] < m_last;
        const auto goesOn = [&](T from, T to) { return Distance(from, to) == step && (to < from) == descending; };
        if (step >= kHalfBound || !goesOn(at[0], at[1]) || !goesOn(at[1], at[2])) {
            return at;
        }
        m_run.step = step;
        m_run.descending = descending;
        m_run.length = kLongEnough;
        m_last = at[2];
        return at + 3;
    }

    // The absolute difference, in the unsigned type, where it always fits.
    static Magnitude Distance(T left, T right) {
        return static_cast<Magnitude>(left < right ? static_cast<Magnitude>(right) - static_cast<Magnitude>(left)
                                                   : static_cast<Magnitude>(left) - static_cast<Magnitude>(right));
    }

    // How often the step can be taken from the newest element on without leaving the type.
    std::size_t StepsToTheLimit() const noexcept {
        if (m_run.step == 0) {
            return std::numeric_limits<std::size_t>::max();
        }
        const T limit = m_run.descending ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
        return static_cast<std::size_t>(Distance(m_last, limit) / m_run.step);
    }

    void Open(T value) {
        m_run = {value, 1, 0, false};
        m_last = value;
    }

    template <class Emit>
    void AddStep(T value, Emit&& emit) {
        const Magnitude step = Distance(m_last, value);
        const bool descending = value < m_last;
        if (m_run.length == 1) {
            m_run.step = step;
            m_run.descending = descending;
            m_run.length = 2;
        } else if (step == m_run.step && descending == m_run.descending) {
            ++m_run.length;
        } else if (m_run.length < kLongEnough) {
            --m_run.length;
            emit(m_run);
            m_run = {m_last, 2, step, descending};
        } else {
            emit(m_run);
            Open(value);
            return;
        }
        m_last = value;
    }

    Run<T> m_run;
    T m_last{};  // the newest element of the run
};

// Runs of the type that a list of T is packed by: reals only where they are equal.
template <class T>
using RunsOf = std::conditional_t<std::is_floating_point_v<T>, EqualRuns<T>, StepRuns<T>>;

// Calls emit(run) for each run of a list, one after the other.
template <class T, class Emit>
void ForEachRun(const std::vector<T>& values, Emit&& emit) {
    RunsOf<T> runs;
    const T* const end = values.data() + values.size();
    for (const T* at = values.data(); at != end; at = runs.Continue(at + 1, end)) {
        runs.Add(*at, emit);
    }
    runs.End(emit);
}

}  // namespace qvpreslayer::detail
