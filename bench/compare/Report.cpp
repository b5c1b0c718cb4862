#include "Report.h"

#include <algorithm>
#include <fstream>
#include <iostream>

#include "FloorContestants.h"
#include "Goals.h"
#include "Peers.h"
#include "Table.h"

namespace compare {

namespace {

const std::string kNothing = "–";

const std::vector<std::string>& GetColumns(Operation operation) {
    static const std::vector<std::string> writing = {kRapidJSON, kBoostJSON,   kNlohmann, kProtobuf,
                                                     kQt,        kNumberFloor, kCopyFloor};
    static const std::vector<std::string> reading = {kRapidJSON, kRapidJSONSax, kBoostJSON, kNlohmann,
                                                     kSimdjson,  kProtobuf,     kQt,        kCopyFloor};
    return operation == Operation::Write ? writing : reading;
}

bool IsFloor(const std::string& label) { return label == kNumberFloor || label == kCopyFloor; }

std::optional<Figure> FindFigure(const TimedContest& contest, const std::string& label, Operation operation) {
    const TimedEntry* entry = contest.Find(label);
    return entry == nullptr ? std::nullopt : entry->Get(operation);
}

std::string GetRate(const TimedContest& contest, const std::optional<Figure>& figure) {
    if (!figure) {
        return kNothing;
    }
    return ToThreeFigures(static_cast<double>(contest.characters) * 1e3 / figure->median) + " ±" +
           ToText(figure->spread * 100, 0);
}

std::string GetValueTime(const TimedContest& contest, const std::optional<Figure>& figure) {
    return figure ? ToThreeFigures(figure->median / static_cast<double>(contest.values)) : kNothing;
}

// How many times faster own is; with the goal behind it, and bold where it is missed.
std::string GetRatio(const std::optional<Figure>& own, const std::optional<Figure>& peer,
                     const std::optional<Goal>& goal) {
    if (!own || !peer) {
        return kNothing;
    }
    const double ratio = peer->median / own->median;
    const std::string text = ToThreeFigures(ratio);
    if (!goal) {
        return text;
    }
    const std::string mark = ratio < goal->atLeast ? "**" : "";
    return mark + text + mark + " (" + ToThreeFigures(goal->atLeast) + ")";
}

std::string ReadProcessorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(": ") + 2);
        }
    }
    return "unknown processor";
}

void AddRatioRow(Table& table, const std::string& row, const TimedContest& contest, OwnForm form, Operation operation) {
    const auto own = FindFigure(contest, GetOwnName(form), operation);
    std::vector<std::string> cells{row};
    for (const std::string& peer : GetColumns(operation)) {
        if (!IsFloor(peer)) {
            cells.push_back(GetRatio(own, FindFigure(contest, peer, operation), FindGoal(row, operation, peer)));
        }
    }
    table.AddRow(std::move(cells));
}

// Whether an earlier form made a text of about the same size, so that this one shows nothing new.
bool IsRepetition(const TimedContest& contest, std::size_t form) {
    const auto own = static_cast<double>(contest.ownCharacters[form]);
    return std::any_of(contest.ownCharacters.begin(), contest.ownCharacters.begin() + static_cast<std::ptrdiff_t>(form),
                       [own](std::size_t other) { return std::abs(own / static_cast<double>(other) - 1) < 0.005; });
}

}  // namespace

void PrintSettings(std::ostream& out, const RunSettings& settings) {
    out << "Machine: " << ReadProcessorName() << "; "
        << (settings.processor < 0 ? std::string("not kept on one processor")
                                   : "kept on processor " + std::to_string(settings.processor))
        << ". Compiler: g++ " << __VERSION__ << ", preset `release`.\n";
    out << (settings.scale == Scale::Quick ? "A quick look, with a tenth of the large workloads. " : "")
        << settings.timing.rounds << " rounds, samples of at least " << ToText(settings.timing.sampleSeconds * 1000, 0)
        << " ms. Peers:";
    const char* separator = " ";
    for (const auto& peer : MakePeers()) {
        if (peer->GetName() != kRapidJSONSax) {
            out << separator << peer->GetName() << ' ' << peer->GetVersion();
            separator = ", ";
        }
    }
    out << ".\n";
    for (const MissingPeer& peer : GetMissingPeers()) {
        out << "Not taking part: " << peer.name << " (" << peer.reason << ").\n";
    }
    out << '\n';
}

void PrintTimes(std::ostream& out, const std::vector<TimedContest>& contests, Operation operation) {
    std::vector<std::string> header{"workload", "characters", "ns a value", "qvpreslayer"};
    header.insert(header.end(), GetColumns(operation).begin(), GetColumns(operation).end());
    Table table(std::move(header));
    for (const TimedContest& contest : contests) {
        const auto own = FindFigure(contest, GetOwnName(kPlainForm), operation);
        std::vector<std::string> cells{contest.name + " " + contest.title, ToText(contest.characters),
                                       GetValueTime(contest, own), GetRate(contest, own)};
        for (const std::string& peer : GetColumns(operation)) {
            cells.push_back(GetRate(contest, FindFigure(contest, peer, operation)));
        }
        table.AddRow(std::move(cells));
    }
    table.Print(out);
}

void PrintRatios(std::ostream& out, const std::vector<TimedContest>& contests, Operation operation) {
    std::vector<std::string> header{std::string(GetOperationName(operation))};
    for (const std::string& peer : GetColumns(operation)) {
        if (!IsFloor(peer)) {
            header.push_back(peer);
        }
    }
    Table table(std::move(header));
    for (const TimedContest& contest : contests) {
        AddRatioRow(table, contest.name, contest, kPlainForm, operation);
    }
    for (const TimedContest& contest : contests) {
        if (FindGoal(contest.name + " packed", operation, kRapidJSON)) {
            AddRatioRow(table, contest.name + " packed", contest, kPackedForm, operation);
        }
    }
    table.Print(out);
}

void PrintForms(std::ostream& out, const std::vector<TimedContest>& contests) {
    Table table(
        {"workload, form", "characters", "write ns a value", "times RapidJSON", "read ns a value", "times RapidJSON"});
    const OwnForm forms[] = {kPlainForm, kPackedForm, kShortForm, kShortPackedForm};
    for (const TimedContest& contest : contests) {
        for (std::size_t i = 0; i < std::size(forms); ++i) {
            if (IsRepetition(contest, i)) {
                continue;
            }
            const std::string peer = forms[i].shortNames ? kRapidJSONShort : kRapidJSON;
            std::vector<std::string> cells{contest.name + ", " + GetOwnName(forms[i]),
                                           ToText(contest.ownCharacters[i])};
            for (const Operation operation : {Operation::Write, Operation::Read}) {
                const auto own = FindFigure(contest, GetOwnName(forms[i]), operation);
                cells.push_back(GetValueTime(contest, own));
                cells.push_back(GetRatio(own, FindFigure(contest, peer, operation), std::nullopt));
            }
            table.AddRow(std::move(cells));
        }
    }
    table.Print(out);
}

void PrintMemory(std::ostream& out, const std::vector<MemoryFigure>& figures, Operation operation) {
    std::vector<std::string> labels{GetOwnName(kPlainForm)};
    std::vector<std::string> header{std::string(GetOperationName(operation)), "text, bytes", "qvpreslayer"};
    for (const std::string& peer : GetColumns(operation)) {
        if (!IsFloor(peer)) {
            labels.push_back(peer);
            header.push_back(peer);
        }
    }
    Table table(std::move(header));
    for (const WorkloadMaker& maker : GetWorkloadMakers()) {
        std::vector<std::string> cells{maker.name, ""};
        for (const std::string& label : labels) {
            const auto found = std::find_if(figures.begin(), figures.end(), [&](const MemoryFigure& figure) {
                return figure.workload == maker.name && figure.label == label && figure.operation == operation;
            });
            if (found == figures.end() || found->peak < 0) {
                cells.push_back(kNothing);
                continue;
            }
            const auto text = static_cast<double>(found->textBytes);
            cells[1] = ToText(static_cast<std::size_t>(found->textBytes));
            cells.push_back(ToText(static_cast<double>(found->peak) / text, 1) + " / " +
                            ToText(static_cast<double>(found->kept) / text, 1));
        }
        if (!cells[1].empty()) {
            table.AddRow(std::move(cells));
        }
    }
    table.Print(out);
}

void PrintFailures(std::ostream& out, const std::vector<TimedContest>& contests) {
    for (const TimedContest& contest : contests) {
        for (const TimedEntry& entry : contest.entries) {
            if (!entry.failure.empty()) {
                out << "Left out of " << contest.name << ": " << entry.label << " (" << entry.failure << ").\n\n";
            }
        }
    }
}

}  // namespace compare
