// Which namespace covers an identifier. Included by ParametersRegistry.cpp.
#pragma once

#include <vector>

class ParametersNamespace;

// Disjoint segments of identifiers, ascending, each owned by one namespace: the ranges of the namespaces with overlaps
// settled in favour of the name that sorts first. A lookup is a binary search.
class IdSegments {
public:
    // Gives what no segment covers of firstId to lastId, inclusive, to owner. Called in name order, the first name wins
    // where ranges overlap. An inverted range covers nothing. Without memory the segments are not told.
    void AddUncovered(int firstId, int lastId, ParametersNamespace* owner);

    // Makes room for one segment more, so that adding a range that overlaps none cannot fail.
    void ReserveOne();

    // Whether any segment has an identifier in the range.
    bool Overlaps(int firstId, int lastId) const noexcept;

    // The owner of the identifier, or null.
    ParametersNamespace* Find(int id) const noexcept;

    void Clear() noexcept { m_segments.clear(); }

    void Swap(IdSegments& other) noexcept { m_segments.swap(other.m_segments); }

private:
    struct Segment {
        int first;
        int last;
        ParametersNamespace* owner;
    };

    std::vector<Segment> m_segments;
};
