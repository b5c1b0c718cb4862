// From offsets in a text to lines and columns, when many are asked for.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace qvpres {

// Lines and columns count from 1, columns in UTF-16 units; lines end at a line feed. Refers to the text.
class LineIndex {
public:
    struct Place {
        std::size_t line;
        std::size_t column;
    };

    explicit LineIndex(std::u16string_view text);

    Place At(std::size_t offset) const;

    // The text of a line, without its end.
    std::u16string_view Line(std::size_t line) const;

private:
    std::u16string_view m_text;
    std::vector<std::size_t> m_starts;  // of the lines
};

}  // namespace qvpres
