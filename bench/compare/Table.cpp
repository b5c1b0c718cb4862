#include "Table.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <utility>

namespace compare {

namespace {

// How wide a cell is on the screen: characters of UTF-8, not bytes.
std::size_t GetWidth(const std::string& cell) {
    return static_cast<std::size_t>(
        std::count_if(cell.begin(), cell.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

void PrintRow(std::ostream& out, const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string blanks(widths[i] - GetWidth(cells[i]), ' ');
        out << "| " << (i == 0 ? cells[i] + blanks : blanks + cells[i]) << ' ';
    }
    out << "|\n";
}

}  // namespace

Table::Table(std::vector<std::string> header) : m_rows{std::move(header)} {}

void Table::AddRow(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }

void Table::Print(std::ostream& out) const {
    std::vector<std::size_t> widths(m_rows.front().size(), 4);
    for (const auto& row : m_rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], GetWidth(row[i]));
        }
    }
    PrintRow(out, m_rows.front(), widths);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        out << '|' << std::string(widths[i] + 1, '-') << (i == 0 ? "-" : ":");
    }
    out << "|\n";
    for (std::size_t i = 1; i < m_rows.size(); ++i) {
        PrintRow(out, m_rows[i], widths);
    }
    out << '\n';
}

std::string ToText(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

std::string ToText(std::size_t value) {
    const std::string digits = std::to_string(value);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            text += ',';
        }
        text += digits[i];
    }
    return text;
}

std::string ToThreeFigures(double value) {
    return ToText(value, value < 0.9995 ? 3 : value < 9.995 ? 2 : value < 99.95 ? 1 : 0);
}

}  // namespace compare
