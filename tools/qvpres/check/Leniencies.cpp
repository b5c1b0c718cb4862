#include "tools/qvpres/check/Leniencies.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include <utf8.h>

#include <qvcore/PasswordString.h>
#include <qvcore/TextNumbers.h>

#include "main/json/JSONNumbers.h"

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;

// What is lenient about one value: a code and a sentence.
struct Leniency {
    std::string code;
    std::string message;
};

// What reading makes of single values.
class ValueRules {
public:
    ValueRules(const JSONDocument& document, const TextNode& owner)
        : m_document(document),
          m_type(owner.declaration == nullptr ? nullptr : owner.declaration->type),
          m_kind(owner.info->serializer ? owner.info->serializer->GetType() : PTC_None) {}

    std::optional<Leniency> Look(JSONDocument::Index value, bool isElement) const {
        const JSONKind kind = m_document[value].kind;
        switch (kind) {
            case JSONKind::Null:
            case JSONKind::Object:
            case JSONKind::Array:
                if (isElement) {
                    return Leniency{"empty-text", std::string(KindName(kind)) + " counts as the empty text"};
                }
                return std::nullopt;
            case JSONKind::Integer:
            case JSONKind::Real:
                return LookAtNumber(value);
            case JSONKind::Bool:
                return m_kind == PTC_Text ? Other("bool", "text") : std::nullopt;
            default:
                return LookAtText(m_document.Text(value));
        }
    }

private:
    static std::optional<Leniency> Other(std::string_view found, std::string_view expected) {
        return Leniency{"other-kind",
                        "a " + std::string(found) + " stands where a " + std::string(expected) + " is expected"};
    }

    std::optional<Leniency> LookAtNumber(JSONDocument::Index value) const {
        const std::u16string_view digits = m_document.Text(value);
        if (m_document[value].kind == JSONKind::Integer) {
            const TString read = TString::number(TravellingInteger(digits));
            if (read != digits && digits != u"-0") {
                return Leniency{"wraps", ToUtf8(digits) + " is read as " + read.ToUtf8() +
                                             ": integers keep their low 32 bits; quoted they stay whole"};
            }
        } else if (const auto rounded = LookAtDigits(digits)) {
            return rounded;
        }
        return m_kind == PTC_Text ? Other("number", "text") : std::nullopt;
    }

    // Reals travel as texts of at most 14 digits behind the point.
    static std::optional<Leniency> LookAtDigits(std::u16string_view digits) {
        double written = 0;
        double read = 0;
        ParseDouble(digits, written);
        const TString travelling = ParameterTypeTraits<double>::ToText(written);
        ParseDouble(travelling, read);
        if (written == read) {
            return std::nullopt;
        }
        return Leniency{"rounded", ToUtf8(digits) + " is read as " + travelling.ToUtf8() +
                                       ": reals keep 14 digits behind the point"};
    }

    std::optional<Leniency> LookAtText(std::u16string_view text) const {
        if (m_kind == PTC_Number || m_kind == PTC_Bool) {
            return Other("string", KindName(m_kind));
        }
        if (m_type == nullptr) {
            return std::nullopt;
        }
        if (m_type->form == TextForm::Enumeration &&
            std::find(m_type->names.begin(), m_type->names.end(), text) == m_type->names.end()) {
            return Leniency{"unknown-value", Quoted(ToUtf8(text)) + " is no " + ToUtf8(m_type->name) +
                                                 " and is read as its default, " + Quoted(ToUtf8(m_type->defaultName))};
        }
        if (m_type->form == TextForm::Password && text == PasswordString::s_Mask.view()) {
            return Leniency{"mask", "the mask of a password is read as a password of eight asterisks"};
        }
        return std::nullopt;
    }

    const JSONDocument& m_document;
    const ValueType* m_type;
    ParameterTypeCategory m_kind;
};

class LeniencySearch {
public:
    LeniencySearch(const ParameterText& text, std::vector<CheckFinding>& findings)
        : m_text(text), m_findings(findings) {}

    void Search() {
        const auto& nodes = m_text.Nodes();
        if (m_text.KindOf(0) == JSONKind::Object) {
            LookAtTwins(0);
        }
        for (Node node = 1; node < nodes.size();) {
            LookAt(node);
            // What is not read has no leniencies.
            node = nodes[node].overridden || m_text.KindOf(node) == JSONKind::Null ? nodes[node].end : node + 1;
        }
        LookAround();
    }

private:
    void Add(std::size_t offset, std::string path, Leniency leniency) {
        CheckFinding finding;
        finding.isError = false;
        finding.offset = offset;
        finding.path = std::move(path);
        finding.code = std::move(leniency.code);
        finding.message = std::move(leniency.message);
        m_findings.push_back(std::move(finding));
    }

    void AddAt(Node node, const char* code, const std::string& message) {
        Add(m_text[node].begin, m_text.Path(node), {code, message});
    }

    void LookAt(Node node) {
        const TextNode& it = m_text[node];
        if (it.overridden) {
            AddAt(node, "duplicate", "the name comes again in the same object; only the last one is read");
            return;
        }
        if (it.role == Role::Parameter) {
            LookAtParameter(node);
        }
        if (it.role == Role::Entry && it.info->kind == PTC_Map) {
            LookAtValue(node, true);
        }
        if (it.end > node + 1u) {
            LookAtTwins(node);
        }
    }

    void LookAtParameter(Node node) {
        const TextNode& it = m_text[node];
        const JSONKind kind = m_text.KindOf(node);
        if (kind == JSONKind::Null) {
            AddAt(node, "null", "null is passed over, as if the member were not there");
            return;
        }
        if (m_text.GetLoaded().GetRegistry().IsUnserializable(it.info->id)) {
            AddAt(node, "never-written", "the parameter is read, but marked as one that is never written");
        }
        LookAtMembership(node);
        if (it.info->kind == PTC_Structure && kind == JSONKind::Array && it.info->structureSerializer &&
            !it.info->structureSerializer->IsListForm()) {
            AddAt(node, "passed-over", "an array stands where an object is expected and is passed over");
        } else if (it.info->kind == PTC_List && kind == JSONKind::Array) {
            LookAtElements(node);
        } else if (it.info->serializer && !JSONDocument::IsContainer(kind)) {
            LookAtValue(node, false);
        }
    }

    // Declarations may say what a structure holds; reading does not ask.
    void LookAtMembership(Node node) {
        const TextNode& outer = m_text[m_text[node].parent];
        if (outer.declaration == nullptr || !outer.declaration->members) {
            return;
        }
        const auto& members = *outer.declaration->members;
        if (std::find(members.begin(), members.end(), m_text[node].info->verboseName) == members.end()) {
            AddAt(node, "undeclared-member",
                  outer.declaration->name.ToUtf8() + " is not declared to hold " +
                      m_text[node].info->verboseName.ToUtf8());
        }
    }

    void LookAtValue(Node node, bool isEntry) {
        const TextNode& it = m_text[node];
        if (auto leniency = ValueRules(m_text.Document(), it).Look(it.value, isEntry)) {
            Add(ValueOffset(it.value), m_text.Path(node), std::move(*leniency));
        }
    }

    // One finding for each sort, at the first element that it concerns.
    void LookAtElements(Node node) {
        struct Sort {
            std::size_t offset;
            std::string path;
            Leniency first;
            std::size_t count;
        };
        const JSONDocument& document = m_text.Document();
        const TextNode& list = m_text[node];
        const ValueRules rules(document, list);
        std::map<std::string, Sort> sorts;
        std::size_t position = 0;
        const auto behind = document.Next(list.value);
        for (auto element = list.value + 1; element != behind; element = document.Next(element), ++position) {
            auto leniency = document[element].kind == JSONKind::Array ? LookAtRun(rules, element, behind)
                                                                      : rules.Look(element, true);
            if (leniency) {
                const std::string path = m_text.Path(node) + "/" + std::to_string(position);
                const auto [sort, added] =
                    sorts.try_emplace(leniency->code, Sort{ValueOffset(element), path, *leniency, 0});
                ++sort->second.count;
            }
        }
        for (auto& [code, sort] : sorts) {
            if (sort.count > 1) {
                sort.first.message += " (the first of " + Grouped(sort.count) + " such elements)";
            }
            Add(sort.offset, sort.path, sort.first);
        }
    }

    std::optional<Leniency> LookAtRun(const ValueRules& rules, JSONDocument::Index run,
                                      JSONDocument::Index listEnd) const {
        const JSONDocument& document = m_text.Document();
        std::size_t items = 0;
        std::optional<Leniency> inside;
        for (auto item = run + 1; item != document.Next(run); item = document.Next(item), ++items) {
            const JSONKind kind = document[item].kind;
            if (!inside && (kind == JSONKind::Integer || kind == JSONKind::Real)) {
                inside = rules.Look(item, true);
            }
        }
        const bool isMark = items == 0 && document.Next(run) == listEnd;  // says that the list is packed
        if (items != 2 && items != 3 && !isMark) {
            return Leniency{"run-skipped", "a nested array of " + Counted(items, "item") +
                                               " is no run and is passed over; runs have two or three"};
        }
        return inside && inside->code != "other-kind" ? inside : std::nullopt;
    }

    // Two spellings of one name, such as mark-sizes and markSizes.
    void LookAtTwins(Node object) {
        std::map<int, std::pair<std::u16string_view, Node>> byId;
        for (const Node child : m_text.Children(object)) {
            const TextNode& it = m_text[child];
            if (it.role != Role::Parameter || it.overridden) {
                continue;
            }
            const auto [twin, added] = byId.try_emplace(it.info->id, it.name, child);
            if (!added) {
                const bool thisOneIsRead = it.name > twin->second.first;
                AddAt(thisOneIsRead ? twin->second.second : child, "duplicate",
                      "another spelling of the name stands in the same object; of " + Quoted(ToUtf8(it.name)) +
                          " and " + Quoted(ToUtf8(twin->second.first)) + ", " +
                          Quoted(ToUtf8(thisOneIsRead ? it.name : twin->second.first)) + " is read");
                if (thisOneIsRead) {
                    twin->second = {it.name, child};
                }
            }
        }
    }

    // Comments, and what follows the value.
    void LookAround() {
        const std::u16string_view text = m_text.Text();
        const std::size_t behind = m_text[0].behind;
        for (std::size_t at = 0; at < behind;) {
            if (text[at] == u'"') {
                for (++at; text[at] != u'"'; ++at) {
                    at += text[at] == u'\\' ? 1 : 0;
                }
            } else if (text[at] == u'/') {
                Add(at, "", {"comment", "comments are no JSON; other readers may refuse the text"});
                at = text[at + 1] == u'/' ? text.find(u'\n', at) : text.find(u"*/", at + 2) + 1;
                if (at == std::u16string_view::npos) {
                    return;
                }
            }
            ++at;
        }
        const std::size_t rest = text.find_first_not_of(u" \t\r\n", behind);
        if (rest != std::u16string_view::npos) {
            Add(rest, "", {"text-after-value", "what follows the value is not looked at"});
        }
    }

    std::size_t ValueOffset(JSONDocument::Index value) const {
        const JSONNode& token = m_text.Document()[value];
        return token.kind == JSONKind::String ? token.begin - 1u : token.begin;
    }

    const ParameterText& m_text;
    std::vector<CheckFinding>& m_findings;
};

}  // namespace

void FindLeniencies(const ParameterText& text, std::vector<CheckFinding>& findings) {
    LeniencySearch(text, findings).Search();
}

void FindInvalidUtf8(std::string_view bytes, std::vector<CheckFinding>& findings) {
    const auto invalid = utf8::find_invalid(bytes.begin(), bytes.end());
    if (invalid == bytes.end()) {
        return;
    }
    const auto at = static_cast<std::size_t>(invalid - bytes.begin());
    CheckFinding finding;
    finding.isError = false;
    finding.code = "not-utf8";
    finding.offset = TString::FromUtf8(bytes.substr(0, at)).size();
    finding.message = "byte " + Grouped(at) + " is not UTF-8; what is not is read as U+FFFD";
    findings.push_back(std::move(finding));
}

}  // namespace qvpres
