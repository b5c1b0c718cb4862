#include "tools/qvpres/vocabulary/VocabularyRendering.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string>

#include <qvcore/CaseConversion.h>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kColumns = 5;
using Row = std::array<std::string, kColumns>;

std::string Remarks(const Vocabulary& vocabulary, const ParameterDeclaration& parameter) {
    std::string remarks;
    const auto add = [&](const std::string& remark) { remarks += (remarks.empty() ? "" : "; ") + remark; };
    if (parameter.listForm) {
        add(parameter.kind == DeclaredKind::StructureList ? "as lists of texts" : "as a list of texts");
    }
    if (parameter.unserializable) {
        add("never written");
    }
    if (vocabulary.IsApproximate(parameter.id)) {
        add("a type of the host's own");
    }
    if (!parameter.description.empty()) {
        add(parameter.description.ToUtf8());
    }
    return remarks;
}

void WriteNamespace(std::ostream& out, const Vocabulary& vocabulary, const NamespaceDeclaration& nameSpace,
                    const Style& style) {
    out << style.Strong(nameSpace.name.ToUtf8()) << "  " << nameSpace.firstId << " to " << nameSpace.lastId << ", "
        << Counted(nameSpace.parameters.size(), "parameter");
    if (!nameSpace.fallback.empty()) {
        out << ", falls back to " << nameSpace.fallback.ToUtf8();
    }
    out << "\n";
    std::vector<Row> rows = {{"id", "name", "short", "type", "remarks"}};
    for (const ParameterDeclaration& parameter : nameSpace.parameters) {
        rows.push_back({std::to_string(parameter.id), parameter.name.ToUtf8(), parameter.shortName.ToUtf8(),
                        TypeName(parameter), Remarks(vocabulary, parameter)});
    }
    std::array<std::size_t, kColumns> widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            widths[column] = std::max(widths[column], Width(row[column]));
        }
    }
    for (const Row& row : rows) {
        std::string line = "  " + PaddedLeft(row[0], widths[0]);
        for (std::size_t column = 1; column < kColumns; ++column) {
            line += "  " + Padded(row[column], widths[column]);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << (&row == &rows.front() ? style.Faint(line) : line) << "\n";
    }
}

Json ToJSON(const Vocabulary& vocabulary, const ParameterDeclaration& parameter) {
    Json json = {{"id", parameter.id},
                 {"name", parameter.name.ToUtf8()},
                 {"jsonName", DashedToCamel(parameter.name).ToUtf8()},
                 {"short", parameter.shortName.empty() ? Json() : Json(parameter.shortName.ToUtf8())},
                 {"kind", ToUtf8(ToText(parameter.kind))},
                 {"type", parameter.HasType() ? Json(ToUtf8(parameter.type->name)) : Json()}};
    if (!parameter.HasType() && parameter.kind != DeclaredKind::Bag) {
        json["form"] = parameter.listForm ? "list" : "record";
    }
    if (parameter.members) {
        json["members"] = Json::array();
        for (const TString& member : *parameter.members) {
            json["members"].push_back(member.ToUtf8());
        }
    }
    json["unserializable"] = parameter.unserializable;
    json["approximate"] = vocabulary.IsApproximate(parameter.id);
    json["description"] = parameter.description.ToUtf8();
    return json;
}

std::string Painted(Severity severity, const Style& style) {
    const std::string word = ToUtf8(ToText(severity));
    return severity == Severity::Error ? style.Error(word) : severity == Severity::Warning ? style.Warning(word) : word;
}

std::string Painted(OldTexts oldTexts, const Style& style) {
    const std::string word = ToUtf8(ToText(oldTexts));
    switch (oldTexts) {
        case OldTexts::Read:
            return style.Added(word);
        case OldTexts::Differ:
            return style.Warning(word);
        default:
            return style.Error(word);
    }
}

std::string Place(const std::string& nameSpace, const TString& name, int id, const Style& style) {
    return style.Name(nameSpace + (id == 0 ? "" : "/" + name.ToUtf8())) +
           (id == 0 ? "" : " (" + std::to_string(id) + ")");
}

const char* Sentence(OldTexts oldTexts) {
    switch (oldTexts) {
        case OldTexts::Read:
            return "all are read as before";
        case OldTexts::Differ:
            return "all are read, but values may differ";
        case OldTexts::SomeFail:
            return "some are not read any more";
        case OldTexts::Fail:
            return "those that hold what changed are not read any more";
    }
    return "";
}

}  // namespace

void WriteNamespaces(std::ostream& out, const Vocabulary& vocabulary,
                     const std::vector<const NamespaceDeclaration*>& namespaces, const Style& style) {
    for (const NamespaceDeclaration* nameSpace : namespaces) {
        out << (nameSpace == namespaces.front() ? "" : "\n");
        WriteNamespace(out, vocabulary, *nameSpace, style);
    }
    if (!vocabulary.GetUnserializable().empty()) {
        out << "\nnever written, and in no namespace:";
        for (const int id : vocabulary.GetUnserializable()) {
            out << " " << id;
        }
        out << "\n";
    }
}

Json ToJSON(const Vocabulary& vocabulary, const std::vector<const NamespaceDeclaration*>& namespaces) {
    Json json = {{"namespaces", Json::array()}, {"unserializable", vocabulary.GetUnserializable()}};
    for (const NamespaceDeclaration* nameSpace : namespaces) {
        Json parameters = Json::array();
        for (const ParameterDeclaration& parameter : nameSpace->parameters) {
            parameters.push_back(ToJSON(vocabulary, parameter));
        }
        json["namespaces"].push_back(
            {{"name", nameSpace->name.ToUtf8()},
             {"firstId", nameSpace->firstId},
             {"lastId", nameSpace->lastId},
             {"fallback", nameSpace->fallback.empty() ? Json() : Json(nameSpace->fallback.ToUtf8())},
             {"description", nameSpace->description.ToUtf8()},
             {"parameters", std::move(parameters)}});
    }
    return json;
}

void WriteFindings(std::ostream& out, const Vocabulary& vocabulary, const std::vector<Finding>& findings,
                   const Style& style) {
    std::array<std::size_t, 3> counts{};
    for (const Finding& finding : findings) {
        ++counts[static_cast<std::size_t>(finding.severity)];
        out << vocabulary.GetSource() << ":";
        if (finding.location.IsKnown()) {
            out << finding.location.line << ":" << finding.location.column << ":";
        }
        out << " " << Painted(finding.severity, style) << ": "
            << Place(finding.nameSpace.ToUtf8(), finding.name, finding.id, style) << ": " << finding.message.ToUtf8()
            << " " << style.Faint("[" + ToUtf8(ToText(finding.rule)) + "]") << "\n";
    }
    if (findings.empty()) {
        out << "no findings\n";
    } else {
        out << Counted(counts[0], "error") << ", " << Counted(counts[1], "warning") << ", "
            << Counted(counts[2], "note") << "\n";
    }
}

Json ToJSON(const std::vector<Finding>& findings) {
    Json json = Json::array();
    for (const Finding& finding : findings) {
        Json entry = {{"severity", ToUtf8(ToText(finding.severity))},
                      {"rule", ToUtf8(ToText(finding.rule))},
                      {"namespace", finding.nameSpace.ToUtf8()},
                      {"id", finding.id == 0 ? Json() : Json(finding.id)},
                      {"name", finding.id == 0 ? Json() : Json(finding.name.ToUtf8())},
                      {"message", finding.message.ToUtf8()}};
        if (finding.location.IsKnown()) {
            entry["line"] = finding.location.line;
            entry["column"] = finding.location.column;
            entry["path"] = finding.location.path.ToUtf8();
        }
        json.push_back(std::move(entry));
    }
    return json;
}

void WriteChanges(std::ostream& out, const std::vector<Change>& changes, const Style& style) {
    for (const Change& change : changes) {
        out << Place(change.nameSpace.ToUtf8(), change.name, change.id, style) << (change.nameSpace.empty() ? "" : ": ")
            << ToUtf8(ToText(change.part));
        if (!change.older.empty() || !change.newer.empty()) {
            out << " " << style.Removed(Quoted(change.older.ToUtf8())) << " -> "
                << style.Added(Quoted(change.newer.ToUtf8()));
        }
        if (change.verboseTexts != OldTexts::Read || change.shortTexts != OldTexts::Read) {
            out << "; old texts " << Painted(change.verboseTexts, style) << ", under short names "
                << Painted(change.shortTexts, style);
        }
        out << "\n";
    }
    out << (changes.empty() ? "no changes" : Counted(changes.size(), "change")) << "\n"
        << "old texts under verbose names: " << Sentence(Verdict(changes, false)) << "\n"
        << "old texts under short names: " << Sentence(Verdict(changes, true)) << "\n";
}

Json ToJSON(const std::vector<Change>& changes) {
    Json json = {{"verboseTexts", ToUtf8(ToText(Verdict(changes, false)))},
                 {"shortTexts", ToUtf8(ToText(Verdict(changes, true)))},
                 {"changes", Json::array()}};
    for (const Change& change : changes) {
        json["changes"].push_back({{"namespace", change.nameSpace.ToUtf8()},
                                   {"id", change.id == 0 ? Json() : Json(change.id)},
                                   {"name", change.id == 0 ? Json() : Json(change.name.ToUtf8())},
                                   {"part", ToUtf8(ToText(change.part))},
                                   {"older", change.older.ToUtf8()},
                                   {"newer", change.newer.ToUtf8()},
                                   {"verboseTexts", ToUtf8(ToText(change.verboseTexts))},
                                   {"shortTexts", ToUtf8(ToText(change.shortTexts))}});
    }
    return json;
}

}  // namespace qvpres
