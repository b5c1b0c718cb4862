#include "tools/qvpres/report/ReportData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "tools/qvpres/check/CheckRendering.h"
#include "tools/qvpres/show/Description.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;
using JSON = nlohmann::ordered_json;

constexpr std::size_t kItemsInWords = 12;    // of a list that is no picture
constexpr std::size_t kLongestValue = 200;   // characters
constexpr std::size_t kPartsOfAll = 200000;  // of all pictures together, so that pages stay small
constexpr std::size_t kMostParts = 400;      // of one picture: about what its width can show
constexpr std::size_t kFewestParts = 40;

// Texts that come again and again stand once.
class Strings {
public:
    Strings() { Add(""); }

    std::size_t Add(const std::string& text) {
        const auto [place, added] = m_places.try_emplace(text, m_strings.size());
        if (added) {
            m_strings.push_back(text);
        }
        return place->second;
    }

    JSON Take() { return std::move(m_strings); }

private:
    std::unordered_map<std::string, std::size_t> m_places;
    std::vector<std::string> m_strings;
};

// Six digits are more than a picture shows.
double Short(long double number) {
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<double>(number),
                                   std::chars_format::general, 6)
                         .ptr;
    double value = 0;
    std::from_chars(buffer.data(), end, value);
    return value;
}

JSON Pictured(const NumberList& list, std::size_t mostParts) {
    const NumberRange& total = list.Total();
    JSON json = {{"count", total.elements},
                 {"nulls", total.elements - total.numbers},
                 {"runs", list.PackedRuns()},
                 {"inRuns", total.packed}};
    if (total.numbers == 0) {
        return json;
    }
    json["min"] = static_cast<double>(total.low);
    json["max"] = static_cast<double>(total.high);
    json["mean"] = static_cast<double>(total.Mean());
    if (total.elements <= mostParts) {
        JSON runs = JSON::array();
        for (const NumberRun& run : list.Runs()) {
            runs.push_back({static_cast<double>(run.first), static_cast<double>(run.step), run.count,
                            run.packed ? 1 : 0, run.null ? 1 : 0});
        }
        json["elements"] = std::move(runs);
        return json;
    }
    JSON parts = JSON::array();
    for (const NumberRange& part : list.Parts(mostParts)) {
        if (part.numbers == 0) {
            parts.push_back(nullptr);
        } else {
            const double share = static_cast<double>(part.packed) / static_cast<double>(part.elements);
            parts.push_back({Short(part.low), Short(part.high), Short(share)});
        }
    }
    json["parts"] = std::move(parts);
    return json;
}

class ReportMaker {
public:
    explicit ReportMaker(const ParameterText& text) : m_text(text) {}

    JSON Make(const CheckResult& findings, const std::string& title) {
        AddNodes();
        JSON json = {{"title", title},
                     {"namespace", m_text.Namespace().ToUtf8()},
                     {"names", m_text.Names() == NameForm::Short ? "short" : "verbose"},
                     {"characters", m_text[0].behind - m_text[0].begin}};
        json["strings"] = m_strings.Take();
        json["nodes"] = std::move(m_columns);
        json["lists"] = std::move(m_lists);
        json["findings"] = Findings(findings);
        json["findingsCut"] = findings.cut;
        return json;
    }

private:
    void AddNodes() {
        const std::size_t parts = PartsOfOne();
        for (Node node = 0; node < m_text.Nodes().size(); ++node) {
            AddNode(node, parts);
        }
        m_columns = {{"parent", std::move(m_parent)}, {"name", std::move(m_name)},    {"short", std::move(m_short)},
                     {"id", std::move(m_id)},         {"type", std::move(m_type)},    {"value", std::move(m_value)},
                     {"size", std::move(m_size)},     {"remark", std::move(m_remark)}};
    }

    std::size_t PartsOfOne() const {
        const auto lists = static_cast<std::size_t>(std::count_if(
            m_text.Nodes().begin(), m_text.Nodes().end(),
            [](const TextNode& node) { return node.role == Role::Parameter && node.info->kind == PTC_List; }));
        return std::clamp(kPartsOfAll / std::max<std::size_t>(lists, 1), kFewestParts, kMostParts);
    }

    void AddNode(Node node, std::size_t parts) {
        const TextNode& it = m_text[node];
        const Description description = Describe(m_text, node, kItemsInWords);
        m_parent.push_back(node == 0 ? -1 : static_cast<std::int64_t>(it.parent));
        m_name.push_back(
            m_strings.Add(it.nameToken == 0 && node != 0 ? std::to_string(it.position) : description.name));
        m_short.push_back(m_strings.Add(description.shortName));
        m_id.push_back(description.id);
        m_type.push_back(m_strings.Add(node == 0 ? "bag" : description.type));
        std::string value = description.value;
        if (description.list) {
            // Pictures take the place of lines of blocks.
            value = ListInWords(*description.list, 0);
            if (description.list->numbers) {
                m_lists[std::to_string(node)] = Pictured(*description.list->numbers, parts);
            }
        }
        m_value.push_back(m_strings.Add(Shortened(value, kLongestValue)));
        m_size.push_back(it.behind - it.begin);
        m_remark.push_back(m_strings.Add(description.remark));
    }

    // With the node that each is about, so that the page can lead there.
    JSON Findings(const CheckResult& result) const {
        JSON json = JSON::array();
        for (const CheckFinding& finding : result.findings) {
            JSON entry = ToJSON(finding, 0);
            entry["node"] = NodeAt(finding.offset);
            json.push_back(std::move(entry));
        }
        return json;
    }

    // The innermost node around a place.
    Node NodeAt(std::size_t offset) const {
        const auto& nodes = m_text.Nodes();
        Node node = 0;
        for (Node child = 1; child < nodes[node].end;) {
            if (nodes[child].begin <= offset && offset < nodes[child].behind) {
                node = child;
                child = node + 1;
            } else {
                child = nodes[child].end;
            }
        }
        return node;
    }

    const ParameterText& m_text;
    Strings m_strings;
    std::vector<std::int64_t> m_parent;
    std::vector<std::size_t> m_name;
    std::vector<std::size_t> m_short;
    std::vector<int> m_id;
    std::vector<std::size_t> m_type;
    std::vector<std::size_t> m_value;
    std::vector<std::size_t> m_size;
    std::vector<std::size_t> m_remark;
    JSON m_columns;
    JSON m_lists = JSON::object();
};

}  // namespace

JSON MakeReportData(const ParameterText& text, const CheckResult& findings, const std::string& title) {
    return ReportMaker(text).Make(findings, title);
}

}  // namespace qvpres
