// The numbers of a list as they stand in its text: runs stay runs, however many elements they stand for, so that every
// question is answered in the time that reading the text takes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// count elements: first, first + step and so on; or as many nulls. long double holds every 64-bit integer.
struct NumberRun {
    long double first = 0;
    long double step = 0;
    std::uint64_t count = 1;
    bool packed = false;  // a nested array of the text, rather than a plain element
    bool null = false;

    long double At(std::uint64_t index) const { return first + static_cast<long double>(index) * step; }
    long double Last() const { return At(count - 1); }
};

// What part of a list holds.
struct NumberRange {
    std::uint64_t elements = 0;
    std::uint64_t numbers = 0;  // elements that are not null
    std::uint64_t packed = 0;   // elements that stand in runs
    long double low = 0;        // of the numbers, when there are any; so are the others
    long double high = 0;
    long double sum = 0;
    long double first = 0;
    long double last = 0;

    void Add(const NumberRun& run, std::uint64_t from, std::uint64_t count);
    long double Mean() const { return sum / static_cast<long double>(numbers); }
};

class NumberList {
public:
    // The list of a node, or nothing when it is no list of numbers or of typed numbers, or holds anything but numbers,
    // nulls and runs.
    static std::optional<NumberList> From(const ParameterText& text, ParameterText::Node node);

    const std::vector<NumberRun>& Runs() const { return m_runs; }
    const NumberRange& Total() const { return m_total; }
    std::uint64_t PackedRuns() const { return m_packedRuns; }

    // The list in so many parts of equal size, as far as that goes; no more parts than elements.
    std::vector<NumberRange> Parts(std::size_t count) const;

private:
    void Add(const NumberRun& run);

    std::vector<NumberRun> m_runs;  // none is empty
    NumberRange m_total;
    std::uint64_t m_packedRuns = 0;
};

// A list in one line of blocks of eight heights, from its smallest part to its largest; a blank for parts of nulls.
std::string Sparkline(const NumberList& list, std::size_t width);

}  // namespace qvpres
