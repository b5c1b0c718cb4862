#include "tools/vocabulary/Comparison.h"

#include <algorithm>
#include <set>

namespace qvpres {

namespace {

const TString& NameOf(const ParameterDeclaration& parameter, bool shortName) {
    return shortName ? parameter.shortName : parameter.name;
}

TString RangeText(const NamespaceDeclaration& nameSpace) {
    return TString::number(nameSpace.firstId) + u" to " + TString::number(nameSpace.lastId);
}

TString TypeText(const ParameterDeclaration& parameter) {
    return parameter.HasType() ? TString(parameter.type->name) : TString();
}

TString FormText(const ParameterDeclaration& parameter) { return parameter.listForm ? u"list" : u"record"; }

TString MembersText(const ParameterDeclaration& parameter) {
    if (!parameter.members) {
        return u"any";
    }
    TString text;
    for (const TString& member : *parameter.members) {
        text += (text.empty() ? TString() : TString(u", ")) + member;
    }
    return text;
}

// The parameter that a name of either sort leads to.
const ParameterDeclaration* Resolve(const Vocabulary& vocabulary, const NamespaceDeclaration& nameSpace,
                                    const TString& name, bool shortNames) {
    const auto reachable = vocabulary.GetReachable(nameSpace, shortNames);
    const auto found = std::find_if(reachable.begin(), reachable.end(), [&](const ParameterDeclaration* parameter) {
        return NameOf(*parameter, shortNames) == name;
    });
    return found == reachable.end() ? nullptr : *found;
}

bool IsCovered(const Vocabulary& vocabulary, const NamespaceDeclaration& nameSpace, int id) {
    return vocabulary.FindCovering(id)->name == nameSpace.name;
}

// The comparison of two namespaces of one name.
class NamespaceComparison {
public:
    NamespaceComparison(const Vocabulary& older, const NamespaceDeclaration& olderSpace, const Vocabulary& newer,
                        const NamespaceDeclaration& newerSpace, std::vector<Change>& changes)
        : m_older(older), m_olderSpace(olderSpace), m_newer(newer), m_newerSpace(newerSpace), m_changes(changes) {}

    void Run() {
        CompareRange();
        CompareFallback();
        std::vector<const ParameterDeclaration*> matched;
        for (const ParameterDeclaration& parameter : m_olderSpace.parameters) {
            const ParameterDeclaration* counterpart = FindCounterpart(parameter);
            matched.push_back(counterpart);
            if (counterpart == nullptr) {
                Change& change = Report(ChangedPart::Removed, parameter, {}, {});
                change.verboseTexts = Outcome(parameter, kNoId, false);
                change.shortTexts = Outcome(parameter, kNoId, true);
            } else {
                CompareParameter(parameter, *counterpart);
            }
        }
        for (const ParameterDeclaration& parameter : m_newerSpace.parameters) {
            if (std::find(matched.begin(), matched.end(), &parameter) == matched.end()) {
                ReportAdded(parameter);
            }
        }
    }

private:
    Change& Report(ChangedPart part, const ParameterDeclaration& parameter, const TString& older,
                   const TString& newer) {
        return m_changes.emplace_back(Change{part, m_olderSpace.name, parameter.id, parameter.name, older, newer});
    }

    // By identifier; by name when neither vocabulary knows the other's identifier.
    const ParameterDeclaration* FindCounterpart(const ParameterDeclaration& parameter) const {
        if (const ParameterDeclaration* same = m_newerSpace.FindId(parameter.id)) {
            return same;
        }
        const ParameterDeclaration* namesake = m_newerSpace.FindName(parameter.name);
        return namesake != nullptr && m_olderSpace.FindId(namesake->id) == nullptr ? namesake : nullptr;
    }

    void CompareRange() {
        if (RangeText(m_olderSpace) != RangeText(m_newerSpace)) {
            m_changes.emplace_back(
                Change{ChangedPart::Range, m_olderSpace.name, 0, {}, RangeText(m_olderSpace), RangeText(m_newerSpace)});
        }
    }

    // Names that led to a parameter of the old fallbacks and now lead nowhere, or elsewhere.
    void CompareFallback() {
        if (m_olderSpace.fallback == m_newerSpace.fallback) {
            return;
        }
        Change change{ChangedPart::Fallback, m_olderSpace.name, 0, {}, m_olderSpace.fallback, m_newerSpace.fallback};
        for (const bool shortNames : {false, true}) {
            OldTexts& texts = shortNames ? change.shortTexts : change.verboseTexts;
            for (const ParameterDeclaration* parameter : m_older.GetReachable(m_olderSpace, shortNames)) {
                if (m_olderSpace.FindId(parameter->id) != parameter) {
                    texts = Worse(texts, Outcome(*parameter, parameter->id, shortNames));
                }
            }
        }
        m_changes.push_back(std::move(change));
    }

    void CompareParameter(const ParameterDeclaration& older, const ParameterDeclaration& newer) {
        const auto compare = [&](ChangedPart part, const TString& before, const TString& after) {
            return before == after ? nullptr : &Report(part, older, before, after);
        };
        compare(ChangedPart::Id, TString::number(older.id), TString::number(newer.id));
        if (Change* change = compare(ChangedPart::VerboseName, older.name, newer.name)) {
            change->verboseTexts = Outcome(older, newer.id, false);
        }
        if (Change* change = compare(ChangedPart::ShortName, older.shortName, newer.shortName)) {
            change->shortTexts = Outcome(older, newer.id, true);
        }
        const OldTexts asNewer = ReadAs(older, newer);
        const auto compareValue = [&](ChangedPart part, const TString& before, const TString& after) {
            if (Change* change = compare(part, before, after)) {
                change->verboseTexts = change->shortTexts = asNewer;
            }
        };
        compareValue(ChangedPart::Kind, ToText(older.kind), ToText(newer.kind));
        if (older.HasType() && newer.HasType()) {
            compareValue(ChangedPart::Type, TypeText(older), TypeText(newer));
        }
        if (!older.HasType() && !newer.HasType()) {
            compareValue(ChangedPart::Form, FormText(older), FormText(newer));
            compare(ChangedPart::Members, MembersText(older), MembersText(newer));
        }
        compare(ChangedPart::Unserializable, older.unserializable ? u"yes" : u"no",
                newer.unserializable ? u"yes" : u"no");
        if (IsCovered(m_older, m_olderSpace, older.id) && !IsCovered(m_newer, m_newerSpace, newer.id)) {
            Change& change =
                Report(ChangedPart::Covered, older, m_olderSpace.name, m_newer.FindCovering(newer.id)->name);
            change.verboseTexts = change.shortTexts = OldTexts::Fail;
        }
    }

    // A new parameter may take a name that led to a fallback.
    void ReportAdded(const ParameterDeclaration& parameter) {
        Change& change = Report(ChangedPart::Added, parameter, {}, {});
        for (const bool shortNames : {false, true}) {
            const TString& name = NameOf(parameter, shortNames);
            const ParameterDeclaration* shadowed =
                name.empty() ? nullptr : Resolve(m_older, m_olderSpace, name, shortNames);
            if (shadowed != nullptr && m_olderSpace.FindId(shadowed->id) != shadowed) {
                OldTexts& texts = shortNames ? change.shortTexts : change.verboseTexts;
                texts = Worse(OldTexts::Differ, ReadAs(*shadowed, parameter));
            }
        }
    }

    static constexpr int kNoId = 0;

    // What becomes of an old parameter's texts under its old name, when newerId is where they belong now.
    OldTexts Outcome(const ParameterDeclaration& older, int newerId, bool shortNames) const {
        const TString& name = NameOf(older, shortNames);
        if (name.empty()) {
            return OldTexts::Read;  // there are no such texts
        }
        const ParameterDeclaration* newer = Resolve(m_newer, m_newerSpace, name, shortNames);
        if (newer == nullptr) {
            return OldTexts::Fail;
        }
        const OldTexts read = ReadAs(older, *newer);
        return newer->id == newerId ? read : Worse(OldTexts::Differ, read);
    }

    const Vocabulary& m_older;
    const NamespaceDeclaration& m_olderSpace;
    const Vocabulary& m_newer;
    const NamespaceDeclaration& m_newerSpace;
    std::vector<Change>& m_changes;
};

const NamespaceDeclaration* FindDeclared(const Vocabulary& vocabulary, const TString& name) {
    const auto& all = vocabulary.GetNamespaces();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const NamespaceDeclaration& nameSpace) { return nameSpace.name == name; });
    return found == all.end() ? nullptr : &*found;
}

// As a set: neither order nor repetition counts.
TString IdListText(const std::vector<int>& ids) {
    TString text;
    for (const int id : std::set<int>(ids.begin(), ids.end())) {
        text += (text.empty() ? TString() : TString(u", ")) + TString::number(id);
    }
    return text;
}

}  // namespace

std::u16string_view ToText(ChangedPart part) {
    constexpr std::u16string_view kTexts[] = {
        u"namespace added", u"namespace removed", u"range",      u"fallback", u"added", u"removed",
        u"identifier",      u"verbose name",      u"short name", u"kind",     u"type",  u"form",
        u"members",         u"unserializable",    u"covered by",
    };
    return kTexts[static_cast<std::size_t>(part)];
}

std::vector<Change> Compare(const Vocabulary& older, const Vocabulary& newer) {
    std::vector<Change> changes;
    for (const NamespaceDeclaration& nameSpace : older.GetNamespaces()) {
        if (const NamespaceDeclaration* counterpart = FindDeclared(newer, nameSpace.name)) {
            NamespaceComparison(older, nameSpace, newer, *counterpart, changes).Run();
        } else {
            changes.emplace_back(
                Change{ChangedPart::NamespaceRemoved, nameSpace.name, 0, {}, {}, {}, OldTexts::Fail, OldTexts::Fail});
        }
    }
    for (const NamespaceDeclaration& nameSpace : newer.GetNamespaces()) {
        if (FindDeclared(older, nameSpace.name) == nullptr) {
            changes.emplace_back(Change{ChangedPart::NamespaceAdded, nameSpace.name, 0, {}, {}, {}});
        }
    }
    const TString olderIds = IdListText(older.GetUnserializable());
    const TString newerIds = IdListText(newer.GetUnserializable());
    if (olderIds != newerIds) {
        changes.emplace_back(Change{ChangedPart::Unserializable, {}, 0, {}, olderIds, newerIds});
    }
    return changes;
}

OldTexts Verdict(const std::vector<Change>& changes, bool shortNames) {
    OldTexts worst = OldTexts::Read;
    for (const Change& change : changes) {
        worst = Worse(worst, shortNames ? change.shortTexts : change.verboseTexts);
    }
    return worst;
}

}  // namespace qvpres
