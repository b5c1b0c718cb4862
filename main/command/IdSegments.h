// Which namespace covers an identifier. Included by ParametersRegistry.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

class ParametersNamespace;

// Disjoint segments of identifiers, ascending, each owned by one namespace: the ranges of the namespaces with overlaps
// settled in favour of the name that sorts first.
//
// The span of all identifiers is divided into cells of one width, some for each segment; a lookup searches among the
// segments of one cell, which are one or two where ranges are of like size.
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
    ParametersNamespace* Find(int id) const noexcept {
        const std::size_t cell = (static_cast<std::uint32_t>(id) - static_cast<std::uint32_t>(m_base)) >> m_cellShift;
        if (cell + 2 >= m_cells.size()) {
            // In the last cell, or behind it, there may be what was appended since. An identifier below the first one
            // is behind it, too: the span ends before numbers begin anew.
            return FindAmong(m_cells.empty() || id < m_base ? 0 : m_cells[m_cells.size() - 2], m_segments.size(), id);
        }
        return FindAmong(m_cells[cell], m_cells[cell + 1] + std::size_t{1}, id);
    }

    void Clear() noexcept { *this = IdSegments(); }

    void Swap(IdSegments& other) noexcept { std::swap(*this, other); }

private:
    struct Segment {
        int first;
        int last;
        ParametersNamespace* owner;
    };

    static constexpr std::size_t kFew = 4;

    // The owner of the identifier among the segments from first up to, and without, last.
    ParametersNamespace* FindAmong(std::size_t first, std::size_t last, int id) const noexcept {
        if (last - first > kFew) [[unlikely]] {
            first = FirstEndingAt(first, last, id);
        }
        while (first != last && m_segments[first].last < id) {
            ++first;
        }
        return first != last && m_segments[first].first <= id ? m_segments[first].owner : nullptr;
    }

    std::size_t FirstEndingAt(std::size_t first, std::size_t last, int id) const noexcept;
    void UpdateCells(bool onlyAppended) noexcept;
    void MakeCells();

    std::vector<Segment> m_segments;

    // For each cell the first segment that ends in it or behind it, and one entry more. Empty without segments, and
    // where there was no memory.
    std::vector<std::uint32_t> m_cells;
    std::size_t m_inCells = 0;  // so many segments; those that were appended since are searched behind them
    int m_base = 0;             // the first identifier
    unsigned m_cellShift = 0;
};
