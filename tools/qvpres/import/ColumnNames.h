// Names of parameters for the columns of a table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <qvcore/TString.h>

namespace qvpres {

struct ColumnName {
    TString verbose;    // lower-case words joined by dashes, which camel case leads back to
    TString shortName;  // "c1", "c2" and so on
};

// A name for each heading, all of them different from each other and from the reserved ones: "Body Mass (g)" gives
// "body-mass-g", "tempMax" gives "temp-max", an empty one "column", a second of the same name gets a number.
std::vector<ColumnName> NameColumns(const std::vector<std::string>& headings, const std::vector<TString>& reserved);

}  // namespace qvpres
