#include "Goals.h"

#include "Peers.h"

namespace compare {

namespace {

struct Line {
    const char* row;
    Operation operation;
    const char* peer;
    Goal goal;
};

constexpr Operation kWrite = Operation::Write;
constexpr Operation kRead = Operation::Read;

constexpr Line kLines[] = {
    {"W1", kWrite, kRapidJSON, {1.9, 2.5}},      {"W1", kWrite, kBoostJSON, {1.35, 0}},
    {"W1", kRead, kRapidJSON, {1.5, 2}},         {"W2", kWrite, kRapidJSON, {2, 2.9}},
    {"W2", kWrite, kBoostJSON, {1.9, 0}},        {"W2", kRead, kRapidJSON, {1.65, 2.1}},
    {"W2", kRead, kSimdjson, {0.85, 0}},         {"W3", kWrite, kRapidJSON, {2, 2.8}},
    {"W3", kWrite, kBoostJSON, {1.4, 0}},        {"W3", kRead, kRapidJSON, {1.4, 1.75}},
    {"W3", kRead, kBoostJSON, {1.35, 0}},        {"W4a", kWrite, kRapidJSON, {3.9, 4.7}},
    {"W4a", kRead, kRapidJSON, {1.8, 2.5}},      {"W4a", kRead, kSimdjson, {1.4, 0}},
    {"W4b", kWrite, kRapidJSON, {7, 9.5}},       {"W4b", kRead, kRapidJSON, {3, 4}},
    {"W4b", kRead, kSimdjson, {2.2, 0}},         {"W4c", kWrite, kRapidJSON, {4.5, 5.8}},
    {"W4c", kRead, kRapidJSON, {2.4, 3.6}},      {"W4c", kRead, kSimdjson, {1.9, 0}},
    {"W5", kWrite, kBoostJSON, {0.8, 1.4}},      {"W5", kRead, kBoostJSON, {1.0, 1.4}},
    {"W5", kRead, kSimdjson, {0.6, 0}},          {"W6", kWrite, kRapidJSON, {4.2, 5.4}},
    {"W6", kWrite, kBoostJSON, {1.75, 0}},       {"W6", kRead, kRapidJSON, {1.8, 2.3}},
    {"W6", kRead, kSimdjson, {0.75, 0}},         {"W7", kWrite, kRapidJSON, {2.5, 3.1}},
    {"W7", kWrite, kBoostJSON, {1.9, 0}},        {"W7", kRead, kRapidJSON, {0.95, 1.3}},
    {"W8", kWrite, kRapidJSON, {5.7, 7.4}},      {"W8", kRead, kRapidJSON, {1.3, 1.75}},
    {"W8", kRead, kSimdjson, {0.85, 0}},         {"W4a packed", kWrite, kRapidJSON, {20, 24}},
    {"W4a packed", kRead, kRapidJSON, {11, 13}}, {"W4b packed", kWrite, kRapidJSON, {27, 32}},
    {"W4b packed", kRead, kRapidJSON, {15, 19}},
};

}  // namespace

std::optional<Goal> FindGoal(const std::string& row, Operation operation, const std::string& peer) {
    for (const Line& line : kLines) {
        if (row == line.row && operation == line.operation && peer == line.peer) {
            return line.goal;
        }
    }
    // The same for every row of plain arrays.
    if (peer == kProtobuf && row.find(' ') == std::string::npos) {
        return operation == Operation::Write ? Goal{3.5, 0} : Goal{13, 0};
    }
    return std::nullopt;
}

}  // namespace compare
