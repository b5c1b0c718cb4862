// What the texts of typed columns look like and read back as.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace weather {

// A list of typed values in its texts.
struct ColumnTexts {
    TString name;
    TString type;
    std::size_t nullCount = 0;
    std::size_t plainLength = 0;       // of the list as JSON, in characters
    std::size_t packedLength = 0;      // likewise
    std::vector<TString> differences;  // between the values and those of their lettered texts; empty when equal
};

// What reading a list of typed values from JSON answers.
struct ListAnswer {
    std::string message;
    bool asDocumented = false;
};

// The columns of a table, all of one length.
struct TableTexts {
    std::size_t rowCount = 0;
    std::vector<ColumnTexts> columns;
    ListAnswer answer;
    TString document;  // the whole table as JSON, plain
};

// Writes each column of the penguin table that bag holds, plain and packed, and reads back its lettered texts.
TableTexts WritePenguinTable(const IParameters& bag);

}  // namespace weather
