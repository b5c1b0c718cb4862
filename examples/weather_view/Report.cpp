#include "Report.h"

#include <algorithm>
#include <iomanip>

namespace weather {

namespace {

constexpr std::size_t kShownDifferences = 10;

const char* LayoutName(JSONSerializer::OutputType layout) {
    return layout == JSONSerializer::Pretty ? "pretty" : "compact";
}

std::string NumberText(double value) { return ParameterTypeSerializer<double>::TypeToString(value).ToUtf8(); }

void PrintTable(std::ostream& out, const WeatherTable& table, const WeatherSummary& summary) {
    const auto date = [&table](std::size_t day) { return DateText(table.dayNumbers[day]).ToUtf8(); };
    out << "Daily weather, " << date(0) << " to " << date(table.GetDayCount() - 1) << "\n  days    ";
    const char* separator = "";
    for (const auto& [condition, group] : summary.byCondition) {
        out << separator << group.days << " " << condition.ToUtf8();
        separator = ", ";
    }
    out << "\n  hottest " << NumberText(table.tempMax[summary.hottestDay]) << " C on " << date(summary.hottestDay)
        << "\n  wettest " << NumberText(table.precipitation[summary.wettestDay]) << " mm on "
        << date(summary.wettestDay) << "\n";
}

void PrintDifferences(std::ostream& out, const std::vector<TString>& differences) {
    for (std::size_t i = 0; i < std::min(differences.size(), kShownDifferences); ++i) {
        out << "    " << differences[i].ToUtf8() << "\n";
    }
    if (differences.size() > kShownDifferences) {
        out << "    and " << differences.size() - kShownDifferences << " more\n";
    }
}

void PrintTrip(std::ostream& out, const char* what, const RoundTrip& trip) {
    out << "  " << std::left << std::setw(7) << what << std::setw(8) << (trip.form.shortNames ? "short" : "verbose")
        << std::setw(9) << LayoutName(trip.form.layout) << std::setw(7) << (trip.form.packedArrays ? "packed" : "plain")
        << std::right << std::setw(11) << trip.text.size() << std::setw(10) << trip.valueCount << "  "
        << (trip.differences.empty() ? "equal" : "DIFFERENT") << "\n";
    PrintDifferences(out, trip.differences);
}

void PrintColumn(std::ostream& out, const ColumnTexts& column) {
    out << "  " << std::left << std::setw(16) << column.name.ToUtf8() << std::setw(9) << column.type.ToUtf8()
        << std::right << std::setw(6) << column.nullCount << std::setw(12) << column.plainLength << std::setw(8)
        << column.packedLength << "  " << (column.differences.empty() ? "equal" : "DIFFERENT") << "\n";
    PrintDifferences(out, column.differences);
}

void PrintPenguins(std::ostream& out, const TableTexts& penguins) {
    out << "\nPenguins: " << penguins.rowCount
        << " rows of typed values, written as JSON, their lettered texts read back\n"
        << "  column          type      nulls  characters  packed  texts\n";
    for (const ColumnTexts& column : penguins.columns) {
        PrintColumn(out, column);
    }
    out << "  Packing pays where values rise evenly or repeat; elsewhere the quotes around packed values cost more.\n"
        << "  By design, reading such a list from JSON answers " << penguins.answer.message
        << (penguins.answer.asDocumented ? "" : ": NOT AS DOCUMENTED") << ".\n";
}

void PrintBadText(std::ostream& out, const BadText& bad) {
    out << "  " << std::left << std::setw(16) << bad.what << std::right << bad.message << "\n";
    if (bad.location.IsKnown()) {
        out << "                  line " << bad.location.line << ", column " << bad.location.column << ", at "
            << (bad.location.path.empty() ? "the root" : bad.location.path.ToUtf8()) << "\n";
    }
    if (!bad.asDocumented) {
        out << "                  NOT AS DOCUMENTED\n";
    }
}

// The length of the verbose compact text.
std::size_t CompactLength(const Findings& findings, bool packedArrays) {
    const auto trip = std::find_if(findings.bagTrips.begin(), findings.bagTrips.end(), [&](const RoundTrip& candidate) {
        return candidate.form.packedArrays == packedArrays && !candidate.form.shortNames &&
               candidate.form.layout == JSONSerializer::Compact;
    });
    return trip == findings.bagTrips.end() ? 0 : trip->text.size();
}

bool AllAsExpected(const TableTexts& penguins) {
    return penguins.answer.asDocumented && !penguins.columns.empty() &&
           std::all_of(penguins.columns.begin(), penguins.columns.end(),
                       [](const ColumnTexts& column) { return column.differences.empty(); });
}

}  // namespace

bool AllAsExpected(const Findings& findings) {
    const auto isEqual = [](const RoundTrip& trip) { return trip.differences.empty(); };
    return std::all_of(findings.bagTrips.begin(), findings.bagTrips.end(), isEqual) && isEqual(findings.modelTrip) &&
           AllAsExpected(findings.penguins) &&
           std::all_of(findings.badTexts.begin(), findings.badTexts.end(),
                       [](const BadText& bad) { return bad.asDocumented && bad.location.IsKnown(); });
}

void PrintReport(std::ostream& out, const Findings& findings) {
    PrintTable(out, findings.table, findings.summary);
    out << "\nWritten as JSON and read back\n"
        << "         names   layout   arrays  characters    values\n";
    for (const RoundTrip& trip : findings.bagTrips) {
        PrintTrip(out, "view", trip);
    }
    PrintTrip(out, "model", findings.modelTrip);
    out << "  By design, selection and penguin table are not written, and the password comes back as "
        << PasswordString::s_Mask.ToUtf8() << ".\n";
    PrintPenguins(out, findings.penguins);
    out << "\nWhat wrong texts answer\n";
    for (const BadText& bad : findings.badTexts) {
        PrintBadText(out, bad);
    }
    out << "\nTo look at:\n";
    for (const std::filesystem::path& file : findings.writtenFiles) {
        out << "  " << file.string() << "\n";
    }
    out << "\nweather view: " << findings.table.GetDayCount() << " days, " << CompactLength(findings, false)
        << " characters plain, " << CompactLength(findings, true) << " packed, "
        << (AllAsExpected(findings) ? "read back equal" : "NOT as it should be") << "\n";
}

}  // namespace weather
