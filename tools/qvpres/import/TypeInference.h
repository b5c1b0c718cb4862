// From the cells of a column to typed values.
#pragma once

#include <string>
#include <vector>

#include <qvcore/DataValue.h>

#include "tools/qvpres/import/Table.h"

namespace qvpres {

struct TypedColumn {
    std::string name;  // as the file spells it
    DataType type = DataType::CString;
    std::vector<DataValue> values;  // of the type, or its null
    std::size_t nulls = 0;
};

// The narrowest type that all cells but nulls have, of
//
//   boolean    true, false; in CSV also True, TRUE, False, FALSE
//   integer    64 bits, without leading zeros, which mean that digits are no number
//   real       decimal, with or without an exponent; integers among them are reals too
//   date       2024-02-29 or 2024/02/29
//   date-time  a date, a blank or T, and 23:59, 23:59:58 or 23:59:58.5; dates among them are midnights
//   text       everything else, and a column of nulls alone
//
// Texts of a typed table are never booleans or numbers.
TypedColumn InferColumn(const Column& column, bool typed);

// "integer", "date-time" and so on.
std::string TypeWord(DataType type);

}  // namespace qvpres
