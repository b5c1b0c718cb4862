// A typed table as the text of a bag, with the vocabulary that reads it.
#pragma once

#include <string>
#include <vector>

#include <qvcore/TString.h>

#include "tools/qvpres/import/TypeInference.h"
#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

struct TableBagOptions {
    TString nameSpace = u"table";
    int firstId = 1000;
    std::string tableName;
    bool typedColumns = false;  // all columns as lists of typed values
    bool packed = false;
    bool pretty = false;
};

// What became of a column.
struct ImportedColumn {
    std::string heading;
    std::string name;
    std::string type;    // as it was found: "integer", "date-time"
    std::string listOf;  // as it was declared: "int", "data-value"
    std::size_t nulls = 0;
    std::string loss;  // what does not come back from the text; empty when everything does
};

struct TableBag {
    std::string json;  // UTF-8
    Vocabulary vocabulary;
    std::vector<ImportedColumn> columns;
};

// A list for each column: of int, double, bool or text where every value comes back from that, else of typed values,
// which also hold dates and nulls. Beside them the parameters table-name, row-count and column-names. Failure when the
// columns do not fit below the largest identifier. Makes and publishes a registry of its own for the time of the call.
TableBag MakeTableBag(std::vector<TypedColumn> columns, const TableBagOptions& options);

}  // namespace qvpres
