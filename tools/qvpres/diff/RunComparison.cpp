#include "tools/qvpres/diff/RunComparison.h"

#include <algorithm>
#include <cmath>

namespace qvpres {

namespace {

// A place in a list: a run and how many of its elements are done.
class Cursor {
public:
    explicit Cursor(const NumberList& list) : m_runs(list.Runs()) {}

    bool AtEnd() const { return m_run == m_runs.size(); }
    std::uint64_t Left() const { return m_runs[m_run].count - m_done; }

    // The rest of the run.
    NumberRun Rest() const {
        NumberRun rest = m_runs[m_run];
        rest.first = rest.At(m_done);
        rest.count -= m_done;
        return rest;
    }

    void Advance(std::uint64_t count) {
        m_done += count;
        if (m_done == m_runs[m_run].count) {
            ++m_run;
            m_done = 0;
        }
    }

private:
    const std::vector<NumberRun>& m_runs;
    std::size_t m_run = 0;
    std::uint64_t m_done = 0;
};

// Two pieces of equal length, both straight lines. How far they lie beyond the tolerance is a straight line too between
// the places where one of them, their difference, their sum or the larger of their sizes changes sign or side.
class LinePair {
public:
    LinePair(const NumberRun& left, const NumberRun& right, std::uint64_t count, const Tolerance& tolerance)
        : m_left(left), m_right(right), m_count(count), m_tolerance(tolerance) {}

    // Calls found(first, count) for each stretch that differs, upwards.
    template <class Found>
    void ForEachDifference(const Found& found) const {
        if (m_left.null || m_right.null) {
            if (m_left.null != m_right.null) {
                found(std::uint64_t{0}, m_count);
            }
            return;
        }
        std::uint64_t from = 0;
        for (const std::uint64_t behind : Cuts()) {
            if (behind > from) {
                LookAtPiece(from, behind - 1, found);
                from = behind;
            }
        }
    }

    long double Apart(std::uint64_t index) const { return std::fabs(m_left.At(index) - m_right.At(index)); }

private:
    long double Excess(std::uint64_t index) const {
        const long double size = std::max(std::fabs(m_left.At(index)), std::fabs(m_right.At(index)));
        return Apart(index) - m_tolerance.absolute - m_tolerance.relative * size;
    }

    // Where pieces end: behind the element before, and behind the one at, each change of sign.
    std::vector<std::uint64_t> Cuts() const {
        std::vector<std::uint64_t> cuts;
        const auto cutAtZero = [&](long double first, long double step) {
            const long double at = step == 0 ? -1 : -first / step;
            if (at >= 0 && at < static_cast<long double>(m_count)) {
                const auto index = static_cast<std::uint64_t>(at);
                cuts.push_back(index);
                cuts.push_back(index + 1);
                cuts.push_back(std::min(index + 2, m_count));
            }
        };
        cutAtZero(m_left.first - m_right.first, m_left.step - m_right.step);
        cutAtZero(m_left.first + m_right.first, m_left.step + m_right.step);
        cutAtZero(m_left.first, m_left.step);
        cutAtZero(m_right.first, m_right.step);
        cuts.push_back(m_count);
        std::sort(cuts.begin(), cuts.end());
        return cuts;
    }

    // In a piece the excess rises or falls throughout, so that what differs lies at one of its ends.
    template <class Found>
    void LookAtPiece(std::uint64_t from, std::uint64_t to, const Found& found) const {
        const bool atFrom = Excess(from) > 0;
        const bool atTo = Excess(to) > 0;
        if (atFrom && atTo) {
            found(from, to - from + 1);
            return;
        }
        if (atFrom == atTo) {
            return;
        }
        std::uint64_t low = from;  // as at from
        std::uint64_t high = to;   // as at to
        while (high - low > 1) {
            const std::uint64_t middle = low + (high - low) / 2;
            ((Excess(middle) > 0) == atFrom ? low : high) = middle;
        }
        if (atFrom) {
            found(from, low - from + 1);
        } else {
            found(high, to - high + 1);
        }
    }

    NumberRun m_left;
    NumberRun m_right;
    std::uint64_t m_count;
    Tolerance m_tolerance;
};

}  // namespace

bool IsSame(long double left, long double right, const Tolerance& tolerance) {
    const long double size = std::max(std::fabs(left), std::fabs(right));
    return std::fabs(left - right) <= tolerance.absolute + tolerance.relative * size;
}

std::vector<Stretch> CompareRuns(const NumberList& left, const NumberList& right, const Tolerance& tolerance) {
    std::vector<Stretch> stretches;
    Cursor atLeft(left);
    Cursor atRight(right);
    std::uint64_t done = 0;
    while (!atLeft.AtEnd() && !atRight.AtEnd()) {
        const std::uint64_t count = std::min(atLeft.Left(), atRight.Left());
        const NumberRun leftRun = atLeft.Rest();
        const NumberRun rightRun = atRight.Rest();
        const LinePair pair(leftRun, rightRun, count, tolerance);
        pair.ForEachDifference([&](std::uint64_t first, std::uint64_t length) {
            const bool anyNull = leftRun.null || rightRun.null;
            const long double apart = anyNull ? 0 : std::max(pair.Apart(first), pair.Apart(first + length - 1));
            if (!stretches.empty() && stretches.back().first + stretches.back().count == done + first) {
                stretches.back().count += length;
                stretches.back().largest = std::max(stretches.back().largest, apart);
                return;
            }
            Stretch stretch{done + first, length, leftRun, rightRun, apart};
            stretch.left.first = leftRun.At(first);
            stretch.right.first = rightRun.At(first);
            stretches.push_back(stretch);
        });
        atLeft.Advance(count);
        atRight.Advance(count);
        done += count;
    }
    return stretches;
}

}  // namespace qvpres
