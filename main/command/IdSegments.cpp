#include "main/command/IdSegments.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

// The first segment that ends at or after id.
constexpr auto kEndsBefore = [](const auto& segment, int id) { return segment.last < id; };

}  // namespace

void IdSegments::AddUncovered(int firstId, int lastId, ParametersNamespace* owner) {
    auto next = std::lower_bound(m_segments.begin(), m_segments.end(), firstId, kEndsBefore);
    const bool onlyAppended = next == m_segments.end();
    while (firstId <= lastId) {
        if (next == m_segments.end() || next->first > lastId) {
            m_segments.insert(next, {firstId, lastId, owner});
            break;
        }
        if (next->first > firstId) {
            next = m_segments.insert(next, {firstId, next->first - 1, owner}) + 1;
        }
        if (next->last == std::numeric_limits<int>::max()) {
            break;
        }
        firstId = next->last + 1;
        ++next;
    }
    UpdateCells(onlyAppended);
}

void IdSegments::ReserveOne() {
    if (m_segments.size() == m_segments.capacity()) {
        m_segments.reserve(2 * m_segments.size() + 1);
    }
}

bool IdSegments::Overlaps(int firstId, int lastId) const noexcept {
    const auto next = std::lower_bound(m_segments.begin(), m_segments.end(), firstId, kEndsBefore);
    return firstId <= lastId && next != m_segments.end() && next->first <= lastId;
}

std::size_t IdSegments::FirstEndingAt(std::size_t first, std::size_t last, int id) const noexcept {
    const auto begin = m_segments.begin();
    const auto found = std::lower_bound(begin + static_cast<std::ptrdiff_t>(first),
                                        begin + static_cast<std::ptrdiff_t>(last), id, kEndsBefore);
    return static_cast<std::size_t>(found - begin);
}

// Cells stay right when segments are appended: they are made anew when an eighth is not in them. Without memory they
// are not there, which costs time only.
void IdSegments::UpdateCells(bool onlyAppended) noexcept {
    if (onlyAppended && m_inCells != 0 && m_segments.size() - m_inCells <= m_inCells / 8) {
        return;
    }
    try {
        MakeCells();
    } catch (const std::bad_alloc&) {
        m_cells.clear();
        m_inCells = 0;
    }
}

void IdSegments::MakeCells() {
    m_cells.clear();
    m_inCells = 0;
    if (m_segments.empty()) {
        return;
    }
    const auto base = static_cast<std::uint32_t>(m_segments.front().first);
    const std::uint64_t span = static_cast<std::uint32_t>(m_segments.back().last) - base + std::uint64_t{1};
    unsigned shift = 0;
    while (span >> shift > 4 * m_segments.size()) {
        ++shift;
    }
    const auto cells = static_cast<std::size_t>((span - 1) >> shift) + 1;
    m_cells.reserve(cells + 1);
    std::uint32_t segment = 0;
    for (std::uint64_t cell = 0; cell <= cells; ++cell) {
        const std::uint64_t begin = cell << shift;
        while (segment + 1 != m_segments.size() &&
               static_cast<std::uint32_t>(m_segments[segment].last) - base < begin) {
            ++segment;
        }
        m_cells.push_back(segment);
    }
    m_base = m_segments.front().first;
    m_cellShift = shift;
    m_inCells = m_segments.size();
}
