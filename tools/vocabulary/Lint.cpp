#include "tools/vocabulary/Lint.h"

#include <algorithm>
#include <map>
#include <set>

#include <qvcore/CaseConversion.h>

#include "tools/vocabulary/NearestNames.h"

namespace qvpres {

namespace {

struct RuleRow {
    std::u16string_view name;
    Severity severity;
};

// By Rule.
constexpr RuleRow kRules[] = {
    {u"name-conversion", Severity::Error},      {u"name-not-escaped", Severity::Error},
    {u"duplicate-name", Severity::Error},       {u"camel-collision", Severity::Error},
    {u"shadowed-name", Severity::Warning},      {u"crossed-name", Severity::Warning},
    {u"missing-short-name", Severity::Warning}, {u"overlapping-range", Severity::Warning},
    {u"hidden-parameter", Severity::Error},     {u"lossy-type", Severity::Note},
};

// The writer leaves names in camel case as they are.
bool NeedsEscape(std::u16string_view name) {
    return std::any_of(name.begin(), name.end(),
                       [](char16_t unit) { return unit < 0x20 || unit == u'"' || unit == u'\\' || unit == 0x7F; });
}

// Why values of a type may not come back, or null.
const char16_t* LossOf(const ParameterDeclaration& parameter) {
    if (!parameter.HasType()) {
        return nullptr;
    }
    const std::u16string_view type = parameter.type->name;
    if (type == u"int64" || type == u"uint64") {
        return u"whole numbers below -2147483648 or above 4294967295 are cut to 32 bits on reading";
    }
    if (type == u"data-value" && parameter.kind == DeclaredKind::List) {
        return u"lists of typed values are written without their types and cannot be read back";
    }
    if (type == u"password") {
        return u"a password is written as asterisks and does not come back";
    }
    return nullptr;
}

class Linter {
public:
    explicit Linter(const Vocabulary& vocabulary) : m_vocabulary(vocabulary) {}

    std::vector<Finding> Run() {
        for (const NamespaceDeclaration& nameSpace : m_vocabulary.GetNamespaces()) {
            m_nameSpace = &nameSpace;
            LookAtRange();
            CollectNames();
            for (const ParameterDeclaration& parameter : nameSpace.parameters) {
                LookAtName(parameter);
                LookAtTwins(parameter);
                LookAtFallbacks(parameter);
                LookAtShortName(parameter);
                LookAtCoverage(parameter);
                if (const char16_t* loss = LossOf(parameter)) {
                    Report(Rule::LossyType, parameter, loss);
                }
            }
        }
        return std::move(m_findings);
    }

private:
    using NameTable = std::map<TString, const ParameterDeclaration*>;  // the first of each name

    void Report(Rule rule, const ParameterDeclaration& parameter, const TString& message) {
        m_findings.push_back({rule, kRules[static_cast<std::size_t>(rule)].severity, m_nameSpace->name, parameter.id,
                              parameter.name, message, parameter.location});
    }

    void CollectNames() {
        m_verbose.clear();
        m_short.clear();
        m_camel.clear();
        for (const ParameterDeclaration& parameter : m_nameSpace->parameters) {
            m_verbose.emplace(parameter.name, &parameter);
            m_camel.emplace(DashedToCamel(parameter.name), &parameter);
            if (!parameter.shortName.empty()) {
                m_short.emplace(parameter.shortName, &parameter);
            }
        }
    }

    // Each pair of namespaces once, at the later of the two.
    void LookAtRange() {
        const auto look = [this](const NamespaceDeclaration& other) {
            if (other.firstId <= m_nameSpace->lastId && m_nameSpace->firstId <= other.lastId) {
                const bool isFirst = m_nameSpace->name < other.name;
                m_findings.push_back({Rule::OverlappingRange,
                                      Severity::Warning,
                                      m_nameSpace->name,
                                      0,
                                      {},
                                      u"the range overlaps that of " + Quoted(other.name) + u"; " +
                                          Quoted(isFirst ? m_nameSpace->name : other.name) +
                                          u" covers what both have, since its name sorts first",
                                      m_nameSpace->location});
            }
        };
        look(GetCoreNamespace());
        for (const NamespaceDeclaration& other : m_vocabulary.GetNamespaces()) {
            if (&other == m_nameSpace) {
                return;
            }
            look(other);
        }
    }

    void LookAtName(const ParameterDeclaration& parameter) {
        const TString camel = DashedToCamel(parameter.name);
        const TString back = CamelToDashed(camel);
        if (back != parameter.name) {
            Report(Rule::NameConversion, parameter,
                   u"JSON spells the name as " + Quoted(camel) + u", which is read as " + Quoted(back));
        }
        if (NeedsEscape(parameter.name)) {
            Report(Rule::NameNotEscaped, parameter,
                   u"the name holds a character that would have to be escaped, and names in camel case are not");
        }
    }

    void LookAtTwins(const ParameterDeclaration& parameter) {
        const ParameterDeclaration* twin = m_verbose.at(parameter.name);
        if (twin != &parameter) {
            Report(Rule::DuplicateName, parameter,
                   u"identifier " + TString::number(twin->id) + u" has this name too; it leads to the later one");
        } else if (const auto* spelledAlike = m_camel.at(DashedToCamel(parameter.name)); spelledAlike != &parameter) {
            Report(Rule::CamelCollision, parameter,
                   u"JSON spells this name and " + Quoted(spelledAlike->name) + u" alike");
        }
        if (parameter.shortName.empty()) {
            return;
        }
        if (const auto* shortTwin = m_short.at(parameter.shortName); shortTwin != &parameter) {
            Report(Rule::DuplicateName, parameter,
                   u"the short name " + Quoted(parameter.shortName) + u" is that of " + Quoted(shortTwin->name) +
                       u" too; it leads to the later one");
        }
        const auto crossed = m_verbose.find(parameter.shortName);
        if (crossed != m_verbose.end() && crossed->second->name != parameter.name) {
            Report(
                Rule::CrossedName, parameter,
                u"the short name " + Quoted(parameter.shortName) +
                    u" is another parameter's verbose name: texts under the wrong sort of names are read as that one");
        }
    }

    void LookAtFallbacks(const ParameterDeclaration& parameter) {
        const auto chain = m_vocabulary.GetChain(*m_nameSpace);
        for (auto link = chain.begin() + 1; link < chain.end(); ++link) {
            const auto shadows = [&](const TString& name, const TString& other) {
                return !name.empty() && name == other;
            };
            for (const ParameterDeclaration& other : (*link)->parameters) {
                if (shadows(parameter.name, other.name) || shadows(parameter.shortName, other.shortName)) {
                    Report(Rule::ShadowedName, parameter,
                           Quoted(other.name) + u" of the fallback " + Quoted((*link)->name) +
                               u" has the same name: texts of this namespace never lead there");
                }
            }
        }
    }

    void LookAtShortName(const ParameterDeclaration& parameter) {
        if (parameter.shortName.empty() && !parameter.unserializable) {
            Report(Rule::MissingShortName, parameter,
                   u"there is no short name, so that it cannot be written under short names");
        }
    }

    void LookAtCoverage(const ParameterDeclaration& parameter) {
        const NamespaceDeclaration* covering = m_vocabulary.FindCovering(parameter.id);
        if (covering->name != m_nameSpace->name) {
            Report(
                Rule::HiddenParameter, parameter,
                u"the namespace " + Quoted(covering->name) + u" covers the identifier, so that it is not found here");
        }
    }

    const Vocabulary& m_vocabulary;
    const NamespaceDeclaration* m_nameSpace = nullptr;  // the one that is looked at, and its names
    NameTable m_verbose;
    NameTable m_short;
    NameTable m_camel;
    std::vector<Finding> m_findings;
};

}  // namespace

std::u16string_view ToText(Rule rule) { return kRules[static_cast<std::size_t>(rule)].name; }

std::u16string_view ToText(Severity severity) {
    constexpr std::u16string_view kTexts[] = {u"error", u"warning", u"note"};
    return kTexts[static_cast<std::size_t>(severity)];
}

std::vector<Finding> Lint(const Vocabulary& vocabulary) { return Linter(vocabulary).Run(); }

}  // namespace qvpres
