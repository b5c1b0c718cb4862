#include "tools/qvpres/check/ErrorSearch.h"

#include <exception>

#include "tools/qvpres/check/Suggestions.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

using Node = ParameterText::Node;

constexpr std::size_t kLongestValue = 40;  // characters of a value that a message shows

class ErrorSearch {
public:
    ErrorSearch(const ParameterText& text, std::size_t most)
        : m_text(text), m_most(most), m_session(text.Names() == NameForm::Short), m_reader(text.Namespace()) {}

    std::vector<CheckFinding> Find() {
        if (m_text.KindOf(0) != JSONKind::Object) {
            CheckFinding finding = At(0);
            finding.code = "root";
            SetKinds(finding, "object", KindName(m_text.KindOf(0)));
            return {finding};
        }
        const std::exception_ptr failure = Read(m_text.Text());
        if (failure && !SearchInside(0)) {
            ReportWhole(failure);
        }
        return std::move(m_findings);
    }

private:
    // What reading a text throws.
    std::exception_ptr Read(std::u16string_view json) const {
        try {
            m_reader.ToParameters(json);
            return nullptr;
        } catch (...) {
            return std::current_exception();
        }
    }

    std::u16string_view Slice(std::size_t begin, std::size_t behind) const {
        return m_text.Text().substr(begin, behind - begin);
    }

    // The name token of the parameter that an element or entry is in.
    std::u16string_view OuterName(Node node) const {
        const TextNode& outer = m_text[m_text[node].parent];
        const JSONNode& token = m_text.Document()[outer.nameToken];
        return Slice(outer.begin, token.end + 1u);
    }

    std::exception_ptr ReadAlone(Node node) const {
        const TextNode& it = m_text[node];
        TString json = u"{";
        if (it.role == Role::Element || it.role == Role::Entry) {
            json += OuterName(node);
            json += it.role == Role::Element ? u":[" : u":{";
        }
        json += Slice(it.begin, it.behind);
        if (it.role == Role::Element || it.role == Role::Entry) {
            json += it.role == Role::Element ? u"]" : u"}";
        }
        json += u"}";
        return Read(json);
    }

    // False when every piece inside reads alone.
    bool SearchInside(Node node) {
        bool found = false;
        for (const Node child : m_text.Children(node)) {
            if (m_findings.size() >= m_most) {
                return true;
            }
            if (m_text[child].overridden) {
                continue;
            }
            const std::exception_ptr failure = ReadAlone(child);
            if (failure) {
                found = true;
                if (!SearchInside(child) && !SearchElements(child)) {
                    Report(child, failure);
                }
            }
        }
        return found;
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
        const TString before = u"{" + TString(Slice(list.begin, document[list.nameToken].end + 1u)) + u":[";
        const auto behind = document.Next(list.value);
        for (auto element = list.value + 1; element != behind; element = document.Next(element), ++position) {
            if (m_findings.size() >= m_most) {
                return true;
            }
            if (const auto failure = Read(before + ElementText(element) + u"]}")) {
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
        return type.empty() || type == kindName ? kindName : kindName + " (" + type + ")";
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
    ToolSession m_session;
    JSONSerializer m_reader;
    std::vector<CheckFinding> m_findings;
};

}  // namespace

std::vector<CheckFinding> FindErrors(const ParameterText& text, std::size_t most) {
    return ErrorSearch(text, most).Find();
}

}  // namespace qvpres
