// The summary that the program prints.
#pragma once

#include <filesystem>
#include <ostream>
#include <vector>

#include "BadTexts.h"
#include "ColumnTexts.h"
#include "RoundTrip.h"
#include "WeatherSummary.h"
#include "WeatherTable.h"

namespace weather {

// Everything that the program found out.
struct Findings {
    const WeatherTable& table;
    const WeatherSummary& summary;
    std::vector<RoundTrip> bagTrips;  // one for each of AllTextForms()
    RoundTrip modelTrip;
    TableTexts penguins;
    std::vector<BadText> badTexts;
    std::vector<std::filesystem::path> writtenFiles;
};

// Whether everything came back equal and failed as documented.
bool AllAsExpected(const Findings& findings);

// Prints the findings; the last line says how it ended.
void PrintReport(std::ostream& out, const Findings& findings);

}  // namespace weather
