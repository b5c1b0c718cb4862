// A table as a file holds it, before its types are known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qvpres {

// One cell. Texts of CSV say nothing of their type; those of JSON are texts.
struct Cell {
    enum class Kind { Null, Text, Number, Bool };

    Kind kind = Kind::Null;
    std::string text;  // UTF-8: the characters of a text, the digits of a number, "true" or "false"
};

struct Column {
    std::string name;  // as the file spells it; may be empty, or that of another column
    std::vector<Cell> cells;
};

struct Table {
    std::vector<Column> columns;  // all of one length
    bool typed = false;           // cells have types, as in JSON

    std::size_t Rows() const { return columns.empty() ? 0 : columns.front().cells.size(); }
};

struct CSVOptions {
    char delimiter = '\0';               // 0: whichever of comma, semicolon and tab the first line has most of
    bool header = true;                  // the first row has the names
    std::vector<std::string> nullTexts;  // count as null beside the empty cell, such as "NA"
};

// A table in CSV as RFC 4180 has it: quoted cells may hold delimiters, line ends and doubled quotation marks. A cell
// that is empty without quotes is null. Failure, with source and row, for a table that is none.
Table ReadCSVTable(std::string_view bytes, const CSVOptions& options, const std::string& source);

// A table in JSON: an array of objects, whose members are cells, or an object of arrays of one length, which are
// columns. Members that some objects lack are null there. Failure, with source and place, for anything else.
Table ReadJSONTable(std::string_view bytes, const std::string& source);

}  // namespace qvpres
