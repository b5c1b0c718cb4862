#include "tools/qvpres/check/ErrorSearch.h"

#include <exception>
#include <map>
#include <utility>

#include "tools/qvpres/check/Suggestions.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;

constexpr std::size_t kLongestValue = 40;  // characters of a value that a message shows

// Keeps what the reader tells of one reading.
class Notes final : public IReadingDiagnostics {
public:
    void Report(Leniency leniency, int, const TextLocation& location) override {
        m_notes.push_back({leniency, location.offset});
    }

    std::vector<ReadingNote> Take() { return std::move(m_notes); }

private:
    std::vector<ReadingNote> m_notes;
};

// A text of its own for a part of the text, and where that part lies in both.
struct Piece {
    TString json;
    std::size_t prefix = 0;  // units before the part
    std::size_t begin = 0;   // of the part in the whole text
    std::size_t size = 0;
};

class ErrorSearch {
public:
    ErrorSearch(const ParameterText& text, std::size_t most, bool withNotes)
        : m_text(text),
          m_most(most),
          m_withNotes(withNotes),
          m_session(text.Names() == NameForm::Short),
          m_reader(text.Namespace()) {}

    ReadingOutcome Find() {
        if (m_text.KindOf(0) != JSONKind::Object) {
            CheckFinding finding = At(0);
            finding.code = "root";
            SetKinds(finding, "object", KindName(m_text.KindOf(0)));
            return {{finding}, {}};
        }
        const std::exception_ptr failure = Read({m_text.Text(), 0, 0, m_text.Text().size()});
        if (failure && !SearchInside(0)) {
            ReportWhole(failure);
        }
        return {std::move(m_findings), std::move(m_notes)};
    }

private:
    // What reading a piece throws; when it throws nothing, what is told of the part counts.
    std::exception_ptr Read(const Piece& piece) {
        Notes notes;
        m_reader.SetDiagnostics(m_withNotes ? &notes : nullptr);
        try {
            m_reader.ToParameters(piece.json);
        } catch (...) {
            return std::current_exception();
        }
        for (const ReadingNote& note : notes.Take()) {
            if (note.offset >= piece.prefix && note.offset < piece.prefix + piece.size) {
                m_notes.push_back({note.leniency, note.offset - piece.prefix + piece.begin});
            }
        }
        return nullptr;
    }

    std::u16string_view Slice(std::size_t begin, std::size_t behind) const {
        return m_text.Text().substr(begin, behind - begin);
    }

    // The name token of a parameter, and that of the one which an element or entry is in.
    std::u16string_view NameOf(const TextNode& parameter) const {
        return Slice(parameter.begin, m_text.Document()[parameter.nameToken].end + 1u);
    }

    Piece PieceOf(Node node) const {
        const TextNode& it = m_text[node];
        Piece piece{u"{", 0, it.begin, it.behind - it.begin};
        const bool isElement = it.role == Role::Element;
        const bool isEntry = it.role == Role::Entry;
        if (isElement || isEntry) {
            piece.json += NameOf(m_text[it.parent]);
            piece.json += isElement ? u":[" : u":{";
        }
        piece.prefix = piece.json.size();
        piece.json += Slice(it.begin, it.behind);
        piece.json += isElement ? u"]}" : isEntry ? u"}}" : u"}";
        return piece;
    }

    // False when every piece inside reads alone.
    bool SearchInside(Node node) {
        NoteSpellings(node);
        bool found = false;
        for (const Node child : m_text.Children(node)) {
            if (m_findings.size() >= m_most) {
                return true;
            }
            if (m_text[child].overridden) {
                NoteOverridden(child);
                continue;
            }
            const std::exception_ptr failure = Read(PieceOf(child));
            if (failure) {
                found = true;
                if (!SearchInside(child) && !SearchElements(child)) {
                    Report(child, failure);
                }
            }
        }
        return found;
    }

    // The reader tells it of objects that it reads as a whole; this one is read in pieces.
    void NoteOverridden(Node member) {
        if (m_withNotes) {
            m_notes.push_back({Leniency::DuplicateMember, m_text[member].begin});
        }
    }

    // Likewise of two spellings of one name; the greater one is read.
    void NoteSpellings(Node object) {
        std::map<int, Node> read;  // by identifier
        for (const Node child : m_text.Children(object)) {
            const TextNode& it = m_text[child];
            if (!m_withNotes || it.role != Role::Parameter || it.overridden || m_text.KindOf(child) == JSONKind::Null) {
                continue;
            }
            const auto [other, isFirst] = read.try_emplace(it.info->id, child);
            if (!isFirst) {
                const Node passedOver =
                    it.name > m_text[other->second].name ? std::exchange(other->second, child) : child;
                m_notes.push_back({Leniency::DuplicateMember, m_text[passedOver].begin});
            }
        }
    }

    // The elements of a list, which are no nodes.
    bool SearchElements(Node node) {
        const TextNode& list = m_text[node];
        const JSONDocument& document = m_text.Document();
        if (list.role != Role::Parameter || list.info->kind != PTC_List || m_text.KindOf(node) != JSONKind::Array) {
            return false;
        }
        bool found = false;
        std::size_t position = 0;
        const TString before = u"{" + TString(NameOf(list)) + u":[";
        const auto behind = document.Next(list.value);
        for (auto element = list.value + 1; element != behind; element = document.Next(element), ++position) {
            if (m_findings.size() >= m_most) {
                return true;
            }
            const Piece piece{before + ElementText(element) + u"]}", before.size(), OffsetOf(element), 1};
            if (const auto failure = Read(piece)) {
                found = true;
                ReportElement(node, element, position, failure);
            }
        }
        return found;
    }

    TString ElementText(JSONDocument::Index element) const {
        const JSONDocument& document = m_text.Document();
        const JSONNode& token = document[element];
        if (token.kind == JSONKind::String) {
            return Slice(token.begin - 1u, token.end + 1u);
        }
        if (token.kind == JSONKind::Object) {
            return u"{}";  // counts as the empty text, whatever it holds
        }
        if (token.kind != JSONKind::Array) {
            return Slice(token.begin, token.end);
        }
        TString run = u"[";
        for (auto item = element + 1; item != document.Next(element); item = document.Next(item)) {
            run += run.size() > 1 ? u"," : u"";
            run += document[item].kind == JSONKind::Array ? TString(u"[]") : ElementText(item);
        }
        return run + u"]";
    }

    CheckFinding At(Node node) const {
        CheckFinding finding;
        finding.path = m_text.Path(node);
        finding.offset = OffsetOf(m_text[node].value);
        return finding;
    }

    std::size_t OffsetOf(JSONDocument::Index value) const {
        const JSONNode& token = m_text.Document()[value];
        return token.kind == JSONKind::String ? token.begin - 1u : token.begin;
    }

    void Report(Node node, const std::exception_ptr& failure) {
        CheckFinding finding = At(node);
        if (m_text[node].role == Role::Unknown) {
            finding.offset = m_text[node].begin;
            DescribeUnknown(finding, m_text[node].name);
        } else {
            const bool isElement = m_text[node].role == Role::Element || m_text[node].role == Role::Entry;
            Describe(finding, failure, m_text[node], m_text[node].value, isElement);
        }
        m_findings.push_back(std::move(finding));
    }

    // Each piece reads, and only the text as a whole fails, at the place that the exception tells.
    void ReportWhole(const std::exception_ptr& failure) {
        CheckFinding finding = At(0);
        finding.code = "value";
        try {
            std::rethrow_exception(failure);
        } catch (const std::exception& other) {
            finding.message = other.what();
            const auto* located = dynamic_cast<const TextLocated*>(&other);
            if (located != nullptr && located->GetLocation().IsKnown()) {
                finding.offset = located->GetLocation().offset;
                finding.path = located->GetLocation().path.ToUtf8();
            }
        }
        m_findings.push_back(std::move(finding));
    }

    void ReportElement(Node node, JSONDocument::Index element, std::size_t position,
                       const std::exception_ptr& failure) {
        CheckFinding finding = At(node);
        finding.path += "/" + std::to_string(position);
        finding.offset = OffsetOf(element);
        Describe(finding, failure, m_text[node], element, true);
        m_findings.push_back(std::move(finding));
    }

    void DescribeUnknown(CheckFinding& finding, std::u16string_view name) const {
        finding.code = "unknown-name";
        finding.message = "unknown name " + Quoted(ToUtf8(name));
        finding.nearest = SuggestNames(name, m_text);
    }

    static void SetKinds(CheckFinding& finding, std::string_view expected, std::string_view found) {
        finding.expected = expected;
        finding.found = found;
        finding.message = "expected " + finding.expected + ", found " + finding.found;
    }

    // What an exception says of the value at a place: of a parameter, or of an element or entry of one.
    void Describe(CheckFinding& finding, const std::exception_ptr& failure, const TextNode& owner,
                  JSONDocument::Index value, bool isElement) const {
        const JSONKind kind = m_text.Document()[value].kind;
        try {
            std::rethrow_exception(failure);
        } catch (const JSONParseException& mismatch) {
            finding.code = "kind";
            SetKinds(finding, ExpectedName(owner, mismatch.GetExpectedKind()), KindName(mismatch.GetFoundKind()));
        } catch (const QuorvelException& other) {
            finding.code = "value";
            finding.expected = ElementTypeName(owner);
            finding.found = KindName(kind);
            finding.message = JSONDocument::IsContainer(kind) || finding.expected.empty()
                                  ? other.what()
                                  : Value(value) + " is no " + finding.expected;
        } catch (const std::exception& other) {
            finding.code = isElement && IsStructured(owner) ? "kind" : "value";
            finding.message = other.what();
            if (finding.code == "kind" && kind != JSONKind::Object) {
                SetKinds(finding, owner.declaration != nullptr && owner.declaration->listForm ? "array" : "object",
                         KindName(kind));
            }
        }
    }

    static bool IsStructured(const TextNode& owner) {
        return owner.info != nullptr && (owner.info->kind == PTC_StructureList || owner.info->kind == PTC_StructureMap);
    }

    static std::string ExpectedName(const TextNode& owner, ParameterTypeCategory kind) {
        const std::string kindName(KindName(kind));
        const std::string type = owner.declaration == nullptr ? "" : TypeName(*owner.declaration);
        if (type.starts_with(kindName)) {
            return type;
        }
        return type.empty() ? kindName : kindName + " (" + type + ")";
    }

    static std::string ElementTypeName(const TextNode& owner) {
        if (owner.declaration == nullptr || owner.declaration->type == nullptr) {
            return "";
        }
        return ToUtf8(owner.declaration->type->name);
    }

    std::string Value(JSONDocument::Index value) const {
        const JSONNode& token = m_text.Document()[value];
        const std::string text = Shortened(ToUtf8(m_text.Document().Text(value)), kLongestValue);
        return token.kind == JSONKind::String ? Quoted(text) : text;
    }

    const ParameterText& m_text;
    std::size_t m_most;
    bool m_withNotes;
    ToolSession m_session;
    JSONSerializer m_reader;
    std::vector<CheckFinding> m_findings;
    std::vector<ReadingNote> m_notes;
};

}  // namespace

ReadingOutcome ReadInPieces(const ParameterText& text, std::size_t mostErrors, bool withNotes) {
    return ErrorSearch(text, mostErrors, withNotes).Find();
}

}  // namespace qvpres
