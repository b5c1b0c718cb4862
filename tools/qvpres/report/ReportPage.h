// The page of a report.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace qvpres {

// One HTML page that needs nothing else: style, script and data stand in it.
std::string MakeReportPage(const nlohmann::ordered_json& data);

// JSON that can stand inside a script element, whatever its texts hold: <, > and & and the two line separators that
// JSON allows and scripts did not are written as escapes.
std::string EmbeddableJSON(const nlohmann::ordered_json& data);

}  // namespace qvpres
