#include "tools/qvpres/text/ParameterText.h"

#include <algorithm>
#include <unordered_set>

#include <qvcore/CaseConversion.h>

#include <qvpreslayer/RegistryExceptions.h>

#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

// What a name of a text leads to; null when it leads nowhere.
const ParameterInfo* Resolve(const ParametersRegistry& registry, const TString& nameSpace, std::u16string_view name,
                             NameForm form) {
    const bool shortNames = form == NameForm::Short;
    const ToolSession session(shortNames);
    try {
        const int id = registry.GetID(nameSpace, shortNames ? TString(name) : CamelToDashed(name), !shortNames);
        const ParameterInfo* info = registry.FindInfo(id);
        return info == nullptr || info->kind == PTC_None ? nullptr : info;
    } catch (const ParameterNotFoundException&) {
        return nullptr;
    }
}

// The unit behind the string whose opening quote stands at a place.
std::size_t BehindString(std::u16string_view text, std::size_t at) {
    for (++at; text[at] != u'"'; ++at) {
        at += text[at] == u'\\' ? 1 : 0;
    }
    return at + 1;
}

// The unit behind the comment that starts at a place.
std::size_t BehindComment(std::u16string_view text, std::size_t at) {
    return text[at + 1] == u'/' ? text.find(u'\n', at) + 1 : text.find(u"*/", at + 2) + 2;
}

// The unit behind the bracket that closes the innermost open container, from a place in it on. The text is valid.
std::size_t BehindContainer(std::u16string_view text, std::size_t at) {
    for (int open = 1; open > 0;) {
        switch (text[at]) {
            case u'"':
                at = BehindString(text, at);
                break;
            case u'/':
                at = BehindComment(text, at);
                break;
            case u'{':
            case u'[':
                ++open;
                ++at;
                break;
            case u'}':
            case u']':
                --open;
                ++at;
                break;
            default:
                ++at;
        }
    }
    return at;
}

}  // namespace

ParameterText::ParameterText(TString text, const LoadedVocabulary& vocabulary, const TString& nameSpace,
                             const std::string& names)
    : m_text(std::move(text)),
      m_loaded(vocabulary),
      m_namespace(nameSpace),
      m_document(std::make_unique<JSONDocument>(m_text)) {
    m_names = names == "auto" ? DetectNames() : names == "short" ? NameForm::Short : NameForm::Verbose;
    AddInside(Add({}));
}

// Members that both forms know, or neither, tell nothing.
NameForm ParameterText::DetectNames() const {
    const JSONDocument& document = *m_document;
    if (document[0].kind == JSONKind::Object) {
        for (auto name = 1u; name != document.Next(0); name = document.Next(name + 1)) {
            const auto known = [&](NameForm form) {
                return Resolve(m_loaded.GetRegistry(), m_namespace, document.Text(name), form) != nullptr;
            };
            if (known(NameForm::Verbose) != known(NameForm::Short)) {
                return known(NameForm::Short) ? NameForm::Short : NameForm::Verbose;
            }
        }
    }
    return NameForm::Verbose;
}

ParameterText::Known ParameterText::Look(std::u16string_view name) {
    const auto [place, added] = m_known.try_emplace(std::u16string(name));
    if (added) {
        place->second.info = Resolve(m_loaded.GetRegistry(), m_namespace, name, m_names);
        if (place->second.info != nullptr) {
            place->second.declaration = m_loaded.GetVocabulary().FindId(place->second.info->id);
        }
    }
    return place->second;
}

ParameterText::Node ParameterText::Add(TextNode added) {
    const JSONNode& value = (*m_document)[added.value];
    added.begin = value.kind == JSONKind::String ? value.begin - 1u : value.begin;
    added.behind = value.kind == JSONKind::String ? value.end + 1u : value.end;  // of containers: not yet known
    if (added.nameToken != 0) {
        added.name = m_document->Text(added.nameToken);
        added.begin = (*m_document)[added.nameToken].begin - 1u;
    }
    m_nodes.push_back(added);
    return static_cast<Node>(m_nodes.size() - 1);
}

// Adds what is inside a value, where it is of the kind that holds something. The document's depth is limited, and so is
// that of this call.
void ParameterText::AddInside(Node node) {
    const Role role = m_nodes[node].role;
    const ParameterTypeCategory kind = m_nodes[node].info == nullptr ? PTC_None : m_nodes[node].info->kind;
    const bool isBag = role == Role::Root || kind == PTC_Bag || kind == PTC_Structure;
    const bool isRecord = role == Role::Element || (role == Role::Entry && kind == PTC_StructureMap);
    if (KindOf(node) == JSONKind::Object) {
        if (isBag || isRecord) {
            AddMembers(node, true);
        } else if (role == Role::Parameter && (kind == PTC_Map || kind == PTC_StructureMap)) {
            AddMembers(node, false);
        }
    } else if (KindOf(node) == JSONKind::Array && role == Role::Parameter && kind == PTC_StructureList) {
        AddElements(node);
    }
    m_nodes[node].end = static_cast<Node>(m_nodes.size());
    m_nodes[node].behind = Behind(node);
}

void ParameterText::AddMembers(Node node, bool areParameters) {
    const JSONDocument::Index object = m_nodes[node].value;
    const JSONDocument::Index behind = m_document->Next(object);
    std::uint32_t position = 0;
    for (auto name = object + 1; name != behind; name = m_document->Next(name + 1)) {
        TextNode member;
        member.role = Role::Entry;
        member.value = name + 1;
        member.nameToken = name;
        member.parent = node;
        member.position = position++;
        member.info = m_nodes[node].info;
        member.declaration = m_nodes[node].declaration;
        if (areParameters) {
            const Known known = Look(m_document->Text(name));
            member.role = known.info == nullptr ? Role::Unknown : Role::Parameter;
            member.info = known.info;
            member.declaration = known.declaration;
        }
        AddInside(Add(member));
    }
    MarkOverridden(node);
}

void ParameterText::AddElements(Node node) {
    const JSONDocument::Index array = m_nodes[node].value;
    const JSONDocument::Index behind = m_document->Next(array);
    std::uint32_t position = 0;
    for (auto value = array + 1; value != behind; value = m_document->Next(value)) {
        TextNode element;
        element.role = Role::Element;
        element.value = value;
        element.parent = node;
        element.position = position++;
        element.info = m_nodes[node].info;
        element.declaration = m_nodes[node].declaration;
        AddInside(Add(element));
    }
}

void ParameterText::MarkOverridden(Node object) {
    m_nodes[object].end = static_cast<Node>(m_nodes.size());
    const std::vector<Node> members = Children(object);
    std::unordered_set<std::u16string_view> later;
    for (auto member = members.rbegin(); member != members.rend(); ++member) {
        m_nodes[*member].overridden = !later.insert(m_nodes[*member].name).second;
    }
}

// The document does not tell where a container ends; the text does, from behind the last child on.
std::size_t ParameterText::Behind(Node node) const {
    const JSONNode& value = (*m_document)[m_nodes[node].value];
    if (!JSONDocument::IsContainer(value.kind)) {
        return m_nodes[node].behind;
    }
    std::size_t from = value.begin + 1u;
    for (Node child = node + 1; child < m_nodes[node].end; child = m_nodes[child].end) {
        from = m_nodes[child].behind;
    }
    return BehindContainer(m_text, from);
}

std::vector<ParameterText::Node> ParameterText::Children(Node node) const {
    std::vector<Node> children;
    for (Node child = node + 1; child < m_nodes[node].end; child = m_nodes[child].end) {
        children.push_back(child);
    }
    return children;
}

std::u16string_view ParameterText::ValueText(Node node) const {
    const TextNode& it = m_nodes[node];
    if (KindOf(node) == JSONKind::String) {
        return m_document->Text(it.value);
    }
    const std::size_t begin = (*m_document)[it.value].begin;
    return m_text.view().substr(begin, it.behind - begin);
}

std::string ParameterText::Path(Node node) const {
    std::vector<std::string> steps;
    for (; node != 0; node = m_nodes[node].parent) {
        const TextNode& it = m_nodes[node];
        steps.push_back("/" + (it.nameToken == 0 ? std::to_string(it.position) : ToUtf8(it.name)));
    }
    std::string path;
    std::for_each(steps.rbegin(), steps.rend(), [&](const std::string& step) { path += step; });
    return path;
}

bool ParameterText::Answers(Node node, std::string_view step) const {
    const TextNode& it = m_nodes[node];
    if (it.nameToken == 0) {
        return std::to_string(it.position) == step;
    }
    const TString name = TString::FromUtf8(step);
    if (it.name == name.view()) {
        return true;
    }
    return it.role == Role::Parameter &&
           (it.info->verboseName == name || it.info->camelName == name ||
            (!name.empty() && it.info->shortName == name) || std::to_string(it.info->id) == step);
}

ParameterText::Node ParameterText::Find(std::string_view path) const {
    Node node = 0;
    while (!path.empty() && path != "/") {
        path.remove_prefix(path.front() == '/' ? 1 : 0);
        const std::string_view step = path.substr(0, path.find('/'));
        path.remove_prefix(step.size());
        Node found = kNone;
        for (const Node child : Children(node)) {
            if (!m_nodes[child].overridden && Answers(child, step)) {
                found = child;
            }
        }
        if (found == kNone) {
            return kNone;
        }
        node = found;
    }
    return node;
}

}  // namespace qvpres
