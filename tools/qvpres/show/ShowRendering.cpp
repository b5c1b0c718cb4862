#include "tools/qvpres/show/ShowRendering.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <vector>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;

constexpr std::size_t kSparklineWidth = 24;
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::size_t MostItems(const ShowOptions& options) { return options.full ? kNoLimit : options.items; }

// The names in one column: "mark-sizes (ms)".
std::string NamesOf(const Description& description, std::size_t position) {
    if (description.name.empty()) {
        return "[" + std::to_string(position) + "]";
    }
    const bool twoNames = !description.shortName.empty() && description.shortName != description.name;
    return Visible(description.name + (twoNames ? " (" + description.shortName + ")" : ""));
}

std::string InsideInWords(const ParameterText& text, Node node, const Description& description) {
    const ParameterTypeCategory kind = text[node].info == nullptr ? PTC_Bag : text[node].info->kind;
    if (text[node].role == Role::Parameter && kind == PTC_StructureList) {
        return Counted(description.inside, "structure");
    }
    if (text[node].role == Role::Parameter && (kind == PTC_Map || kind == PTC_StructureMap)) {
        return Grouped(description.inside) + (description.inside == 1 ? " entry" : " entries");
    }
    return Counted(description.inside, "parameter");
}

class TreeWriter {
public:
    TreeWriter(std::ostream& out, const ParameterText& text, const ShowOptions& options, const Style& style)
        : m_out(out), m_text(text), m_options(options), m_style(style) {}

    void Write(Node root) {
        const Description description = Describe(m_text, root, MostItems(m_options));
        m_out << m_style.Strong(Visible(root == 0 ? m_text.Namespace().ToUtf8() : m_text.Path(root))) << "  ";
        if (root != 0) {
            m_out << m_style.Faint(description.type) << "  ";
        }
        m_out << ValueOf(root, description) << "\n";
        WriteChildren(root, "", m_options.depth);
    }

private:
    struct Line {
        Node node;
        std::string id;
        std::string names;
        Description description;
    };

    void WriteChildren(Node parent, const std::string& indent, std::size_t depth) {
        std::vector<Node> children = m_text.Children(parent);
        if (depth == 0 || children.empty()) {
            return;
        }
        // Parameters of a bag are all shown; elements and entries are folded as those of lists are.
        const bool foldable =
            m_text[children.front()].role == Role::Element || m_text[children.front()].role == Role::Entry;
        const std::size_t most = foldable ? MostItems(m_options) : kNoLimit;
        const std::size_t hidden = children.size() > most ? children.size() - most : 0;
        children.resize(children.size() - hidden);
        const std::vector<Line> lines = LinesOf(children);
        std::size_t idWidth = 0;
        std::size_t namesWidth = 0;
        std::size_t typeWidth = 0;
        for (const Line& line : lines) {
            idWidth = std::max(idWidth, line.id.size());
            namesWidth = std::max(namesWidth, Width(line.names));
            typeWidth = std::max(typeWidth, line.description.type.size());
        }
        for (const Line& line : lines) {
            const bool last = hidden == 0 && line.node == children.back();
            m_out << m_style.Faint(indent + (last ? "└─ " : "├─ "));
            if (idWidth != 0) {
                m_out << PaddedLeft(line.id, idWidth) << " ";
            }
            m_out << m_style.Name(Padded(line.names, namesWidth)) << "  "
                  << m_style.Faint(Padded(line.description.type, typeWidth)) << "  "
                  << ValueOf(line.node, line.description) << "\n";
            WriteChildren(line.node, indent + (last ? "   " : "│  "), depth - 1);
        }
        if (hidden != 0) {
            m_out << m_style.Faint(indent + "└─ … " + Grouped(hidden) + " more") << "\n";
        }
    }

    std::vector<Line> LinesOf(const std::vector<Node>& nodes) const {
        std::vector<Line> lines;
        for (const Node node : nodes) {
            Line line{node, "", "", Describe(m_text, node, MostItems(m_options))};
            line.id = line.description.id == 0 ? "" : std::to_string(line.description.id);
            line.names = NamesOf(line.description, m_text[node].position);
            lines.push_back(std::move(line));
        }
        return lines;
    }

    std::string ValueOf(Node node, const Description& description) const {
        std::string value = description.value;
        if (description.inside != 0) {
            value = InsideInWords(m_text, node, description);
        } else if (description.list) {
            value = ListInWords(*description.list, kSparklineWidth);
        }
        const bool folded = description.list && !description.list->complete;  // short already, and not to be cut
        if (!m_options.full && !folded) {
            value = Shortened(value, m_options.width);
        }
        if (!description.remark.empty()) {
            value += "  " + m_style.Warning("(" + description.remark + ")");
        }
        return value;
    }

    std::ostream& m_out;
    const ParameterText& m_text;
    const ShowOptions& m_options;
    const Style& m_style;
};

nlohmann::ordered_json ToJSON(const ListDescription& list) {
    nlohmann::ordered_json json = {{"count", list.count}};
    if (list.numbers) {
        const NumberRange& total = list.numbers->Total();
        json["nulls"] = total.elements - total.numbers;
        if (total.numbers != 0) {
            json["min"] = static_cast<double>(total.low);
            json["max"] = static_cast<double>(total.high);
            json["mean"] = static_cast<double>(total.Mean());
        }
        json["runs"] = list.numbers->PackedRuns();
        json["inRuns"] = total.packed;
    }
    return json;
}

// A value of the text as JSON. Depth is that of the document, which is limited.
nlohmann::ordered_json ValueJSON(const JSONDocument& document, JSONDocument::Index value) {
    switch (document[value].kind) {
        case JSONKind::Object: {
            nlohmann::ordered_json object = nlohmann::ordered_json::object();
            for (auto name = value + 1; name != document.Next(value); name = document.Next(name + 1)) {
                object[ToUtf8(document.Text(name))] = ValueJSON(document, name + 1);
            }
            return object;
        }
        case JSONKind::Array: {
            nlohmann::ordered_json array = nlohmann::ordered_json::array();
            for (auto item = value + 1; item != document.Next(value); item = document.Next(item)) {
                array.push_back(ValueJSON(document, item));
            }
            return array;
        }
        case JSONKind::String:
            return ToUtf8(document.Text(value));
        default:  // numbers, truth values and null stand as they are
            return nlohmann::ordered_json::parse(ToUtf8(document.Text(value)));
    }
}

nlohmann::ordered_json NodeJSON(const ParameterText& text, Node node, const ShowOptions& options, std::size_t depth) {
    const Description description = Describe(text, node, MostItems(options));
    nlohmann::ordered_json json;
    json["path"] = text.Path(node);
    if (description.id != 0) {
        json["id"] = description.id;
    }
    if (!description.name.empty()) {
        json["name"] = description.name;
    }
    if (!description.shortName.empty()) {
        json["shortName"] = description.shortName;
    }
    json["type"] = description.type;
    if (!description.remark.empty()) {
        json["remark"] = description.remark;
    }
    if (description.list) {
        json["list"] = ToJSON(*description.list);
    }
    if (description.inside == 0 && (!description.list || description.list->complete)) {
        json["value"] = ValueJSON(text.Document(), text[node].value);
    }
    if (description.inside != 0 && depth != 0) {
        json["children"] = nlohmann::ordered_json::array();
        for (const Node child : text.Children(node)) {
            json["children"].push_back(NodeJSON(text, child, options, depth - 1));
        }
    }
    return json;
}

}  // namespace

void WriteTree(std::ostream& out, const ParameterText& text, ParameterText::Node root, const ShowOptions& options,
               const Style& style) {
    TreeWriter(out, text, options, style).Write(root);
}

nlohmann::ordered_json ToJSON(const ParameterText& text, ParameterText::Node root, const ShowOptions& options) {
    return NodeJSON(text, root, options, options.depth);
}

}  // namespace qvpres
