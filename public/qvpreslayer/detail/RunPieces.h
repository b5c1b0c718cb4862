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

#include <qvpreslayer/DataSerializerHelpers.h>
#include <qvpreslayer/detail/RunDetection.h>

namespace qvpreslayer::detail {

// Writes runs of T to an Output:
//
//   Plain(T value, std::size_t count)                 count equal elements
//   Nested(const Run<T>& run)                         a nested list, for a length of 32 bits; without a step of 0
//   Marker()                                          a nested list without items
template <class T, class Output>
class RunPieces {
public:
    explicit RunPieces(Output& output) : m_output(output) {}

    [[gnu::always_inline]] void operator()(const Run<T>& run) {
        if (run.length < static_cast<std::size_t>(DataSerializerHelpers::kRLERunThreshold)) {
            WritePlain(run);
        } else if (run.length <= kLongestRun) [[likely]] {
            WriteNested(run);
        } else {
            WritePieces(run);
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

    // Lengths travel in 32 bits; a longer run goes in pieces.
    void WritePieces(Run<T> run) {
        while (run.length > kLongestRun) {
            WriteNested(Run<T>{run.first, kLongestRun, run.step, run.descending});
            run.first = run.At(kLongestRun);
            run.length -= kLongestRun;
        }
        (*this)(run);
    }

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
        m_output.Nested(run);
    }

    Output& m_output;
    bool m_packed = false;  // a run was written as a nested list
};

}  // namespace qvpreslayer::detail
