#include "tools/qvpres/check/Check.h"

#include <algorithm>
#include <optional>
#include <set>

#include "tools/qvpres/check/ErrorSearch.h"
#include "tools/qvpres/check/Leniencies.h"
#include "tools/qvpres/check/SyntaxHint.h"
#include "tools/qvpres/text/LineIndex.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

constexpr std::size_t kExcerptBefore = 50;  // units of a long line that are shown before the place
constexpr std::size_t kExcerptAfter = 30;

bool IsBefore(const CheckFinding& left, const CheckFinding& right) {
    return left.offset < right.offset || (left.offset == right.offset && left.isError && !right.isError);
}

// Control characters as blanks.
std::string Printable(std::u16string_view text) {
    std::u16string clean(text);
    std::replace_if(
        clean.begin(), clean.end(), [](char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); }, u' ');
    return ToUtf8(clean);
}

// The line around the place, cut where it is long.
void AddExcerpt(CheckFinding& finding, const LineIndex& lines) {
    const std::u16string_view line = lines.Line(finding.line);
    const std::size_t at = std::min(finding.column - 1, line.size());
    const std::size_t from = at > kExcerptBefore ? at - kExcerptBefore : 0;
    const std::string before = (from > 0 ? "…" : "") + Printable(line.substr(from, at - from));
    const std::u16string_view rest = line.substr(at);
    finding.excerpt = before + Printable(rest.substr(0, kExcerptAfter)) + (rest.size() > kExcerptAfter ? "…" : "");
    finding.excerptColumn = Width(before);
}

// What makes reading fail is no leniency too.
void DropLenienciesOfErrors(std::vector<CheckFinding>& findings) {
    std::set<std::size_t> errors;
    for (const CheckFinding& finding : findings) {
        if (finding.isError) {
            errors.insert(finding.offset);
        }
    }
    std::erase_if(findings,
                  [&](const CheckFinding& finding) { return !finding.isError && errors.contains(finding.offset); });
}

void AddPlaces(std::vector<CheckFinding>& findings, std::u16string_view text) {
    const LineIndex lines(text);
    for (CheckFinding& finding : findings) {
        const LineIndex::Place place = lines.At(finding.offset);
        finding.line = place.line;
        finding.column = place.column;
        AddExcerpt(finding, lines);
    }
}

CheckFinding NotJSON(const JSONParseException& failure, std::u16string_view text) {
    CheckFinding finding;
    finding.code = "not-json";
    finding.offset = failure.GetLocation().offset;
    finding.path = failure.GetLocation().path.ToUtf8();
    finding.message = "the text is not valid JSON: " + SyntaxHint(text, finding.offset);
    return finding;
}

}  // namespace

std::size_t CheckResult::Errors() const {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [](const CheckFinding& finding) { return finding.isError; }));
}

CheckResult Check(std::string_view utf8, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                  const CheckOptions& options) {
    const TString text = TString::FromUtf8(utf8);
    CheckResult result;
    std::optional<ParameterText> cutText;
    try {
        cutText.emplace(text, vocabulary, nameSpace, options.names);
    } catch (const JSONParseException& failure) {
        result.findings.push_back(NotJSON(failure, text));
    }
    if (cutText) {
        ReadingOutcome outcome = ReadInPieces(*cutText, options.maxFindings + 1, options.strict);
        result.findings = std::move(outcome.errors);
        if (options.strict) {
            AddLeniencies(*cutText, outcome.notes, result.findings);
        }
    }
    if (options.strict) {
        FindInvalidUtf8(utf8, result.findings);
        DropLenienciesOfErrors(result.findings);
    }
    std::stable_sort(result.findings.begin(), result.findings.end(), IsBefore);
    if (result.findings.size() > options.maxFindings) {
        result.findings.resize(options.maxFindings);
        result.cut = true;
    }
    AddPlaces(result.findings, text);
    return result;
}

}  // namespace qvpres
