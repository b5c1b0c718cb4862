// The findings of check, for people and for machines.
#pragma once

#include <iosfwd>
#include <string>

#include <nlohmann/json.hpp>

#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/check/Check.h"

namespace qvpres {

// As compilers do: FILE:LINE:COLUMN: error: /path: message, the line with a mark, and what else helps; then a summary.
// firstLine is added to line numbers, for texts that are lines of a longer file.
void WriteFindings(std::ostream& out, const std::string& file, std::size_t firstLine, const CheckResult& result,
                   const Style& style);
void WriteSummary(std::ostream& out, const std::string& file, const CheckResult& result);

nlohmann::ordered_json ToJSON(const CheckFinding& finding, std::size_t firstLine);
nlohmann::ordered_json ToJSON(const std::string& file, std::size_t firstLine, const CheckResult& result);

}  // namespace qvpres
