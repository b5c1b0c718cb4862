#include "tools/qvpres/text/LineIndex.h"

#include <algorithm>

namespace qvpres {

LineIndex::LineIndex(std::u16string_view text) : m_text(text), m_starts{0} {
    for (std::size_t at = text.find(u'\n'); at != std::u16string_view::npos; at = text.find(u'\n', at + 1)) {
        m_starts.push_back(at + 1);
    }
}

LineIndex::Place LineIndex::At(std::size_t offset) const {
    const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), offset);
    return {static_cast<std::size_t>(next - m_starts.begin()), offset - *(next - 1) + 1};
}

std::u16string_view LineIndex::Line(std::size_t line) const {
    if (line == 0 || line > m_starts.size()) {
        return {};
    }
    const std::size_t start = m_starts[line - 1];
    std::u16string_view text = m_text.substr(start, m_text.find(u'\n', start) - start);
    if (text.ends_with(u'\r')) {
        text.remove_suffix(1);
    }
    return text;
}

}  // namespace qvpres
