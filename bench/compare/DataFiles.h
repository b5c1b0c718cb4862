// Columns of the project's data files, read without the library that is measured.
#pragma once

#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace compare {

// A table, column by column, as texts.
class DataTable {
public:
    // A file whose first line names the columns.
    static DataTable ReadCsv(const std::string& path);

    // A file with a flat JSON array of records, of which the named members are taken; records in which one of them is
    // null are left out.
    static DataTable ReadRecords(const std::string& path, const std::vector<std::string>& members);

    // The column in a type of ours. Throws std::runtime_error for a name that is none.
    std::vector<int> GetInts(const std::string& name) const;
    std::vector<double> GetDoubles(const std::string& name) const;
    std::vector<TString> GetTexts(const std::string& name) const;

private:
    const std::vector<std::string>& GetColumn(const std::string& name) const;

    std::vector<std::string> m_names;
    std::vector<std::vector<std::string>> m_columns;  // one for each name
};

// The numbers of the JSON array that stands behind "values" in a file.
std::vector<int> ReadGrid(const std::string& path);

}  // namespace compare
