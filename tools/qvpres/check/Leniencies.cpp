#include "tools/qvpres/check/Leniencies.h"

#include <algorithm>
#include <cstdint>
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

using Index = JSONDocument::Index;
using Node = ParameterText::Node;

// A leniency before it is told: where, and what.
struct Raw {
    std::size_t offset = 0;
    Node node = 0;
    bool inList = false;  // an element of the node's list, rather than the node itself
    std::string code;
    std::string message;
};

std::size_t OffsetOf(const JSONDocument& document, Index value) {
    const JSONNode& token = document[value];
    return token.kind == JSONKind::String ? token.begin - 1u : token.begin;
}

// The value, or name, that begins at a place: tokens stand in the order of the text.
Index TokenAt(const JSONDocument& document, std::size_t offset) {
    Index low = 0;
    Index high = document.Next(0);
    while (high - low > 1) {
        const Index middle = low + (high - low) / 2;
        (OffsetOf(document, middle) <= offset ? low : high) = middle;
    }
    return low;
}

std::string WrappedMessage(std::u16string_view digits) {
    return ToUtf8(digits) + " is read as " + TString::number(TravellingInteger(digits)).ToUtf8() +
           ": integers keep their low 32 bits; quoted they stay whole";
}

std::string RoundedMessage(std::u16string_view digits) {
    double value = 0;
    ParseDouble(digits, value);
    return ToUtf8(digits) + " is read as " + ParameterTypeTraits<double>::ToText(value).ToUtf8() +
           ": reals keep 14 digits behind the point";
}

const ValueType* TypeOf(const TextNode& node) { return node.declaration == nullptr ? nullptr : node.declaration->type; }

// The innermost node around a place.
Node NodeAt(const ParameterText& text, std::size_t offset) {
    Node node = 0;
    for (Node child = 1; child < text[node].end;) {
        if (text[child].begin <= offset && offset < text[child].behind) {
            node = child;
            child = node + 1;
        } else {
            child = text[child].end;
        }
    }
    return node;
}

// The unit of an escape, of its four digits.
char16_t UnitOf(std::u16string_view digits) {
    unsigned unit = 0;
    for (const char16_t digit : digits) {
        unit = unit * 16 + (digit <= u'9' ? digit - u'0' : (digit | 0x20) - u'a' + 10u);
    }
    return static_cast<char16_t>(unit);
}

// The reader's notes in words.
class NoteWords {
public:
    explicit NoteWords(const ParameterText& text) : m_text(text), m_document(text.Document()) {}

    // Nothing for what is found by looking at the text.
    std::optional<std::pair<std::string, std::string>> Describe(const ReadingNote& note, Node node) const {
        const Index value = TokenAt(m_document, note.offset);
        switch (note.leniency) {
            case Leniency::UnknownName:
                return {{"unknown-value", UnknownValue(m_text[node], m_document.Text(value))}};
            case Leniency::DuplicateMember:
                return {{"duplicate", "the name comes again in the same object; this one is not read"}};
            case Leniency::WrappedInteger:
                return {{"wraps", m_document[value].kind == JSONKind::String
                                      ? "hours and minutes keep the low 32 bits of their number"
                                      : WrappedMessage(m_document.Text(value))}};
            case Leniency::SkippedRun:
                return {{"run-skipped", SkippedRun(value)}};
            case Leniency::NullMember:
                return {{"null", "null is passed over, as if the member were not there"}};
            case Leniency::LostDigits:
                return {{"rounded", RoundedMessage(m_document.Text(value))}};
            case Leniency::IgnoredValue:
                return Ignored(m_text[node], m_document[value].kind);
            default:
                return std::nullopt;
        }
    }

private:
    // In place of the text of an element or entry, or of a structure.
    static std::pair<std::string, std::string> Ignored(const TextNode& node, JSONKind kind) {
        if (node.info != nullptr && (node.info->kind == PTC_List || node.info->kind == PTC_Map)) {
            return {"empty-text", std::string(KindName(kind)) + " counts as the empty text"};
        }
        return {"passed-over", "an array stands where an object is expected and is passed over"};
    }

    static std::string UnknownValue(const TextNode& node, std::u16string_view value) {
        const ValueType* type = TypeOf(node);
        if (type == nullptr || type->form != TextForm::Enumeration) {
            return Quoted(ToUtf8(value)) + " is no name of the enumeration, and is read as its default";
        }
        return Quoted(ToUtf8(value)) + " is no " + ToUtf8(type->name) + " and is read as its default, " +
               Quoted(ToUtf8(type->defaultName));
    }

    std::string SkippedRun(Index array) const {
        std::size_t items = 0;
        for (Index item = array + 1; item != m_document.Next(array); item = m_document.Next(item)) {
            ++items;
        }
        const std::string what = "a nested array of " + Counted(items, "item") + " is passed over: ";
        return what + (items == 2 || items == 3 ? "the list is none that is packed" : "runs have two or three");
    }

    const ParameterText& m_text;
    const JSONDocument& m_document;
};

// What the reader has no word for.
class Looking {
public:
    Looking(const ParameterText& text, std::vector<Raw>& raws)
        : m_text(text), m_document(text.Document()), m_raws(raws) {}

    void Look() {
        const auto& nodes = m_text.Nodes();
        for (Node node = 1; node < nodes.size();) {
            // What is not read has no leniencies.
            const bool isRead =
                !nodes[node].overridden && (m_text.KindOf(node) != JSONKind::Null || nodes[node].role == Role::Entry);
            if (isRead) {
                LookAt(node);
            }
            node = isRead ? node + 1 : nodes[node].end;
        }
        LookAround();
    }

private:
    void Add(std::size_t offset, Node node, bool inList, const char* code, std::string message) {
        m_raws.push_back({offset, node, inList, code, std::move(message)});
    }

    void LookAt(Node node) {
        const TextNode& it = m_text[node];
        if (it.role == Role::Parameter) {
            LookAtParameter(node);
        } else if (it.role == Role::Entry && it.info->kind == PTC_Map) {
            LookAtValue(node, it.value, false);
        }
    }

    void LookAtParameter(Node node) {
        const TextNode& it = m_text[node];
        if (m_text.GetLoaded().GetRegistry().IsUnserializable(it.info->id)) {
            Add(it.begin, node, false, "never-written",
                "the parameter is read, but marked as one that is never written");
        }
        LookAtMembership(node);
        if (it.info->kind == PTC_List && m_text.KindOf(node) == JSONKind::Array) {
            for (Index element = it.value + 1; element != m_document.Next(it.value);
                 element = m_document.Next(element)) {
                LookAtValue(node, element, true);
            }
        } else if (it.info->serializer) {
            LookAtValue(node, it.value, false);
        }
    }

    // Declarations may say what a structure holds; reading does not ask.
    void LookAtMembership(Node node) {
        const TextNode& outer = m_text[m_text[node].parent];
        if (outer.declaration == nullptr || !outer.declaration->members) {
            return;
        }
        const auto& members = *outer.declaration->members;
        const TString& name = m_text[node].info->verboseName;
        if (std::find(members.begin(), members.end(), name) == members.end()) {
            Add(m_text[node].begin, node, false, "undeclared-member",
                outer.declaration->name.ToUtf8() + " is not declared to hold " + name.ToUtf8());
        }
    }

    void LookAtValue(Node node, Index value, bool inList) {
        const TextNode& owner = m_text[node];
        const ParameterTypeCategory expected = owner.info->serializer ? owner.info->serializer->GetType() : PTC_None;
        const JSONKind kind = m_document[value].kind;
        const std::size_t offset = OffsetOf(m_document, value);
        if (kind == JSONKind::Null || JSONDocument::IsContainer(kind)) {
            return;
        }
        const bool isText = kind == JSONKind::String;
        if (isText != (expected == PTC_Text)) {
            const std::string_view found = isText ? "string" : kind == JSONKind::Bool ? "bool" : "number";
            Add(offset, node, inList, "other-kind",
                "a " + std::string(found) + " stands where a " + std::string(KindName(expected)) + " is expected");
        }
        const ValueType* type = TypeOf(owner);
        if (type != nullptr && type->form == TextForm::Password && isText &&
            m_document.Text(value) == PasswordString::s_Mask.view()) {
            Add(offset, node, inList, "mask", "the mask of a password is read as a password of eight asterisks");
        }
    }

    // Comments, and what follows the value.
    void LookAround() {
        const std::u16string_view text = m_text.Text();
        const std::size_t rest = m_document.FindTextAfterValue();
        for (std::size_t at = 0; at < rest; ++at) {
            if (text[at] == u'"') {
                at = LookAtString(at);
            } else if (text[at] == u'/') {
                Add(at, 0, false, "comment", "comments are no JSON; other readers may refuse the text");
                at = text[at + 1] == u'*' ? text.find(u"*/", at + 2) + 1 : std::min(text.find(u'\n', at), text.size());
            }
        }
        if (rest != text.size()) {
            Add(rest, 0, false, "text-after-value", "what follows the value is not looked at");
        }
    }

    // Finds in a string, or name, what comes through here and hardly elsewhere. Answers where it ends.
    std::size_t LookAtString(std::size_t begin) {
        const std::u16string_view text = m_text.Text();
        bool isOdd = false;
        bool waits = false;  // for the partner of a surrogate
        std::size_t at = begin + 1;
        while (text[at] != u'"') {
            const std::size_t units = text[at] != u'\\' ? 1 : text[at + 1] == u'u' ? 6 : 2;
            const char16_t unit = units == 6 ? UnitOf(text.substr(at + 2, 4)) : text[at];
            const bool isSecond = unit >= 0xDC00 && unit <= 0xDFFF;
            isOdd = isOdd || waits != isSecond || text[at] == u'\0';
            waits = unit >= 0xD800 && unit <= 0xDBFF;
            at += units;
        }
        if (isOdd || waits) {
            Add(begin, NodeAt(m_text, begin), false, "odd-character",
                "a surrogate without its partner, or U+0000 as it is, which other readers may refuse or replace");
        }
        return at;
    }

    const ParameterText& m_text;
    const JSONDocument& m_document;
    std::vector<Raw>& m_raws;
};

std::string PositionIn(const ParameterText& text, Node list, std::size_t offset) {
    const JSONDocument& document = text.Document();
    std::size_t position = 0;
    for (Index element = text[list].value + 1; OffsetOf(document, element) < offset; element = document.Next(element)) {
        ++position;
    }
    return "/" + std::to_string(position);
}

// One finding for each sort in a list, at the first element that it concerns; and for all others one each.
void AddFindings(const ParameterText& text, std::vector<Raw> raws, std::vector<CheckFinding>& findings) {
    std::stable_sort(raws.begin(), raws.end(),
                     [](const Raw& left, const Raw& right) { return left.offset < right.offset; });
    std::map<std::pair<Node, std::string>, std::pair<std::size_t, std::size_t>> sorts;  // finding, and how many
    for (Raw& raw : raws) {
        if (raw.inList) {
            const auto [sort, added] = sorts.try_emplace({raw.node, raw.code}, findings.size(), 0);
            if (++sort->second.second > 1) {
                continue;
            }
        }
        CheckFinding finding;
        finding.isError = false;
        finding.offset = raw.offset;
        finding.path = text.Path(raw.node) + (raw.inList ? PositionIn(text, raw.node, raw.offset) : "");
        finding.code = std::move(raw.code);
        finding.message = std::move(raw.message);
        findings.push_back(std::move(finding));
    }
    for (const auto& [key, sort] : sorts) {
        if (sort.second > 1) {
            findings[sort.first].message += " (the first of " + Grouped(sort.second) + " such elements)";
        }
    }
}

}  // namespace

void AddLeniencies(const ParameterText& text, const std::vector<ReadingNote>& notes,
                   std::vector<CheckFinding>& findings) {
    std::vector<Raw> raws;
    const NoteWords words(text);
    Node node = 0;
    for (const ReadingNote& note : notes) {
        // Notes of one list come one behind the other.
        if (node == 0 || note.offset < text[node].begin || note.offset >= text[node].behind ||
            text[node].end != node + 1u) {
            node = NodeAt(text, note.offset);
        }
        if (auto told = words.Describe(note, node)) {
            const TextNode& it = text[node];
            const bool inList = it.role == Role::Parameter && it.info->kind == PTC_List &&
                                text.KindOf(node) == JSONKind::Array &&
                                note.offset > OffsetOf(text.Document(), it.value);
            raws.push_back({note.offset, node, inList, std::move(told->first), std::move(told->second)});
        }
    }
    Looking(text, raws).Look();
    AddFindings(text, std::move(raws), findings);
}

void FindInvalidUtf8(std::string_view bytes, std::vector<CheckFinding>& findings) {
    const auto invalid = utf8::find_invalid(bytes.begin(), bytes.end());
    if (invalid == bytes.end()) {
        return;
    }
    const auto at = static_cast<std::size_t>(invalid - bytes.begin());
    CheckFinding finding;
    finding.isError = false;
    finding.offset = TString::FromUtf8(bytes.substr(0, at)).size();
    finding.code = "not-utf8";
    finding.message = "byte " + Grouped(at) + " is not UTF-8; what is not is read as U+FFFD";
    findings.push_back(std::move(finding));
}

}  // namespace qvpres
