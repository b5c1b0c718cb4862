// Walks as trees, so that two bags can be compared, and what becomes of a tree on its way through JSON: docs/json.md,
// "Numbers on the way in" and "What does not come back as it went", word for word.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/Bytes.h"
#include "fuzz/support/TextModels.h"
#include "support/RealTextModel.h"

namespace fuzz {

// One element of a walk, and what stands inside it.
struct Node {
    enum Kind { Value, List, Map, Composite, Null };
    Kind kind = Composite;
    TString name;  // empty for the root and for items of lists
    TString text;
    ParameterTypeCategory category = PTC_None;  // of the value, of the elements
    std::vector<Node> children;

    friend bool operator==(const Node&, const Node&) = default;
};

inline std::string Shown(const Node& node) {
    const std::string opening = Shown(node.name) + ":" + std::to_string(node.category);
    if (node.kind == Node::Value || node.kind == Node::Null) {
        return opening + (node.kind == Node::Null ? " null" : " " + Shown(node.text));
    }
    std::string inside;
    for (const Node& child : node.children) {
        inside += (inside.empty() ? "" : ", ") + Shown(child);
    }
    return opening +
           (node.kind == Node::List  ? " ["
            : node.kind == Node::Map ? " <"
                                     : " {") +
           inside +
           (node.kind == Node::List  ? "]"
            : node.kind == Node::Map ? ">"
                                     : "}");
}

// Notes a walk as a tree. Starts and ends must match, in number and in name.
class TreeVisitor final : public IStructuredParameterVisitor {
public:
    Node Take() {
        Require(m_open.size() == 1, "every start of a walk has an end");
        return std::move(m_open.back());
    }

    void Parameter(const TString& name, const TString& text, ParameterTypeCategory kind) override {
        Add({Node::Value, name, text, kind, {}});
    }
    void StartList(const TString& name, ParameterTypeCategory kind) override {
        m_open.push_back({Node::List, name, {}, kind, {}});
    }
    void ListItem(const TString& text) override { Add({Node::Value, {}, text, m_open.back().category, {}}); }
    void EndList(const TString& name) override { Close(Node::List, name); }
    void StartMap(const TString& name, ParameterTypeCategory kind) override {
        m_open.push_back({Node::Map, name, {}, kind, {}});
    }
    void MapItem(const TString& key, const TString& text, bool) override {
        Add({Node::Value, key, text, m_open.back().category, {}});
    }
    void EndMap(const TString& name) override { Close(Node::Map, name); }
    void StartComposite(const TString& name, bool) override {
        m_open.push_back({Node::Composite, name, {}, PTC_None, {}});
    }
    void EndComposite(const TString& name) override { Close(Node::Composite, name); }
    void NullMapItem(const TString& key, bool) override { Add({Node::Null, key, {}, PTC_None, {}}); }
    void StartCapture() override { Fail("a walk of plain values captures nothing"); }
    TString EndCapture() override { Fail("a walk of plain values captures nothing"); }
    void WriteCaptured(const TString&) override { Fail("a walk of plain values captures nothing"); }

private:
    void Add(Node node) { m_open.back().children.push_back(std::move(node)); }
    void Close(Node::Kind kind, const TString& name) {
        Require(m_open.size() > 1, "every end of a walk has a start");
        Require(m_open.back().kind == kind && m_open.back().name == name, "the end of a walk is that of its start");
        Node closed = std::move(m_open.back());
        m_open.pop_back();
        Add(std::move(closed));
    }

    std::vector<Node> m_open{1};
};

inline Node TreeOf(const RefCntPtr<const IParameters>& bag) {
    TreeVisitor visitor;
    VisitParametersStructure(L"", bag, visitor);
    return visitor.Take();
}

// A number as it stands bare in a text, and as it reaches the serializer.
inline TString HandedOn(const TString& number) {
    const std::string text = number.ToUtf8();
    if (text == "null") {
        return {};
    }
    if (text.find_first_of(".eE") == std::string::npos) {
        const bool negative = text.front() == '-';
        const std::string digits = text.substr(negative ? 1 : 0);
        __extension__ typedef unsigned __int128 Wide;
        Wide magnitude = 0;
        for (const char digit : digits.substr(0, 21)) {
            magnitude = magnitude * 10 + static_cast<unsigned>(digit - '0');
        }
        const Wide half = Wide{1} << 63;
        if (magnitude <= (negative ? half : 2 * half - 1)) {
            const auto bits = static_cast<std::uint64_t>(negative ? -magnitude : magnitude);
            const auto low = static_cast<std::uint32_t>(bits);
            const bool isSigned = static_cast<std::int64_t>(bits) < 134217728;
            return TString::FromUtf8(isSigned ? std::to_string(static_cast<std::int32_t>(low)) : std::to_string(low));
        }
    }
    return TString::FromUtf8(RealTextModel(std::strtod(text.c_str(), nullptr), 14));
}

// What reading makes of what was written, worked out without either.
class JSONTrip {
public:
    struct ReadingFails {};  // the text is refused, for a reason that docs/json.md names
    struct NotTold {};       // keys that are not escaped: anything may come back

    JSONTrip(TString space, bool shortNames) : m_namespace(std::move(space)), m_shortNames(shortNames) {}

    Node Members(const Node& composite) const {
        Node result = Shell(composite);
        for (const Node& member : composite.children) {
            if (member.kind == Node::Value && IsBare(member.category) && member.text == u"null") {
                continue;  // null is as if the member were not there
            }
            const int id = Registry().GetID(m_namespace, member.name, !m_shortNames);
            result.children.push_back(Member(member, id, Registry().GetType(id)));
        }
        return result;
    }

private:
    static ParametersRegistry& Registry() { return ParametersRegistry::Get(); }
    static bool IsBare(ParameterTypeCategory category) { return category == PTC_Number || category == PTC_Bool; }
    static bool IsWord(const TString& text) { return text == u"true" || text == u"false"; }

    // The node without what stands inside it.
    static Node Shell(const Node& node) { return {node.kind, node.name, node.text, node.category, {}}; }

    // The text that reaches the serializer.
    static TString Travelled(const Node& value) {
        if (!IsBare(value.category)) {
            return text_model::AsReadBack(value.text);
        }
        return IsWord(value.text) ? value.text : HandedOn(value.text);
    }

    TString Key(const TString& key, bool raw) const {
        if (raw || m_shortNames) {
            return text_model::AsReadBack(key);
        }
        if (text_model::NeedsEscape(key)) {
            throw NotTold();
        }
        return text_model::CamelCase(key);
    }

    template <class Reading>
    static auto Read(Reading&& reading) {
        try {
            return reading();
        } catch (const QuorvelException&) {
            throw ReadingFails();
        } catch (const std::logic_error&) {  // typed values: LogicException and std::out_of_range
            throw ReadingFails();
        }
    }

    Node Member(const Node& member, int id, ParameterTypeCategory kind) const {
        switch (kind) {
            case PTC_List:
                return ListMember(member, id);
            case PTC_Map:
                return MapMember(member, id);
            case PTC_StructureMap:
                return StructureMapMember(member);
            case PTC_Bag:
                return Members(member);
            case PTC_Structure:
            case PTC_StructureList:
                return Structure(member);
            default:
                return Scalar(member, *Registry().GetValueSerializer(id));
        }
    }

    Node Scalar(const Node& member, IParameterSerializer& serializer) const {
        Node result = Shell(member);
        result.text = Read([&] { return serializer.ToString(serializer.FromString(Travelled(member))); });
        return result;
    }

    // A structure, in list form or not, or a list of those.
    Node Structure(const Node& member) const {
        if (member.kind == Node::Composite) {
            return Members(member);
        }
        Node result = Shell(member);
        for (const Node& element : member.children) {
            result.children.push_back(element.kind == Node::Value ? Shell(element) : Structure(element));
            if (element.kind == Node::Value) {
                result.children.back().text = Travelled(element);
            }
        }
        return result;
    }

    Node ListMember(const Node& member, int id) const {
        std::vector<TString> texts;
        std::vector<RunRecord> runs;
        for (std::size_t position = 0; position < member.children.size(); ++position) {
            const Node& element = member.children[position];
            if (element.kind == Node::Value) {
                texts.push_back(Travelled(element));
                continue;
            }
            runs.emplace_back(static_cast<int>(position), std::vector<TString>());
            for (const Node& item : element.children) {
                runs.back().second.push_back(Travelled(item));
            }
        }
        IParameterSerializer* serializer = Registry().GetListSerializer(id);
        const RefCntPtr<IParameter> list = Read([&] { return serializer->FromStringList(texts, runs); });
        TreeVisitor visitor;
        SerializeStructure stream(visitor, !m_shortNames, false);
        serializer->SerializeList(list, stream, id);
        return visitor.Take().children.front();
    }

    Node MapMember(const Node& member, int id) const {
        std::map<TString, TString> texts;
        for (const Node& entry : member.children) {
            texts[Key(entry.name, false)] = Travelled(entry);  // the last one counts
        }
        IParameterSerializer* serializer = Registry().GetMapSerializer(id);
        Node result = Shell(member);
        for (const auto& [key, text] :
             Read([&] { return serializer->ToStringMap(serializer->FromStringMap(texts)); })) {
            result.children.push_back({Node::Value, key, text, member.category, {}});
        }
        return result;
    }

    Node StructureMapMember(const Node& member) const {
        std::map<TString, const Node*> entries;
        for (const Node& entry : member.children) {
            entries[Key(entry.name, entry.kind != Node::Null)] = &entry;
        }
        Node result = Shell(member);
        for (const auto& [key, entry] : entries) {
            result.children.push_back(entry->kind == Node::Null ? *entry : Members(*entry));
            result.children.back().name = key;
        }
        return result;
    }

    TString m_namespace;
    bool m_shortNames;
};

}  // namespace fuzz
