// A table in Markdown, with its columns lined up.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace compare {

class Table {
public:
    // The first column is text, the others are figures.
    explicit Table(std::vector<std::string> header);

    void AddRow(std::vector<std::string> cells);
    void Print(std::ostream& out) const;

private:
    std::vector<std::vector<std::string>> m_rows;  // the header first
};

// With so many decimals.
std::string ToText(double value, int decimals);

// With commas between thousands.
std::string ToText(std::size_t value);

// Three figures or more: 0.123, 1.23, 12.3, 123, 1234.
std::string ToThreeFigures(double value);

}  // namespace compare
