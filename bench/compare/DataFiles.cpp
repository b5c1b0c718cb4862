#include "DataFiles.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace compare {

namespace {

std::string ReadFile(const std::string& path) {
    const std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

template <class T>
T ToNumber(const std::string& text) {
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        throw std::runtime_error("not a number in a data file: " + text);
    }
    return value;
}

// The value of a member in a record without nesting and escapes: a string's content, or the token as it stands.
std::string FindMember(std::string_view record, const std::string& name) {
    const std::size_t found = record.find('"' + name + '"');
    if (found == std::string_view::npos) {
        throw std::runtime_error("no member " + name + " in a data file");
    }
    std::size_t begin = record.find_first_not_of(" :", found + name.size() + 2);
    if (record[begin] == '"') {
        ++begin;
        return std::string(record.substr(begin, record.find('"', begin) - begin));
    }
    return std::string(record.substr(begin, record.find_first_of(",}\n ", begin) - begin));
}

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) {
        cells.push_back(cell);
    }
    return cells;
}

}  // namespace

DataTable DataTable::ReadCsv(const std::string& path) {
    std::istringstream lines(ReadFile(path));
    std::string line;
    std::getline(lines, line);
    DataTable table;
    table.m_names = Split(line);
    table.m_columns.resize(table.m_names.size());
    while (std::getline(lines, line)) {
        const std::vector<std::string> cells = Split(line);
        for (std::size_t i = 0; i < table.m_columns.size(); ++i) {
            table.m_columns[i].push_back(cells.at(i));
        }
    }
    return table;
}

DataTable DataTable::ReadRecords(const std::string& path, const std::vector<std::string>& members) {
    const std::string content = ReadFile(path);
    DataTable table;
    table.m_names = members;
    table.m_columns.resize(members.size());
    std::size_t begin = 0;
    while ((begin = content.find('{', begin)) != std::string::npos) {
        const std::size_t end = content.find('}', begin) + 1;
        const std::string_view record = std::string_view(content).substr(begin, end - begin);
        begin = end;
        std::vector<std::string> cells;
        for (const std::string& member : members) {
            cells.push_back(FindMember(record, member));
        }
        if (std::find(cells.begin(), cells.end(), "null") != cells.end()) {
            continue;
        }
        for (std::size_t i = 0; i < cells.size(); ++i) {
            table.m_columns[i].push_back(cells[i]);
        }
    }
    return table;
}

const std::vector<std::string>& DataTable::GetColumn(const std::string& name) const {
    const auto found = std::find(m_names.begin(), m_names.end(), name);
    if (found == m_names.end()) {
        throw std::runtime_error("no column " + name);
    }
    return m_columns[static_cast<std::size_t>(found - m_names.begin())];
}

std::vector<int> DataTable::GetInts(const std::string& name) const {
    std::vector<int> values;
    for (const std::string& cell : GetColumn(name)) {
        values.push_back(ToNumber<int>(cell));
    }
    return values;
}

std::vector<double> DataTable::GetDoubles(const std::string& name) const {
    std::vector<double> values;
    for (const std::string& cell : GetColumn(name)) {
        values.push_back(ToNumber<double>(cell));
    }
    return values;
}

std::vector<TString> DataTable::GetTexts(const std::string& name) const {
    std::vector<TString> values;
    for (const std::string& cell : GetColumn(name)) {
        values.push_back(TString::FromUtf8(cell));
    }
    return values;
}

std::vector<int> ReadGrid(const std::string& path) {
    const std::string content = ReadFile(path);
    const std::size_t begin = content.find('[', content.find("\"values\"")) + 1;
    std::vector<int> values;
    for (const std::string& cell : Split(content.substr(begin, content.find(']', begin) - begin))) {
        values.push_back(ToNumber<int>(cell));
    }
    return values;
}

}  // namespace compare
