#include "main/json/JSONMembers.h"

#include <algorithm>

namespace {

bool IsBefore(const JSONMember& left, const JSONMember& right) { return left.name < right.name; }

bool IsStrictlyAscending(const std::vector<JSONMember>& members) {
    const auto notBefore = [](const JSONMember& left, const JSONMember& right) { return !IsBefore(left, right); };
    return std::adjacent_find(members.begin(), members.end(), notBefore) == members.end();
}

// Of neighbours with one name, the last one stays.
void DropOverridden(std::vector<JSONMember>& members, std::vector<JSONMember>* overridden) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (i + 1 == members.size() || members[i].name != members[i + 1].name) {
            members[kept++] = members[i];
        } else if (overridden != nullptr) {
            overridden->push_back(members[i]);
        }
    }
    members.resize(kept);
}

}  // namespace

std::vector<JSONMember> SortedMembers(const JSONDocument& document, JSONDocument::Index object,
                                      std::vector<JSONMember>* overridden) {
    std::vector<JSONMember> members;
    const JSONDocument::Index end = document.Next(object);
    for (JSONDocument::Index name = object + 1; name != end; name = document.Next(name + 1)) {
        members.push_back({document.Text(name), name + 1});
    }
    if (!IsStrictlyAscending(members)) {
        std::stable_sort(members.begin(), members.end(), IsBefore);
        DropOverridden(members, overridden);
    }
    return members;
}
