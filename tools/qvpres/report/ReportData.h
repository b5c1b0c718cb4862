// What a report knows of a text, as the JSON that its page reads.
//
// Nodes stand in the order of the text, as columns of one length:
//
//   parent   index of the node that it is in; -1 for the root
//   name     index into strings: the verbose name, the name in the text, or the position
//   short    index into strings: the short name; 0 is the empty text, as in all columns
//   id       identifier of the parameter; 0 for none
//   type     index into strings
//   value    index into strings: what a leaf holds, in words
//   size     characters of the text, what is inside included
//   remark   index into strings
//
// lists has, for each list of numbers, the node's index and what its picture needs: figures, and either every element
// ("runs": first, step, count, 1 for a packed run, 1 for null) or parts of equal size ("parts": lowest, highest, share
// in runs; null for parts without numbers).
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

nlohmann::ordered_json MakeReportData(const ParameterText& text, const CheckResult& findings, const std::string& title);

}  // namespace qvpres
