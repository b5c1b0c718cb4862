// Finding runs in numeric lists, in one pass without looking ahead. Not for callers.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

    // Negative where the run descends; 0 for reals. Without a jump, since nobody can foretell which way runs go.
    auto SignedStep() const {
        if constexpr (std::is_integral_v<T>) {
            const auto downwards = static_cast<Magnitude>(0 - Magnitude{descending});
            return static_cast<std::make_signed_t<T>>((step ^ downwards) - downwards);
        } else {
            return T{0};
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

    static Vector All(T value) noexcept { return Vector{} + value; }

    // As many elements as are compared before the next jump: four vectors of them.
    static constexpr std::ptrdiff_t kBlock = 4 * kCount;
    static constexpr unsigned kAll = 0xFFFF;
    static constexpr int kBits = 16 / kBlock;

    // kBits bits for each element, the first one's lowest: all set where the elements of the block at at are those of
    // next, which goes on by stride and is left behind the block.
    static unsigned Equal(const T* at, Vector& next, Vector stride) noexcept {
#if defined(__SSE2__)
        const auto equal = [&](std::ptrdiff_t vector) {
            const auto lanes = At(at + vector * kCount) == next;
            if constexpr (std::is_integral_v<T>) {  // runs of reals have no step
                next += stride;
            }
            return std::bit_cast<__m128i>(lanes);
        };
        const __m128i first = equal(0);
        const __m128i second = equal(1);
        const __m128i third = equal(2);
        const __m128i fourth = equal(3);
        const __m128i low = JoinLanes(first, second);
        const __m128i high = JoinLanes(third, fourth);
        const __m128i all = kCount == 2 ? _mm_packs_epi32(low, high) : _mm_packs_epi16(low, high);
        return static_cast<unsigned>(_mm_movemask_epi8(all));
#else
        unsigned equal = 0;
        for (std::ptrdiff_t i = 0; i < kBlock; ++i) {
            equal |= at[i] == next[i % kCount] ? ((1u << kBits) - 1) << i * kBits : 0u;
            next += i % kCount == kCount - 1 ? stride : All(0);
        }
        return equal;
#endif
    }

    // Takes elements from at on, a block at a time, as long as they are those of next, which goes on by stride; answers
    // whether all were, up to the last whole block before end.
    //
    // Where a run ends cannot be foretold. One jump for many elements is rarely a wrong guess, which costs as much as
    // comparing two blocks; but most short runs end in the first block.
    static bool Match(const T*& at, const T* end, Vector next, Vector stride) noexcept {
        return end - at < kBlock || (MatchBlock(at, next, stride) && MatchBlocks(at, end, next, stride));
    }

private:
    static bool MatchBlocks(const T*& at, const T* end, Vector next, Vector stride) noexcept {
        while (end - at >= 4 * kBlock) {
            std::uint64_t equal = 0;
            for (int block = 0; block < 4; ++block) {
                equal |= std::uint64_t{Equal(at + block * kBlock, next, stride)} << 16 * block;
            }
            if (~equal != 0) {
                at += std::countr_one(equal) / kBits;
                return false;
            }
            at += 4 * kBlock;
        }
        while (end - at >= kBlock) {
            if (!MatchBlock(at, next, stride)) {
                return false;
            }
        }
        return true;
    }

    static bool MatchBlock(const T*& at, Vector& next, Vector stride) noexcept {
        const unsigned equal = Equal(at, next, stride);
        if (equal != kAll) {
            at += std::countr_one(equal) / kBits;  // here alone: the next block must not wait for it
            return false;
        }
        at += kBlock;
        return true;
    }

#if defined(__SSE2__)
    // The lanes of both, each half as wide.
    static __m128i JoinLanes(__m128i low, __m128i high) noexcept {
        if constexpr (kCount == 2) {
            return _mm_castps_si128(
                _mm_shuffle_ps(_mm_castsi128_ps(low), _mm_castsi128_ps(high), _MM_SHUFFLE(2, 0, 2, 0)));
        } else {
            return _mm_packs_epi32(low, high);
        }
    }
#endif
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
        } else {
            AddBehind(value, emit);
        }
    }

    // The same for an element that does not go on with the open run, as Continue found.
    template <class Emit>
    void AddBehind(T value, Emit&& emit) {
        End(emit);
        m_run = {value, 1, 0, false};
    }

    // Takes as many elements from at on as belong to the open run; answers the first that does not.
    const T* Continue(const T* at, const T* end) noexcept {
        const T* const begin = at;
        using Block = Elements<T>;
        if (Block::Match(at, end, Block::All(m_run.first), Block::All(0))) {
            while (at != end && *at == m_run.first) {
                ++at;
            }
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
        const bool goesOn = IsLong() && Distance(m_last, value) == m_run.step && (value < m_last) == m_run.descending;
        if (goesOn) [[likely]] {
            ++m_run.length;
            m_last = value;
        } else {
            AddBehind(value, emit);
        }
    }

    // The same for an element that does not go on with a long run.
    template <class Emit>
    void AddBehind(T value, Emit&& emit) {
        if (IsLong()) [[likely]] {
            emit(m_run);
            Open(value);
        } else if (m_run.length == 0) {
            Open(value);
        } else {
            AddToShort(value, emit);
        }
    }

    // Takes as many elements from at on as go on with the open run, as far as one comparison each can tell; answers the
    // first that does not. Requires: those of the open run are right before at.
    const T* Continue(const T* at, const T* end) noexcept {
        if (m_run.length == 1) {
            at = ContinueFirst(at, end);
        }
        if (!IsLong()) {
            return at;
        }
        const auto step = static_cast<Magnitude>((m_run.step ^ Downwards()) - Downwards());
        const std::size_t count = StepsWithinTheType(static_cast<std::size_t>(end - at));
        const T* const begin = at;
        auto expected = static_cast<Magnitude>(static_cast<Magnitude>(m_last) + step);
        using Block = Elements<Magnitude>;
        const auto stride = Block::All(static_cast<Magnitude>(step * Block::kCount));
        const auto* place = reinterpret_cast<const Magnitude*>(at);  // the unsigned type of the same values
        static_assert(Block::kCount <= static_cast<std::ptrdiff_t>(kLongEnough));
        const auto next = Block::At(place - Block::kCount) + stride;
        const bool all = Block::Match(place, place + count, next, stride);
        at = reinterpret_cast<const T*>(place);
        expected = static_cast<Magnitude>(expected + step * static_cast<Magnitude>(at - begin));
        while (all && at != begin + count && static_cast<Magnitude>(*at) == expected) {
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

    // Whether the run shares nothing, and its step is usable between any two neighbours, as a small one is as long as
    // values do not wrap.
    bool IsLong() const noexcept { return m_run.length >= kLongEnough && m_run.step < kHalfBound; }

    // Three elements that make a run of the one there is, at once: most long runs begin so.
    const T* ContinueFirst(const T* at, const T* end) noexcept {
        if (end - at < 3) {
            return at;
        }
        // Modulo 2^n first, where most lists without runs are told.
        const auto distance = [](T from, T to) {
            return static_cast<Magnitude>(static_cast<Magnitude>(to) - static_cast<Magnitude>(from));
        };
        if (distance(at[0], at[1]) != distance(m_last, at[0]) || distance(at[1], at[2]) != distance(m_last, at[0])) {
            return at;
        }
        std::make_signed_t<T> step = 0;
        const bool leaves = __builtin_sub_overflow(at[1], at[0], &step) ||
                            __builtin_sub_overflow(at[2], at[1], &step) || __builtin_sub_overflow(at[0], m_last, &step);
        const auto descending = static_cast<Magnitude>(step < 0 ? 1 : 0);
        const auto magnitude = static_cast<Magnitude>((static_cast<Magnitude>(step) ^ (0 - descending)) + descending);
        if (leaves || magnitude >= kHalfBound) [[unlikely]] {
            return at;
        }
        m_run.step = magnitude;
        m_run.descending = descending != 0;
        m_run.length = kLongEnough;
        m_last = at[2];
        return at + 3;
    }

    // The absolute difference, in the unsigned type, where it always fits.
    static Magnitude Distance(T left, T right) {
        return static_cast<Magnitude>(left < right ? static_cast<Magnitude>(right) - static_cast<Magnitude>(left)
                                                   : static_cast<Magnitude>(left) - static_cast<Magnitude>(right));
    }

    // All ones where the run descends, which makes a complement and a negative without a jump: which way runs go is not
    // to be foretold.
    Magnitude Downwards() const noexcept { return static_cast<Magnitude>(0 - Magnitude{m_run.descending}); }

    // How often, up to wanted times, the step can be taken from the newest element on without leaving the type.
    std::size_t StepsWithinTheType(std::size_t wanted) const noexcept {
        // The last value of the type on the way, and how far it is: the complement and the negative where it is the
        // least one.
        const auto limit = static_cast<Magnitude>(static_cast<Magnitude>(std::numeric_limits<T>::max()) ^ Downwards());
        const auto distance =
            static_cast<Magnitude>(((limit - static_cast<Magnitude>(m_last)) ^ Downwards()) - Downwards());
        std::uint64_t reach = 0;
        if (!__builtin_mul_overflow(std::uint64_t{m_run.step}, std::uint64_t{wanted}, &reach) && reach <= distance)
            [[likely]] {
            return wanted;
        }
        return static_cast<std::size_t>(distance / m_run.step);
    }

    void Open(T value) {
        m_run = {value, 1, 0, false};
        m_last = value;
    }

    // To one that may share its last element.
    template <class Emit>
    void AddToShort(T value, Emit&& emit) {
        if (!IsStepUsable(m_last, value)) {
            emit(m_run);
            Open(value);
            return;
        }
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
        runs.AddBehind(*at, emit);
    }
    runs.End(emit);
}

}  // namespace qvpreslayer::detail
