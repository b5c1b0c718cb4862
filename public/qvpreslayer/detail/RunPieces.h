// What a packed list holds in place of each run. Not for callers.
//
// A run of at least four elements becomes a nested list:
//
//   first value
//   length           unsigned
//   step             signed, negative for a falling run; absent when the step is 0
//
// Shorter runs stand as plain elements. When any run was written so, a last nested list without items marks the list.
#pragma once

#include <cstddef>
#include <limits>
#include <type_traits>

#include <qvpreslayer/DataSerializerHelpers.h>
#include <qvpreslayer/detail/RunDetection.h>

namespace qvpreslayer::detail {

// Writes runs of T to an Output:
//
//   Plain(T value, std::size_t count)                            count equal elements
//   Nested(T first, unsigned int length, const Step* step)       a nested list; without a step where step is null
//   Marker()                                                     a nested list without items
template <class T, class Output>
class RunPieces {
public:
    using Step = typename std::conditional_t<std::is_integral_v<T>, std::make_signed<T>, std::type_identity<T>>::type;

    explicit RunPieces(Output& output) : m_output(output) {}

    void operator()(Run<T> run) {
        // Lengths travel in 32 bits; a longer run goes in pieces.
        while (run.length > kLongestRun)
            [[unlikely]] {
                WriteNested(Run<T>{run.first, kLongestRun, run.step, run.descending});
                run.first = run.At(kLongestRun);
                run.length -= kLongestRun;
            }
        if (run.length < static_cast<std::size_t>(DataSerializerHelpers::kRLERunThreshold)) {
            WritePlain(run);
        } else {
            WriteNested(run);
        }
    }

    // Closes the list's contents: the marker, where a run was packed.
    void WriteMarker() {
        if (m_packed) {
            m_output.Marker();
        }
    }

private:
    static constexpr std::size_t kLongestRun = std::numeric_limits<unsigned int>::max();

    void WritePlain(const Run<T>& run) {
        if (run.length == 1 || run.step == 0) {
            m_output.Plain(run.first, run.length);
            return;
        }
        for (std::size_t i = 0; i < run.length; ++i) {
            m_output.Plain(run.At(i), 1);
        }
    }

    void WriteNested(const Run<T>& run) {
        m_packed = true;
        const auto length = static_cast<unsigned int>(run.length);
        if (run.step == 0) {
            m_output.Nested(run.first, length, static_cast<const Step*>(nullptr));
        } else if constexpr (std::is_integral_v<T>) {
            // A step that four values take fits the signed type.
            const auto magnitude = static_cast<Step>(run.step);
            const Step step = run.descending ? static_cast<Step>(-magnitude) : magnitude;
            m_output.Nested(run.first, length, &step);
        }
    }

    Output& m_output;
    bool m_packed = false;  // a run was written as a nested list
};

}  // namespace qvpreslayer::detail
