#include "tools/qvpres/check/CheckRendering.h"

#include <ostream>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

std::string Nearest(const CheckFinding& finding) {
    std::string names;
    for (std::size_t i = 0; i < finding.nearest.size(); ++i) {
        const bool last = i + 1 == finding.nearest.size();
        names += (i == 0 ? "" : last ? " or " : ", ") + Quoted(finding.nearest[i]);
    }
    return names;
}

void WriteExcerpt(std::ostream& out, const CheckFinding& finding, std::size_t line, const Style& style) {
    const std::string margin = PaddedLeft(std::to_string(line), 5) + " | ";
    const std::string gap(margin.size() - 3, ' ');
    out << style.Faint(margin) << finding.excerpt << "\n"
        << style.Faint(gap + " | ") << std::string(finding.excerptColumn, ' ') << style.Strong("^") << "\n";
    if (!finding.nearest.empty()) {
        out << gap << "   did you mean " << Nearest(finding) << "?\n";
    }
}

}  // namespace

void WriteFindings(std::ostream& out, const std::string& file, std::size_t firstLine, const CheckResult& result,
                   const Style& style) {
    for (const CheckFinding& finding : result.findings) {
        const std::size_t line = finding.line + firstLine;
        out << style.Strong(file + ":" + std::to_string(line) + ":" + std::to_string(finding.column) + ":") << " "
            << (finding.isError ? style.Error("error:") : style.Warning("lenient:")) << " ";
        if (!finding.path.empty()) {
            out << style.Name(Visible(finding.path)) << ": ";
        }
        out << Visible(finding.message) << "\n";
        WriteExcerpt(out, finding, line, style);
    }
    if (result.cut) {
        out << file << ": there are more; --max-findings shows them\n";
    }
}

void WriteSummary(std::ostream& out, const std::string& file, const CheckResult& result) {
    out << file << ": ";
    if (result.findings.empty()) {
        out << "reads without errors\n";
        return;
    }
    out << Counted(result.Errors(), "error");
    if (result.Leniencies() != 0) {
        out << ", " << Grouped(result.Leniencies()) << (result.Leniencies() == 1 ? " leniency" : " leniencies");
    }
    out << (result.cut ? " and more\n" : "\n");
}

nlohmann::ordered_json ToJSON(const CheckFinding& finding, std::size_t firstLine) {
    nlohmann::ordered_json json = {{"severity", finding.isError ? "error" : "lenient"},
                                   {"code", finding.code},
                                   {"line", finding.line + firstLine},
                                   {"column", finding.column},
                                   {"offset", finding.offset},
                                   {"path", finding.path},
                                   {"message", finding.message}};
    if (!finding.expected.empty()) {
        json["expected"] = finding.expected;
        json["found"] = finding.found;
    }
    if (!finding.nearest.empty()) {
        json["nearest"] = finding.nearest;
    }
    return json;
}

nlohmann::ordered_json ToJSON(const std::string& file, std::size_t firstLine, const CheckResult& result) {
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    for (const CheckFinding& finding : result.findings) {
        findings.push_back(ToJSON(finding, firstLine));
    }
    return {{"file", file},
            {"errors", result.Errors()},
            {"leniencies", result.Leniencies()},
            {"cut", result.cut},
            {"findings", std::move(findings)}};
}

}  // namespace qvpres
