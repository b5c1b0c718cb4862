// Typed values from text.
//
// Threads: all operations are static and may run at once on several threads.
//
// Exceptions: strong.
#pragma once

#include <cstdint>

#include <qvcore/Collation.h>
#include <qvcore/DataType.h>
#include <qvcore/DataValue.h>
#include <qvcore/Export.h>
#include <qvcore/TString.h>

// Reads what DataValueFormatter writes with delimited strings and date-times and without grouped digits. The source
// file opens with the accepted texts, type by type.
class QVCORE_API DataValueParser {
public:
    // The value of type that text stands for. DataValueFormatter::valueNull stands for the null of the type; a tuple or
    // a spatial value cannot be read, not even its null. QuorvelException "Data value parse error" for every text that
    // the type does not accept.
    //
    // The collation goes to texts and null texts, precision and scale go to reals; other types ignore them. The flag
    // changes nothing: hosts pass it, and the grammar has no variant to choose.
    static DataValue ParseGeneric(DataType type, const Collation& collation, std::uint8_t precision, std::uint8_t scale,
                                  const TString& text, bool flag);
};
