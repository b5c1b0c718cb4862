#include "tools/qvpres/diff/DiffRendering.h"

#include <array>
#include <ostream>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

std::string PathText(const Difference& difference) {
    std::string path = Visible(difference.path);
    if (difference.sort == Difference::Sort::Elements) {
        path += "/" + std::to_string(difference.first);
        if (difference.count > 1) {
            path += ".." + std::to_string(difference.first + difference.count - 1);
        }
    }
    return path;
}

std::string Change(const Difference& difference, const Style& style) {
    return style.Removed(Visible(difference.left)) + " → " + style.Added(Visible(difference.right));
}

}  // namespace

void WriteDifference(std::ostream& out, const Difference& difference, const Style& style) {
    const std::string path = style.Name(PathText(difference));
    switch (difference.sort) {
        case Difference::Sort::Removed:
            out << style.Removed("-") << " " << path << ": " << style.Removed(Visible(difference.left));
            break;
        case Difference::Sort::Added:
            out << style.Added("+") << " " << path << ": " << style.Added(Visible(difference.right));
            break;
        case Difference::Sort::Length:
            out << "~ " << path << ": " << Change(difference, style) << " elements";
            break;
        default:
            out << "~ " << path << ": " << Change(difference, style);
    }
    if (difference.count > 1) {
        out << " and so on, " << Counted(difference.count, "element");
        if (difference.largest > 0) {
            out << ", up to " << NumberText(difference.largest) << " apart";
        }
    }
    out << "\n";
}

nlohmann::ordered_json ToJSON(const Difference& difference) {
    constexpr std::array<const char*, 5> kSorts = {"removed", "added", "changed", "length", "elements"};
    nlohmann::ordered_json json = {{"sort", kSorts.at(static_cast<std::size_t>(difference.sort))},
                                   {"path", difference.path}};
    if (!difference.left.empty()) {
        json["left"] = difference.left;
    }
    if (!difference.right.empty()) {
        json["right"] = difference.right;
    }
    if (difference.sort == Difference::Sort::Elements) {
        json["first"] = difference.first;
        json["count"] = difference.count;
        json["largest"] = difference.largest;
    }
    return json;
}

}  // namespace qvpres
