#include "tools/qvpres/stats/StatsRendering.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

// A table of figures with the label behind them, so that long labels disturb nothing.
class Table {
public:
    Table(std::string title, std::vector<std::string> columns)
        : m_title(std::move(title)), m_rows{std::move(columns)} {}

    // As many cells as columns; the last one is the label.
    void Add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }

    void Write(std::ostream& out, std::size_t most, const Style& style) const {
        if (m_rows.size() == 1) {
            return;
        }
        out << "\n" << style.Strong(m_title) << "\n";
        const std::size_t shown = std::min(most + 1, m_rows.size());
        for (std::size_t i = 0; i < shown; ++i) {
            std::string line;
            for (std::size_t column = 0; column + 1 < m_rows[i].size(); ++column) {
                line += PaddedLeft(m_rows[i][column], WidthOf(column, shown)) + "  ";
            }
            line += m_rows[i].back();
            out << (i == 0 ? style.Faint(line) : line) << "\n";
        }
        if (shown < m_rows.size()) {
            out << style.Faint("and " + Grouped(m_rows.size() - shown) + " more; --top shows them") << "\n";
        }
    }

private:
    std::size_t WidthOf(std::size_t column, std::size_t shown) const {
        std::size_t width = 0;
        for (std::size_t i = 0; i < shown; ++i) {
            width = std::max(width, Width(m_rows[i][column]));
        }
        return width;
    }

    std::string m_title;
    std::vector<std::vector<std::string>> m_rows;
};

Table OwnTable(const char* title, const char* label, const std::vector<StatsRow>& rows, std::uint64_t whole) {
    Table table(title, {"characters", "share", "values", label});
    for (const StatsRow& row : rows) {
        table.Add({Grouped(row.own), Percent(row.own, whole), Grouped(row.values), Visible(row.label)});
    }
    return table;
}

nlohmann::ordered_json ToJSON(const std::vector<StatsRow>& rows, const char* label) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const StatsRow& row : rows) {
        json.push_back({{label, row.label}, {"values", row.values}, {"own", row.own}, {"total", row.total}});
    }
    return json;
}

}  // namespace

void WriteStats(std::ostream& out, const Stats& stats, std::size_t most, const Style& style) {
    out << Counted(stats.characters, "character") << ", " << Percent(stats.layout, stats.characters)
        << " of them blanks and line ends between values\n";
    Table paths("By path, with all that is inside", {"characters", "share", "values", "path"});
    for (const StatsRow& row : stats.byPath) {
        paths.Add({Grouped(row.total), Percent(row.total, stats.characters), Grouped(row.values), Visible(row.label)});
    }
    paths.Write(out, most, style);
    OwnTable("By name, without what is inside", "name", stats.byName, stats.characters).Write(out, most, style);
    OwnTable("By type, without what is inside", "type", stats.byType, stats.characters).Write(out, most, style);
    if (!stats.readable) {
        out << "\nThe text cannot be read (qvpres check tells why), so that other forms of it are not measured.\n";
        return;
    }
    Table forms("Forms of this text", {"characters", "of this one", "form"});
    for (const FormRow& row : stats.forms) {
        forms.Add({Grouped(row.characters), Percent(row.characters, stats.characters),
                   row.form + (row.readable ? "" : " (cannot be read again)")});
    }
    forms.Write(out, stats.forms.size(), style);
    Table packing("Lists of numbers, plain and packed", {"elements", "plain", "packed", "of plain", "path"});
    for (const PackingRow& row : stats.packing) {
        packing.Add(
            {Grouped(row.elements), Grouped(row.plain), Grouped(row.packed), Percent(row.packed, row.plain), row.path});
    }
    packing.Write(out, most, style);
}

nlohmann::ordered_json ToJSON(const Stats& stats) {
    nlohmann::ordered_json json = {{"characters", stats.characters},         {"layout", stats.layout},
                                   {"byPath", ToJSON(stats.byPath, "path")}, {"byName", ToJSON(stats.byName, "name")},
                                   {"byType", ToJSON(stats.byType, "type")}, {"readable", stats.readable}};
    json["forms"] = nlohmann::ordered_json::array();
    for (const FormRow& row : stats.forms) {
        json["forms"].push_back({{"form", row.form}, {"characters", row.characters}, {"readable", row.readable}});
    }
    json["packing"] = nlohmann::ordered_json::array();
    for (const PackingRow& row : stats.packing) {
        json["packing"].push_back(
            {{"path", row.path}, {"elements", row.elements}, {"plain", row.plain}, {"packed", row.packed}});
    }
    return json;
}

}  // namespace qvpres
